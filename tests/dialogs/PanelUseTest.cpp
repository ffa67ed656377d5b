// Keys, commands and searching in the open selection panel.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

const Log kNoFilter{L"AplyFilter(\"\")", L"Requery(\"selec\")"};
const Log kAccept{L"AceptarSeleccion(&0, &ctl, \"1\")", L"AplyFilter(\"\")"};

class PanelUse : public PanelTest {
protected:
    static Script InBox() {
        return Script().Key('E', VK_CONTROL).Do([] { EXPECT_EQ(GetFocus(), Item(IDC_TXTFIELDS0)); });
    }
    static Script OnButton() {
        return Script().Do([] { SetFocus(Item(IDC_CMDBUSCAR)); });
    }
    static Script At(LPARAM place, std::initializer_list<UINT> messages, HWND (*target)()) {
        return Script().Do([=, sent = std::vector<UINT>(messages)] {
            for (const UINT message : sent) {
                PostMessageW(target(), message, MK_LBUTTON, place);
            }
        });
    }
    /// Plays between the opening and an Esc, and compares what was asked meanwhile.
    void ExpectAsked(const Script& script, const Log& asked) {
        EXPECT_FALSE(Show(Forget()
                              .Append(script)
                              .Do([&] { EXPECT_THAT(host.log, ElementsAreArray(asked)); })
                              .Key(VK_ESCAPE)));
        host.log.clear();
    }
};

