// The selection panel and its host: what it asks when it opens, what it answers, and how both live meanwhile.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190);

TEST_F(PanelTest, OpeningAsksForTheSelectionAndLooksForTheControlsText) {
    host.text = L"ñ";
    Show({L"ShowSelec", 2}, L"Esc");
    Show({L"ShowSelecVerif", 3, 0, true, short{1}}, L"Esc");
    host.text.clear();
    Show({L"ShowSelecDirecta", 1}, L"Esc");
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")", L"FindRecord(\"ñ\", 2)",
                                       L"sClassName()", L"Requery(\"seleccion_stock\")", L"sClassName()",
                                       L"Requery(\"seleccion\")"));
}

TEST_F(PanelTest, EachClassWantsItsOwnAnswer) {
    const std::tuple<const wchar_t*, short, short, Script, Log> cases[] = {
        {L"fases",
         2,
         3,
         L"Enter",
         {L"AceptarSeleccionParam(&2, &ctl, \"1,23\", \"1\", \"Artículo 1\")", kClear}},
        {L"Ordenes",
         5,
         3,
         L"Enter",
         {L"AceptarSeleccionParam(0, &ctl, \"1\", \"1\", \"Artículo 1\")", kClear}},
        {L"tipos_producto", 9, 3, L"Enter", {L"AceptarSeleccion(&0, &ctl, \"1/1/2000\")", kClear}},
        {L"otra", 4, 0, DoubleClick(), {L"AceptarSeleccion(&4, &ctl, \"Sí\")", kClear}},
        {L"Ordenes", 5, 3, DoubleClick(), {L"AceptarSeleccion(2000, &ctl, 1L)"}}, // the host wants its code
        // Only a column greater than the count becomes 0; one equal to it is an error, and the panel stays.
        {L"prueba", MemoryRecordSet::kColumns, 0, {L"Enter", Box(L"Error"), L"Esc"}, {}},
    };
    for (const auto& [className, column, indx, answer, asked] : cases) {
        host.className = className;
        Expect({L"ShowSelec", column, indx}, answer, asked);
    }
    host.data->Raises(L"AplyFilter"); // the record is delivered all the same
    Expect({L"Enter", Box(kHostErrorText)}, kAccept);
    host.data->Accepts({L"AplyFilter"});
    ctl.Reset(); // Nothing is a control without text
    Show(L"Enter");
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")",
                                       L"AceptarSeleccion(&0, &Nothing, \"1\")", kClear));
    EXPECT_EQ(ctl.Get(), nullptr);
}

TEST_F(PanelTest, VerificationHasButtonsInPlaceOfTheSearchStrip) {
    const std::tuple<Opening, std::wstring, int, Log> cases[] = {
        {{L"ShowSelec"}, L"----x", IDCANCEL, {}},
        {{L"ShowSelecVerif", 8}, L"-xxx-", IDC_CMD3, {L"AceptarSeleccion(&8, &ctl, False)"}},
        {{L"ShowSelecVerif"}, L"-xxx-", IDC_CMD2, {}},
        {{L"ShowSelecControlVerif", 9}, L"x-ox-", IDC_CMD3, {L"AceptarSeleccion(&0, &ctl, False)"}},
        {{L"ShowSelecControlVerif"}, L"x-ox-", IDC_CMD0, {}},
    };
    for (const auto& [how, shown, button, asked] : cases) {
        const Script look{
            Looks({IDC_CMD0, IDC_CMD1, IDC_CMD2, IDC_CMD3, IDC_TXTFIELDS0}, shown),
            Do([searches = shown.back() == L'x'] { EXPECT_EQ(IsToolOn(L"Buscar"), searches); })};
        Expect(how, {look, L"Insert", look, button == IDCANCEL ? L"Esc" : Click(button)}, asked);
    }
}

