// What every form owes to the keyboard: the order of its tab stops, access keys, keys named in tips and
// menus.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include <algorithm>
#include <map>

#include "frame/Resources.h"
#include "search/Resources.h"
#include "selection/Resources.h"
#include "tests/dialogs/EveryOperation.h"

namespace tamvelo::testing {
namespace {

using Texts = std::vector<std::wstring>;

/// The key after the "&" of each text; a key that two of them have is a failure.
void ExpectKeysOnce(const Texts& texts, const std::wstring& where) {
    std::map<wchar_t, std::wstring> taken;
    for (const std::wstring& text : texts) {
        size_t at = 0;
        while ((at = text.find(L'&', at)) != std::wstring::npos && text[at + 1] == L'&') {
            at += 2;
        }
        if (at == std::wstring::npos) {
            continue;
        }
        wchar_t key[] = {text[at + 1], L'\0'};
        CharUpperW(key);
        const auto [first, isNew] = taken.emplace(key[0], text);
        EXPECT_TRUE(isNew) << ::testing::PrintToString(where + L": " + first->second + L" | " + text);
    }
}

bool Has(HWND window, LONG style) { return (GetWindowLongW(window, GWL_STYLE) & style) == style; }

/// The controls that show, in the order of the dialog manager, those in panels at the panel's place.
std::vector<HWND> ShownControls(HWND parent) {
    std::vector<HWND> controls;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child)) {
            continue;
        }
        if (GetWindowLongW(child, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) {
            const std::vector<HWND> inner = ShownControls(child);
            controls.insert(controls.end(), inner.begin(), inner.end());
        } else {
            controls.push_back(child);
        }
    }
    return controls;
}

std::wstring Described(HWND control) {
    wchar_t kind[32] = L"";
    GetClassNameW(control, kind, ARRAYSIZE(kind));
    return std::to_wstring(GetDlgCtrlID(control)) + L" " + kind + L" " + TextOf(control);
}

/// Lines from left to right, from top to bottom.
bool StandsBefore(HWND first, HWND second) {
    RECT a{};
    RECT b{};
    GetWindowRect(first, &a);
    GetWindowRect(second, &b);
    const LONG shared = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    const bool sameLine = shared * 2 > std::min(a.bottom - a.top, b.bottom - b.top);
    return sameLine ? a.left <= b.left : a.top <= b.top;
}

void ExpectOrderOnScreen(const std::vector<HWND>& controls, const std::wstring& where) {
    HWND before = nullptr;
    for (const HWND control : controls) {
        // The list follows its search box: Tab goes there.
        const bool next =
            before && GetDlgCtrlID(before) == IDC_TXTFIELDS0 && GetDlgCtrlID(control) == IDC_DATAGRID;
        if (Has(control, WS_TABSTOP) && !next) {
            EXPECT_TRUE(!before || StandsBefore(before, control))
                << ::testing::PrintToString(where + L": " + Described(before) + L" | " + Described(control));
            before = control;
        }
    }
}

void ExpectOrderlyControls(HWND dialog) {
    const std::wstring where = TextOf(dialog);
    RECT design{};
    RECT least{};
    GetWindowRect(dialog, &design);
    SetWindowPos(dialog, nullptr, 0, 0, 30, 30, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    GetWindowRect(dialog, &least);
    EXPECT_TRUE(EqualRect(&least, &design)) << ::testing::PrintToString(where + L" can be made too small");
    const std::vector<HWND> controls = ShownControls(dialog);
    Texts captions;
    for (const HWND control : controls) {
        wchar_t kind[16] = L"";
        GetClassNameW(control, kind, ARRAYSIZE(kind));
        const bool label = lstrcmpiW(kind, L"Static") == 0 && !Has(control, SS_NOPREFIX);
        if (label || lstrcmpiW(kind, L"Button") == 0) {
            captions.push_back(TextOf(control));
        }
    }
    ExpectKeysOnce(captions, where);
    ExpectOrderOnScreen(controls, where);
}

Texts g_menu;

/// The items of the menu that `open` brings up; none when it brings up none.
Texts MenuOf(const std::function<void()>& open) {
    g_menu.clear();
    const TIMERPROC read = [](HWND, UINT, UINT_PTR, DWORD) __attribute__((stdcall)) {
        HWND window = nullptr;
        const WNDENUMPROC look = [](HWND each, LPARAM out) __attribute__((stdcall))->BOOL {
            wchar_t kind[16] = L"";
            GetClassNameW(each, kind, ARRAYSIZE(kind));
            const bool menu = lstrcmpW(kind, L"#32768") == 0 && IsWindowVisible(each);
            return menu ? (*reinterpret_cast<HWND*>(out) = each, FALSE) : TRUE;
        };
        EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&window));
        const auto menu = reinterpret_cast<HMENU>(window ? SendMessageW(window, MN_GETHMENU, 0, 0) : 0);
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            wchar_t text[128] = L"";
            if (GetMenuStringW(menu, static_cast<UINT>(i), text, ARRAYSIZE(text), MF_BYPOSITION) > 0) {
                g_menu.emplace_back(text);
            }
        }
        if (menu) {
            PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
        }
    };
    const UINT_PTR timer = SetTimer(nullptr, 0, 30, read);
    open();
    KillTimer(nullptr, timer);
    return g_menu;
}