TEST_F(PanelUse, KeysInTheGrid) {
    struct Case {
        UINT key;
        Log asked;
    };
    const Case cases[] = {
        {VK_HOME, {L"MoveFirst()"}},
        {VK_END, {L"MoveLast()"}},
        {VK_DELETE, kNoFilter},
        {VK_INSERT, {}},
        {VK_DOWN, {}}, // the grid's own move: the record set's, not the data class's
        {VK_NEXT, {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.key);
        ExpectAsked(Keys({each.key}), each.asked);
    }
    const auto stays = [] { EXPECT_EQ(GetFocus(), Item(IDC_DATAGRID)); };
    ExpectAsked(Script().Key('E', VK_RMENU).Do(stays), {}); // types €, and is no Ctrl+E
    EXPECT_FALSE(Show(Forget().Type(L"2").Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarSeleccion(&0, &ctl, \"2\")", L"AplyFilter(\"\")"));
    EXPECT_FALSE(Show(Forget().Key(VK_END).Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"MoveLast()", L"AceptarSeleccion(&0, &ctl, \"20\")", L"AplyFilter(\"\")"));
}

TEST_F(PanelUse, KeysInTheSearchBoxAndOnTheForm) {
    const auto focus = [](HWND (*wanted)()) { return Script().Do([=] { EXPECT_EQ(GetFocus(), wanted()); }); };
    for (const UINT key : {UINT{VK_UP}, UINT{VK_DOWN}, UINT{VK_TAB}}) { // to the list, and then to the button
        ExpectAsked(
            InBox().Key(key).Append(focus([] { return Item(IDC_DATAGRID); })).Key(VK_TAB).Append(focus([] {
                return Item(IDC_CMDBUSCAR);
            })),
            {});
    }
    // On the form Insert and Delete stand for commands that mean nothing here; the box still edits its text.
    ExpectAsked(InBox().Type(L"xma").Key(VK_HOME).Key(VK_DELETE).Key(VK_INSERT).Do(
                    [] { EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"ma"); }),
                {});
    // A box that is entered is selected. Another window comes in front and goes: it is as it was left.
    ExpectAsked(InBox()
                    .Type(L"viejo")
                    .Key(VK_TAB)
                    .Append(InBox())
                    .Type(L"xma")
                    .Key(VK_HOME)
                    .Do([this] {
                        const HWND dialog = Dialog();
                        SetActiveWindow(owner);
                        EXPECT_NE(GetFocus(), GetDlgItem(dialog, IDC_TXTFIELDS0));
                        SetActiveWindow(dialog);
                    })
                    .Key(VK_DELETE)
                    .Do([] { EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"ma"); }),
                {});
    ExpectAsked(OnButton().Key(VK_DELETE).Key(VK_INSERT).Key(VK_HOME), {});
    for (const Script& where : {InBox(), OnButton()}) {
        EXPECT_FALSE(Show(Forget().Append(where).Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
    for (const UINT key : {UINT{VK_RETURN}, UINT{VK_F4}}) { // nothing typed: the record in the grid is meant
        EXPECT_FALSE(Show(Forget().Append(InBox()).Key(key)));
        EXPECT_THAT(TakeLog(), ElementsAreArray(kAccept));
    }
}

TEST_F(PanelUse, EnterOnSomethingTypedSearchesFirst) {
    for (const UINT key : {UINT{VK_RETURN}, UINT{VK_F4}}) {
        const Script script = InBox().Type(L"ma").Key(key).Do([this] {
            EXPECT_THAT(host.log, ElementsAreArray(kSearch));
            EXPECT_THAT(ItemText(IDC_LBLTABLE), L"Filtro: campo=ma");
            EXPECT_EQ(GetFocus(), Item(IDC_TXTFIELDS0));
            EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"ma");
            EXPECT_EQ(ItemText(IDC_STATUS), L"Registro 1 de 10");
        });
        EXPECT_FALSE(Show(Forget().Append(script).Key(key)));
        EXPECT_THAT(TakeLog(), ElementsAreArray(kSearch + kAccept));
    }
    host.set->Table().records = 2; // of which the filter leaves one
    EXPECT_FALSE(Show(Forget().Append(InBox()).Type(L"ma").Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAreArray(kSearch + kAccept));
    host.set->Table().records = 0;
    ExpectAsked(InBox()
                    .Type(L"ma")
                    .Key(VK_RETURN)
                    .Key(VK_RETURN)
                    .Do([this] { EXPECT_THAT(host.log, ElementsAreArray(kSearch)); }) // nothing delivered
                    .Key(VK_F7) // the key that the empty grid names, with the focus still in the box
                    .Do([] { EXPECT_EQ(ItemText(IDC_LBLTABLE), L""); }),
                kSearch + kNoFilter);
}

TEST_F(PanelUse, TheLabelNamesTheColumnThatIsSearched) {
    const auto says = [](const wchar_t* label) {
        return Script().Do([label] { EXPECT_EQ(ItemText(IDC_LBLBUSCAR), label); });
    };
    const Script arrow = Keys({VK_RIGHT});
    const Script click = Script().Do([] {
        RECT second{};
        SendMessageW(Heading(), HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
        PostMessageW(Item(IDC_DATAGRID), WM_LBUTTONDOWN, MK_LBUTTON,
                     MAKELPARAM(second.left + 5, second.bottom + 5));
    });
    const Script heading = Script().Do([] {
        RECT second{};
        SendMessageW(Heading(), HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
            PostMessageW(Heading(), message, MK_LBUTTON, MAKELPARAM(second.left + 20, 5));
        }
    });
    const Script ways[] = {arrow, click, heading};
    for (const Script& way : ways) {
        SCOPED_TRACE(&way - ways);
        EXPECT_FALSE(Show(Script(says(L"B&uscar en Código:"))
                              .Append(way)
                              .Append(says(L"B&uscar en Nombre:"))
                              .Key(VK_ESCAPE)));
        host.log.clear();
    }
    // Searched in one column is not searched in another; in none of them there is nothing to search again.
    const Script back = Script().Do([] { SetFocus(Item(IDC_TXTFIELDS0)); });
    const Script other = Script().Do([] { SetFocus(Item(IDC_DATAGRID)); }).Key(VK_RIGHT).Append(back);
    EXPECT_FALSE(Show(Forget().Append(InBox()).Type(L"ma").Key(VK_RETURN).Append(other).Append(
        Keys({VK_RETURN, VK_RETURN}))));
    EXPECT_THAT(TakeLog(), ElementsAreArray(kSearch + kSearch + kAccept));
    EXPECT_FALSE(Show(Forget().Append(other).Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAreArray(kAccept));
}

TEST_F(PanelUse, TheSearchButtonInsertDeleteAndAnAsterisk) {
    ExpectAsked({InBox(), Type(L"ma"), Click(IDC_CMDBUSCAR)}, kSearch);
    const Log everything{L"SetFilter(&\"\", \"FilterSelec\")",
                         L"GetFilter(\"FilterSelec\")",
                         L"AplyFilter(\"\")",
                         L"Requery(\"selec\")",
                         L"GetFilter(\"FilterSelec\")",
                         L"existenregistros()"};
    ExpectAsked({InBox(), Type(L"ma"), Key(VK_RETURN), Do([] { SetWindowTextW(Item(IDC_TXTFIELDS0), L"*"); }),
                 Key(VK_RETURN), Says(L"Registro 1 de 20")},
                kSearch + everything);
    const auto toGrid = [] { SetFocus(Item(IDC_DATAGRID)); };
    const Script applied = InBox().Type(L"ma").Do(toGrid).Key(VK_INSERT).Do([] {
        EXPECT_FALSE(IsShown(IDC_TXTFIELDS0));
        EXPECT_FALSE(IsShown(IDC_LBLTABLE));
        EXPECT_EQ(GetFocus(), Item(IDC_DATAGRID));
    });
    ExpectAsked(Script(applied)
                    .Key(VK_INSERT)
                    .Do([] {
                        EXPECT_TRUE(IsShown(IDC_TXTFIELDS0));
                        EXPECT_TRUE(IsShown(IDC_LBLTABLE));
                        EXPECT_EQ(ItemText(IDC_LBLTABLE), L"Filtro: campo=ma");
                        EXPECT_EQ(GetFocus(), Item(IDC_TXTFIELDS0));
                    })
                    .Do(toGrid)
                    .Key(VK_DELETE)
                    .Do([] {
                        EXPECT_FALSE(IsShown(IDC_LBLTABLE));
                        EXPECT_EQ(ItemText(IDC_STATUS), L"Registro 1 de 20");
                    }),
                kSearch + kNoFilter);
}

TEST_F(PanelUse, TheToolsAndTheHeadingAsk) {
    const std::pair<const wchar_t*, Log> tools[] = {
        {L"Primer registro", {L"MoveFirst()"}},
        {L"Registro anterior", {L"MovePrevious()"}},
        {L"Registro siguiente", {L"MoveNext()"}},
        {L"Último registro", {L"MoveLast()"}},
        {L"Orden ascendente", {L"SetOrder(&0, \"\", \"seleccion\")"}},
        {L"Orden descendente", {L"SetOrder(&0, \" DESC\", \"seleccion\")"}},
        {L"Quitar el filtro", kNoFilter},
    };
    for (const auto& [caption, asked] : tools) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(caption)));
        const wchar_t* const tool = caption;
        ExpectAsked(Script().Do([tool] { ClickTool(tool); }), asked);
    }
    EXPECT_FALSE(Show(Forget().Do([] { ClickTool(L"Aceptar"); })));
    EXPECT_THAT(TakeLog(), ElementsAreArray(kAccept));
    EXPECT_FALSE(Show(Forget().Do([] { ClickTool(L"Cancelar"); })));
    EXPECT_FALSE(Show(Forget().Do([] { PostMessageW(Panel(), WM_SYSCOMMAND, SC_CLOSE, 0); })));
    EXPECT_THAT(TakeLog(), IsEmpty());
    const Script click = At(MAKELPARAM(20, 5), {WM_LBUTTONDOWN, WM_LBUTTONUP}, Heading);
    ExpectAsked(Script(click).Append(click).Append(click),
                {L"SetOrder(&0, \"\", \"seleccion\")", L"SetOrder(&0, \" DESC\", \"seleccion\")",
                 L"SetOrder(&0, \"\", \"seleccion\")"});
}

TEST_F(PanelUse, TheMenuRunsItsCommands) {
    const auto open = [] { PostMessageW(Item(IDC_DATAGRID), WM_CONTEXTMENU, 0, MAKELPARAM(-1, -1)); };
    ExpectAsked(Script().Do(open).Append(InMenu()).Append(Keys({VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN})),
                {L"SetOrder(&0, \"\", \"seleccion\")"});
    EXPECT_FALSE(Show(Forget().Do(open).Append(InMenu()).Append(Keys({VK_DOWN, VK_RETURN}))));
    EXPECT_THAT(TakeLog(), ElementsAreArray(kAccept));
}

TEST_F(PanelUse, TheMenuOfAHeadingIsAboutItsColumn) {
    static const auto width = [] {
        RECT area;
        Header_GetItemRect(Heading(), 2, &area);
        return area.right - area.left;
    };
    const Script menu = Script()
                            .Do([] {
                                RECT area;
                                Header_GetItemRect(Heading(), 2, &area);
                                POINT place{area.left + 9, area.bottom / 2};
                                ClientToScreen(Heading(), &place);
                                PostMessageW(Heading(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Heading()),
                                             MAKELPARAM(place.x, place.y));
                            })
                            .Append(InMenu());
    const Log sorted{L"SetOrder(&2, \"\", \"seleccion\")"};
    ExpectAsked(Script(menu).Append(Keys({VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN})), sorted);
    ExpectAsked(Script()
                    .Do([] {
                        HDITEMW wide{};
                        wide.mask = HDI_WIDTH;
                        wide.cxy = 333;
                        SendMessageW(Heading(), HDM_SETITEMW, 2, reinterpret_cast<LPARAM>(&wide));
                    })
                    .Append(menu)
                    .Append(Keys({VK_UP, VK_UP, VK_UP, VK_RETURN}))
                    .Do([] { EXPECT_LT(width(), 200); }),
                {});
}

TEST_F(PanelUse, F5ShowsTheWholeRecord) {
    const std::wstring verse = L"uno\r\ndos\rtres\n" + std::wstring(300, L'n') + L" fin";
    host.set->Table().value = [&](long record, short column) -> com::Variant {
        if (column == 6) {
            RaiseHostError();
        }
        return com::Variant(column == 1 ? verse
                                        : L"f" + std::to_wstring(record) + L"c" + std::to_wstring(column));
    };
    const auto value = [](int row) {
        wchar_t text[512] = L"";
        ListView_GetItemText(GetDlgItem(TopWindow(), IDC_RECORD_LIST), row, 1, text, ARRAYSIZE(text));
        return std::wstring(text);
    };
    const auto fills = [] {
        const HWND list = GetDlgItem(TopWindow(), IDC_RECORD_LIST);
        RECT area{};
        GetClientRect(list, &area);
        EXPECT_EQ(ListView_GetColumnWidth(list, 0) + ListView_GetColumnWidth(list, 1), area.right);
    };
    const Script look =
        Elsewhere()
            .Do([&] {
                const HWND list = GetDlgItem(TopWindow(), IDC_RECORD_LIST);
                ASSERT_EQ(ListView_GetItemCount(list), MemoryRecordSet::kColumns);
                EXPECT_EQ(value(7), L"f0c7");
                EXPECT_EQ(value(6), L"#Error");
                EXPECT_EQ(value(1), L"uno dos tres " + std::wstring(300, L'n') + L" fin");
                fills();
                SetWindowPos(TopWindow(), nullptr, 0, 0, 900, 600, SWP_NOMOVE | SWP_NOZORDER);
                fills();
            })
            .Key(VK_DOWN)
            .Do([] {
                const HWND whole = GetDlgItem(TopWindow(), IDC_RECORD_VALUE);
                EXPECT_EQ(TextOf(whole), L"uno\r\ndos\r\ntres\r\n" + std::wstring(300, L'n') + L" fin");
                EXPECT_GT(SendMessageW(whole, EM_GETLINECOUNT, 0, 0), 4);
            })
            .Key('C', VK_CONTROL)
            .Do([&] {
                OpenClipboard(TopWindow());
                EXPECT_EQ(static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT))), verse);
                CloseClipboard();
            });
    ExpectAsked(Script().Key(VK_F5).Append(look).Key(VK_ESCAPE).Do([] {
        EXPECT_EQ(TopWindow(), Panel());
        EXPECT_EQ(GetFocus(), Item(IDC_DATAGRID));
    }),
                {});
    host.set->Table().records = 0;
    ExpectAsked(Script().Key(VK_F5).Do([] { EXPECT_EQ(TopWindow(), Panel()); }), {});
}

