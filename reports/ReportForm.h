#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contract/Sink.h"
#include "frame/DateRangeControl.h"
#include "frame/ListForm.h"
#include "objects/EventRelay.h"
#include "reports/ReportDesign.h"

namespace tamvelo::reports {

/// Opens what the box with the focus, or the button, can be filled from.

/// A report dialog: the reports of a host's screen with ticks, where they go and how often, and conditions.
/// The choices are kept per screen; the host runs the reports when it gets them. A description makes one of
/// these into a certain dialog.
class ReportForm final : public frame::ListForm, private environment::ChoiceLists {
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
    /// The calling thread's instance of a dialog.
    static std::shared_ptr<ReportForm> Instance(const ReportDesign& design);

    /// Both throw com::Error when the dialog cannot open; what fails later goes to ControlErrores.
    void Mostrar(const Request& request);
    /// Accepts what was chosen the last time, without showing anything: there is no dialog to come back to,
    /// so that throws all that fails.
    void Aceptar(const Request& request);

    // For the descriptions.
    contract::Sink& Sink() { return m_sink; }
    const std::wstring& Cls() const { return m_cls; }
    /// "rpts" and the screen: what the choices are kept under.
    const std::wstring& ReportKey() const { return m_reportKey; }
    bool ShowsAuto() const { return m_showAuto; }
    bool IsLimited() const { return m_limited; }
    base::DateRange Range() { return m_dates->Range(); }
    /// TxtFields(index)
    std::wstring Text(short index) const;
    void SetText(short index, const std::wstring& text);
    /// The time of day in a box for hours, which accepting has checked. Throws com::Error when it is none.
    DATE Hour(short index) const;
    /// CmbFields(index): the selected entry's place.
    short Choice(short index) const;
    std::wstring ChoiceText(short index) const;
    void Choose(short index, const wchar_t* entry);
    /// chkFields(index)
    bool IsTicked(short index) const;
    void Tick(short index, bool ticked);
    /// Takes a condition with all that belongs to it away, or off.
    void ShowCondition(Condition::Kind kind, short index, bool shown);
    void EnableCondition(Condition::Kind kind, short index, bool enabled, const wchar_t* whyNot = L"");
    /// A value under the key of this screen's choices.
    std::wstring Remembered(const wchar_t* name, const wchar_t* fallback) const;
    void Remember(const wchar_t* name, const std::wstring& value) const;

private:
    void Open(const Request& request, bool unseen);
    void LoadChoices();
    void Accept();
    short CopiesNumber();
    com::ComPtr<IDispatch> Selection() const;
    std::wstring ChoicesKey() const;

    void MakeConditions();
    bool CheckHours() const;
    const Condition& Find(Condition::Kind kind, short index) const;
    int ControlOf(const Condition& condition) const;
    std::vector<win::LayoutRow> ConditionRows() const;
    const Condition* LookupOf(int control) const;
    void LookUp(int control);
    void OnConditionControl(int control, int code);
    void clsEventos_AceptaSeleccion(com::Invocation& call);

    void EntryChosen();
    void ShowPeriod();
    void OutputChanged();
    void CambiarImpresora();
    void ShowPrinter();
    void AddOwnOutputs();

    void OnLoad() override;
    void OnUnload() noexcept override;
    void OnControl(int control, int code) override;
    bool Offers(std::wstring_view command, int control) const override;
    std::span<const frame::KeyRow> SharedKeys() const override;
    void ResizeControls() override;
    void CurrentChanged() override;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    void SetReports(const std::vector<std::wstring>& titles, const std::vector<bool>& ticks) override;
    std::vector<std::wstring> Titles() const override;
    std::vector<bool> Ticks() const override;
    com::ComPtr<IDispatch> ReportList() override;
    bool HasOutput() const override { return m_report.output; }
    void SetOutputs(std::span<const wchar_t* const> common, const std::wstring& chosen) override;
    std::wstring Output() const override;
    void SetCopies(const std::wstring& copies) override;
    std::wstring Copies() const override;
    com::ComPtr<IDispatch> OutputList() override;
    com::ComPtr<IDispatch> CopiesBox() override;

    const ReportDesign& m_report;
    std::optional<frame::DateRangeControl> m_dates;
    std::unique_ptr<objects::OwnRelay> m_clsEventos; // hears the look-ups
    std::wstring m_cls;
    std::wstring m_reportKey;
    contract::Sink m_sink;
    com::ComPtr<IDispatch> m_reports;
    bool m_showAuto = true;
    bool m_limited = false;
    bool m_unseen = false;
};

} // namespace tamvelo::reports
