// Every operation of the library in one host process: what each dialog owes to the keyboard, that it is out
// of the way while the host takes its answer, and that nothing is kept of what a host writes into its
// arguments.
#include "tests/dialogs/EveryOperation.h"

#include <set>

#include "base/Text.h"
#include "search/Resources.h"
#include "selection/Resources.h"
#include "tests/support/SystemAnswer.h"

namespace tamvelo::testing {
namespace {

using ::testing::Contains;
using ::testing::Not;
using Texts = std::vector<std::wstring>;

/// The tips of the tools and the list's menu, or a part of them.
constexpr std::pair<std::wstring_view, const wchar_t*> kNamed[] = {
    {L"ShowSelec",
     L"|Aceptar (Intro)|Cancelar (Esc)|Primer registro (Inicio)|Registro anterior (Flecha arriba)|"
     L"Registro siguiente (Flecha abajo)|Último registro (Fin)|Orden ascendente (F9)|"
     L"Orden descendente (Mayús+F9)|Buscar (Ins)|Quitar el filtro (Supr)|Ver el registro (F5)|"
     L"&Aceptar\tIntro|Ver el &registro\tF5|&Orden ascendente\tF9|Orden &descendente\tMayús+F9|"
     L"&Buscar\tIns|&Quitar el filtro\tSupr|Copiar &celda\tCtrl+L|Copiar &fila\tCtrl+C|"
     L"Copiar fila con cabecera&s\tCtrl+Mayús+C|A&justar la columna\tCtrl++|"
     L"Ele&gir columnas…\tF12|F&uente…\tF3|"},
    {L"ShowRegistros", L"|Aceptar (F4)|"},
    {L"ShowRegistros", L"|Nuevo registro (Ctrl+N)|"},
    {L"ShowRegistros", L"|Modificar el registro (Intro)|"},
    {L"ShowRegistros", L"|Aplicar o quitar el filtro (F7)|"},
    {L"ShowBuscar", L"|Aceptar (Ctrl+Intro)|"},
    {L"ShowBuscar", L"|Cerrar (Alt+F4)|"},
    {L"ShowBuscar", L"|Primer registro (Ctrl+Inicio)|"},
    {L"ShowRpt",
     L"|Marcar &todo\tCtrl+A|&Quitar todas las marcas\tCtrl+Mayús+A|&Invertir las marcas\tCtrl+I|"
     L"Como al a&brir\tCtrl+Z|"},
};

/// The key after the "&" of each text; a key that two of them have is a failure.
void ExpectKeysOnce(const Texts& texts) {
    std::set<wchar_t> taken;
    for (const std::wstring& text : texts) {
        size_t at = 0;
        while ((at = text.find(L'&', at)) != std::wstring::npos && text[at + 1] == L'&') {
            at += 2;
        }
        if (at != std::wstring::npos) {
            wchar_t key[] = {text[at + 1], L'\0'};
            EXPECT_TRUE(taken.insert(*CharUpperW(key)).second) << ::testing::PrintToString(texts);
        }
    }
}

bool Has(HWND window, LONG style) { return (GetWindowLongW(window, GWL_STYLE) & style) == style; }

bool IsA(HWND window, const wchar_t* kind) { return lstrcmpiW(ClassOf(window).c_str(), kind) == 0; }

/// The controls that show, in the order of the dialog manager, those in panels at the panel's place.
std::vector<HWND> ShownControls(HWND parent) {
    std::vector<HWND> controls;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child) && GetWindowLongW(child, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) {
            std::ranges::copy(ShownControls(child), std::back_inserter(controls));
        } else if (IsWindowVisible(child)) {
            controls.push_back(child);
        }
    }
    return controls;
}

/// Lines from left to right, from top to bottom.
bool StandsBefore(HWND first, HWND second) {
    const RECT a = PlaceOf(first);
    const RECT b = PlaceOf(second);
    const LONG shared = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    const bool sameLine = shared * 2 > std::min(a.bottom - a.top, b.bottom - b.top);
    return sameLine ? a.left <= b.left : a.top <= b.top;
}

