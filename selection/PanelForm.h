#pragma once

#include <array>

#include "base/Commands.h"
#include "frame/GridForm.h"

namespace tamvelo::selection {

/// Command of a double click on a row of the classes that get a code for it.
inline constexpr wchar_t kRowCode[] = L"{DOBLE_CLIC}";

inline constexpr frame::ToolUse kPanelTools[] = {
    {base::kAceptar},  {base::kCancelar}, {base::kMoveFirst}, {base::kMovePre},
    {base::kMoveNext}, {base::kMoveLast}, {base::kOrdenAsc},  {base::kOrdenDesc},
    {base::kFiltrar},  {base::kFiltro},   {base::kRegistro},
};

inline constexpr std::array kPanelKeys = std::to_array<frame::KeyRow>({
    {0, VK_RETURN, base::kModificar},
    {0, VK_DELETE, base::kEliminar},
    {0, VK_INSERT, base::kNuevo},
    {IDC_DATAGRID, VK_RETURN, base::kAceptar},
    {IDC_DATAGRID, VK_ESCAPE, base::kCancelar},
    {IDC_DATAGRID, VK_END, base::kMoveLast},
    {IDC_DATAGRID, VK_HOME, base::kMoveFirst},
    {IDC_DATAGRID, VK_DELETE, base::kFiltro},
    {IDC_DATAGRID, VK_INSERT, base::kFiltrar},
    {IDC_DATAGRID, VK_F5, base::kRegistro},
    {IDC_DATAGRID, VK_F3, frame::kChooseFont},
    {IDC_TXTFIELDS0, VK_UP, frame::kTabKey},
    {IDC_TXTFIELDS0, VK_DOWN, frame::kTabKey},
    {IDC_TXTFIELDS0, VK_RETURN, base::kAceptar},
    {IDC_TXTFIELDS0, VK_F4, base::kAceptar},
});

/// What the selection panels share beyond the grid: how a record is accepted.
class PanelForm : public frame::GridForm {
protected:
    using GridForm::GridForm;

    /// Asks for the selection with the control's text searched for at once; `modal` 0 returns at once.
    void ShowSearching(contract::HostControl& ctl, bool find, short modal);

    void Aceptar();
    void DeliverCode();
    /// Tells the sink of the record that was accepted.
    virtual void TellSink() { SendAnswer(base::AnswerFor(ClassName())); }

    bool MeansAll(std::wstring_view typed) const override;
    void OnLoad() override;
    void OnRowActivated() override;
    void OnSearchStrip(bool shown) override;
};

} // namespace tamvelo::selection
