// The search panel: what each mode and command asks of the host, in which order.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include <map>

#include "base/Text.h"
#include "frame/Resources.h"
#include "search/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;

constexpr wchar_t kSession[] = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\Ordenes";

class BuscarTest : public DialogTest {
protected:
    BuscarTest() {
        gdiSlack = 16; // of a window that is hidden before it goes
        host.AddColumn(L"Código", L"codigo");
        host.AddColumn(L"Caja", L"caja");
        host.AddColumn(L"Orden", L"orden");
        host.AddColumn(L"Paciente", L"paciente");
        host.AddColumn(L"Parcial", L"PARCIAL");
        host.data->On(L"CreateFilter", [](Invocation& call) {
            com::LateObject control(call[0].ToObject().Get(), L"control");
            const std::wstring text =
                control.Answers(L"ListCount")
                    ? L"de " + control.Call(L"ListCount").ToText() + L" hasta " +
                          control.Call(L"List", {control.Call(L"ListCount").ToLong() - 1}).ToText()
                    : control.Call(L"Text").ToText();
            call.Return(Variant(text.empty() ? L"" : control.Call(L"DataField").ToText() + L" " + text));
        });
        host.data->On(
            L"ValidaKey", [](Invocation& call) { call.Return(Variant::Null()); }, true);
        host.data->On(L"ValidaDefinedSize", [](Invocation& call) { call.Return(Variant(5L)); });
        host.data->On(L"ValidaValue", [](Invocation& call) { call.Return(Variant(true)); });
    }
    void WarmUp() override {
        host.sink->On(L"AceptarBuscar", [](Invocation&) { RaiseHostError(); });
        for (const wchar_t* text : {L"a;b", L"a"}) {
            Show(Mode(4)
                     .Do([text] { Paste(text); })
                     .Type(L"a")
                     .Key(VK_RETURN)
                     .Key(VK_RETURN)
                     .Do([] { SetFocus(Item(IDC_LIST2)); })
                     .Key(VK_DOWN)
                     .Append(Mode(2))
                     .Append(Mode(3))
                     .Type(L"a")
                     .Key(VK_RETURN)
                     .Append(Mode(1))
                     .Key(VK_TAB)
                     .Append(Focused(IDC_TXTFIELDS2))
                     .Do([] { ClickTool(L"Aceptar"); })
                     .Box(kHostErrorText)
                     .Key(VK_ESCAPE));
        }
        host.sink->On(L"AceptarBuscar", [](Invocation&) {});
        Show(Script().Type(L"a").Key(VK_RETURN).Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); }));
    }
    std::optional<com::Error> Show(Script script) {
        return Play(std::move(script), [&] {
            return server->ShowBuscar(sink.GetAddressOf(), data.GetAddressOf(), columns.GetAddressOf());
        });
    }
    static Script Focused(int id) {
        return Script().Until("the focus in " + std::to_string(id),
                              [id](HWND) { return GetFocus() == Item(id); });
    }
    /// A mode by its key, then the focus in the box that it gives it to.
    static Script Mode(UINT number) {
        constexpr int kFirst[] = {IDC_TXTFIELDS0, IDC_TXTFIELDS1, IDC_TXTFIELDS1, IDC_TXTFIELDS2,
                                  IDC_TXTFIELDS0};
        return Script().Key('1' + number, VK_CONTROL).Append(Focused(kFirst[number]));
    }
    static Script Click(int id) {
        return Script().Do([id] { PostMessageW(Item(id), BM_CLICK, 0, 0); });
    }
    static std::wstring Shown() {
        std::wstring shown;
        for (const int id : {IDC_TXTFIELDS0, IDC_TXTFIELDS1, IDC_TXTFIELDS2, IDC_LIST2, IDC_LSTTIPOS,
                             IDC_FRMOPTION, IDC_CMDESTILO0}) {
            shown += IsShown(id) ? L'x' : L'-';
        }
        return shown;
    }
    static long Count(int list) { return static_cast<long>(SendMessageW(Item(list), LB_GETCOUNT, 0, 0)); }
    static void Paste(const std::wstring& text) {
        const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
        memcpy(GlobalLock(memory), text.c_str(), bytes);
        GlobalUnlock(memory);
        OpenClipboard(Dialog());
        EmptyClipboard();
        SetClipboardData(CF_UNICODETEXT, memory);
        CloseClipboard();
        SendMessageW(GetFocus(), WM_PASTE, 0, 0);
    }
};

