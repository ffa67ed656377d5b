// The search panel: what each mode and command asks of the host, lists of values, choices that a value stands
// against, hosts that take their time.
#include "search/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

const std::wstring kSession = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\Ordenes";

/// The search panel over a host with five columns, that takes every key and value up to five characters.
class BuscarTest : public DialogTest {
protected:
    BuscarTest() {
        host.AddColumn(L"Código", L"codigo");
        for (const wchar_t* kind : {L"Caja", L"Orden", L"Paciente"}) {
            host.AddColumn(kind, kind);
        }
        host.AddColumn(L"Parcial", L"PARCIAL");
        host.data->On(L"CreateFilter", [](Invocation& call) {
            com::LateObject control(call[0].ToObject().Get(), L"control");
            const long count = control.Answers(L"ListCount") ? control.Call(L"ListCount").ToLong() : 0;
            const std::wstring text = count ? L"de " + std::to_wstring(count) + L" hasta " +
                                                  control.Call(L"List", {count - 1}).ToText()
                                            : control.Call(L"Text").ToText();
            call.Return(Variant(text.empty() ? L"" : control.Call(L"DataField").ToText() + L" " + text));
        });
        host.data->Returns(L"ValidaKey", Variant::Null(), true);
        host.data->Returns(L"ValidaDefinedSize", Variant(5L));
        host.data->Returns(L"ValidaValue", Variant(true));
    }
    void Show(const Script& script) {
        const Script there = Until("the focus in a box", [](HWND) { return GetDlgCtrlID(GetFocus()) != 0; });
        EXPECT_FALSE(PlayLate(L"ShowBuscar", {sink.Get(), data.Get(), columns.Get()}, {there, script}));
    }
    /// A mode by its key, then the focus in the box that it gives it to.
    static Script Mode(UINT number) {
        constexpr int kFirst[] = {IDC_TXTFIELDS0, IDC_TXTFIELDS1, IDC_TXTFIELDS1, IDC_TXTFIELDS2,
                                  IDC_TXTFIELDS0};
        return {Key('1' + number, VK_CONTROL), Focused(kFirst[number])};
    }
    static Script Shows(const wchar_t* shown) {
        return Looks({IDC_TXTFIELDS0, IDC_TXTFIELDS1, IDC_TXTFIELDS2, IDC_LIST2, IDC_LSTTIPOS, IDC_FRMOPTION,
                      IDC_CMDESTILO0},
                     shown);
    }
    static Script Searches(const wchar_t* column) {
        return Says(IDC_LBLBUSCAR, L"Panel de Búsqueda - Buscar por : " + std::wstring(column));
    }
    static Script Counted(const wchar_t* values) {
        return Says(IDC_LBLLIST2, std::wstring(L"&Lista: ") + values);
    }
    static Script Paste(const std::wstring& text) {
        return Do([=] {
            const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
            const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
            memcpy(GlobalLock(memory), text.c_str(), bytes);
            GlobalUnlock(memory);
            OpenClipboard(Dialog());
            EmptyClipboard();
            SetClipboardData(CF_UNICODETEXT, memory);
            CloseClipboard();
            SendMessageW(GetFocus(), WM_PASTE, 0, 0);
        });
    }
    Script Stored(const wchar_t* filter) {
        return Do([=, this] { EXPECT_EQ(host.stored, filter); });
    }
    /// Waits until two things were asked.
    Script Twice() {
        return Until("two calls", [this](HWND) { return host.log.size() == 2; });
    }
    static Log Checked(const std::vector<int>& boxes) {
        Log log;
        for (const int box : boxes) {
            const std::wstring place = L"(&TxtFields(" + std::to_wstring(box) + L"))";
            log.insert(log.end(), {L"ValidaDefinedSize" + place, L"ValidaValue" + place});
        }
        return log;
    }
};

