// Keys, commands and searching in the open selection panel.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

const Log kNoFilter{L"AplyFilter(\"\")", L"Requery(\"selec\")"};
const Log kAccept{L"AceptarSeleccion(&0, &ctl, \"1\")", L"AplyFilter(\"\")"};
const Log kAscending{L"SetOrder(&0, \"\", \"seleccion\")"};
const Log kDescending{L"SetOrder(&0, \" DESC\", \"seleccion\")"};

class PanelUse : public PanelTest {
protected:
    static Script Strip(bool shown) {
        return {Do([=] {
                    EXPECT_EQ(Shown({IDC_TXTFIELDS0, IDC_LBLTABLE}), shown ? L"xx" : L"--");
                }),
                SearchHasRoom(shown)};
    }
    static std::wstring RecordText(int row) {
        wchar_t text[512] = L"";
        ListView_GetItemText(GetDlgItem(TopWindow(), IDC_RECORD_LIST), row, 1, text, ARRAYSIZE(text));
        return text;
    }
    static COLORREF PixelOf(HWND window, int x, int y) { // from the right and the bottom
        RECT area;
        GetClientRect(window, &area);
        UpdateWindow(window);
        const HDC dc = GetDC(window);
        const COLORREF color = GetPixel(dc, area.right - x, area.bottom - y);
        ReleaseDC(window, dc);
        return color;
    }
};

TEST_F(PanelUse, KeysToolsAndTheHeadingAskTheHost) {
    EXPECT_FALSE(Show({Forget(),
                       {Key(VK_END), Asked({L"MoveLast()"}), Key(VK_HOME), Asked({L"MoveFirst()"}),
                        Keys({VK_DOWN, VK_NEXT}),                             // the grid's own moves
                        Key('E', VK_RMENU), Focused(IDC_DATAGRID), Asked({}), // types €, and is no Ctrl+E
                        Key(VK_DELETE), Asked(kNoFilter)},
                       {Tool(L"Registro siguiente"), Asked({L"MoveNext()"}), Tool(L"Registro anterior"),
                        Asked({L"MovePrevious()"}), Tool(L"Último registro"), Asked({L"MoveLast()"}),
                        Tool(L"Primer registro"), Asked({L"MoveFirst()"})},
                       {Tool(L"Orden descendente"), Asked(kDescending), Tool(L"Orden ascendente"),
                        Asked(kAscending), Tool(L"Quitar el filtro"), Asked(kNoFilter), ClickHeading(),
                        Asked(kDescending), ClickHeading(), Asked(kAscending)},
                       {GridMenu(), Keys({VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN}), Asked(kAscending)},
                       Tool(L"Cancelar")}));
    const std::pair<Script, Log> ways[] = {
        {{Type(L"2"), Key(VK_RETURN)}, {L"AceptarSeleccion(&0, &ctl, \"2\")", kNoFilter[0]}},
        {Keys({VK_END, VK_RETURN}), {L"MoveLast()", L"AceptarSeleccion(&0, &ctl, \"20\")", kNoFilter[0]}},
        {Tool(L"Aceptar"), kAccept},
        {{GridMenu(), Keys({VK_DOWN, VK_RETURN})}, kAccept},
        {{InBox(), Key(VK_RETURN)}, kAccept}, // nothing typed: the record in the grid is meant
        {{InBox(), Key(VK_F4)}, kAccept},
        {{InBox(), Key(VK_ESCAPE)}, {}},
        {{OnButton(), Keys({VK_DELETE, VK_INSERT, VK_HOME, VK_ESCAPE})}, {}},
        {Do([] { PostMessageW(Panel(), WM_SYSCOMMAND, SC_CLOSE, 0); }), {}},
    };
    for (const auto& [script, asked] : ways) {
        SCOPED_TRACE((&asked - &ways[0].second) / 2);
        Expect(script, asked);
    }
}