TEST_F(PanelUse, AGridWithoutColumnsHasNothingToSortAndAnEmptyHeading) {
    const auto fields = com::Make<HostObject>(L"Fields", host.log);
    fields->Returns(L"Count", com::Variant(0L), true);
    const auto bare = com::Make<HostObject>(L"Recordset", host.log);
    for (const wchar_t* member : {L"RecordCount", L"BOF", L"EOF", L"MoveFirst", L"MoveNext", L"Bookmark"}) {
        bare->Returns(member, com::Variant(member[1] == L'O' ? -1L : 0L), true); // BOF and EOF are true
    }
    bare->Returns(L"Fields", com::Variant(fields.Get()), true);
    host.data->Returns(L"Recordset", com::Variant(bare.Get()), true);
    const Script click = At(MAKELPARAM(20, 5), {WM_LBUTTONDOWN, WM_LBUTTONUP}, Heading);
    ExpectAsked(Script()
                    .Key(VK_F9)
                    .Key(VK_F9, VK_SHIFT)
                    .Append(click)
                    .Do([] {
                        ClickTool(L"Orden descendente");
                        RECT area;
                        GetClientRect(Heading(), &area);
                        EXPECT_GT(area.right, 100);
                        EXPECT_GT(area.bottom, 10);
                        const HDC dc = GetDC(Heading());
                        EXPECT_NE(GetPixel(dc, 40, 5), RGB(0, 0, 0));
                        ReleaseDC(Heading(), dc);
                    })
                    .Key('A')
                    .Key(VK_RIGHT),
                {});
}