TEST_F(BuscarTest, EachModeShowsItsBoxesAndBuildsItsFilter) {
    struct Case {
        UINT mode;
        const wchar_t* shown;
        Script typed;
        Log asked; // the fragments
        const wchar_t* filter;
    };
    const Script tab = Script().Key(VK_TAB).Append(Focused(IDC_TXTFIELDS2));
    const auto checked = [](std::initializer_list<int> boxes, Log more) { // each box once, before the filter
        Log log;
        for (const int box : boxes) {
            const std::wstring place = L"(&TxtFields(" + std::to_wstring(box) + L"))";
            log.insert(log.end(), {L"ValidaDefinedSize" + place, L"ValidaValue" + place});
        }
        log.insert(log.end(), more.begin(), more.end());
        return log;
    };
    const Log between{L"CreateFilter(&TxtFields(1), 1)", L"CreateFilter(&TxtFields(2), 2)"};
    const Log list{L"CreateFilter(&List2(0), 0)"};
    const Case cases[] = {
        {0, L"x----x-", Script().Type(L" a bcdef"), checked({0}, {L"CreateFilter(&TxtFields(0), 0)"}),
         L"codigo a bcd"},
        {1, L"-xx--x-", Script().Type(L"a").Append(tab).Type(L"b"), checked({1, 2}, between),
         L"codigo a And codigo b"},
        {1, L"-xx--x-", Script(tab).Type(L"b"), checked({1, 2}, between), L"codigo b"},
        {2, L"-x---x-", Script().Type(L"a"), checked({1}, {L"CreateFilter(&TxtFields(1), 1)"}), L"codigo a"},
        {3, L"--x--x-", Script().Type(L"b"), checked({2}, {L"CreateFilter(&TxtFields(2), 2)"}), L"codigo b"},
        {4, L"x--x-x-", Script().Type(L"a").Key(VK_RETURN).Type(L"b").Key(VK_F4), checked({0, 0}, list),
         L"codigo de 2 hasta b"},
        // The button takes along what still stands in the box.
        {4, L"x--x-x-", Script().Type(L"a").Key(VK_RETURN).Type(L"b").Append(Click(IDC_CMDBUSCAR)),
         checked({0, 0}, list), L"codigo de 2 hasta b"},
        {4, L"x--x-x-", Script(), {}, L""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE("mode " + std::to_string(row.mode));
        const Script look = Script().Do([&] {
            EXPECT_EQ(Shown(), row.shown);
            host.log.clear();
        });
        EXPECT_FALSE(Show(
            Mode(row.mode)
                .Append(look)
                .Append(row.typed)
                .Key(VK_RETURN)
                .Do([&] {
                    Log expected = row.asked;
                    expected.insert(
                        expected.end(),
                        {std::wstring(L"SetFilter(&\"") + row.filter + L"\", \"Filter\")",
                         L"GetFilter(\"Filter\")", std::wstring(L"AplyFilter(\"") + row.filter + L"\")"});
                    EXPECT_EQ(
                        Log(host.log.begin(),
                            host.log.begin() + static_cast<long>(std::min(host.log.size(), expected.size()))),
                        expected);
                    EXPECT_EQ(ItemText(IDC_STATUS),
                              *row.filter ? std::wstring(L"Filtro aplicado: ") + row.filter : L"Sin filtro");
                })
                .Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); })));
    }
    EXPECT_EQ(GetValue(kSession, L"Modo_prueba") + GetValue(kSession, L"Simple_idx"), L"");
}

