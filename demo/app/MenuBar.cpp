#include "demo/app/MenuBar.h"

#include <iterator>
#include <string>

#include "demo/app/Operations.h"
#include "demo/app/Resources.h"

namespace tamvelo::demo {

namespace {

constexpr const wchar_t* kGroups[] = {L"&Selección", L"&Búsqueda", L"&Cuadrícula", L"&Informes",
                                      L"&Fechas y citas"}; // in the order of Group

HMENU Append(HMENU bar, const wchar_t* caption) {
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), caption);
    return menu;
}

} // namespace

HMENU MakeMenuBar() {
    const HMENU bar = CreateMenu();
    const HMENU order = Append(bar, L"&Pedido");
    AppendMenuW(order, MF_STRING, IDM_NUEVO, L"&Nuevo\tCtrl+N");
    AppendMenuW(order, MF_STRING, IDM_SELECCIONAR, L"&Seleccionar\tF4");
    AppendMenuW(order, MF_STRING, IDM_VACIAR, L"&Vaciar el registro\tCtrl+L");
    AppendMenuW(order, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(order, MF_STRING, IDM_SALIR, L"S&alir");

    HMENU groups[std::size(kGroups)];
    for (std::size_t i = 0; i < std::size(kGroups); ++i) {
        groups[i] = Append(bar, kGroups[i]);
    }
    UINT id = IDM_OPERACIONES;
    for (const Operation& operation : Operations()) {
        const std::wstring caption = operation.caption + (L'\t' + std::wstring(operation.name));
        AppendMenuW(groups[static_cast<std::size_t>(operation.group)], MF_STRING, id++, caption.c_str());
    }
    AppendMenuW(Append(bar, L"A&yuda"), MF_STRING, IDM_MANUAL, L"&Manual");
    return bar;
}

} // namespace tamvelo::demo
