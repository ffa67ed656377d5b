#pragma once

#include "contract/ColumnCollection.h"
#include "contract/Sink.h"
#include "frame/TickList.h"

namespace tamvelo::gridconfig {

/// The column by which the host sorts one of its grids; the host does the sorting.
class FrmOrden final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmOrden";
    FrmOrden();

    /// The host's own note about the sort, which goes back to it with the column.
    short iModo = 0;

    /// Throws com::Error when the columns cannot be read; what fails later goes to ControlErrores.
    void Mostrar(short modo, IDispatch* sink, IDispatch* columns);

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
