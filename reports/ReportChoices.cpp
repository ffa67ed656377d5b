#include "reports/ReportChoices.h"

#include "environment/Product.h"

namespace tamvelo::reports {

namespace {

environment::Settings& Settings() { return environment::Environment::Get().GetSettings(); }

} // namespace

void ReportChoices::SetScreen(const std::wstring& screen) {
    m_key = environment::Product::Own().FormKey(m_report.name) + screen;
}

std::wstring ReportChoices::Remembered(const wchar_t* name, const wchar_t* fallback) const {
    return Settings().ReadValue(m_key, name, fallback);
}

void ReportChoices::Remember(const wchar_t* name, const std::wstring& value) const {
    Settings().WriteValue(m_key, name, value);
}

void ReportChoices::Load(IDispatch* reports) {
    if (m_report.labels) {
        Settings().LoadLabelChoices(m_key, reports, *this);
    } else {
        Settings().LoadListChoices(m_key, reports, *this);
    }
    // A component of the environment has worked on the controls themselves.
    m_list.List().RememberTicks();
    if (m_report.output) {
        m_output.Complete();
    }
}

void ReportChoices::Save() { Settings().SaveListChoices(m_key, *this); }

void ReportChoices::SetReports(const std::vector<std::wstring>& titles, const std::vector<bool>& ticks) {
    std::vector<win::ListEntry> entries(titles.size());
    for (size_t i = 0; i < titles.size(); ++i) {
        entries[i] = {titles[i], ticks[i]};
    }
    m_list.List().Fill(std::move(entries));
}

std::vector<std::wstring> ReportChoices::Titles() const {
    std::vector<std::wstring> titles(static_cast<size_t>(m_list.List().Count()));
    for (size_t i = 0; i < titles.size(); ++i) {
        titles[i] = m_list.List().Caption(static_cast<int>(i));
    }
    return titles;
}

std::vector<bool> ReportChoices::Ticks() const {
    std::vector<bool> ticks(static_cast<size_t>(m_list.List().Count()));
    for (size_t i = 0; i < ticks.size(); ++i) {
        ticks[i] = m_list.List().IsTicked(static_cast<int>(i));
    }
    return ticks;
}

com::ComPtr<IDispatch> ReportChoices::ReportList() { return com::ComPtr<IDispatch>(m_list.Object().Get()); }

} // namespace tamvelo::reports
