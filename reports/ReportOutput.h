#pragma once

#include "environment/Environment.h"
#include "frame/FormPart.h"
#include "reports/ReportDesign.h"

namespace tamvelo::reports {

/// Where reports go: the output list, the number of copies with its spinner, and the printer.
class ReportOutput final : public frame::FormPart {
public:
    ReportOutput(frame::Form& form, const ReportDesign& design) : FormPart(form), m_report(design) {}

    /// The template has its controls before those that the form makes; behind them in the tab order.
    void MoveBehind();
    static win::LayoutRow Layout();
    /// After the form was laid out.
    void PlaceSpinner();

    /// The dialog's own outputs follow the common ones; the one that was chosen is selected, else the first.
    void Set(const environment::ListChoices& choices);
    /// After a component of the environment has worked on the controls themselves.
    void Complete();
    short Chosen() const;
    std::wstring Output() const;
    std::wstring Copies() const;
    com::ComPtr<IDispatch> OutputList() const;
    com::ComPtr<IDispatch> CopiesBox() const;

private:
    void OnLoad() override;
    void OnControl(int control, int code) override;
    std::span<const frame::KeyRow> Keys() const override;
    std::span<const frame::CommandRow> Commands() const override;

    void AddOwnOutputs();
    void OutputChanged();
    void CambiarImpresora();
    void ShowPrinter();

    const ReportDesign& m_report;
};

} // namespace tamvelo::reports
