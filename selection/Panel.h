#pragma once

#include <array>

#include "base/Commands.h"
#include "frame/RecordAnswer.h"
#include "frame/Resources.h"

/// What the selection panels have in common.
namespace tamvelo::selection {

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

/// The search strip of a panel; `filtered` as SearchStripDesign has it.
inline frame::SearchStripDesign PanelSearch(std::function<void(bool filtered)> filtered = {}) {
    return {.anyMeansAll = true, .headingGoes = true, .filtered = std::move(filtered)};
}

} // namespace tamvelo::selection
