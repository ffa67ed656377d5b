// The column chooser and the sort-order editor, and the list that both are made of.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include <algorithm>

#include "frame/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

class Columnas : public DialogTest {
protected:
    Columnas() {
        gdiSlack = 16; // the system keeps the bitmaps of windows that were hidden first for a while
        host.AddColumn(L"Código", L"Cod");
        host.AddColumn(L"Descripción", L"Des");
        host.AddColumn(L"Año", L"Anio", false);
        last = &host.AddColumn(L"Precio", L"Pre");
    }
    void WarmUp() override {
        EXPECT_FALSE(Choose({Menu('Q'), Key(VK_ESCAPE)}));
        host.sink->Raises(L"ActualizaOrden");
        EXPECT_FALSE(Sort(7, {Key(VK_RETURN), Box(kHostErrorText), Key(VK_ESCAPE)}));
        host.sink->Accepts({L"ActualizaOrden"});
    }

    HRESULT ShowColumns() { return server->ShowColums(sink.GetAddressOf(), columns.GetAddressOf()); }
    std::optional<com::Error> Choose(const Script& script) {
        return Play({Focused(IDC_LIST1), script}, [this] { return ShowColumns(); });
    }
    std::optional<com::Error> Sort(short mode, const Script& script) {
        return Play({Focused(IDC_LIST1), script},
                    [&] { return server->ShowOrder(&mode, sink.GetAddressOf(), columns.GetAddressOf()); });
    }
    static Script Menu(UINT key) { return {Click(IDC_CMDMARCAS), InMenu(), Key(key), Focused(IDC_LIST1)}; }
    static Script Find(const wchar_t* text) {
        return {Key('E', VK_CONTROL), Focused(IDC_TXTFILTRO), Type(text)};
    }
    static LRESULT Ask(UINT message, WPARAM first = 0, LPARAM second = 0) {
        return SendMessageW(Item(IDC_LIST1), message, first, second);
    }
    /// The ticks, and that the counter counts them all, whatever is shown.
    static Script Expect(const std::string& ticks, int shown = -1) {
        const auto ticked = std::to_wstring(std::ranges::count(ticks, 'x'));
        const std::wstring rest = shown < 0 ? L"" : L" · se muestran " + std::to_wstring(shown);
        return {Do([=] {
                    std::string got;
                    for (WPARAM i = 0; i < static_cast<WPARAM>(Ask(LB_GETCOUNT)); ++i) {
                        got += Ask(LB_GETSEL, i) == TRUE ? 'x' : '-';
                        if (shown < 0) { // nothing is hidden: what is seen is the same
                            EXPECT_EQ(ListView_GetCheckState(Item(IDC_LIST1), i),
                                      got.back() == 'x' ? 1U : 0U);
                        }
                    }
                    EXPECT_EQ(got, ticks);
                }),
                Says(IDC_LBLCUENTA, ticked + L" de " + std::to_wstring(ticks.size()) + L" visibles" + rest)};
    }
    static Script DoubleClick(int row) {
        return Do([row] {
            RECT place{LVIR_LABEL, 0, 0, 0};
            Ask(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
            for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
                PostMessageW(Item(IDC_LIST1), message, MK_LBUTTON, MAKELPARAM(place.left + 4, place.top + 4));
            }
        });
    }
    static Script Toggle() { return Keys({VK_DOWN, VK_SPACE}); }
    HostObject* last = nullptr;
    /// All but the first, which keeps the visibility that the host gave it.
    const Log written{L"columna 1.Visible = False", L"columna 2.Visible = False", L"columna 3.Visible = True",
                      L"ActualizaColumnas(&Columns)"};
};

