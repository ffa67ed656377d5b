#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contract/Sink.h"
#include "frame/DateRangeControl.h"
#include "frame/FieldRows.h"
#include "frame/TickList.h"
#include "reports/ReportChoices.h"
#include "reports/ReportDesign.h"
#include "reports/ReportOutput.h"

namespace tamvelo::reports {

/// A report dialog: the reports of a host's screen with ticks, where they go and how often, and conditions.
/// The choices are kept per screen; the host runs the reports when it gets them. A description makes one of
/// these into a certain dialog.
class ReportForm final : public frame::Form {
public:
    /// What the host asks with.
    struct Request {
        std::wstring cls; // the host's screen
        IDispatch* sink = nullptr;
        IDispatch* reports = nullptr;
        bool showAuto = true;
        bool limited = false; // drafts only
    };

    explicit ReportForm(const ReportDesign& design);

    /// Both throw com::Error when the dialog cannot open; what fails later goes to ControlErrores.
    void Mostrar(const Request& request);
    /// Accepts what was chosen the last time, without showing anything: there is no dialog to come back to,
    /// so that throws all that fails.
    void Aceptar(const Request& request);

    // For the descriptions.
    contract::Sink& Sink() { return m_sink; }
    const std::wstring& Cls() const { return m_screen.cls; }
    bool ShowsAuto() const { return m_screen.showAuto; }
    bool IsLimited() const { return m_screen.limited; }
    base::DateRange Range() { return m_dates->Range(); }
    /// Reads the text that is kept into its condition.
    void ReadKept() const;
    const frame::FieldRow& Row(Condition::Kind kind, short index) const {
        return m_conditions.Of(kind, index);
    }
    std::wstring Text(short index) const { return Row(Condition::Kind::Text, index).Text(); }
    /// The time of day in a box for hours, which accepting has checked. Throws com::Error when it is none.
    DATE Hour(short index) const;
    /// The selected entry's place.
    short Choice(short index) const { return Row(Condition::Kind::Choice, index).Choice(); }
    std::wstring ChoiceText(short index) const { return Row(Condition::Kind::Choice, index).Text(); }
    bool IsTicked(short index) const { return Row(Condition::Kind::Check, index).IsTicked(); }

private:
    void Open(const Request& request, bool unseen);
    void Accept();
    std::wstring KeptKey() const;
    void Keep() const;
    short CopiesNumber();
    com::ComPtr<IDispatch> Selection() const;
    void EntryChosen();
    void CurrentChanged();
    void ShowPeriod();

    void OnLoad() override;
    void OnUnload() noexcept override;
    void ResizeControls() override;
    HWND FirstFocus() const override { return m_list.FirstFocus(); }
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    const ReportDesign& m_report;
    frame::TickList m_list;
    frame::FieldRows m_conditions;
    ReportOutput m_output;
    ReportChoices m_choices;
    std::optional<frame::DateRangeControl> m_dates;
    struct Screen { // what it is shown for
        std::wstring cls;
        bool showAuto = true;
        bool limited = false;
        bool unseen = false;
        bool operator==(const Screen&) const = default;
    };
    Screen m_screen;
    contract::Sink m_sink;
    com::ComPtr<IDispatch> m_reports;
};

} // namespace tamvelo::reports
