#pragma once

#include "contract/ColumnCollection.h"
#include "contract/Sink.h"
#include "frame/TickList.h"

namespace tamvelo::gridconfig {

/// What distinguishes the dialogs of a grid's columns; the grid is the host's, or one of our own forms'.
struct ColumnsDesign {
    const wchar_t* name;
    int dialogTemplate;
    frame::TickList::Design list; // with ticks for what is visible, without for the column to sort by
};

extern const ColumnsDesign kColumnas; // which are visible
extern const ColumnsDesign kOrden;    // by which the host sorts; the host does the sorting

class ColumnsForm final : public frame::Form {
public:
    explicit ColumnsForm(const ColumnsDesign& design);

    /// The host's own note about the sort, which goes back to it with the column.
    short iModo = 0;

    /// Throws com::Error when the columns cannot be read; what fails later goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* columns, short modo = 0);

private:
    void Aceptar();
    void TellVisible(contract::Sink& sink, contract::ColumnCollection& columns) const;

    void OnUnload() noexcept override;
    HWND FirstFocus() const override { return m_list.FirstFocus(); }
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override { return frame::TickList::Layout(); }

    const bool m_ticks;
    contract::Sink m_sink;
    contract::ColumnCollection m_columns;
    frame::TickList m_list;
};

} // namespace tamvelo::gridconfig
