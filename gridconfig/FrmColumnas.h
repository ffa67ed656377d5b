#pragma once

#include "contract/ColumnCollection.h"
#include "contract/Sink.h"
#include "frame/ListForm.h"

namespace tamvelo::gridconfig {

/// Which columns of a grid are visible; the grid is the host's, or one of our own forms'.
class FrmColumnas final : public frame::ListForm {
public:
    static constexpr wchar_t kName[] = L"frmColumnas";
    FrmColumnas();

    /// Throws com::Error when the columns cannot be read; what fails later goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* columns);

private:
    void Aceptar();
    void OnUnload() noexcept override;
    std::span<const frame::CommandRow> Commands() const override;

    contract::Sink m_sink;
    contract::ColumnCollection m_columns;
};

} // namespace tamvelo::gridconfig