TEST_F(BuscarTest, EachCommandAsksTheHost) {
    struct Case {
        Script way;
        Log asked;
        bool closes;
    };
    const auto tool = [](const wchar_t* caption) { return Script().Do([=] { ClickTool(caption); }); };
    const Log accepted{L"AceptarBuscar()"};
    const Log cancelled{L"AplyFilter(\"\")"};
    const Case cases[] = {
        {tool(L"Aceptar"), accepted, true},
        {Script().Do([] { SetFocus(Item(IDC_OPTBUSCAR0)); }).Append(Forget()).Key(VK_RETURN), accepted, true},
        {tool(L"Cancelar"), cancelled, true},
        {Script().Key(VK_ESCAPE), cancelled, true},
        {tool(L"Cerrar"), {}, true},
        {Script().Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); }), {}, true},
        {tool(L"Primer registro"), {L"MoveFirst()"}, false},
        {Script().Key(VK_UP, VK_CONTROL), {L"MovePrevious()"}, false},
        {tool(L"Registro siguiente"), {L"MoveNext()"}, false},
        {Script().Key(VK_END, VK_CONTROL), {L"MoveLast()"}, false},
        {tool(L"Filtro aplicado"), {}, false}, // the tool itself is all that it works on
        {Script().Key(VK_F5), {L"Requery()"}, false},
        {Script().Key(VK_DELETE).Key(VK_INSERT), {}, false},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(&row - cases);
        Script script = Focused(IDC_TXTFIELDS0).Append(Forget()).Append(row.way);
        if (!row.closes) {
            script.Do([&] { EXPECT_EQ(host.log, row.asked); }).Append(Forget()).Do([] {
                ClickTool(L"Cerrar");
            });
        }
        EXPECT_FALSE(Show(script));
        EXPECT_EQ(TakeLog(), row.closes ? row.asked : Log());
    }
}

TEST_F(BuscarTest, TheHostChecksKeysAndValues) {
    host.data->Without(L"ValidaKey"); // it was a quiet one
    host.data->On(L"ValidaKey", [](Invocation& call) {
        const auto key = static_cast<wchar_t>(call[1].ToShort());
        if (key == L'b') {
            call.WriteBack(1, Variant(static_cast<short>(L'ß')));
        }
        call.Return(Variant(key != L'x'));
    });
    bool valid = false;
    host.data->On(L"ValidaValue", [&](Invocation& call) { call.Return(Variant(valid)); });
    const auto back = [] { return Focused(IDC_TXTFIELDS1); };
    EXPECT_FALSE(Show(Mode(1)
                          .Append(Forget())
                          .Type(L"xb")
                          .Do([&] {
                              EXPECT_THAT(TakeLog(), ElementsAre(L"ValidaKey(&TxtFields(1), &120)",
                                                                 L"ValidaKey(&TxtFields(1), &98)"));
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS1), L"ß");
                              SetWindowTextW(GetFocus(), L"  ab cd ef ");
                          })
                          .Key(VK_TAB)
                          .Until("the value refused", [&](HWND) { return host.log.size() == 2; })
                          .Append(back())
                          .Do([&] {
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS1), L"ab cd");
                              EXPECT_THAT(TakeLog(), ElementsAre(L"ValidaDefinedSize(&TxtFields(1))",
                                                                 L"ValidaValue(&TxtFields(1))"));
                          })
                          .Do([] { PostMessageW(Dialog(), WM_SYSCHAR, L'b', 1 | 1 << 29); })
                          .Until("no search", [&](HWND) { return host.log.size() == 2; })
                          .Append(back())
                          .Append(Forget())
                          .Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AplyFilter(\"\")"));

    valid = true;
    host.columns->On(
        L"Col", [](Invocation& call) { call.Return(Variant(short{4})); }, true);
    EXPECT_FALSE(Show(Focused(IDC_TXTFIELDS0)
                          .Append(Forget())
                          .Type(L" xxxxxxx")
                          .Key(VK_TAB)
                          .Append(Focused(IDC_CMDBUSCAR))
                          .Do([&] {
                              EXPECT_EQ(ItemText(IDC_LBLBUSCAR), L"Panel de Búsqueda - Buscar por : Parcial");
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L" xxxxxxx");
                              EXPECT_THAT(TakeLog(), IsEmpty());
                          })
                          .Key(VK_ESCAPE)));
}

