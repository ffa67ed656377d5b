#pragma once

#include <string>
#include <vector>

#include "environment/Environment.h"
#include "frame/TickList.h"
#include "reports/ReportOutput.h"

namespace tamvelo::reports {

/// What is chosen in a report dialog, kept under the key of the host's screen: which reports, where they go
/// and how often.
class ReportChoices {
public:
    ReportChoices(const ReportDesign& design, frame::TickList& list, ReportOutput& output)
        : m_report(design), m_list(list), m_output(output) {}

    /// The choices of `screen` from now on.
    void SetScreen(const std::wstring& screen);
    const std::wstring& Key() const { return m_key; }
    void Load(IDispatch* reports);
    void Save() const;
    std::vector<bool> Ticks() const;

private:
    environment::ChoiceControls Controls() const;
    void Show(const environment::ListChoices& choices);

    const ReportDesign& m_report;
    frame::TickList& m_list;
    ReportOutput& m_output;
    std::wstring m_key;
};

} // namespace tamvelo::reports