/// What the text of a label, a button or a box to tick takes in one line, with the sign before it.
int WidthOfText(HWND control) {
    const HDC dc = GetDC(control);
    const HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT size{};
    DrawTextW(dc, TextOf(control).c_str(), -1, &size, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(dc, before);
    ReleaseDC(control, dc);
    const LONG kind = GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK;
    const bool sign = IsA(control, L"Button") && (kind == BS_AUTOCHECKBOX || kind == BS_AUTORADIOBUTTON);
    return size.right + (sign ? GetSystemMetrics(SM_CXMENUCHECK) : 0);
}

void ExpectOrderlyControls(HWND dialog) {
    Texts captions;
    HWND before = nullptr;
    const std::vector<HWND> controls = ShownControls(dialog);
    for (auto at = controls.begin(); at != controls.end(); ++at) {
        const HWND control = *at;
        const bool frame =
            IsA(control, L"Button") && (GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
        for (auto other = at + 1; other != controls.end() && !frame; ++other) {
            RECT shared{};
            const RECT place = PlaceOf(control);
            const RECT another = PlaceOf(*other);
            EXPECT_FALSE(IntersectRect(&shared, &place, &another) && !IsA(*other, UPDOWN_CLASSW))
                << GetDlgCtrlID(control) << " lies over " << GetDlgCtrlID(*other);
        }
        const bool label = IsA(control, L"Static") && base::Trim(TextOf(control)).ends_with(L":");
        EXPECT_TRUE(!label || IsWindowVisible(GetWindow(control, GW_HWNDNEXT)))
            << base::ToUtf8(TextOf(control)) << " is the label of nothing";
        if (IsA(control, L"Button") || (IsA(control, L"Static") && !Has(control, SS_NOPREFIX))) {
            captions.push_back(TextOf(control));
            RECT room{};
            GetClientRect(control, &room);
            const bool picture = IsA(control, L"Button") && Has(control, BS_ICON);
            const bool cut = room.right > 0 && room.bottom < 30 && WidthOfText(control) > room.right;
            EXPECT_FALSE(cut && !picture && !Has(control, SS_ENDELLIPSIS))
                << base::ToUtf8(TextOf(control)) << " " << WidthOfText(control) << " in " << room.right;
        }
        // The list follows its search box: Tab goes there.
        const bool next =
            before && GetDlgCtrlID(before) == IDC_TXTFIELDS0 && GetDlgCtrlID(control) == IDC_DATAGRID;
        if (Has(control, WS_TABSTOP) && !next) {
            EXPECT_TRUE(!before || StandsBefore(before, control))
                << "the tabs' order: " << GetDlgCtrlID(before) << " " << GetDlgCtrlID(control);
            before = control;
        }
    }
    ExpectKeysOnce(captions);
    const RECT design = PlaceOf(dialog);
    SetWindowPos(dialog, nullptr, 0, 0, 30, 30, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    const RECT least = PlaceOf(dialog);
    EXPECT_TRUE(EqualRect(&least, &design)) << "can be made too small";
}

/// The library's own, in the sizes that belong to the resolution here, and decoded: the caption of the
/// drawing is blue.
std::vector<HICON> ExpectIcons(HWND dialog) {
    std::vector<HICON> icons;
    for (const auto& [kind, size] : {std::pair{ICON_SMALL, 16}, {ICON_BIG, 32}}) {
        ICONINFO icon{};
        BITMAP picture{};
        icons.push_back(
            reinterpret_cast<HICON>(SendMessageW(dialog, WM_GETICON, static_cast<WPARAM>(kind), 0)));
        EXPECT_TRUE(GetIconInfo(icons.back(), &icon));
        GetObjectW(icon.hbmColor, sizeof picture, &picture);
        const HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, icon.hbmColor);
        EXPECT_EQ(picture.bmWidth, size);
        EXPECT_EQ(GetPixel(dc, picture.bmWidth / 2, picture.bmHeight / 8), RGB(33, 105, 186));
        DeleteDC(dc);
        DeleteObject(icon.hbmColor);
        DeleteObject(icon.hbmMask);
    }
    return icons;
}

class EveryOperation : public AllOperations {
protected:
    /// Reads the menu that this brings up, if it does, and closes it.
    Script Menu(std::function<void()> open) {
        return {
            Do(std::move(open)), Do([this] {
                const HWND window =
                    FindWindowThat([](HWND each) { return IsA(each, L"#32768") && IsWindowVisible(each); });
                const auto menu =
                    reinterpret_cast<HMENU>(window ? SendMessageW(window, MN_GETHMENU, 0, 0) : 0);
                m_menu.clear();
                for (int i = 0; i < GetMenuItemCount(menu); ++i) {
                    wchar_t text[128] = L"";
                    if (GetMenuStringW(menu, static_cast<UINT>(i), text, ARRAYSIZE(text), MF_BYPOSITION)) {
                        m_menu.emplace_back(text);
                    }
                }
                if (menu) {
                    const RECT form = PlaceOf(Dialog());
                    const RECT place = PlaceOf(window);
                    EXPECT_TRUE(PtInRect(&form, {place.left, place.top})) << place.left << " " << place.top;
                    PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
                }
                ExpectKeysOnce(m_menu);
            })};
    }
    /// The tips of the tools that are on the bar, as the bar shows them, and the menu that was read last.
    std::wstring Named() {
        std::wstring texts = L"|";
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
                texts += asked.lpszText + std::wstring(L"|");
                EXPECT_TRUE(texts.ends_with(L")|") || texts.ends_with(L"|Filtro aplicado|"));
            }
        }
        for (const std::wstring& item : m_menu) {
            texts += item + L"|";
        }
        return texts;
    }
    /// Expects it in order: its tabs as they stand on screen, no access key twice, keys named.
    Script Look(std::wstring_view operation) {
        const auto periods = [] {
            PostMessageW(IsShown(IDC_CMDPERIODO) ? Item(IDC_CMDPERIODO) : nullptr, BM_CLICK, 0, 0);
        };
        const auto list = [] {
            PostMessageW(Item(IsShown(IDC_DATAGRID) ? IDC_DATAGRID : IDC_LIST1), WM_CONTEXTMENU, 0, -1);
        };
        return {Do([this] {
                    m_icons = ExpectIcons(Dialog());
                    ExpectOrderlyControls(Dialog());
                }),
                Menu(periods), Menu(list), Do([this, operation] {
                    for (const auto& [name, part] : kNamed) {
                        EXPECT_THAT(Named(), HasSubstr(name == operation ? part : L""));
                    }
                })};
    }

    void ExpectIconsGone() {
        for (const HICON icon : m_icons) {
            ICONINFO info{};
            EXPECT_FALSE(GetIconInfo(icon, &info));
        }
        m_icons.clear();
    }

private:
    Texts m_menu;
    std::vector<HICON> m_icons; // of the dialog that was looked at last
};

