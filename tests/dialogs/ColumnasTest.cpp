// The column chooser and the sort-order editor, and the list that both are made of.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "frame/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

class Columnas : public DialogTest {
protected:
    explicit Columnas(int more = 0) {
        gdiSlack = 16; // the system keeps the bitmaps of windows that were hidden first for a while
        host.AddColumn(L"Código", L"Cod");
        host.AddColumn(L"Descripción", L"Des");
        host.AddColumn(L"Año", L"Anio", false);
        last = &host.AddColumn(L"Precio", L"Pre");
        for (int i = 0; i < more; ++i) {
            host.AddColumn(L"Otra", L"Otra");
        }
    }
    void WarmUp() override {
        EXPECT_FALSE(Choose(Script().Append(Menu()).Key(VK_ESCAPE).Key(VK_ESCAPE)));
        host.sink->On(L"ActualizaOrden", [](com::Invocation&) { RaiseHostError(); });
        EXPECT_FALSE(Sort(7, Script().Key(VK_RETURN).Box(kHostErrorText).Key(VK_ESCAPE)));
        host.sink->On(L"ActualizaOrden", [](com::Invocation&) {});
    }

    std::optional<com::Error> Choose(Script script) {
        return Play(InList().Append(script),
                    [this] { return server->ShowColums(sink.GetAddressOf(), columns.GetAddressOf()); });
    }
    std::optional<com::Error> Sort(short mode, Script script) {
        return Play(InList().Append(script),
                    [&] { return server->ShowOrder(&mode, sink.GetAddressOf(), columns.GetAddressOf()); });
    }
    /// The focus goes to the list only when the dialog is up.
    static Script InList() {
        return Script().Until("the list", [](HWND) { return GetFocus() == Item(IDC_LIST1); });
    }
    static Script Menu() {
        return Script().Do([] { PostMessageW(Item(IDC_CMDMARCAS), BM_CLICK, 0, 0); }).Append(InMenu());
    }
    static Script Find(const wchar_t* text) { return Script().Key('E', VK_CONTROL).Type(text); }
    static LRESULT Ask(UINT message, WPARAM first = 0, LPARAM second = 0) {
        return SendMessageW(Item(IDC_LIST1), message, first, second);
    }
    static std::string Ticks() {
        std::string ticks;
        for (WPARAM i = 0; i < static_cast<WPARAM>(Ask(LB_GETCOUNT)); ++i) {
            const bool ticked = Ask(LB_GETSEL, i) == TRUE;
            ticks += ticked ? 'x' : '-';
            if (Ask(LVM_GETITEMCOUNT) == Ask(LB_GETCOUNT)) { // nothing is hidden: what is seen is the same
                EXPECT_EQ(ListView_GetCheckState(Item(IDC_LIST1), i), ticked ? 1U : 0U) << i;
            }
        }
        return ticks;
    }
    static Script Expect(std::string ticks, std::wstring counter) {
        return Script().Do([=] {
            EXPECT_EQ(Ticks(), ticks);
            EXPECT_EQ(ItemText(IDC_LBLCUENTA), counter);
        });
    }
    static void DoubleClick(int row) {
        RECT place{LVIR_LABEL, 0, 0, 0};
        SendMessageW(Item(IDC_LIST1), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&place));
        const LPARAM at = MAKELPARAM(place.left + 4, place.top + 4);
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
            PostMessageW(Item(IDC_LIST1), message, MK_LBUTTON, at);
        }
    }
    HostObject* last = nullptr;
    Log Written(const wchar_t* first, const wchar_t* second, const wchar_t* third) const {
        return {std::wstring(L"columna 1.Visible = ") + first, std::wstring(L"columna 2.Visible = ") + second,
                std::wstring(L"columna 3.Visible = ") + third, L"ActualizaColumnas(&Columns)"};
    }
};

TEST_F(Columnas, AcceptingWritesAllButTheFirstAndTellsTheHost) {
    EXPECT_FALSE(Choose(Expect("xx-x", L"3 de 4 visibles")
                            .Append(Keys({VK_SPACE, VK_DOWN, VK_SPACE, VK_DOWN, VK_SPACE}))
                            .Append(Expect("x-xx", L"3 de 4 visibles"))
                            .Do([] { DoubleClick(3); })
                            .Append(Expect("x-x-", L"2 de 4 visibles"))
                            .Do([] { DoubleClick(0); })
                            .Append(Expect("x-x-", L"2 de 4 visibles"))
                            .Key(VK_RETURN)));
    EXPECT_EQ(TakeLog(), Written(L"False", L"True", L"False"));
    EXPECT_TRUE(host.IsColumnVisible(0));
}

