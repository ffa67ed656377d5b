#pragma once

#include <string>

#include "selection/Panel.h"

namespace tamvelo::selection {

/// The list whose rows carry marks: the user ticks them one by one, or all at once, and then accepts. The
/// marks are the host's own, written when they are made.
class FrmSeleccionTrueFalse final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmSeleccionTrueFalse";
    FrmSeleccionTrueFalse();

    /// `ctl` gets the control that the host put in its place, if any. Throws com::Error when the form cannot
    /// open; what fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column, short indx,
                 bool find) {
        Show([&] { m_request.Mostrar(sink, data, ctl, column, indx, find); });
    }
    /// Opens with the control's text searched for; `modal` 0 returns at once and leaves the panel open.
    void MostrarBuscando(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column,
                         short indx, bool find, short modal);

private:
    void Todos() { MarkAll(&contract::DataClass::Aceptar_todos); }
    void Ninguno() { MarkAll(&contract::DataClass::Denegar_todos); }
    void MarkAll(void (contract::DataClass::*mark)(com::Variant& connection));
    void ToggleMark();

    void Aceptar();
    void TellSink();
    void ShowScope(bool filtered);
    std::wstring StatusNote() const;

    void OnLoad() override;
    HWND FirstFocus() const override { return Control(IDC_DATAGRID); }
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;

    static const frame::MenuItem kMenu[4];
    frame::RecordRequest m_request{*this};
    frame::RecordGrid m_grid;
    frame::SearchStrip m_search{*this, m_request, m_grid,
                                PanelSearch([this](bool filtered) { ShowScope(filtered); })};
    frame::RecordAnswer m_answer{*this, m_request, m_grid, m_search};
};

} // namespace tamvelo::selection