TEST_F(EveryOperation, IsOrderlyAndOutOfTheWayOfItsAnswerAndKeepsNothingOfTheHosts) {
    host.data->Returns(L"ValidaValue", Variant(true), true);
    host.data->Returns(L"ValidaDefinedSize", Variant(5L));
    host.sink->Accepts({L"clsEvents_AceptaSeleccion"});
    int told = 0;
    HostObject::beforeEach = [&](const std::wstring& member) {
        if (member.find(L"Acept") != member.npos || member.starts_with(L"Actualiza")) {
            ++told;
            EXPECT_TRUE(IsWindowEnabled(owner));
            EXPECT_FALSE(Dialog() && IsWindowVisible(Dialog()));
        }
    };
    const Script use = {Do([] { SetFocus(IsShown(IDC_TXTFIELDS0) ? Item(IDC_TXTFIELDS0) : GetFocus()); }),
                        L"'7 Tab", Do([] {
                            for (const wchar_t* tool : {L"Orden descendente", L"Aceptar"}) {
                                if (ToolCommand(tool) >= 0) {
                                    ClickTool(tool);
                                }
                            }
                        })};
    for (const Operation& operation : Operations()) {
        SCOPED_TRACE(::testing::PrintToString(operation.name));
        const Script leave = operation.name == L"ShowNuevaCita" ? L"Esc" : use;
        const auto run = [&](const Script& script, bool changes) {
            checks->changesReferences = changes;
            host.set->SetFilter(L"");
            host.set->SetSort(L"");
            host.stored.clear();
            told = 0;
            Open(operation, script);
            checks->changesReferences = false;
            return TakeLog();
        };
        const Log clean = run(leave, false);
        EXPECT_GE(told, 1);
        run({Look(operation.name), leave}, true);
        ExpectIconsGone();
        EXPECT_THAT(run(leave, false), ElementsAreArray(clean)) << "something was kept";
    }
    HostObject::beforeEach = {};
    Open(OperationOf(L"ShowSelecAdd"),
         {L"^N", Until("the new record", [](HWND) { return IsShown(IDC_PICNEW); }), Look({}), L"Esc Esc"});
    host.className = L"Ordenes"; // two layouts of the search panel
    Open(OperationOf(L"ShowBuscar"),
         {Look({}), Click(IDC_CMDESTILO1), Look({}), Click(IDC_CMDESTILO0), Look({}), L"Esc"});
}