TEST_F(BuscarTest, EachModeShowsItsBoxesAndBuildsItsFilter) {
    const Log between{L"CreateFilter(&TxtFields(1), 1)", L"CreateFilter(&TxtFields(2), 2)"};
    const Log one{L"CreateFilter(&TxtFields(0), 0)"};
    const Log list{L"CreateFilter(&List2(0), 0)"};
    const Script tab = TabTo(IDC_TXTFIELDS2);
    // The mode, what shows, what is typed, boxes that are checked once before the filter, its fragments, it;
    // boxes that are checked again, for the focus goes back to the first.
    const std::tuple<UINT, const wchar_t*, Script, std::vector<int>, Log, std::wstring, std::vector<int>>
        cases[] = {
            {0, L"x----x-", {Type(L" a bcdef"), L"Enter"}, {0}, one, L"codigo a bcd", {}},
            {1, L"-xx--x-", {L"'a", tab, L"'b Enter"}, {1, 2}, between, L"codigo a And codigo b", {2}},
            {1, L"-xx--x-", {L"Delete", tab, L"'b Enter"}, {1, 2}, between, L"codigo b", {2}},
            {2, L"-x---x-", L"'a Enter", {1}, {between[0]}, L"codigo a", {}},
            {3, L"--x--x-", L"'b Enter", {2}, {between[1]}, L"codigo b", {}},
            {4, L"x--x-x-", L"'a Enter 'b F4 Enter", {0, 0}, list, L"codigo de 2 hasta b", {}},
            // The button takes along what still stands in the box.
            {4, L"x--x-x-", {L"'c", Click(IDC_CMDBUSCAR)}, {0}, list, L"codigo de 3 hasta c", {}},
            {3, L"--x--x-", L"Delete Enter", {2}, {between[1]}, L"", {}},
            {4, L"x--x-x-", L"Enter", {}, {}, L"", {}},
        };
    Script script;
    for (const auto& [mode, shown, typed, checked, fragments, filter, left] : cases) {
        const Log applied{L"SetFilter(&\"" + filter + L"\", \"Filter\")", L"GetFilter(\"Filter\")",
                          L"AplyFilter(\"" + filter + L"\")"};
        script.Append({Mode(mode), Shows(shown), Forget(), typed,
                       Asked(Checked(checked) + fragments + applied + Checked(left)),
                       Says(filter.empty() ? L"Sin filtro" : L"Filtro aplicado: " + filter)});
    }
    Show({script, Close()});
    EXPECT_EQ(GetValue(kSession, L"Modo_prueba") + GetValue(kSession, L"Simple_idx"), L"");
}

TEST_F(BuscarTest, EachCommandAsksTheHost) {
    Show({{Forget(), Tool(L"Primer registro"), L"^Up", Tool(L"Registro siguiente"), L"^End",
           Asked({L"MoveFirst()", L"MovePrevious()", L"MoveNext()", L"MoveLast()"})},
          {Tool(L"Filtro aplicado"), L"Delete Insert", Asked({}), L"F5", Asked({L"Requery()"})},
          {Into(IDC_CMDBUSCAR), Forget(), L"Enter",
           Asked({L"CreateFilter(&TxtFields(0), 0)", LR"(SetFilter(&"", "Filter"))", L"GetFilter(\"Filter\")",
                  L"AplyFilter(\"\")"})}, // it is pressed
          Tool(L"Cerrar")});
    EXPECT_THAT(TakeLog(), IsEmpty());
    const std::pair<Script, Log> ways[] = {
        {Tool(L"Aceptar"), {L"AceptarBuscar()"}},
        {{Into(IDC_OPTBUSCAR0), Forget(), L"Enter"}, {L"AceptarBuscar()"}},
        {Tool(L"Cancelar"), {L"AplyFilter(\"\")"}},
        {L"Esc", {L"AplyFilter(\"\")"}},
        {Close(), {}},
    };
    for (const auto& [way, asked] : ways) {
        Show({Forget(), way});
        EXPECT_EQ(TakeLog(), asked);
    }
}

TEST_F(BuscarTest, TheHostChecksKeysAndValues) {
    host.data->Without(L"ValidaKey"); // it was a quiet one
    host.data->On(L"ValidaKey", [](Invocation& call) {
        const auto key = static_cast<wchar_t>(call[1].ToShort());
        call.WriteBack(1, Variant(static_cast<short>(key == L'b' ? L'ß' : key)));
        call.Return(Variant(key != L'x'));
    });
    host.data->Returns(L"ValidaValue", Variant(false));
    const Script refused{Twice(), Focused(IDC_TXTFIELDS1), Says(IDC_TXTFIELDS1, L"ab cd"),
                         Asked(Checked({1}))};
    Show({Mode(1), Forget(), L"'xb", Says(IDC_TXTFIELDS1, L"ß"),
          Asked({L"ValidaKey(&TxtFields(1), &120)", L"ValidaKey(&TxtFields(1), &98)"}),
          Do([] { SetWindowTextW(GetFocus(), L"  ab cd ef "); }), L"Tab", refused,
          Do([] { PostMessageW(Dialog(), WM_SYSCHAR, L'b', 1 | 1 << 29); }), refused, L"Esc"});
    EXPECT_THAT(TakeLog(), ElementsAre(L"AplyFilter(\"\")"));
    host.columns->Returns(L"Col", Variant(short{4}), true); // of a column that is not checked
    Show({Forget(), Type(L" xxxxxxx"), TabTo(IDC_CMDBUSCAR), Searches(L"Parcial"),
          Says(IDC_TXTFIELDS0, L" xxxxxxx"), Asked({}), L"Esc"});
}

