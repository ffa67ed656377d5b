#pragma once

#include "base/Commands.h"
#include "contract/ColumnCollection.h"
#include "contract/Sink.h"
#include "frame/ListForm.h"

namespace tamvelo::gridconfig {

/// The column by which the host sorts one of its grids; the host does the sorting.
class FrmOrden final : public frame::ListForm {
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
    void EntryDoubleClicked() override { Input(base::kAceptar); }
    std::span<const frame::CommandRow> Commands() const override;

    contract::Sink m_sink;
    contract::ColumnCollection m_columns;
};

} // namespace tamvelo::gridconfig