// By then it is hidden and the host's windows take input; the host may open the same panel again, and put
// another control in place of its own. If the sink fails the panel is back as it was.
TEST_F(PanelTest, IsHiddenWhileTheHostTakesTheAnswer) {
    const auto other = com::Make<HostObject>(L"otro", host.log);
    const std::tuple<const wchar_t*, const wchar_t*, Script, int> cases[] = {
        {L"ShowSelec", L"prueba", L"Enter", IDC_DATAGRID},
        {L"ShowSelec", L"ordenes", DoubleClick(), IDC_DATAGRID},
        {L"ShowSelecVerif", L"prueba", {Into(IDC_CMD1), L"Space"}, IDC_CMD1},
        {L"ShowSelecTrueFalse", L"prueba", L"Enter", IDC_DATAGRID},
        {L"ShowSelecAdd", L"prueba", L"Enter", IDC_DATAGRID},
        {L"ShowRegistros", L"prueba", L"F4", IDC_DATAGRID},
    };
    for (const auto& [operation, className, answer, focus] : cases) {
        host.className = className;
        int answers = 0;
        host.sink->On(L"AceptarSeleccion", [&, op = operation](Invocation& call) {
            EXPECT_FALSE(IsWindowVisible(Dialog()));
            EXPECT_TRUE(IsWindowEnabled(owner));
            if (answers++ == 0) {
                RaiseHostError();
            }
            com::LateObject(server.Get(), L"servidor").Call(op, {sink.Get(), data.Get(), host.ctl.Get()});
            call.WriteBack(1, Variant(static_cast<IDispatch*>(other.Get())));
        });
        ctl = com::ComPtr<IDispatch>(host.ctl.Get());
        Show({operation}, {answer, Box(kHostErrorText), Focused(focus), Do([&] {
                               EXPECT_TRUE(IsWindowVisible(Dialog()));
                               EXPECT_FALSE(IsWindowEnabled(owner));
                           }),
                           answer, L"Esc"});
        EXPECT_EQ(answers, 2);
        EXPECT_EQ(ctl.Get(), other.Get());
        EXPECT_EQ(Dialog(), nullptr);
    }
    ctl.Reset();
    EXPECT_EQ(other->References(), 1);
}

TEST_F(PanelTest, InsideACallNeitherAnotherShowNorAnotherCommandStarts) {
    const auto again = [&](Invocation&) {
        EXPECT_EQ(server->ShowSelec(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(), nullptr,
                                    nullptr, nullptr, nullptr),
                  kAlreadyShown);
        if (Dialog()) {
            ClickTool(L"Último registro");
        }
        for (MSG message; PeekMessageW(&message, Dialog(), WM_COMMAND, WM_COMMAND, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
    };
    host.data->On(L"MoveFirst", again);
    Expect(L"Home Esc", {L"MoveFirst()"});
    // While it is being opened just the same: the half-made panel has taken the first caller's objects.
    host.data->On(L"Requery", again);
    Expect(L"Enter", kAccept);
}

TEST_F(PanelTest, TheHostsWindowsWaitForAModalOneAndItsLoopServesAnother) {
    Show({Do([this] {
              EXPECT_FALSE(IsWindowEnabled(owner));
              EXPECT_FALSE(library.MayUnload());
          }),
          L"Esc"});
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), ownerBox);
    Show(Do([] { PostQuitMessage(7); })); // the end of the program is passed on
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
    const Log moved{L"MoveFirst()"};
    for (const auto& [last, asked] : {std::pair{VK_RETURN, moved + kAccept}, {VK_ESCAPE, moved}}) {
        Show({L"ShowSelecDirecta", 0, 0, false, short{0}}, {});
        EXPECT_TRUE(Dialog() && IsWindowEnabled(owner));
        EXPECT_FALSE(library.MayUnload());
        EXPECT_EQ(Try({}, {})->number, kAlreadyShown);
        const Player player({Forget(), InGrid(), L"Home", Key(last)}, [this] { return Notes(); });
        TurnLoop();
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
}

} // namespace
} // namespace tamvelo::testing
