// The search panel: what each mode and command asks of the host, in which order.
#include "tests/dialogs/BuscarFixture.h"

namespace tamvelo::testing {
namespace {

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
        {Script().Do([] { SetFocus(Item(IDC_CMDBUSCAR)); }).Append(Forget()).Key(VK_RETURN), // it is pressed
         {L"CreateFilter(&TxtFields(0), 0)", L"SetFilter(&\"\", \"Filter\")", L"GetFilter(\"Filter\")",
          L"AplyFilter(\"\")"},
         false},
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
