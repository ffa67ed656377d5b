#pragma once

#include "contract/ColumnCollection.h"
#include "contract/Sink.h"
#include "frame/TickList.h"

namespace tamvelo::gridconfig {

/// Which columns of a grid are visible; the grid is the host's, or one of our own forms'.
class FrmColumnas final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmColumnas";
    FrmColumnas();

    /// Throws com::Error when the columns cannot be read; what fails later goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* columns);

private:
    void Aceptar();
    void OnUnload() noexcept override;
    HWND FirstFocus() const override { return m_list.FirstFocus(); }
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override { return frame::TickList::Layout(); }

    contract::Sink m_sink;
    contract::ColumnCollection m_columns;
    frame::TickList m_list;
};

} // namespace tamvelo::gridconfig
