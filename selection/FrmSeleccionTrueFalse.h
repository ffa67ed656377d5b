#pragma once

#include <string>

#include "selection/PanelForm.h"

namespace tamvelo::selection {

/// The list whose rows carry marks: the user ticks them one by one, or all at once, and then accepts. The
/// marks are the host's own, written when they are made.
class FrmSeleccionTrueFalse final : public PanelForm {
public:
    static constexpr wchar_t kName[] = L"frmSeleccionTrueFalse";
    FrmSeleccionTrueFalse();

    /// Opens with the control's text searched for; `modal` 0 returns at once and leaves the panel open.
    void MostrarBuscando(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column,
                         short indx, bool find, short modal);

private:
    void Todos() { MarkAll(&contract::DataClass::Aceptar_todos); }
    void Ninguno() { MarkAll(&contract::DataClass::Denegar_todos); }
    void MarkAll(void (contract::DataClass::*mark)(com::Variant& connection));
    void ToggleMark();

    void TellSink() override;
    void OnLoad() override;
    void OnDefaultLook() override { DataGrid().PutMarksFirst(); }
    void OnFiltered(bool filtered) override;
    void MarkClicked() override;
    void RowsShown() override { ShowStatus(); }
    std::span<const frame::MenuItem> OwnMenu() const override;
    std::wstring LayoutName() const override;
    std::wstring StatusNote() const override;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;
};

} // namespace tamvelo::selection