TEST_F(PanelUse, OtherSystemColoursReachTheGrid) {
    const int element = COLOR_WINDOW;
    const COLORREF before = GetSysColor(element);
    const COLORREF other = RGB(250, 240, 230);
    const auto empty = [] { // under the last row
        const HWND grid = Item(IDC_DATAGRID);
        RECT area;
        GetClientRect(grid, &area);
        UpdateWindow(grid);
        const HDC dc = GetDC(grid);
        const COLORREF color = GetPixel(dc, area.right - 3, area.bottom - 3);
        ReleaseDC(grid, dc);
        return color;
    };
    host.set->Table().records = 2;
    ExpectAsked(Script()
                    .Do([&] {
                        EXPECT_EQ(empty(), before);
                        SetSysColors(1, &element, &other);
                    })
                    .Do([&] {
                        EXPECT_EQ(empty(), other);
                        SetSysColors(1, &element, &before);
                    }),
                {});
}

TEST_F(PanelUse, AfterACommandThePointerIsTheArrow) {
    HCURSOR during = nullptr;
    host.data->On(L"MoveFirst", [&](com::Invocation&) { during = GetCursor(); });
    ExpectAsked(Script().Key(VK_HOME).Do([&] {
        EXPECT_EQ(during, LoadCursorW(nullptr, IDC_WAIT));
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
    }),
                {L"MoveFirst()"});
    EXPECT_FALSE(Show(Script().Do([] { PostMessageW(Panel(), WM_CLOSE, 0, 0); })));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

} // namespace
} // namespace tamvelo::testing
