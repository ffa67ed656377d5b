#include "frame/Tools.h"

#include <algorithm>
#include <iterator>

#include "base/Commands.h"

namespace tamvelo::frame {

namespace {

constexpr ToolKind kTools[] = {
    {base::kAceptar, L"&Aceptar", base::kBandEdicion, 0, true, false},
    {base::kCancelar, L"&Cancelar", base::kBandEdicion, 1, true, false},
    {base::kCerrar, L"C&errar", base::kBandEdicion, 2, true, false},
    {base::kNuevo, L"&Nuevo registro", base::kBandRegistro, 3, false, false},
    {base::kModificar, L"&Modificar el registro", base::kBandRegistro, 4, false, false},
    {base::kEliminar, L"E&liminar el registro", base::kBandRegistro, 5, false, false},
    {base::kRegistro, L"Ver el &registro", base::kBandRegistro, 12, false, false},
    {base::kMoveFirst, L"&Primer registro", base::kBandRegistros, 6, false, false},
    {base::kMovePre, L"Registro an&terior", base::kBandRegistros, 7, false, false},
    {base::kMoveNext, L"Registro &siguiente", base::kBandRegistros, 8, false, false},
    {base::kMoveLast, L"&Último registro", base::kBandRegistros, 9, false, false},
    {base::kOrdenAsc, L"&Orden ascendente", base::kBandRegistros, 13, false, false},
    {base::kOrdenDesc, L"Orden &descendente", base::kBandRegistros, 14, false, false},
    {base::kFiltrar, L"&Buscar", base::kBandRegistros, 16, false, false},
    {base::kFiltro, L"&Quitar el filtro", base::kBandRegistros, 15, false, true},
    {base::kImprimir, L"&Imprimir", base::kBandEdicion, 10, false, false},
    {base::kPreliminar, L"&Vista preliminar", base::kBandEdicion, 11, false, false},
};

} // namespace

const ToolKind* FindTool(std::wstring_view id) {
    const auto* found = std::find_if(std::begin(kTools), std::end(kTools),
                                     [&](const ToolKind& kind) { return kind.id == id; });
    return found == std::end(kTools) ? nullptr : found;
}

const wchar_t* ToolCaption(std::span<const ToolUse> uses, std::wstring_view id) {
    const auto use = std::ranges::find(uses, id, &ToolUse::id);
    if (use != uses.end() && use->caption) {
        return use->caption;
    }
    const ToolKind* const kind = FindTool(id);
    return kind ? kind->caption : nullptr;
}

} // namespace tamvelo::frame
