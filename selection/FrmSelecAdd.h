#pragma once

#include <string>

#include "selection/Panel.h"
#include "selection/RecordEntry.h"

namespace tamvelo::selection {

/// The selection panel with a second panel beside the grid, where the user enters the record that the host
/// does not have yet and hands over its code at once.
class FrmSelecAdd final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmSelecAdd";
    FrmSelecAdd();

    /// `ctl` gets the control that the host put in its place, if any. Throws com::Error when the form cannot
    /// open; what fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column, short indx,
                 bool find) {
        Show([&] { m_request.Mostrar(sink, data, ctl, column, indx, find); });
    }

private:
    void Aceptar();
    void Cancelar();
    void Cerrar();

    std::wstring Title() const { return L"Selección de " + m_request.className; }
    void Nuevo();
    void AceptarAlta();
    void ShowStored(const std::wstring& code);
    void EndNuevo();
    bool MayDiscard();

    void OnLoad() override;
    bool Offers(std::wstring_view command, int control) const override;
    void LayOutBeside(RECT& area) override { m_record.LayOutBeside(area); }
    HWND FirstFocus() const override { return Control(IDC_DATAGRID); }
    std::wstring StatusNote() const;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    frame::RecordRequest m_request{*this};
    frame::RecordGrid m_grid;
    frame::SearchStrip m_search{*this, m_request, m_grid, PanelSearch()};
    frame::RecordAnswer m_answer{*this, m_request, m_grid, m_search};
    RecordEntry m_record{*this, m_request.data};
};

} // namespace tamvelo::selection