TEST_F(PanelUse, TheSearchBoxEditsItsTextAndTheArrowsLeaveIt) {
    const Script ma = Says(IDC_TXTFIELDS0, L"ma");
    Expect(
        {{InBox(), Key(VK_UP), Focused(IDC_DATAGRID), TabTo(IDC_CMDBUSCAR), InBox(), Key(VK_DOWN),
          Focused(IDC_DATAGRID), InBox(), TabTo(IDC_DATAGRID)},
         // On the form Insert and Delete stand for commands that mean nothing here.
         {InBox(), Type(L"xma"), Keys({VK_HOME, VK_DELETE, VK_INSERT}), ma},
         // A box that is entered is selected. Another window comes in front and goes: it is as it was left.
         {TabTo(IDC_DATAGRID), InBox(), Type(L"xma"), Key(VK_HOME), Do([this] {
              const HWND dialog = Dialog();
              SetActiveWindow(owner);
              EXPECT_NE(GetFocus(), GetDlgItem(dialog, IDC_TXTFIELDS0));
              SetActiveWindow(dialog);
          }),
          Key(VK_DELETE), ma, Key(VK_ESCAPE)}},
        {});
}

TEST_F(PanelUse, EnterOnSomethingTypedSearchesFirst) {
    const Script typed{InBox(), Type(L"ma"), Key(VK_RETURN)};
    const Script found{Focused(IDC_TXTFIELDS0), Says(IDC_TXTFIELDS0, L"ma"),
                       Says(IDC_LBLTABLE, L"Filtro: campo=ma"), Says(L"Registro 1 de 10"), Asked(kSearch)};
    Expect({typed, found, Key(VK_F4)}, kAccept);
    Expect({InBox(), Type(L"ma"), Key(VK_F4), found, Key(VK_RETURN)}, kAccept);
    // Searched in one column is not searched in another; in none of them there is nothing to search again.
    std::wstring fields;
    host.data->On(L"CreateFilter", [&](com::Invocation& call) {
        fields += com::LateObject(call[0].ToObject().Get(), L"box").Call(L"DataField").ToText() + L" ";
        call.Return(com::Variant(L"campo=ma"));
    });
    const Script other{InGrid(), Key(VK_RIGHT), InBox(), Key(VK_RETURN)};
    Expect({typed, Asked(kSearch), other, Asked(kSearch), Key(VK_RETURN)}, kAccept);
    EXPECT_EQ(fields, L"Codigo Nombre ");
    Expect(other, kAccept);
    host.set->Table().records = 2; // of which the filter leaves one
    Expect(typed, kSearch + kAccept);
    host.set->Table().records = 0; // F7 is the key that the empty grid names, also with the focus in the box
    Expect({typed, Key(VK_RETURN), Asked(kSearch), Key(VK_F7), Says(IDC_LBLTABLE, L""), Key(VK_ESCAPE)},
           kNoFilter);
}

TEST_F(PanelUse, TheStripNamesItsColumnAndComesAndGoes) {
    const Script first = Says(IDC_LBLBUSCAR, L"B&uscar en Código:");
    const Script second = Says(IDC_LBLBUSCAR, L"B&uscar en Nombre:");
    Log everything(kSearch.begin() + 1, kSearch.end()); // the host makes no filter of an asterisk
    everything[0] = L"SetFilter(&\"\", \"FilterSelec\")";
    everything[2] = L"AplyFilter(\"\")";
    Expect({{first, Key(VK_RIGHT), second, Mouse({WM_LBUTTONDOWN}, 0), first, ClickHeading(1), second,
             Key(VK_LEFT), Forget()},
            {InBox(), Type(L"ma"), Click(IDC_CMDBUSCAR), Asked(kSearch)},
            {Do([] { SetWindowTextW(Item(IDC_TXTFIELDS0), L"*"); }), Key(VK_RETURN),
             Says(L"Registro 1 de 20"), Asked(everything)},
            {InGrid(), InBox(), Type(L"ma"), InGrid(), Key(VK_INSERT), Focused(IDC_DATAGRID), Strip(false),
             Asked(kSearch)},
            {Key(VK_INSERT), Focused(IDC_TXTFIELDS0), Strip(true), Says(IDC_LBLTABLE, L"Filtro: campo=ma")},
            {InGrid(), Key(VK_DELETE), Says(L"Registro 1 de 20"),
             Do([] { EXPECT_FALSE(IsShown(IDC_LBLTABLE)); }), Key(VK_ESCAPE)}},
           kNoFilter);
}