TEST_F(BuscarTest, AListIsPastedCountedAndCorrected) {
    host.sink->On(L"AceptarBuscar", [](Invocation&) { RaiseHostError(); });
    EXPECT_FALSE(Show(Mode(4)
                          .Do([] {
                              Paste(L"1,5\r\n2;3\r\n");
                              EXPECT_EQ(ItemText(IDC_LBLLIST2), L"&Lista: 3 valores");
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"");
                              Paste(L"4,5");
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"4,5");
                              SetFocus(Item(IDC_LIST2));
                              SendMessageW(Item(IDC_LIST2), LB_SETCURSEL, 2, 0);
                          })
                          .Key(VK_DELETE)
                          .Key(VK_DELETE)
                          .Do([] {
                              EXPECT_EQ(ItemText(IDC_LBLLIST2), L"&Lista: 1 valor");
                              SetFocus(Item(IDC_OPTBUSCAR4));
                          })
                          .Key(VK_RIGHT)
                          .Append(Focused(IDC_OPTBUSCAR0))
                          .Do([] { EXPECT_EQ(Count(IDC_LIST2), 0); })
                          .Key(VK_LEFT)
                          .Key(VK_UP)
                          .Append(Focused(IDC_OPTBUSCAR3))
                          .Do([] { EXPECT_EQ(Shown(), L"--x--x-"); })
                          .Append(Click(IDC_OPTBUSCAR1))
                          .Append(Focused(IDC_TXTFIELDS1))
                          .Key(VK_RETURN, VK_CONTROL)
                          .Box(kHostErrorText)
                          .Key(VK_ESCAPE)));
}

TEST_F(BuscarTest, ManyPastedValuesAreShownAndCountedOnce) {
    constexpr UINT kMany = 20000;
    static std::map<UINT, UINT> messages; // of the list and its counter
    const SUBCLASSPROC count = [](HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR)
                                   __attribute__((stdcall))
                                       ->LRESULT {
        ++messages[message];
        if (message == LB_ADDSTRING) {
            EXPECT_FALSE(IsWindowVisible(window)) << "drawn";
            EXPECT_EQ(GetCapture(), Dialog()) << "no busy cursor";
        }
        return DefSubclassProc(window, message, first, second);
    };
    std::wstring text;
    for (UINT i = 1; i <= kMany; ++i) {
        text += std::to_wstring(i) + L"\r\n";
    }
    EXPECT_FALSE(Show(Mode(4)
                          .Do([&] {
                              messages.clear();
                              for (const int id : {IDC_LIST2, IDC_LBLLIST2}) {
                                  SetWindowSubclass(Item(id), count, 1, 0);
                              }
                              Paste(text);
                              EXPECT_EQ(GetCapture(), nullptr);
                              for (const int id : {IDC_LIST2, IDC_LBLLIST2}) {
                                  RemoveWindowSubclass(Item(id), count, 1);
                              }
                              EXPECT_EQ(ItemText(IDC_LBLLIST2), L"&Lista: 20000 valores");
                              EXPECT_EQ(std::exchange(messages[LB_ADDSTRING], 0), kMany);
                              UINT others = 0;
                              for (const auto& [message, times] : messages) {
                                  EXPECT_LE(times, 4U) << std::hex << message;
                                  others += times;
                              }
                              EXPECT_LE(others, 40U);
                          })
                          .Key(VK_RETURN)
                          .Do([&] { EXPECT_EQ(host.stored, L"codigo de 20000 hasta 20000"); })
                          .Key(VK_ESCAPE)));
}

TEST_F(BuscarTest, AHostThatTakesItsTimeIsWaitedForWithTheAnimatedCursor) {
    std::wstring slow;
    Log shown; // the members that were called under it
    bool comesForward = false;
    for (const wchar_t* member : {L"CreateFilter", L"SetFilter", L"GetFilter", L"AplyFilter"}) {
        host.data->On(member, [&, member](Invocation& call) {
            if (GetCapture() == Dialog() && GetCursor() && GetCursor() != LoadCursorW(nullptr, IDC_WAIT)) {
                shown.push_back(member);
            }
            if (slow == member) {
                Sleep(600);
            }
            if (comesForward) { // a window of the host's takes the mouse
                const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9,
                                                   owner, nullptr, nullptr, nullptr);
                SetActiveWindow(other);
                EXPECT_EQ(GetCapture(), nullptr);
                DestroyWindow(other);
                SetActiveWindow(Dialog());
            }
            call.Return(Variant(L"x"));
        });
    }
    const auto search = [&](const wchar_t* member, const Log& expected) {
        return Script()
            .Do([&, member] {
                slow = member;
                shown.clear();
            })
            .Key(VK_RETURN)
            .Do([&, expected] {
                EXPECT_EQ(shown, expected);
                EXPECT_EQ(GetCapture(), nullptr);
                EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
            });
    };
    EXPECT_FALSE(Show(
        search(L"AplyFilter", {}) // nobody could know
            .Append(search(L"", {L"AplyFilter"}))
            .Append(search(L"", {})) // it was quick again
            .Append(search(L"CreateFilter", {L"SetFilter", L"GetFilter", L"AplyFilter"}))
            .Do([&] { comesForward = true; })
            .Append(search(L"CreateFilter", {L"CreateFilter", L"SetFilter", L"GetFilter", L"AplyFilter"}))
            .Do([&] { comesForward = false; })
            .Key(VK_ESCAPE)));
}

