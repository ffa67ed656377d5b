// Keys, commands and searching in the open selection panel.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

const Log kNoFilter{kClear, L"Requery(\"selec\")"};
class PanelUse : public PanelTest {
protected:
    static Script Strip(bool shown) {
        return {Looks({IDC_TXTFIELDS0, IDC_LBLTABLE}, shown ? L"xx" : L"--"), SearchHasRoom(shown)};
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
    Show(
        {{Forget(), L"End Home Down Next", Asked({L"MoveLast()", L"MoveFirst()"}), // and the grid's own moves
          Key('E', VK_RMENU), Focused(IDC_DATAGRID), L"Delete",
          Asked(kNoFilter)}, // types €, and is no Ctrl+E
         {Tool(L"Registro siguiente"), Tool(L"Registro anterior"), Tool(L"Último registro"),
          Tool(L"Primer registro"), Asked({L"MoveNext()", L"MovePrevious()", L"MoveLast()", L"MoveFirst()"})},
         {Tool(L"Orden descendente"), Tool(L"Orden ascendente"), ClickHeading(), ClickHeading(), GridMenu(),
          L"Down Down Down Enter", Asked({kDescending, kAscending, kDescending, kAscending, kAscending})},
         {Tool(L"Quitar el filtro"), Asked(kNoFilter), Tool(L"Cancelar")}});
    const std::pair<Script, Log> ways[] = {
        {{L"'2 Enter"}, {L"AceptarSeleccion(&0, &ctl, \"2\")", kClear}},
        {L"End Enter", {L"MoveLast()", L"AceptarSeleccion(&0, &ctl, \"20\")", kClear}},
        {Tool(L"Aceptar"), kAccept},
        {{GridMenu(), L"Down Enter"}, kAccept},
        {{InBox(), L"Enter"}, kAccept}, // nothing typed: the record in the grid is meant
        {{InBox(), L"F4"}, kAccept},
        {{InBox(), L"Esc"}, {}},
        {{OnButton(), L"Delete Insert Home Esc"}, {}},
        {Do([] { PostMessageW(Dialog(), WM_SYSCOMMAND, SC_CLOSE, 0); }), {}},
    };
    for (const auto& [script, asked] : ways) {
        Expect(script, asked);
    }
}

TEST_F(PanelUse, TheSearchBoxEditsItsTextAndTheArrowsLeaveIt) {
    const Script ma = Says(IDC_TXTFIELDS0, L"ma");
    Expect(
        {{InBox(), L"Up", Focused(IDC_DATAGRID), TabTo(IDC_CMDBUSCAR), InBox(), L"Down",
          Focused(IDC_DATAGRID), InBox(), TabTo(IDC_DATAGRID)},
         // On the form Insert and Delete stand for commands that mean nothing here.
         {InBox(), L"'xma Home Delete Insert", ma},
         // A box that is entered is selected. Another window comes in front and goes: it is as it was left.
         {TabTo(IDC_DATAGRID), InBox(), L"'xma Home", Do([this] {
              const HWND dialog = Dialog();
              SetActiveWindow(owner);
              EXPECT_NE(GetFocus(), GetDlgItem(dialog, IDC_TXTFIELDS0));
              SetActiveWindow(dialog);
          }),
          L"Delete", ma, L"Esc"}},
        {});
}

TEST_F(PanelUse, EnterOnSomethingTypedSearchesFirst) {
    const Script typed{InBox(), L"'ma Enter"};
    const Script found{Focused(IDC_TXTFIELDS0), Says(IDC_TXTFIELDS0, L"ma"),
                       Says(IDC_LBLTABLE, L"Filtro: campo=ma"), Says(L"Registro 1 de 10"), Asked(kSearch)};
    Expect({typed, found, L"F4"}, kAccept);
    Expect({InBox(), L"'ma F4", found, L"Enter"}, kAccept);
    // Searched in one column is not searched in another; in none of them there is nothing to search again.
    std::wstring fields;
    host.data->On(L"CreateFilter", [&](Invocation& call) {
        fields += com::LateObject(call[0].ToObject().Get(), L"box").Call(L"DataField").ToText() + L" ";
        call.Return(Variant(L"campo=ma"));
    });
    const Script other{InGrid(), L"Right", InBox(), L"Enter"};
    Expect({typed, Asked(kSearch), other, Asked(kSearch), L"Enter"}, kAccept);
    EXPECT_EQ(fields, L"Codigo Nombre ");
    Expect(other, kAccept);
    host.set->Table().records = 2; // of which the filter leaves one
    Expect(typed, kSearch + kAccept);
    host.set->Table().records = 0; // F7 is the key that the empty grid names, also with the focus in the box
    Expect({typed, L"Enter", Asked(kSearch), L"F7", Says(IDC_LBLTABLE, L""), L"Esc"}, kNoFilter);
}

TEST_F(PanelUse, TheStripNamesItsColumnAndComesAndGoes) {
    const Script first = Says(IDC_LBLBUSCAR, L"B&uscar en Código:");
    const Script second = Says(IDC_LBLBUSCAR, L"B&uscar en Nombre:");
    Log everything(kSearch.begin() + 1, kSearch.end()); // the host makes no filter of an asterisk
    everything[0] = LR"(SetFilter(&"", "FilterSelec"))";
    everything[2] = L"AplyFilter(\"\")";
    Expect({{first, L"Right", second, Mouse({WM_LBUTTONDOWN}, 0), first, ClickHeading(1), second, L"Left",
             Forget()},
            {InBox(), L"'ma", Click(IDC_CMDBUSCAR), Asked(kSearch)},
            {Do([] { SetWindowTextW(Item(IDC_TXTFIELDS0), L"*"); }), L"Enter", Says(L"Registro 1 de 20"),
             Asked(everything)},
            {InGrid(), InBox(), L"'ma", InGrid(), L"Insert", Focused(IDC_DATAGRID), Strip(false),
             Asked(kSearch)},
            {L"Insert", Focused(IDC_TXTFIELDS0), Strip(true), Says(IDC_LBLTABLE, L"Filtro: campo=ma")},
            {InGrid(), L"Delete", Says(L"Registro 1 de 20"), Do([] { EXPECT_FALSE(IsShown(IDC_LBLTABLE)); }),
             L"Esc"}},
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
    Expect(
        {Do([] {
             HDITEMW wide{};
             wide.mask = HDI_WIDTH;
             wide.cxy = 333;
             SendMessageW(Heading(), HDM_SETITEMW, 2, reinterpret_cast<LPARAM>(&wide));
         }),
         menu, L"Up Up Up Enter", Do([] { EXPECT_LT(HeadingOf(2).right - HeadingOf(2).left, 200); }), // fits
         menu, L"Down Down Down Enter Esc"},
        {LR"(SetOrder(&2, "", "seleccion"))"});
}

TEST_F(PanelUse, F5ShowsTheWholeRecordAndTheBeginningOfALongValueWhichIsCopiedWhole) {
    const std::wstring end = std::wstring(300, L'n') + L" fin";
    const std::wstring verse = L"uno\r\ndos\rtres\n" + end;
    host.set->Table().value = [&](long, short column) -> Variant {
        if (column == 6) {
            RaiseHostError();
        }
        return Variant(column == 1 ? verse : L"c" + std::to_wstring(column));
    };
    const auto text = [](int row) {
        wchar_t value[512] = L"";
        ListView_GetItemText(GetDlgItem(TopWindow(), IDC_RECORD_LIST), row, 1, value, ARRAYSIZE(value));
        return std::wstring(value);
    };
    const auto copied = [](const std::wstring& value) {
        return Do([=] {
            OpenClipboard(TopWindow());
            EXPECT_EQ(static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT))), value);
            CloseClipboard();
        });
    };
    const Script leave{L"Esc", Back(), Focused(IDC_DATAGRID), L"Esc"};
    const auto fills = [] {
        const HWND list = GetDlgItem(TopWindow(), IDC_RECORD_LIST);
        RECT area{};
        GetClientRect(list, &area);
        EXPECT_EQ(ListView_GetColumnWidth(list, 0) + ListView_GetColumnWidth(list, 1), area.right);
        EXPECT_EQ(ListView_GetItemCount(list), MemoryRecordSet::kColumns);
    };
    Expect({L"F5", Elsewhere(), Do([&] {
                EXPECT_EQ(text(7) + text(6) + text(1), L"c7#Erroruno dos tres " + end);
                fills();
                SetWindowPos(TopWindow(), nullptr, 0, 0, 900, 600, SWP_NOMOVE | SWP_NOZORDER);
                fills();
            }),
            L"Down", Do([&] {
                const HWND whole = GetDlgItem(TopWindow(), IDC_RECORD_VALUE);
                EXPECT_EQ(TextOf(whole), L"uno\r\ndos\r\ntres\r\n" + end);
                EXPECT_GT(SendMessageW(whole, EM_GETLINECOUNT, 0, 0), 4);
            }),
            L"^C", copied(verse), leave},
           {});
    const std::wstring huge(500'000, L'x');
    host.set->Table().value = [&](long, short) { return Variant(huge); };
    const auto begins = [](HWND) { return ItemText(IDC_RECORD_VALUE).find(L"500000 caracteres") < 20'000; };
    Expect({L"F5", Until("the beginning", begins), L"^C", copied(huge), leave}, {});
    host.set->Table().records = 0;
    Expect(L"F5 Esc", {});
}

TEST_F(PanelUse, AGridWithoutColumnsHasNothingToSortAndAnEmptyHeading) {
    host.set->Table().columns = 0;
    host.set->Table().records = 0;
    Expect({L"F9 +F9", ClickHeading(), Tool(L"Orden descendente"), Do([] {
                RECT area;
                GetClientRect(Heading(), &area);
                EXPECT_GT(area.right, 100);
                EXPECT_GT(area.bottom, 10);
                EXPECT_NE(PixelOf(Heading(), area.right - 40, area.bottom - 5), RGB(0, 0, 0));
            }),
            L"A Right Esc"},
           {});
}

TEST_F(PanelUse, OtherSystemColoursReachTheGridAndTheBusyPointerGoes) {
    const int element = COLOR_WINDOW;
    const COLORREF before = GetSysColor(element);
    const COLORREF other = RGB(250, 240, 230);
    HCURSOR during = nullptr;
    host.data->On(L"MoveFirst", [&](Invocation&) { during = GetCursor(); });
    host.set->Table().records = 2;
    Expect({Do([&] {
                EXPECT_EQ(PixelOf(Grid(), 3, 3), before); // under the last row
                SetSysColors(1, &element, &other);
            }),
            Do([&] {
                EXPECT_EQ(PixelOf(Grid(), 3, 3), other);
                SetSysColors(1, &element, &before);
            }),
            L"Home", Do([&] {
                EXPECT_EQ(during, LoadCursorW(nullptr, IDC_WAIT));
                EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
            }),
            Close()},
           {L"MoveFirst()"});
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

} // namespace
} // namespace tamvelo::testing
