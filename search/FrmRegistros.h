#pragma once

#include <string>

#include "frame/RecordAnswer.h"
#include "frame/Resources.h"

namespace tamvelo::search {

/// The record browser: the host's records in a grid, to look through, narrow down, sort, and pick one for a
/// control of the host. New, modified and deleted records are the host's own business.
class FrmRegistros final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmRegistros";
    FrmRegistros();

    /// `ctl` gets the control that the host put in its place, if any. Throws com::Error when the form cannot
    /// open; what fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column, short indx,
                 bool find) {
        Show([&] { m_request.Mostrar(sink, data, ctl, column, indx, find); });
    }

private:
    void Aceptar();
    void Nuevo();
    void Modificar();
    void Eliminar();
    void Filtro();
    void PassOn(const wchar_t* member, const wchar_t* refusal);
    bool ConfirmsDeletion();

    void OnLoad() override;
    HWND FirstFocus() const override { return Control(IDC_DATAGRID); }
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    frame::RecordRequest m_request{*this};
    frame::RecordGrid m_grid;
    frame::SearchStrip m_search;
    frame::RecordAnswer m_answer{*this, m_request, m_grid, m_search};
};

} // namespace tamvelo::search
