#pragma once

#include <string>

#include "selection/Panel.h"

namespace tamvelo::selection {

/// The list from which the user picks one record of a host table for a control of the host. Six operations
/// open it, through three show methods.
class FrmSeleccion final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmSeleccion";
    FrmSeleccion();

    /// `ctl` gets the control that the host put in its place, if any. All throw com::Error when the panel
    /// cannot open; what fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column, short indx,
                 bool find, bool stock, bool verify, bool controlVerify);
    /// Opens with the control's text searched for; `modal` 0 returns at once and leaves the panel open.
    void MostrarBuscando(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column,
                         short indx, bool find, short modal);
    /// Opens on the record that the control's text names, with `text` typed into the search box but not yet
    /// applied.
    void MostrarBusquedaIndirecta(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column,
                                  const std::wstring& text, bool find, short modal);

private:
    void Open(IDispatch* sink, IDispatch* data, const contract::HostControl& ctl, short column, short indx,
              bool verify, bool controlVerify);

    void Aceptar();
    void AnswerYes() { Answer(true); }
    void AnswerNo() { Answer(false); }
    void Answer(bool answer);

    void OnLoad() override;
    void ResizeControls() override;
    HWND FirstFocus() const override { return Control(IDC_DATAGRID); }
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    std::wstring StatusNote() const;

    frame::RecordRequest m_request{*this};
    frame::RecordGrid m_grid{*this, m_request, {.codes = true, .note = [this] { return StatusNote(); }}};
    frame::SearchStrip m_search{*this, m_request, m_grid, PanelSearch()};
    frame::RecordAnswer m_answer{*this, m_request, m_grid, m_search};
    bool m_verify = false;
    bool m_controlVerify = false;
    std::wstring m_terminal = L"0";
};

} // namespace tamvelo::selection