TEST_F(PanelUse, TheMenuOfAHeadingIsAboutItsColumn) {
    const Script menu = Do([] {
                            const RECT area = HeadingOf(2);
                            POINT place{area.left + 9, area.bottom / 2};
                            ClientToScreen(Heading(), &place);
                            PostMessageW(Heading(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Heading()),
                                         MAKELPARAM(place.x, place.y));
                        }).Append(InMenu());
    Expect({Do([] {
                HDITEMW wide{};
                wide.mask = HDI_WIDTH;
                wide.cxy = 333;
                SendMessageW(Heading(), HDM_SETITEMW, 2, reinterpret_cast<LPARAM>(&wide));
            }),
            menu, Keys({VK_UP, VK_UP, VK_UP, VK_RETURN}),
            Do([] { EXPECT_LT(HeadingOf(2).right - HeadingOf(2).left, 200); }), // fits
            menu, Keys({VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN, VK_ESCAPE})},
           {L"SetOrder(&2, \"\", \"seleccion\")"});
}

TEST_F(PanelUse, F5ShowsTheWholeRecord) {
    const std::wstring end = std::wstring(300, L'n') + L" fin";
    const std::wstring verse = L"uno\r\ndos\rtres\n" + end;
    host.set->Table().value = [&](long, short column) -> com::Variant {
        if (column == 6) {
            RaiseHostError();
        }
        return com::Variant(column == 1 ? verse : L"c" + std::to_wstring(column));
    };
    const auto fills = [] {
        const HWND list = GetDlgItem(TopWindow(), IDC_RECORD_LIST);
        RECT area{};
        GetClientRect(list, &area);
        EXPECT_EQ(ListView_GetColumnWidth(list, 0) + ListView_GetColumnWidth(list, 1), area.right);
        EXPECT_EQ(ListView_GetItemCount(list), MemoryRecordSet::kColumns);
    };
    Expect({Key(VK_F5), Elsewhere(), Do([&] {
                EXPECT_EQ(RecordText(7) + RecordText(6) + RecordText(1), L"c7#Erroruno dos tres " + end);
                fills();
                SetWindowPos(TopWindow(), nullptr, 0, 0, 900, 600, SWP_NOMOVE | SWP_NOZORDER);
                fills();
            }),
            Key(VK_DOWN), Do([&] {
                const HWND whole = GetDlgItem(TopWindow(), IDC_RECORD_VALUE);
                EXPECT_EQ(TextOf(whole), L"uno\r\ndos\r\ntres\r\n" + end);
                EXPECT_GT(SendMessageW(whole, EM_GETLINECOUNT, 0, 0), 4);
            }),
            Key('C', VK_CONTROL), Do([&] {
                OpenClipboard(TopWindow());
                EXPECT_EQ(static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT))), verse);
                CloseClipboard();
            }),
            Key(VK_ESCAPE), Back(), Focused(IDC_DATAGRID), Key(VK_ESCAPE)},
           {});
    host.set->Table().records = 0;
    Expect(Keys({VK_F5, VK_ESCAPE}), {});
}

TEST_F(PanelUse, AGridWithoutColumnsHasNothingToSortAndAnEmptyHeading) {
    host.set->Table().columns = 0;
    host.set->Table().records = 0;
    Expect({Key(VK_F9), Key(VK_F9, VK_SHIFT), ClickHeading(), Tool(L"Orden descendente"), Do([] {
                RECT area;
                GetClientRect(Heading(), &area);
                EXPECT_GT(area.right, 100);
                EXPECT_GT(area.bottom, 10);
                EXPECT_NE(PixelOf(Heading(), area.right - 40, area.bottom - 5), RGB(0, 0, 0));
            }),
            Keys({'A', VK_RIGHT, VK_ESCAPE})},
           {});
}

TEST_F(PanelUse, OtherSystemColoursReachTheGridAndTheBusyPointerGoes) {
    const int element = COLOR_WINDOW;
    const COLORREF before = GetSysColor(element);
    const COLORREF other = RGB(250, 240, 230);
    HCURSOR during = nullptr;
    host.data->On(L"MoveFirst", [&](com::Invocation&) { during = GetCursor(); });
    host.set->Table().records = 2;
    Expect({Do([&] {
                EXPECT_EQ(PixelOf(Grid(), 3, 3), before); // under the last row
                SetSysColors(1, &element, &other);
            }),
            Do([&] {
                EXPECT_EQ(PixelOf(Grid(), 3, 3), other);
                SetSysColors(1, &element, &before);
            }),
            Key(VK_HOME), Do([&] {
                EXPECT_EQ(during, LoadCursorW(nullptr, IDC_WAIT));
                EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
            }),
            Close()},
           {L"MoveFirst()"});
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

} // namespace
} // namespace tamvelo::testing
