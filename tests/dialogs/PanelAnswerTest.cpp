// The selection panel and its host: what it asks when it opens, what it answers, and how both live meanwhile.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190);
constexpr wchar_t kClear[] = L"AplyFilter(\"\")";

TEST_F(PanelTest, OpeningAsksForTheSelectionAndLooksForTheControlsText) {
    host.text = L"ñ";
    EXPECT_FALSE(Show({L"ShowSelec", 2}, Key(VK_ESCAPE)));
    EXPECT_FALSE(Show({L"ShowSelecVerif", 3, 0, true, short{1}}, Key(VK_ESCAPE)));
    host.text.clear();
    EXPECT_FALSE(Show({L"ShowSelecDirecta", 1}, Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")", L"FindRecord(\"ñ\", 2)",
                                       L"sClassName()", L"Requery(\"seleccion_stock\")", L"sClassName()",
                                       L"Requery(\"seleccion\")"));
}

TEST_F(PanelTest, EachClassWantsItsOwnAnswer) {
    const Script enter = Key(VK_RETURN);
    const struct {
        const wchar_t* className;
        short column;
        short indx;
        Script answer;
        Log asked;
    } cases[] = {
        {L"fases",
         2,
         3,
         enter,
         {L"AceptarSeleccionParam(&2, &ctl, \"1,23\", \"1\", \"Artículo 1\")", kClear}},
        {L"Ordenes", 5, 3, enter, {L"AceptarSeleccionParam(0, &ctl, \"1\", \"1\", \"Artículo 1\")", kClear}},
        {L"familias", 1, 3, enter, {L"AceptarSeleccion(&3, &ctl, \"1\")", kClear}},
        {L"tipos_producto", 9, 3, enter, {L"AceptarSeleccion(&0, &ctl, \"1/1/2000\")", kClear}},
        {L"otra", 4, 0, DoubleClick(), {L"AceptarSeleccion(&4, &ctl, \"Sí\")", kClear}},
        // The host wants its code for these.
        {L"Ordenes", 5, 3, DoubleClick(), {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        {L"articulos_lotes", 0, 0, DoubleClick(), {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        // Only a column greater than the count becomes 0; one equal to it is an error, and the panel stays.
        {L"prueba", MemoryRecordSet::kColumns, 0, {enter, Box(L"Error"), Key(VK_ESCAPE)}, {}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        host.className = each.className;
        Expect({L"ShowSelec", each.column, each.indx}, each.answer, each.asked);
    }
    host.data->Raises(L"AplyFilter"); // the record is delivered all the same
    Expect({enter, Box(kHostErrorText)}, {L"AceptarSeleccion(&0, &ctl, \"1\")", kClear});
    host.data->Accepts({L"AplyFilter"});
    ctl.Reset(); // Nothing is a control without text
    EXPECT_FALSE(Show(enter));
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
        const Script look = Do([shown = shown] {
            EXPECT_EQ(Shown({IDC_CMD0, IDC_CMD1, IDC_CMD2, IDC_CMD3, IDC_TXTFIELDS0}), shown);
            EXPECT_EQ(IsToolOn(L"Buscar"), shown.back() == L'x');
        });
        Expect(how, {look, Key(VK_INSERT), look, button == IDCANCEL ? Key(VK_ESCAPE) : Click(button)}, asked);
    }
}

// By then it is hidden and the host's windows take input; the host may open the same panel again, and put
// another control in place of its own. If the sink fails the panel is back as it was.
TEST_F(PanelTest, IsHiddenWhileTheHostTakesTheAnswer) {
    const auto other = com::Make<HostObject>(L"otro", host.log);
    const struct {
        const wchar_t* operation;
        const wchar_t* className;
        Script answer;
        int focus;
    } cases[] = {
        {L"ShowSelec", L"prueba", Key(VK_RETURN), IDC_DATAGRID},
        {L"ShowSelec", L"ordenes", DoubleClick(), IDC_DATAGRID},
        {L"ShowSelecVerif", L"prueba", {Into(IDC_CMD1), Key(VK_SPACE)}, IDC_CMD1},
        {L"ShowSelecTrueFalse", L"prueba", Key(VK_RETURN), IDC_DATAGRID},
        {L"ShowSelecAdd", L"prueba", Key(VK_RETURN), IDC_DATAGRID},
        {L"ShowRegistros", L"prueba", Key(VK_F4), IDC_DATAGRID},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        host.className = each.className;
        int answers = 0;
        host.sink->On(L"AceptarSeleccion", [&](Invocation& call) {
            EXPECT_FALSE(IsWindowVisible(Panel()));
            EXPECT_TRUE(IsWindowEnabled(owner));
            if (answers++ == 0) {
                RaiseHostError();
            }
            com::LateObject(server.Get(), L"servidor")
                .Call(each.operation, {sink.Get(), data.Get(), host.ctl.Get()});
            call.WriteBack(1, com::Variant(static_cast<IDispatch*>(other.Get())));
        });
        ctl = com::ComPtr<IDispatch>(host.ctl.Get());
        EXPECT_FALSE(Show({each.operation}, {each.answer, Box(kHostErrorText), Focused(each.focus), Do([&] {
                                                 EXPECT_TRUE(IsWindowVisible(Panel()));
                                                 EXPECT_FALSE(IsWindowEnabled(owner));
                                             }),
                                             each.answer, Key(VK_ESCAPE)}));
        EXPECT_EQ(answers, 2);
        EXPECT_EQ(ctl.Get(), other.Get());
        EXPECT_EQ(Panel(), nullptr);
    }
    ctl.Reset();
    EXPECT_EQ(other->References(), 1);
}

TEST_F(PanelTest, InsideACallNeitherAnotherShowNorAnotherCommandStarts) {
    const auto again = [&](Invocation&) {
        EXPECT_EQ(server->ShowSelec(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(), nullptr,
                                    nullptr, nullptr, nullptr),
                  kAlreadyShown);
        if (Panel()) {
            ClickTool(L"Último registro");
        }
        for (MSG message; PeekMessageW(&message, Panel(), WM_COMMAND, WM_COMMAND, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
    };
    host.data->On(L"MoveFirst", again);
    Expect(Keys({VK_HOME, VK_ESCAPE}), {L"MoveFirst()"});
    // While it is being opened just the same: the half-made panel has taken the first caller's objects.
    host.data->On(L"Requery", again);
    Expect(Key(VK_RETURN), {L"AceptarSeleccion(&0, &ctl, \"1\")", kClear});
}

TEST_F(PanelTest, TheHostsWindowsWaitForAModalOneAndItsLoopServesAnother) {
    EXPECT_FALSE(Show({Do([this] {
                           EXPECT_FALSE(IsWindowEnabled(owner));
                           EXPECT_FALSE(library.MayUnload());
                       }),
                       Key(VK_ESCAPE)}));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), ownerBox);
    EXPECT_FALSE(Show(Do([] { PostQuitMessage(7); }))); // the end of the program is passed on
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
    const Log moved{L"MoveFirst()"};
    for (const auto& [last, asked] :
         {std::pair{VK_RETURN, moved + Log{L"AceptarSeleccion(&0, &ctl, \"1\")", kClear}},
          {VK_ESCAPE, moved}}) {
        EXPECT_FALSE(Show({L"ShowSelecDirecta", 0, 0, false, short{0}}, {}));
        EXPECT_TRUE(Panel() && IsWindowEnabled(owner));
        EXPECT_FALSE(library.MayUnload());
        EXPECT_EQ(Show({})->number, kAlreadyShown);
        const Player player({Forget(), InGrid(), Key(VK_HOME), Key(last)}, [this] { return Notes(); });
        TurnLoop();
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
}

} // namespace
} // namespace tamvelo::testing