class EveryForm : public AllOperations {
protected:
    static Texts ListMenu() {
        const HWND list = IsShown(IDC_DATAGRID) ? Item(IDC_DATAGRID) : Item(IDC_LIST1);
        return MenuOf([&] { SendMessageW(list, WM_CONTEXTMENU, 0, -1); });
    }
    /// The tips of the tools that are on the bar, as the bar shows them.
    static Texts Tips() {
        Texts tips;
        for (WPARAM i = 0; i < Tools(); ++i) {
            TBBUTTON button{};
            SendMessageW(Bar(), TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
            if (!(button.fsStyle & BTNS_SEP)) {
                NMTTDISPINFOW asked{};
                asked.hdr.hwndFrom = reinterpret_cast<HWND>(SendMessageW(Bar(), TB_GETTOOLTIPS, 0, 0));
                asked.hdr.idFrom = static_cast<UINT_PTR>(button.idCommand);
                asked.hdr.code = TTN_GETDISPINFOW;
                asked.lpszText = asked.szText;
                SendMessageW(Bar(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
                tips.emplace_back(asked.lpszText);
            }
        }
        return tips;
    }
    static void ExpectOrderly() {
        const std::wstring where = TextOf(Dialog());
        ExpectOrderlyControls(Dialog());
        ExpectKeysOnce(ListMenu(), where + L", menú");
        if (IsShown(IDC_CMDPERIODO)) {
            ExpectKeysOnce(MenuOf([] { SendMessageW(Item(IDC_CMDPERIODO), BM_CLICK, 0, 0); }),
                           where + L", periodos");
        }
        for (const std::wstring& tip : Tips()) {
            EXPECT_TRUE(tip.ends_with(L")") || tip == L"Filtro aplicado")
                << ::testing::PrintToString(where + L": " + tip);
        }
    }
    void Open(const wchar_t* operation, Script script) {
        AllOperations::Open(*demo::FindOperation(operation), script.Key(VK_ESCAPE));
    }
};

TEST_F(EveryForm, HasItsTabsInTheOrderOnScreenAndNoAccessKeyTwiceAndLeavesNothing) {
    const Script look = Script().Do(ExpectOrderly);
    host.data->On(
        L"ValidaValue", [](com::Invocation& call) { call.Return(com::Variant(true)); }, true);
    host.data->On(L"ValidaDefinedSize", [](com::Invocation& call) { call.Return(com::Variant(5L)); });
    OpenAll(look);
    Open(L"ShowSelecAdd", Script()
                              .Key('N', VK_CONTROL)
                              .Until("the new record", [](HWND) { return IsShown(IDC_PICNEW); })
                              .Append(look)
                              .Key(VK_ESCAPE));
    host.className = L"Ordenes"; // two layouts of the search panel
    Open(L"ShowBuscar", Script(look)
                            .Do([] { PostMessageW(Item(IDC_CMDESTILO1), BM_CLICK, 0, 0); })
                            .Append(look)
                            .Do([] { PostMessageW(Item(IDC_CMDESTILO0), BM_CLICK, 0, 0); })
                            .Append(look));
}

TEST_F(EveryForm, NamesTheKeysOfItsCommands) {
    Open(L"ShowSelec", Script().Do([] {
        EXPECT_THAT(
            Tips(),
            ElementsAre(L"Aceptar (Intro)", L"Cancelar (Esc)", L"Primer registro (Inicio)",
                        L"Registro anterior (Flecha arriba)", L"Registro siguiente (Flecha abajo)",
                        L"Último registro (Fin)", L"Orden ascendente (F9)", L"Orden descendente (Mayús+F9)",
                        L"Buscar (Ins)", L"Quitar el filtro (Supr)", L"Ver el registro (F5)"));
        EXPECT_THAT(ListMenu(),
                    ElementsAre(L"&Aceptar\tIntro", L"Ver el &registro\tF5", L"&Orden ascendente\tF9",
                                L"Orden &descendente\tMayús+F9", L"&Buscar\tIns", L"&Quitar el filtro\tSupr",
                                L"Copiar &celda\tCtrl+L", L"Copiar &fila\tCtrl+C",
                                L"Copiar fila con cabecera&s\tCtrl+Mayús+C", L"A&justar la columna\tCtrl++",
                                L"Ele&gir columnas…\tF12", L"F&uente…\tF3"));
    }));
    Open(L"ShowRegistros", Script().Do([] {
        EXPECT_THAT(Tips(), ::testing::IsSupersetOf({L"Aceptar (F4)", L"Nuevo registro (Ctrl+N)",
                                                     L"Modificar el registro (Intro)",
                                                     L"Aplicar o quitar el filtro (F7)"}));
    }));
    Open(L"ShowBuscar", Script().Do([] {
        EXPECT_THAT(Tips(), ::testing::IsSupersetOf({L"Aceptar (Ctrl+Intro)", L"Cerrar (Alt+F4)",
                                                     L"Primer registro (Ctrl+Inicio)"}));
    }));
    Open(L"ShowRpt", Script().Do([] {
        EXPECT_THAT(ListMenu(),
                    ElementsAre(L"Marcar &todo\tCtrl+A", L"&Quitar todas las marcas\tCtrl+Mayús+A",
                                L"&Invertir las marcas\tCtrl+I", L"Como al a&brir\tCtrl+Z"));
    }));
}

} // namespace
} // namespace tamvelo::testing
