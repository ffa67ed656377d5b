#pragma once

#include "contract/Sink.h"
#include "frame/DateRangeControl.h"

namespace tamvelo::dates {

/// Asks for two dates and hands them to the host's sink. Every opening begins with the current year.
class FrmSeleccionFecha final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmSeleccionFecha";
    FrmSeleccionFecha();

    /// Throws com::Error when it cannot open; what fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink);

private:
    void Aceptar();

    void OnUnload() noexcept override { m_sink.Reset(); }
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override { return frame::DateRangeControl::Layout(); }
    HWND FirstFocus() const override { return m_range.FirstFocus(); }

    contract::Sink m_sink;
    frame::DateRangeControl m_range{*this, base::WholeYear};
};

} // namespace tamvelo::dates