TEST_F(EveryOperation, LivesWhenTheSystemHasNothingLeftToMeasureWith) {
    const SystemAnswer noUnits(L"kernelbase.dll", "MulDiv", 3, 0); // of which dialog units are made
    const SystemAnswer noContext(L"user32.dll", "GetDC", 1, 0);
    for (const wchar_t* name : {L"ShowSelecAdd", L"ShowSeleccionar"}) { // the system's own calendar does not
        Open(OperationOf(name), L"Esc");
    }
}

using Components = WithEnvironment;

TEST_F(Components, AreHandedEachBoxThatGetsTheFocusByItsOwnName) {
    for (const Operation& operation : Operations()) {
        if (!HasDialog(operation)) {
            continue;
        }
        const Script boxes = Do([&] {
            Log received;
            for (HWND box : ShownControls(Dialog())) {
                if (IsWindowEnabled(box) && (IsA(box, L"Edit") || IsA(box, L"ComboBox"))) {
                    SetFocus(Bar());
                    host.log.clear();
                    SetFocus(box);
                    const std::wstring name = host.log.empty() ? L"" : host.log.back();
                    EXPECT_TRUE(name.starts_with(L"Recibir(Txt") || name.starts_with(L"Recibir(Cmb"))
                        << base::ToUtf8(operation.name + L" " + name);
                    EXPECT_THAT(received, Not(Contains(name)));
                    received.push_back(name);
                }
            }
        });
        Open(operation, {boxes, Key(VK_ESCAPE)});
        NewOwner();
    }
}

TEST_F(Components, PlaceTheFormThatTheyAreHanded) {
    std::wstring kept;
    environment->On(L"RestaurarPosicion", [](Invocation& call) {
        com::LateObject(call[1].ToObject().Get(), L"form").Put(L"Left", 33L);
    });
    environment->On(L"GuardarPosicion", [&](Invocation& call) {
        kept = com::LateObject(call[1].ToObject().Get(), L"form").Call(L"Name").ToText();
    });
    Open(OperationOf(L"ShowRpt"), {Do([] { EXPECT_EQ(PlaceOf(Dialog()).left, 33); }), L"Esc"});
    EXPECT_EQ(kept, L"frmRpts");
}

TEST_F(Components, FillAndKeepTheListsOfReports) {
    const struct {
        const wchar_t* operation;
        const wchar_t* key;
        const wchar_t* loads;
        const wchar_t* controls;
        const wchar_t* more;
    } cases[] = {
        {L"ShowRpt", L"frmRpts", L"CargarLista", L", List1(0), CmbSelec(0), TxtFields(0)", L", False, False"},
        {L"ShowSql", L"frmsql", L"CargarLista", L", List1(0)", L""},
        {L"ShowEtiq", L"frmSelecEti", L"CargarEtiquetas", L", List1(0)", L""},
    };
    for (const auto& [operation, key, loads, controls, more] : cases) {
        const std::wstring place = L"(\"" + FormKey(key) + L"\\rptsPruebas\"";
        host.log.clear();
        Open(OperationOf(operation), {L"^A", Tool(L"Aceptar")});
        std::erase_if(host.log, [](const auto& line) {
            return !line.starts_with(L"Cargar") && !line.starts_with(L"GuardarLista");
        });
        EXPECT_THAT(host.log, ElementsAre(loads + place + L", [\"Uno\" informe]" + controls + more + L")",
                                          L"GuardarLista" + place + controls + L")"));
    }
}

} // namespace
} // namespace tamvelo::testing