TEST_F(Columnas, LeavingInAnyOtherWayChangesNothing) {
    const Script ways[] = {Keys({VK_ESCAPE}), Find(L"x").Key(VK_ESCAPE),
                           Script().Do([] { ClickTool(L"Cancelar"); }),
                           Script().Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); })};
    for (int i = 0; i < 3; ++i) { // often enough that an object left each time is noticed
        for (const Script& way : ways) {
            EXPECT_FALSE(Choose(Keys({VK_DOWN, VK_SPACE}).Append(way)));
            EXPECT_FALSE(Sort(1, Keys({VK_DOWN}).Append(way)));
            EXPECT_THAT(TakeLog(), IsEmpty());
        }
    }
}

TEST_F(Columnas, TickCommandsReachEveryEntryButTheFixedOne) {
    EXPECT_FALSE(Choose(Script()
                            .Key('A', VK_CONTROL)
                            .Append(Expect("xxxx", L"4 de 4 visibles"))
                            .Append(Menu())
                            .Key('Q')
                            .Append(Expect("x---", L"1 de 4 visibles"))
                            .Append(Find(L"prec"))
                            .Append(Menu())
                            .Key('I')
                            .Append(Expect("xxxx", L"4 de 4 visibles · se muestran 1"))
                            .Key('Z', VK_CONTROL)
                            .Append(Expect("xx-x", L"3 de 4 visibles · se muestran 1"))
                            .Key('I', VK_CONTROL)
                            .Append(Expect("x-x-", L"2 de 4 visibles · se muestran 1"))
                            .Key(VK_RETURN)));
    EXPECT_EQ(TakeLog(), Written(L"False", L"True", L"False"));
}

TEST_F(Columnas, TheSearchHidesEntriesAndRenumbersNone) {
    EXPECT_FALSE(Choose(Find(L"ano")
                            .Append(Expect("xx-x", L"3 de 4 visibles · se muestran 0"))
                            .Do([] { SetWindowTextW(Item(IDC_TXTFILTRO), L" PCION"); })
                            .Append(Expect("xx-x", L"3 de 4 visibles · se muestran 1"))
                            .Append(Keys({VK_DOWN, VK_SPACE}))
                            .Append(Expect("x--x", L"2 de 4 visibles · se muestran 1"))
                            .Key(VK_RETURN)));
    EXPECT_EQ(TakeLog(), Written(L"False", L"False", L"True"));
}

class Alfabetos : public Columnas {
protected:
    Alfabetos() {
        for (const wchar_t* caption : {L"ΑΘΗΝΑ", L"Σίσυφος", L"Москва", L"Straße"}) {
            host.AddColumn(caption, L"Otra");
        }
    }
};

TEST_F(Alfabetos, TheSearchIgnoresCaseAndAccentsInEveryScript) {
    Script script;
    for (const wchar_t* text : {L"αθηνα", L"ΣΙΣΥΦΟΣ", L"МОСК", L"straße", L"CÓDI", L"DESCRIPCION", L"año"}) {
        script.Do([text] {
            SetWindowTextW(Item(IDC_TXTFILTRO), text);
            EXPECT_EQ(Ask(LVM_GETITEMCOUNT), 1) << ::testing::PrintToString(std::wstring(text));
        });
    }
    EXPECT_FALSE(Choose(script.Key(VK_ESCAPE)));
}

TEST_F(Columnas, AListWithoutColumnsStillTells) {
    host.columns->On(
        L"Count", [](com::Invocation& call) { call.Return(com::Variant(short{0})); }, true);
    EXPECT_FALSE(Choose(Expect("", L"0 de 0 visibles").Append(Keys({VK_DOWN, VK_SPACE, VK_RETURN}))));
    EXPECT_FALSE(Sort(3, Keys({VK_DOWN, VK_RETURN})));
    EXPECT_THAT(TakeLog(), ElementsAre(L"ActualizaColumnas(&Columns)", L"ActualizaOrden(&-1, &3)"));
}

