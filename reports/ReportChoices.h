#pragma once

#include <string>
#include <vector>

#include "frame/TickList.h"
#include "reports/ReportOutput.h"

namespace tamvelo::reports {

/// What is chosen in a report dialog, kept under the key of the host's screen: which reports, where they go,
/// and values of the dialog's own.
class ReportChoices final : private environment::ChoiceLists {
public:
    ReportChoices(const ReportDesign& design, frame::TickList& list, ReportOutput& output)
        : m_report(design), m_list(list), m_output(output) {}

    /// The choices of `screen` from now on.
    void SetScreen(const std::wstring& screen);
    void Load(IDispatch* reports);
    void Save();
    std::wstring Remembered(const wchar_t* name, const wchar_t* fallback) const;
    void Remember(const wchar_t* name, const std::wstring& value) const;

    std::vector<bool> Ticks() const override;

private:
    void SetReports(const std::vector<std::wstring>& titles, const std::vector<bool>& ticks) override;
    std::vector<std::wstring> Titles() const override;
    com::ComPtr<IDispatch> ReportList() override;
    bool HasOutput() const override { return m_report.output; }
    void SetOutputs(std::span<const wchar_t* const> common, const std::wstring& chosen) override {
        m_output.SetOutputs(common, chosen);
    }
    std::wstring Output() const override { return m_output.Output(); }
    void SetCopies(const std::wstring& copies) override { m_output.SetCopies(copies); }
    std::wstring Copies() const override { return m_output.Copies(); }
    com::ComPtr<IDispatch> OutputList() override { return m_output.OutputList(); }
    com::ComPtr<IDispatch> CopiesBox() override { return m_output.CopiesBox(); }

    const ReportDesign& m_report;
    frame::TickList& m_list;
    ReportOutput& m_output;
    std::wstring m_key;
};

} // namespace tamvelo::reports