TEST_F(BuscarTest, OrdersHaveKindsAndAMemory) {
    const auto keeps = [](const wchar_t* name, const wchar_t* value) {
        return Do([=] { EXPECT_EQ(GetValue(kSession, name), value); });
    };
    host.className = L"Ordenes";
    SetValue(kSession, L"Simple", L"1");
    SetValue(kSession, L"Simple_idx", L"2");
    SetValue(kSession, L"Modo_Ordenes", L"3");
    const Script three = Do([] { EXPECT_EQ(SendMessageW(Item(IDC_LSTTIPOS), LB_GETCOUNT, 0, 0), 3); });
    Show({{Focused(IDC_TXTFIELDS2), Shows(L"--x-x-x"), Searches(L"Paciente"), three}, // in the columns' order
          {L"'9 Enter", Stored(L"Caja 9")}, // the third kind, whatever it shows
          {Into(IDC_LSTTIPOS), L"Up", Says(IDC_TXTFIELDS2, L""), keeps(L"Simple_idx", L"1")},
          {Click(IDC_CMDESTILO0), Focused(IDC_TXTFIELDS2), Click(IDC_OPTBUSCAR2), Focused(IDC_TXTFIELDS1),
           Shows(L"-x---xx"), keeps(L"Simple", L"0"), keeps(L"Modo_Ordenes", L"2"), L"Esc"}});
    // Another class reads its own mode, sees nothing else of this and leaves no trace.
    host.className = L"ordenes";
    SetValue(kSession, L"Simple", L"1");
    SetValue(kSession, L"Modo_ordenes", L"1");
    Show({Focused(IDC_TXTFIELDS1), Shows(L"-xx--x-"), Searches(L"Código"), Mode(3), L"Esc"});
    EXPECT_EQ(GetValue(kSession, L"Modo_ordenes"), L"1");
}

TEST_F(BuscarTest, AListIsPastedCountedAndCorrected) {
    host.sink->Raises(L"AceptarBuscar");
    Show({{Paste(L"1;2"), Says(IDC_TXTFIELDS0, L"1;2"), Set(IDC_TXTFIELDS0, L"")}, // no list
          {Mode(4), Paste(L"1,5\r\n2;3\r\n"), Counted(L"3 valores"), Says(IDC_TXTFIELDS0, L""), Paste(L"4,5"),
           Says(IDC_TXTFIELDS0, L"4,5")},
          {Into(IDC_LIST2), Do([] { SendMessageW(Item(IDC_LIST2), LB_SETCURSEL, 2, 0); }), L"Delete Delete",
           Counted(L"1 valor")},
          {Into(IDC_OPTBUSCAR4), L"Right", Focused(IDC_OPTBUSCAR0), Counted(L"0 valores"), L"Left Up",
           Focused(IDC_OPTBUSCAR3), Shows(L"--x--x-")},
          {Click(IDC_OPTBUSCAR1), Focused(IDC_TXTFIELDS1), L"^Enter", Box(kHostErrorText), L"Esc"}});
}

