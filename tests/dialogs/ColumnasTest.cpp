// The column chooser and the sort-order editor, and the list that both are made of.
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

class Columnas : public DialogTest {
protected:
    Columnas() {
        host.AddColumn(L"Código", L"Cod");
        host.AddColumn(L"Descripción", L"Des");
        host.AddColumn(L"Año", L"Anio", false);
        last = &host.AddColumn(L"Precio", L"Pre");
    }

    HRESULT ShowColumns() { return server->ShowColums(sink.GetAddressOf(), columns.GetAddressOf()); }
    void Choose(const Script& script) {
        EXPECT_FALSE(Play({Focused(IDC_LIST1), script}, [this] { return ShowColumns(); }));
    }
    void Sort(short mode, const Script& script) {
        EXPECT_FALSE(PlayLate(L"ShowOrder", {mode, sink.Get(), columns.Get()}, {Focused(IDC_LIST1), script}));
    }
    static Script Menu(UINT key) { return {Click(IDC_CMDMARCAS), InMenu(), Key(key), Focused(IDC_LIST1)}; }
    static Script Find(const wchar_t* text) { return {L"^E", Focused(IDC_TXTFILTRO), Type(text)}; }
    static LRESULT Ask(UINT message, WPARAM first = 0, LPARAM second = 0) {
        return SendMessageW(Item(IDC_LIST1), message, first, second);
    }
    /// The ticks, and that the counter counts them all, whatever is shown.
    static Script Expect(const std::string& ticks, int shown = -1) {
        const auto ticked = std::to_wstring(std::ranges::count(ticks, 'x'));
        const std::wstring rest = shown < 0 ? L"" : L" · se muestran " + std::to_wstring(shown);
        return {Do([=] {
                    std::string got;
                    std::string seen;
                    for (WPARAM i = 0; i < static_cast<WPARAM>(Ask(LB_GETCOUNT)); ++i) {
                        got += Ask(LB_GETSEL, i) == TRUE ? 'x' : '-';
                        seen += ListView_GetCheckState(Item(IDC_LIST1), i) ? 'x' : '-';
                    }
                    EXPECT_EQ(got, ticks);
                    EXPECT_TRUE(shown >= 0 || seen == ticks) << seen; // unless something is hidden
                }),
                Says(IDC_LBLCUENTA, ticked + L" de " + std::to_wstring(ticks.size()) + L" visibles" + rest)};
    }
    static Script DoubleClick(int row) {
        return InList(row, 4, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP});
    }
    static Script Toggle() { return L"Down Space"; }
    HostObject* last = nullptr;
    /// All but the first, which keeps the visibility that the host gave it.
    const Log written{L"columna 1.Visible = False", L"columna 2.Visible = False", L"columna 3.Visible = True",
                      L"ActualizaColumnas(&Columns)"};
};

TEST_F(Columnas, TicksByHandByCommandAndWhereTheSearchHidesThem) {
    Choose({{Expect("xx-x"), L"Space", Toggle(), Toggle(), Expect("x-xx"), DoubleClick(3), DoubleClick(0),
             Expect("x-x-")},
            {L"^A", Expect("xxxx"), Menu('Q'), Expect("x---")},
            {Find(L"prec"), L"^A", Expect("x---", 1), Menu('I'), Expect("xxxx", 1), L"^Z", Expect("xx-x", 1),
             L"^I", Expect("x-x-", 1), L"^Z"},
            {Find(L"ano"), Expect("xx-x", 0), Set(IDC_TXTFILTRO, L" PCION"), Expect("xx-x", 1), Toggle(),
             Expect("x--x", 1), L"Enter"}});
    EXPECT_EQ(TakeLog(), written);
    EXPECT_TRUE(host.IsColumnVisible(0));
    const Script ways[] = {L"Esc", {Find(L"x"), L"Esc"}, Tool(L"Cancelar"), Close()};
    Sort(1, {L"Down", Find(L"x"), L"Esc"});
    CountObjects();
    for (size_t i = 0; i < 8; ++i) { // often enough that an object left each time is noticed
        Choose({Toggle(), ways[i % 4]});
        Sort(1, {L"Down", ways[i % 4]});
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
}

TEST_F(Columnas, TheSearchIgnoresCaseAndAccentsAndTheSortGoesByEntry) {
    for (const wchar_t* caption : {L"ΑΘΗΝΑ", L"Σίσυφος", L"Москва", L"Straße"}) {
        host.AddColumn(caption, L"Otra");
    }
    for (int i = 0; i < 35; ++i) {
        host.AddColumn(L"Otra", L"Otra");
    }
    Script search;
    for (const wchar_t* text : {L"αθηνα", L"ΣΙΣΥΦΟΣ", L"МОСК", L"straße", L"CÓDI", L"DESCRIPCION", L"año"}) {
        search.Append({Set(IDC_TXTFILTRO, text), Do([] { EXPECT_EQ(Ask(LVM_GETITEMCOUNT), 1); })});
    }
    Choose({search, L"Esc"});
    const std::pair<Script, int> cases[] = {
        {L"Enter", -1},
        {L"Down Enter", 0},
        {L"Down Down Enter", 1},
        {L"'pre Enter", 3},
        {DoubleClick(2), 2},
        {{Find(L"año"), L"Enter"}, 2},
        {{L"Down Down", Find(L"c"), L"Enter"}, 1}, // what is still there stays chosen
        {{L"Down", Find(L"no hay"), L"Enter"}, -1},
        {L"Down End Enter", 52},
        {{Do([] { Ask(LB_SETCURSEL, 41); }), L"Enter"}, 51},
    };
    for (const auto& [script, number] : cases) {
        Sort(-5, script);
        EXPECT_THAT(TakeLog(), ElementsAre(L"ActualizaOrden(&" + std::to_wstring(number) + L", &-5)"));
    }
}

TEST_F(Columnas, WhatTheHostRefusesBringsTheDialogBackAsItWas) {
    const Script unticked = Expect("x--x");
    host.sink->Raises(L"ActualizaColumnas");
    Choose({Toggle(), L"Enter", Box(kHostErrorText), Focused(IDC_LIST1), unticked, Do([this] {
                EXPECT_FALSE(IsWindowEnabled(owner));
                host.sink->On(L"ActualizaColumnas", [this](Invocation&) { // the host shows it again
                    host.sink->Accepts({L"ActualizaColumnas"});
                    EXPECT_EQ(ShowColumns(), S_OK);
                });
            }),
            Forget(), L"Enter", Focused(IDC_LIST1), unticked, Asked(written), Toggle(), L"Enter"});
    EXPECT_TRUE(host.IsColumnVisible(1));
    last->On(L"Visible",
             [](Invocation& call) { call.IsPut() ? RaiseHostError() : call.Return(Variant(true)); });
    Choose({Find(L"a"), L"Enter", Box(kHostErrorText), Focused(IDC_TXTFILTRO), L"Esc"});
    host.columns->Returns(L"Count", Variant(short{0}), true); // a list without columns still tells
    TakeLog();
    Choose({Expect(""), Toggle(), L"Enter"});
    Sort(3, L"Down Enter");
    EXPECT_THAT(TakeLog(), ElementsAre(L"ActualizaColumnas(&Columns)", L"ActualizaOrden(&-1, &3)"));
}

} // namespace
} // namespace tamvelo::testing