TEST_F(BuscarTest, WhatIsChosenAgainLosesNothingAndARefusedValueStopsEveryChoice) {
    host.className = L"Ordenes";
    const auto still = [] { return Focused(IDC_TXTFIELDS0).Do([] { EXPECT_EQ(Count(IDC_LIST2), 2); }); };
    EXPECT_FALSE(Show(Mode(4)
                          .Do([] { Paste(L"a;b"); })
                          .Append(Mode(4))
                          .Append(still())
                          .Append(Click(IDC_OPTBUSCAR4))
                          .Append(still())
                          .Do([] { SetFocus(Item(IDC_OPTBUSCAR4)); })
                          .Append(Click(IDC_OPTBUSCAR4))
                          .Append(still())
                          .Key(VK_ESCAPE)));
    host.data->On(L"ValidaValue", [](Invocation& call) { call.Return(Variant(false)); });
    SetValue(kSession, L"Modo_Ordenes", L"0");
    const Script kind = Script()
                            .Do([] { PostMessageW(Item(IDC_LSTTIPOS), WM_LBUTTONDOWN, 0, MAKELPARAM(9, 2)); })
                            .Append(Focused(IDC_TXTFIELDS0)) // called back before the button comes up
                            .Do([] { PostMessageW(Item(IDC_LSTTIPOS), WM_LBUTTONUP, 0, MAKELPARAM(9, 2)); });
    const struct {
        const wchar_t* simple;
        Script choice;
    } cases[] = {
        {L"0", Script().Key('2', VK_CONTROL)},
        {L"0", Click(IDC_OPTBUSCAR1)},
        {L"0", Click(IDC_CMDESTILO1)},
        {L"0", Click(IDC_CMDBUSCAR)},
        {L"1", kind},
        {L"1", Click(IDC_CMDESTILO0)},
        {L"1", Script().Key(VK_F4)},
        {L"1", Script().Key(VK_RETURN)},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        SetValue(kSession, L"Simple", row.simple);
        SetValue(kSession, L"Simple_idx", L"1");
        std::wstring shown;
        EXPECT_FALSE(
            Show(Focused(IDC_TXTFIELDS0)
                     .Type(L"mal")
                     .Append(Forget())
                     .Do([&] { shown = Shown(); })
                     .Append(row.choice)
                     .Until("the refusal", [&](HWND) { return host.log.size() == 2; })
                     .Append(Focused(IDC_TXTFIELDS0))
                     .Do([&] {
                         EXPECT_THAT(TakeLog(), ElementsAre(L"ValidaDefinedSize(&TxtFields(0))",
                                                            L"ValidaValue(&TxtFields(0))"));
                         EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"mal");
                         EXPECT_EQ(Shown(), shown);
                         EXPECT_EQ(SendMessageW(Item(IDC_LSTTIPOS), LB_GETCURSEL, 0, 0), 1);
                         EXPECT_EQ(SendMessageW(Item(IDC_OPTBUSCAR0), BM_GETCHECK, 0, 0), BST_CHECKED);
                         EXPECT_EQ(ItemText(IDC_LBLBUSCAR), L"Panel de Búsqueda - Buscar por : Orden");
                     })
                     .Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), ElementsAre(L"AplyFilter(\"\")"));
        EXPECT_EQ(GetValue(kSession, L"Simple") + GetValue(kSession, L"Simple_idx"),
                  row.simple + std::wstring(L"1"));
    }
}

