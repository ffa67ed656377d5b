#include "reports/ReportChoices.h"

#include "environment/Product.h"

namespace tamvelo::reports {

void ReportChoices::SetScreen(const std::wstring& screen) {
    m_key = environment::Product::Own().FormKey(m_report.name) + screen;
}

environment::ChoiceControls ReportChoices::Controls() const {
    environment::ChoiceControls controls;
    controls.reports = com::ComPtr<IDispatch>(m_list.Object().Get());
    if (m_report.output) {
        controls.outputs = m_output.OutputList();
        controls.copies = m_output.CopiesBox();
    }
    return controls;
}

void ReportChoices::Load(IDispatch* reports) {
    environment::Settings& settings = environment::Environment::Get().GetSettings();
    const auto choices = m_report.labels ? settings.LoadLabelChoices(m_key, reports, Controls())
                                         : settings.LoadListChoices(m_key, reports, Controls());
    if (choices) {
        Show(*choices);
    }
    m_list.List().RememberTicks();
    if (m_report.output) {
        m_output.Complete();
    }
}

void ReportChoices::Show(const environment::ListChoices& choices) {
    std::vector<win::ListEntry> entries(choices.titles.size());
    for (size_t i = 0; i < entries.size(); ++i) {
        entries[i] = {choices.titles[i], choices.ticks[i]};
    }
    m_list.List().Fill(std::move(entries));
    if (m_report.output) {
        m_output.Set(choices);
    }
}

void ReportChoices::Save() const {
    environment::ListChoices choices{
        .ticks = Ticks(), .output = m_output.Output(), .copies = m_output.Copies()};
    for (size_t i = 0; i < choices.ticks.size(); ++i) {
        choices.titles.push_back(m_list.List().Caption(static_cast<int>(i)));
    }
    environment::Environment::Get().GetSettings().SaveListChoices(m_key, choices, Controls());
}

std::vector<bool> ReportChoices::Ticks() const {
    std::vector<bool> ticks(static_cast<size_t>(m_list.List().Count()));
    for (size_t i = 0; i < ticks.size(); ++i) {
        ticks[i] = m_list.List().IsTicked(static_cast<int>(i));
    }
    return ticks;
}

} // namespace tamvelo::reports