TEST_F(Columnas, TicksByHandByCommandAndWhereTheSearchHidesThem) {
    EXPECT_FALSE(Choose({{Expect("xx-x"), Key(VK_SPACE), Toggle(), Toggle(), Expect("x-xx"), DoubleClick(3),
                          DoubleClick(0), Expect("x-x-")},
                         {Key('A', VK_CONTROL), Expect("xxxx"), Menu('Q'), Expect("x---")},
                         {Find(L"prec"), Key('A', VK_CONTROL), Expect("x---", 1), Menu('I'),
                          Expect("xxxx", 1), Key('Z', VK_CONTROL), Expect("xx-x", 1), Key('I', VK_CONTROL),
                          Expect("x-x-", 1), Key('Z', VK_CONTROL)},
                         {Find(L"ano"), Expect("xx-x", 0), Set(IDC_TXTFILTRO, L" PCION"), Expect("xx-x", 1),
                          Toggle(), Expect("x--x", 1), Key(VK_RETURN)}}));
    EXPECT_EQ(TakeLog(), written);
    EXPECT_TRUE(host.IsColumnVisible(0));
    const Script ways[] = {Key(VK_ESCAPE), {Find(L"x"), Key(VK_ESCAPE)}, Tool(L"Cancelar"), Close()};
    for (size_t i = 0; i < 12; ++i) { // often enough that an object left each time is noticed
        EXPECT_FALSE(Choose({Toggle(), ways[i % 4]}));
        EXPECT_FALSE(Sort(1, {Key(VK_DOWN), ways[i % 4]}));
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
}

class MuchasColumnas : public Columnas {
protected:
    MuchasColumnas() {
        for (const wchar_t* caption : {L"ΑΘΗΝΑ", L"Σίσυφος", L"Москва", L"Straße"}) {
            host.AddColumn(caption, L"Otra");
        }
        for (int i = 0; i < 35; ++i) {
            host.AddColumn(L"Otra", L"Otra");
        }
    }
};

TEST_F(MuchasColumnas, TheSearchIgnoresCaseAndAccentsAndTheSortGoesByEntry) {
    Script search;
    for (const wchar_t* text : {L"αθηνα", L"ΣΙΣΥΦΟΣ", L"МОСК", L"straße", L"CÓDI", L"DESCRIPCION", L"año"}) {
        search.Append({Set(IDC_TXTFILTRO, text), Do([] { EXPECT_EQ(Ask(LVM_GETITEMCOUNT), 1); })});
    }
    EXPECT_FALSE(Choose({search, Key(VK_ESCAPE)}));
    const std::pair<Script, int> cases[] = {
        {Key(VK_RETURN), -1}, // nothing by itself
        {Keys({VK_DOWN, VK_RETURN}), 0},
        {Keys({VK_DOWN, VK_DOWN, VK_RETURN}), 1},
        {{Type(L"pre"), Key(VK_RETURN)}, 3},
        {DoubleClick(2), 2},
        {{Find(L"año"), Key(VK_RETURN)}, 2},
        {{Keys({VK_DOWN, VK_DOWN}), Find(L"c"), Key(VK_RETURN)}, 1}, // what is still there stays chosen
        {{Key(VK_DOWN), Find(L"no hay"), Key(VK_RETURN)}, -1},
        {Keys({VK_DOWN, VK_END, VK_RETURN}), 52},
        {{Do([] { Ask(LB_SETCURSEL, 41); }), Key(VK_RETURN)}, 51},
    };
    for (const auto& [script, number] : cases) {
        EXPECT_FALSE(Sort(-5, script));
        EXPECT_THAT(TakeLog(), ElementsAre(L"ActualizaOrden(&" + std::to_wstring(number) + L", &-5)"));
    }
}

TEST_F(Columnas, WhatTheHostRefusesBringsTheDialogBackAsItWas) {
    const Script unticked = Expect("x--x");
    host.sink->Raises(L"ActualizaColumnas");
    EXPECT_FALSE(Choose(
        {Toggle(), Key(VK_RETURN), Box(kHostErrorText), Focused(IDC_LIST1), unticked, Do([this] {
             EXPECT_FALSE(IsWindowEnabled(owner));
             host.sink->On(L"ActualizaColumnas", [this](com::Invocation&) { // the host shows it again
                 host.sink->Accepts({L"ActualizaColumnas"});
                 EXPECT_EQ(ShowColumns(), S_OK);
             });
         }),
         Forget(), Key(VK_RETURN), Focused(IDC_LIST1), unticked, Asked(written), Toggle(), Key(VK_RETURN)}));
    EXPECT_TRUE(host.IsColumnVisible(1));
    last->On(L"Visible", [](com::Invocation& call) {
        call.IsPut() ? RaiseHostError() : call.Return(com::Variant(true));
    });
    EXPECT_FALSE(
        Choose({Find(L"a"), Key(VK_RETURN), Box(kHostErrorText), Focused(IDC_TXTFILTRO), Key(VK_ESCAPE)}));
    host.columns->Returns(L"Count", com::Variant(short{0}), true); // a list without columns still tells
    TakeLog();
    EXPECT_FALSE(Choose({Expect(""), Toggle(), Key(VK_RETURN)}));
    EXPECT_FALSE(Sort(3, Keys({VK_DOWN, VK_RETURN})));
    EXPECT_THAT(TakeLog(), ElementsAre(L"ActualizaColumnas(&Columns)", L"ActualizaOrden(&-1, &3)"));
}

} // namespace
} // namespace tamvelo::testing