TEST_F(BuscarTest, ManyPastedValuesAreShownAndCountedOnce) {
    constexpr UINT kMany = 20000;
    std::wstring text;
    for (UINT i = 1; i <= kMany; ++i) {
        text += std::to_wstring(i) + L"\r\n";
    }
    Counts form, controls;
    const Script look = Do([&] {
        EXPECT_EQ(form[WM_CAPTURECHANGED], 1U) << "no busy cursor";
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(controls[WM_SHOWWINDOW], 2U) << "drawn meanwhile";
        EXPECT_EQ(std::exchange(controls[LB_ADDSTRING], 0), kMany);
        UINT others = 0;
        for (const auto& [message, times] : controls) {
            EXPECT_LE(times, 4U) << std::hex << message;
            others += times;
        }
        EXPECT_LE(others, 40U);
    });
    Show({Mode(4), Do([&] {
              Count(Dialog(), form);
              Count(Item(IDC_LIST2), controls);
              Count(Item(IDC_LBLLIST2), controls);
          }),
          Paste(text), look, Counted(L"20000 valores"), L"Enter", Stored(L"codigo de 20000 hasta 20000"),
          L"Esc"});
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
            Sleep(slow == member ? 600 : 0);
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
    const auto search = [&](const wchar_t* member, const Log& expected, bool comes = false) {
        return Script{Do([&, member, comes] {
                          slow = member;
                          comesForward = comes;
                          shown.clear();
                      }),
                      L"Enter", Do([&, expected] {
                          EXPECT_EQ(shown, expected);
                          EXPECT_EQ(GetCapture(), nullptr);
                          EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
                      })};
    };
    Show({search(L"AplyFilter", {}),                     // nobody could know
          search(L"", {L"AplyFilter"}), search(L"", {}), // it was quick again
          search(L"CreateFilter", {L"SetFilter", L"GetFilter", L"AplyFilter"}),
          search(L"CreateFilter", {L"CreateFilter", L"SetFilter", L"GetFilter", L"AplyFilter"}, true),
          Close()});
}

TEST_F(BuscarTest, WhatIsChosenAgainLosesNothingAndARefusedValueStopsEveryChoice) {
    host.className = L"Ordenes";
    const Script still{Focused(IDC_TXTFIELDS0), Counted(L"2 valores")};
    Show({Mode(4), Paste(L"a;b"), Mode(4), still, Click(IDC_OPTBUSCAR4), still, Into(IDC_OPTBUSCAR4),
          Click(IDC_OPTBUSCAR4), still, L"Esc"});
    host.data->Returns(L"ValidaValue", Variant(false));
    const auto mouse = [](UINT message) {
        return Do([=] { PostMessageW(Item(IDC_LSTTIPOS), message, 0, MAKELPARAM(9, 2)); });
    };
    // Called back before the button comes up.
    const Script kind{mouse(WM_LBUTTONDOWN), Focused(IDC_TXTFIELDS0), mouse(WM_LBUTTONUP)};
    const std::tuple<std::wstring, const wchar_t*, std::vector<Script>> cases[] = {
        {L"0", L"x----xx", {L"^2", Click(IDC_OPTBUSCAR1), Click(IDC_CMDESTILO1), Click(IDC_CMDBUSCAR)}},
        {L"1", L"x---x-x", {kind, Click(IDC_CMDESTILO0), L"F4", L"Enter"}},
    };
    for (const auto& [simple, shown, choices] : cases) {
        SetValue(kSession, L"Simple", simple);
        SetValue(kSession, L"Simple_idx", L"1");
        SetValue(kSession, L"Modo_Ordenes", L"0");
        Script script{Focused(IDC_TXTFIELDS0), L"'mal", Forget()};
        for (const Script& choice : choices) {
            script.Append({choice, Twice(), Focused(IDC_TXTFIELDS0), Asked(Checked({0})),
                           Says(IDC_TXTFIELDS0, L"mal"), Shows(shown), Searches(L"Orden"), Do([] {
                               EXPECT_EQ(SendMessageW(Item(IDC_LSTTIPOS), LB_GETCURSEL, 0, 0), 1);
                               EXPECT_EQ(SendMessageW(Item(IDC_OPTBUSCAR0), BM_GETCHECK, 0, 0), BST_CHECKED);
                           })});
        }
        Show({script, L"Esc"});
        EXPECT_THAT(TakeLog(), ElementsAre(L"AplyFilter(\"\")"));
        EXPECT_EQ(GetValue(kSession, L"Simple") + GetValue(kSession, L"Simple_idx"), simple + L"1");
    }
}

TEST_F(BuscarTest, SettingsThatCannotBeKeptAreToldOnceAndHinderNothing) {
    environment->Raises(L"GuardarValor");
    Offer({L"Configuracion"});
    host.className = L"Ordenes";
    Show({L"^3", Box(kHostErrorText), Mode(3), L"'9 Enter", Stored(L"codigo 9"), L"Esc"});
    EXPECT_THAT(host.log, Contains(StartsWith(L"GuardarValor")).Times(1));
}

} // namespace
} // namespace tamvelo::testing