TEST_F(BuscarTest, OrdersHaveKindsAndAMemory) {
    host.className = L"Ordenes";
    SetValue(kSession, L"Simple", L"1");
    SetValue(kSession, L"Simple_idx", L"2");
    SetValue(kSession, L"Modo_Ordenes", L"3");
    EXPECT_FALSE(Show(Focused(IDC_TXTFIELDS2)
                          .Do([&] {
                              EXPECT_EQ(Shown(), L"--x-x-x");
                              EXPECT_EQ(Count(IDC_LSTTIPOS), 3); // in the columns' order
                              EXPECT_EQ(ItemText(IDC_LBLBUSCAR),
                                        L"Panel de Búsqueda - Buscar por : Paciente");
                          })
                          .Type(L"9")
                          .Key(VK_RETURN)
                          .Do([&] { EXPECT_EQ(host.stored, L"Caja 9"); }) // the third kind, whatever it shows
                          .Do([] { SetFocus(Item(IDC_LSTTIPOS)); })
                          .Key(VK_UP)
                          .Do([&] {
                              EXPECT_EQ(ItemText(IDC_TXTFIELDS2), L"");
                              EXPECT_EQ(GetValue(kSession, L"Simple_idx"), L"1");
                          })
                          .Append(Click(IDC_CMDESTILO0))
                          .Append(Focused(IDC_TXTFIELDS2))
                          .Append(Click(IDC_OPTBUSCAR2))
                          .Append(Focused(IDC_TXTFIELDS1))
                          .Do([] {
                              EXPECT_EQ(Shown(), L"-x---xx");
                              EXPECT_EQ(GetValue(kSession, L"Simple"), L"0");
                              EXPECT_EQ(GetValue(kSession, L"Modo_Ordenes"), L"2");
                          })
                          .Key(VK_ESCAPE)));
    // Another class reads its own mode, sees nothing else of this and leaves no trace.
    host.className = L"ordenes";
    SetValue(kSession, L"Simple", L"1");
    SetValue(kSession, L"Modo_ordenes", L"1");
    EXPECT_FALSE(Show(Focused(IDC_TXTFIELDS1)
                          .Do([] {
                              EXPECT_EQ(Shown(), L"-xx--x-");
                              EXPECT_EQ(ItemText(IDC_LBLBUSCAR), L"Panel de Búsqueda - Buscar por : Código");
                          })
                          .Append(Mode(3))
                          .Key(VK_ESCAPE)));
    EXPECT_EQ(GetValue(kSession, L"Modo_ordenes"), L"1");
}

TEST_F(BuscarTest, AFailingMemberIsReportedAndThePanelStays) {
    struct Case {
        const wchar_t* member;
        Script way;
    };
    const Case cases[] = {
        {L"ValidaKey", Script().Type(L"a")},
        {L"ValidaDefinedSize", Script().Key(VK_TAB)},
        {L"ValidaValue", Script().Key(VK_TAB)},
        {L"CreateFilter", Script().Key(VK_RETURN)},
        {L"SetFilter", Script().Key(VK_F4)},
        {L"GetFilter", Click(IDC_CMDBUSCAR)},
        {L"AplyFilter", Script().Key(VK_ESCAPE)},
        {L"MoveFirst", Script().Do([] { ClickTool(L"Primer registro"); })},
        {L"AceptarBuscar", Script().Do([] { ClickTool(L"Aceptar"); })},
    };
    for (const Case& row : cases) {
        HostObject& object =
            *(row.member == std::wstring_view(L"AceptarBuscar") ? host.sink : host.data).Get();
        SCOPED_TRACE(base::ToUtf8(row.member));
        host.data->On(L"AplyFilter", [](Invocation&) {});
        object.On(row.member, [](Invocation&) { RaiseHostError(); });
        EXPECT_FALSE(Show(Focused(IDC_TXTFIELDS0)
                              .Append(row.way)
                              .Box(kHostErrorText)
                              .Until("the panel", [](HWND top) { return top == Dialog(); })
                              .Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); })));
        // The host closes the form that the panel belongs to while it answers.
        object.On(row.member, [this](Invocation&) { DestroyWindow(owner); });
        const HWND before = owner;
        owner = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 300, nullptr,
                                nullptr, nullptr, nullptr);
        SetActiveWindow(owner);
        EXPECT_FALSE(Show(Focused(IDC_TXTFIELDS0).Append(row.way)));
        EXPECT_EQ(Dialog(), nullptr);
        owner = before;
        SetActiveWindow(owner);
        object.On(row.member, [](Invocation& call) { call.Return(Variant(L"1")); });
    }
    host.data->Without(L"sClassName");
    EXPECT_EQ(Show(Script())->number, DISP_E_UNKNOWNNAME);
}

} // namespace
} // namespace tamvelo::testing
