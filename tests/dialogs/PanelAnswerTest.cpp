// The selection panel and its host: what it asks when it opens, what it answers, and how both live meanwhile.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190);
constexpr wchar_t kClear[] = L"AplyFilter(\"\")";

TEST_F(PanelTest, OpeningAsksForTheSelectionAndLooksForTheControlsText) {
    const struct {
        Opening how;
        const wchar_t* text;
        Log asked;
    } cases[] = {
        {{L"ShowSelec", 2}, L"ñ", {L"Requery(\"seleccion\")", L"FindRecord(\"ñ\", 2)"}},
        {{L"ShowSelecVerif", 3, 0, true, short{1}}, L"A-1", {L"Requery(\"seleccion_stock\")"}},
        {{L"ShowSelecDirecta", 1}, L"", {L"Requery(\"seleccion\")"}},
    };
    for (const auto& each : cases) {
        host.text = each.text;
        EXPECT_FALSE(Show(each.how, Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), ElementsAreArray(Log{L"sClassName()"} + each.asked));
    }
}

TEST_F(PanelTest, EachClassWantsItsOwnAnswer) {
    const Script enter = Key(VK_RETURN);
    const struct {
        const wchar_t* className;
        Opening how;
        Script answer;
        Log asked;
    } cases[] = {
        {L"fases",
         {L"ShowSelec", 2, 3},
         enter,
         {L"AceptarSeleccionParam(&2, &ctl, \"1,23\", \"1\", \"Artículo 1\")", kClear}},
        {L"Ordenes",
         {L"ShowSelec", 5, 3},
         enter,
         {L"AceptarSeleccionParam(0, &ctl, \"1\", \"1\", \"Artículo 1\")", kClear}},
        {L"familias", {L"ShowSelec", 1, 3}, enter, {L"AceptarSeleccion(&3, &ctl, \"1\")", kClear}},
        {L"tipos_producto",
         {L"ShowSelec", 9, 3},
         enter,
         {L"AceptarSeleccion(&0, &ctl, \"1/1/2000\")", kClear}},
        {L"otra", {L"ShowSelec", 4}, DoubleClick(), {L"AceptarSeleccion(&4, &ctl, \"Sí\")", kClear}},
        // The host wants its code for these.
        {L"Ordenes", {}, DoubleClick(), {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        {L"articulos_lotes", {}, DoubleClick(), {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        // Only a column greater than the count becomes 0; one equal to it is a subscript error, and the panel
        // stays.
        {L"otra", {L"ShowSelec", MemoryRecordSet::kColumns}, {enter, Box(L"Error"), Key(VK_ESCAPE)}, {}},
        // Verified or not is no record's answer.
        {L"otra", {L"ShowSelecVerif", 8}, Click(IDC_CMD3), {L"AceptarSeleccion(&8, &ctl, False)"}},
        {L"otra", {L"ShowSelecControlVerif", 9}, Click(IDC_CMD3), {L"AceptarSeleccion(&0, &ctl, False)"}},
        {L"otra", {L"ShowSelecVerif"}, Click(IDC_CMD2), {}},
        {L"otra", {L"ShowSelecControlVerif"}, Click(IDC_CMD0), {}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        host.className = each.className;
        Expect(each.how, each.answer, each.asked);
    }
    host.className = L"prueba";
    host.data->Raises(L"AplyFilter"); // the record is delivered all the same
    Expect({enter, Box(kHostErrorText)}, {L"AceptarSeleccion(&0, &ctl, \"1\")", kClear});
    ctl.Reset(); // Nothing is a control without text
    host.data->Accepts({L"AplyFilter"});
    EXPECT_FALSE(Show(enter));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")",
                                       L"AceptarSeleccion(&0, &Nothing, \"1\")", kClear));
    EXPECT_EQ(ctl.Get(), nullptr);
}

TEST_F(PanelTest, VerificationHasButtonsInPlaceOfTheSearchStrip) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"ShowSelec", L"----x"}, {L"ShowSelecVerif", L"-xxx-"}, {L"ShowSelecControlVerif", L"x-ox-"}};
    for (const auto& [operation, shown] : cases) {
        const Script look = Do([shown = std::wstring(shown)] {
            EXPECT_EQ(Shown({IDC_CMD0, IDC_CMD1, IDC_CMD2, IDC_CMD3, IDC_TXTFIELDS0}), shown);
            EXPECT_EQ(IsToolOn(L"Buscar"), shown.back() == L'x');
        });
        EXPECT_FALSE(Show({operation}, {look, Key(VK_INSERT), look, Key(VK_ESCAPE)}));
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
        PostMessageW(Grid(), WM_KEYDOWN, VK_END, 1);
        for (MSG message; PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
    };
    host.data->On(L"MoveFirst", again);
    Expect(Keys({VK_HOME, VK_ESCAPE}), {L"MoveFirst()"});
    // While it is being opened just the same: the half-made panel has taken the first caller's objects.
    host.data->On(L"Requery", again);
    host.set->SetPosition(0);
    Expect(Key(VK_RETURN), {L"AceptarSeleccion(&0, &ctl, \"1\")", kClear});
}

TEST_F(PanelTest, TheHostsWindowsWaitForAModalOneAndItsLoopServesAnother) {
    EXPECT_FALSE(Show({Do([this] {
                           EXPECT_FALSE(IsWindowEnabled(owner));
                           EXPECT_FALSE(hosts::Server().MayUnload());
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
        EXPECT_FALSE(hosts::Server().MayUnload());
        EXPECT_EQ(Show({})->number, kAlreadyShown);
        const Player player({Forget(), InGrid(), Key(VK_HOME), Key(last)}, [this] { return Notes(); });
        TurnLoop();
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
}

} // namespace
} // namespace tamvelo::testing