class MuchasColumnas : public Columnas {
protected:
    MuchasColumnas() : Columnas(39) {}
};

TEST_F(MuchasColumnas, TheSortGoesByEntryAndNeverByItself) {
    struct Case {
        Script script;
        const wchar_t* told;
    };
    const auto choose = [](WPARAM entry) {
        return Script().Do([=] { Ask(LB_SETCURSEL, entry); }).Key(VK_RETURN);
    };
    const Case cases[] = {
        {Keys({VK_RETURN}), L"ActualizaOrden(&-1, &-5)"},
        {Keys({VK_DOWN, VK_RETURN}), L"ActualizaOrden(&0, &-5)"},
        {Keys({VK_DOWN, VK_DOWN, VK_RETURN}), L"ActualizaOrden(&1, &-5)"},
        {Script().Type(L"pre").Key(VK_RETURN), L"ActualizaOrden(&3, &-5)"},
        {Script().Do([] { DoubleClick(2); }), L"ActualizaOrden(&2, &-5)"},
        {Find(L"año").Key(VK_RETURN), L"ActualizaOrden(&2, &-5)"},
        {Keys({VK_DOWN}).Append(Find(L"no hay")).Key(VK_RETURN), L"ActualizaOrden(&-1, &-5)"},
        {Keys({VK_DOWN, VK_END, VK_RETURN}), L"ActualizaOrden(&52, &-5)"},
        {choose(38), L"ActualizaOrden(&38, &-5)"},
        {choose(39), L"ActualizaOrden(&47, &-5)"},
        {choose(41), L"ActualizaOrden(&51, &-5)"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(Sort(-5, c.script));
        EXPECT_THAT(TakeLog(), ElementsAre(c.told));
    }
}

TEST_F(Columnas, WhatTheHostRefusesBringsTheDialogBackAsItWas) {
    const auto fail = [](com::Invocation&) { RaiseHostError(); };
    host.sink->On(L"ActualizaColumnas", fail);
    EXPECT_FALSE(Choose(Keys({VK_DOWN, VK_SPACE, VK_RETURN})
                            .Box(kHostErrorText)
                            .Append(InList())
                            .Append(Expect("x--x", L"2 de 4 visibles"))
                            .Do([this] {
                                EXPECT_FALSE(IsWindowEnabled(owner));
                                TakeLog();
                                host.sink->On(L"ActualizaColumnas", [](com::Invocation&) {});
                            })
                            .Key(VK_RETURN)));
    EXPECT_EQ(TakeLog(), Written(L"False", L"False", L"True"));
    last->On(L"Visible", [](com::Invocation& call) {
        call.IsPut() ? RaiseHostError() : call.Return(com::Variant(true));
    });
    EXPECT_FALSE(Choose(Find(L"a")
                            .Key(VK_RETURN)
                            .Box(kHostErrorText)
                            .Until("the search box", [](HWND) { return GetFocus() == Item(IDC_TXTFILTRO); })
                            .Key(VK_ESCAPE)));
    last->On(L"Visible", fail);
    EXPECT_TRUE(Play({}, [this] { return server->ShowColums(sink.GetAddressOf(), columns.GetAddressOf()); }));
}

TEST_F(Columnas, TheHostMayShowItAgainWhenItIsToldOrEndItself) {
    host.sink->On(L"ActualizaColumnas", [this](com::Invocation&) {
        host.sink->On(L"ActualizaColumnas", [](com::Invocation&) {});
        EXPECT_EQ(server->ShowColums(sink.GetAddressOf(), columns.GetAddressOf()), S_OK);
    });
    EXPECT_FALSE(Choose(Keys({VK_DOWN, VK_SPACE, VK_RETURN})
                            .Append(InList())
                            .Append(Expect("x--x", L"2 de 4 visibles"))
                            .Append(Keys({VK_DOWN, VK_SPACE, VK_RETURN}))));
    EXPECT_TRUE(host.IsColumnVisible(1));
    host.sink->On(L"ActualizaColumnas", [this](com::Invocation&) { DestroyWindow(owner); });
    EXPECT_FALSE(Choose(Keys({VK_RETURN})));
}

} // namespace
} // namespace tamvelo::testing
