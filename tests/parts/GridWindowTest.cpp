#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "com/Error.h"
#include "com/LateObject.h"
#include "tests/parts/GridFixture.h"

namespace tamvelo::testing {

namespace {

using com::LateObject;
using com::Variant;

} // namespace

using GridWindowTest = GridTest;

TEST_F(GridWindowTest, KeysMoveTheRecordAndTheColumn) {
    const auto set = Bind();
    TakeEvents();
    Press(VK_UP);
    EXPECT_EQ(TakeEvents(), "");
    Press(VK_DOWN);
    Press(VK_NEXT);
    const long page = m_grid->CurrentRow() - 1;
    EXPECT_GT(page, 10);
    Press(VK_PRIOR);
    EXPECT_EQ(m_grid->CurrentRow(), 1);
    EXPECT_EQ(TakeEvents(), "row;row;row;");
    Press(VK_DOWN, {VK_CONTROL});
    EXPECT_EQ(set->Position(), 999);
    Press(VK_NEXT);
    EXPECT_EQ(set->Position(), 999);
    Press(VK_UP, {VK_CONTROL});
    EXPECT_EQ(set->Position(), 0);
    Press(VK_END);
    EXPECT_EQ(set->Position(), 999);
    Press(VK_HOME);
    EXPECT_EQ(set->Position(), 0);

    Press(VK_LEFT);
    EXPECT_EQ(m_grid->CurrentColumn(), 0);
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    EXPECT_EQ(m_grid->CurrentColumn(), 2);
    Press(VK_RIGHT, {VK_CONTROL});
    EXPECT_EQ(m_grid->CurrentColumn(), 7);
    m_grid->SetCurrentColumn(99);
    EXPECT_EQ(m_grid->CurrentColumn(), 7);
    m_grid->SetCurrentColumn(-4);
    EXPECT_EQ(m_grid->CurrentColumn(), 0);

    TakeEvents();
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE, VK_INSERT, VK_DELETE, VK_F3, VK_F8}) {
        Press(key); // the form's
    }
    Press('A', {VK_CONTROL});
    EXPECT_EQ(TakeEvents(), "");
    EXPECT_EQ(Send(WM_GETDLGCODE) & (DLGC_WANTARROWS | DLGC_WANTTAB | DLGC_WANTALLKEYS), DLGC_WANTARROWS);
}

TEST_F(GridWindowTest, TypedLettersFindTheNextRowOfTheCurrentColumn) {
    const wchar_t* const names[] = {L"Ámbar", L"Nuez", L"arena", L"ÑANDÚ", L"nácar",
                                    L"aRROZ", L"Ñora", L"αβγ",   L"aaron", L"12/5/2026"};
    auto set = com::Make<MemoryRecordSet>(RecordSetOptions{.rows = 1000});
    set->Table().value = [&](long record, short column) {
        return column != 1 || record >= 10 ? Variant(L"zz") : Variant(names[record]);
    };
    m_grid->SetDataSource(set.Get());
    m_grid->SetCurrentColumn(1);
    const UINT pace = GetDoubleClickTime();
    SetDoubleClickTime(100);
    const struct {
        const wchar_t* typed;
        long row;
        bool pause; // before it
    } steps[] = {
        {L"a", 2, true},  {L"R", 2, false}, {L"r", 5, false},  {L"x", 5, false}, // arena, arroz; nothing
        {L"n", 1, true},  {L"ñ", 3, true},  {L"n", 4, true},   {L"ñ", 6, true},  {L"o", 6, false},
        {L"Α", 7, true},  {L"12", 9, true}, {L"a m", 0, true}, {L"a", 2, true},  {L"a", 8, false},
        {L"a", 0, false}, {L"a", 2, false}, // the same letter again: the next one
        {L"q", 2, true},
    };
    for (const auto& [typed, row, pause] : steps) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(typed)));
        if (pause) {
            Sleep(250);
        }
        Type(typed);
        EXPECT_EQ(set->Position(), row);
        EXPECT_EQ(m_grid->CurrentRow(), row);
    }
    Sleep(250);
    set->Table().calls.clear();
    Type(L"q \x3\x7f"); // no row, and nothing that a text begins with
    EXPECT_EQ(set->Table().Calls(), 0);
    Press(VK_DOWN);
    const auto oneStep = std::exchange(set->Table().calls, {});
    Sleep(250);
    TakeEvents();
    Hold({VK_CONTROL, VK_MENU}); // AltGr types letters
    Type(L"a");
    Hold({});
    EXPECT_EQ(set->Table().calls, oneStep); // the row change, and no other call
    EXPECT_EQ(TakeEvents(), "row;");
    Type(L"r");
    Press(VK_DOWN);
    Type(L"n"); // elsewhere by now: another text
    EXPECT_EQ(m_grid->CurrentRow(), 1);
    SetDoubleClickTime(pace);
}

TEST_F(GridWindowTest, WithoutACurrentRecordTheUserStartsAtTheTop) {
    auto set = com::Make<MemoryRecordSet>();
    set->SetPosition(1000);
    m_grid->SetDataSource(set.Get());
    EXPECT_EQ(m_grid->CurrentRow(), -1);
    EXPECT_EQ(m_grid->CounterText(), L"1000 registros");
    EXPECT_TRUE(m_grid->Value(0).IsEmpty());
    m_grid->CopyRow(true);
    Press(VK_DOWN);
    EXPECT_EQ(m_grid->CurrentRow(), 0);
    EXPECT_EQ(m_grid->CounterText(), L"Registro 1 de 1000");
}

TEST_F(GridWindowTest, TheMouseChoosesActivatesAndScrolls) {
    const auto set = Bind();
    TakeEvents();
    const RECT third = LocationOf(3);
    const LPARAM place = MAKELPARAM(third.left + 120, third.top + 3);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, place);
    EXPECT_EQ(set->Position(), 2);
    EXPECT_EQ(m_grid->CurrentColumn(), 1);
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, place);
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 2)); // not on a row
    Send(WM_CONTEXTMENU, 0, -1);
    EXPECT_EQ(TakeEvents(), "row;activated;menu;");

    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(FirstCell(0), L"4");
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA / 2), 0);
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA / 2), 0);
    EXPECT_EQ(FirstCell(0), L"1");
    EXPECT_EQ(set->Position(), 2); // scrolling is not moving

    Send(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -WHEEL_DELTA), 0);
    EXPECT_LT(LocationOf(ChildrenOfRole(ROLE_SYSTEM_ROW) + 1).left, 0);
}

TEST_F(GridWindowTest, AClickOnAMarkIsOneOfItsOwnWhereMarksAreOffered) {
    m_grid->NameField(L"activo", L"¿Activo?");
    Bind();
    const RECT mark = LocationOf(ChildrenOfRole(ROLE_SYSTEM_ROW) + 5);
    EXPECT_EQ(NameOf(ChildrenOfRole(ROLE_SYSTEM_ROW) + 5), L"¿Activo?");
    const LPARAM place = MAKELPARAM((mark.left + mark.right) / 2, LocationOf(3).top + 3);
    TakeEvents();
    for (const char* events : {"row;activated;", "mark;mark;"}) {
        Send(WM_LBUTTONDOWN, MK_LBUTTON, place);
        Send(WM_LBUTTONDBLCLK, MK_LBUTTON, place);
        EXPECT_EQ(TakeEvents(), events);
        m_grid->OfferMarks();
    }
    EXPECT_EQ(m_grid->CurrentColumn(), 4);
    EXPECT_EQ(m_grid->CurrentRow(), 2);
}

TEST_F(GridWindowTest, TheThumbReachesEveryOneOfAMillionRows) {
    const auto set = Bind(RecordSetOptions{.rows = 1000000});
    EXPECT_EQ(m_grid->CounterText(), L"Registro 1 de 1.000.000");
    for (const int row : {70000, 654321, 999000}) {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_POS;
        info.nPos = row;
        SetScrollInfo(m_grid->Window(), SB_VERT, &info, FALSE);
        set->Table().calls.clear();
        Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 0));
        EXPECT_EQ(FirstCell(0), std::to_wstring(row + 1));
        EXPECT_LE(set->Table().Calls(L"GetRows"), 2);
    }
    EXPECT_EQ(set->Position(), 0);
}

TEST_F(GridWindowTest, HeadingsReportClicksWidthsAndDragging) {
    Bind();
    TakeEvents();
    Notify(HDN_ITEMCLICKW, 3);
    EXPECT_EQ(TakeEvents(), "heading3;");

    Notify(HDN_ITEMCHANGEDW, 1, HDI_WIDTH, 222);
    Notify(HDN_ENDTRACKW, 1, HDI_WIDTH, 223);
    EXPECT_EQ(TakeEvents(), "layout;");
    EXPECT_EQ(m_grid->Layout().columns[1].width, 223);

    EXPECT_TRUE(Notify(HDN_ENDDRAG, 0, HDI_ORDER, 2));
    Pump();
    EXPECT_EQ(TakeEvents(), "layout;");
    EXPECT_EQ(m_grid->Layout().columns[0].order, 2);
    EXPECT_EQ(FirstCell(0), L"Artículo 1");
    Notify(HDN_ITEMCLICKW, 2); // by the column's number, wherever it stands
    EXPECT_EQ(TakeEvents(), "heading0;");

    Notify(HDN_DIVIDERDBLCLICKW, 0);
    EXPECT_EQ(TakeEvents(), "layout;");
    EXPECT_LT(m_grid->Layout().columns[1].width, 150);
    m_grid->SetCurrentColumn(6);
    Press(VK_ADD, {VK_CONTROL});
    EXPECT_EQ(TakeEvents(), "layout;");
}

TEST_F(GridWindowTest, TheMouseOnTheHeadingsWidensSortsAndMovesColumns) {
    Bind();
    TakeEvents();
    const int y = HeadHeight() / 2;
    const auto drag = [&](int from, int to) {
        SendMessageW(Header(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, y));
        for (const int x : {(from * 3 + to) / 4, (from + to) / 2, to}) {
            SendMessageW(Header(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, y));
        }
        SendMessageW(Header(), WM_LBUTTONUP, 0, MAKELPARAM(to, y));
        Pump();
    };
    const int first = m_grid->Layout().columns[0].width;
    drag(first - 1, first + 59);
    EXPECT_EQ(TakeEvents(), "layout;");
    EXPECT_EQ(m_grid->Layout().columns[0].width, first + 60);

    drag(20, first + 60 + m_grid->Layout().columns[1].width - 10);
    EXPECT_EQ(TakeEvents(), "layout;");
    EXPECT_EQ(FirstCell(0), L"Artículo 1");

    drag(20, 20);
    EXPECT_EQ(TakeEvents(), "heading1;");
}

TEST_F(GridWindowTest, ARightClickOnAHeadingIsAboutItsColumn) {
    Bind();
    TakeEvents();
    const RECT before = LocationOf(ChildrenOfRole(ROLE_SYSTEM_ROW) + 3);
    int last = 0; // of which something is to be seen
    for (int right = WidthOf(0); right <= kWidth - 40; right += WidthOf(static_cast<short>(last))) {
        ++last;
    }
    for (const auto& [x, column] : {std::pair{before.left + 4L, 2}, {LONG{kWidth} - 40, last}}) {
        POINT place{x, 4};
        ClientToScreen(m_grid->Window(), &place);
        SendMessageW(Header(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Header()),
                     MAKELPARAM(place.x, place.y));
        EXPECT_EQ(TakeEvents(), "menu;");
        EXPECT_EQ(m_grid->CurrentColumn(), column);
        EXPECT_EQ(LocationOf(ChildrenOfRole(ROLE_SYSTEM_ROW) + 3).left, before.left); // nothing scrolls
    }
    EXPECT_EQ(m_grid->CurrentRow(), 0);
}

TEST_F(GridWindowTest, TheClipboardGetsWholeValues) {
    const auto set = Bind();
    set->Table().value = [](long, short column) {
        return column == 1 ? Variant(std::wstring(3000, L'ñ') + L"\tfin\r\n")
                           : Variant(static_cast<long>(column));
    };
    m_grid->HostChanged();
    LateObject columns(m_grid->Columns().Get(), L"Columns");
    for (long i = 2; i < 8; ++i) {
        LateObject(columns.Call(L"Item", {i}).ToObject().Get(), L"Column").Put(L"Visible", false);
    }
    Press('C', {VK_CONTROL});
    EXPECT_EQ(Clipboard(), L"0\t" + std::wstring(3000, L'ñ') + L" fin  ");
    Press('C', {VK_CONTROL, VK_SHIFT});
    EXPECT_EQ(Clipboard().substr(0, 18), L"Código\tNombre\r\n0\tñ");
    m_grid->CopyCell();
    EXPECT_EQ(Clipboard(), L"0");
}

TEST_F(GridWindowTest, ColumnsIsAnAutomationObject) {
    Bind();
    LateObject columns(m_grid->Columns().Get(), L"Columns");
    EXPECT_EQ(columns.Call(L"Count").ToLong(), 8);
    const auto column = [&](const com::Argument& which) {
        return LateObject(columns.Call(L"Item", {which}).ToObject().Get(), L"Column");
    };
    LateObject name = column(1L);
    EXPECT_EQ(column(0L).Call(L"Caption").ToText(), L"Código");
    EXPECT_EQ(column(L"codigo").Call(L"DataField").ToText(), L"Codigo");
    EXPECT_EQ(name.Call(L"Text").ToText(), L"Artículo 1");
    EXPECT_EQ(column(0L).Call(L"Value").Type(), VT_I4);
    EXPECT_THROW(name.Put(L"DataField", L"otro"), com::Error);
    EXPECT_THROW(column(8L), com::Error);
    EXPECT_THROW(column(L"Ninguna"), com::Error);

    name.Put(L"Width", 321L);
    name.Put(L"Order", 0L);
    name.Put(L"Caption", L"Denominación");
    name.Put(L"Alignment", 1L);
    EXPECT_EQ(LocationOf(ChildrenOfRole(ROLE_SYSTEM_ROW) + 1).right, 321);
    EXPECT_EQ(NameOf(ChildrenOfRole(ROLE_SYSTEM_ROW) + 1), L"Denominación");
    name.Put(L"Visible", false);
    EXPECT_EQ(FirstCell(0), L"1");
    m_grid->Requeried(); // the same fields: all of it stays
    EXPECT_FALSE(name.Call(L"Visible").ToBool());
    EXPECT_EQ(name.Call(L"Caption").ToText(), L"Denominación");
    EXPECT_EQ(name.Call(L"Order").ToLong(), 0);

    m_grid.reset();
    EXPECT_THROW(columns.Call(L"Count"), com::Error);
    EXPECT_THROW(name.Call(L"Caption"), com::Error);
}

TEST_F(GridWindowTest, AReaderFindsRowsCellsStatesAndPlaces) {
    Bind();
    m_grid->SetAccessibleName(L"Artículos");
    const auto object = Accessible();
    ASSERT_TRUE(object);
    EXPECT_EQ(NameOf(CHILDID_SELF), L"Artículos");
    const LONG rows = ChildrenOfRole(ROLE_SYSTEM_ROW);
    EXPECT_GT(rows, 10);
    EXPECT_LT(rows, 64);
    EXPECT_EQ(ChildrenOfRole(ROLE_SYSTEM_COLUMNHEADER), 8);
    EXPECT_EQ(NameOf(2).substr(0, 25), L"2; Artículo 2; 2,47; 2/1/");
    EXPECT_NE(NameOf(2).find(L"; No; "), std::wstring::npos);

    Press(VK_DOWN);
    Press(VK_RIGHT);
    Variant state;
    object->get_accState(Child(2), state.Address());
    EXPECT_EQ(state.ToLong() & (STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED),
              STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED);
    Variant focus;
    object->get_accFocus(focus.Address());
    EXPECT_EQ(focus.ToLong(), 2);
    com::Bstr value;
    object->get_accValue(Child(2), value.Address());
    EXPECT_EQ(value.View(), L"Nombre: Artículo 2");

    LONG left = 0, top = 0, width = 0, height = 0;
    object->accLocation(&left, &top, &width, &height, Child(5));
    Variant hit;
    object->accHitTest(left + 5, top + height / 2, hit.Address());
    EXPECT_EQ(hit.ToLong(), 5);
    Variant next;
    object->accNavigate(NAVDIR_NEXT, Child(5), next.Address());
    EXPECT_EQ(next.ToLong(), 6);
    EXPECT_EQ(object->accNavigate(NAVDIR_PREVIOUS, Child(1), next.Address()), S_FALSE);
    TakeEvents();
    object->accDoDefaultAction(Child(4));
    object->accDoDefaultAction(Child(rows + 3));
    EXPECT_EQ(TakeEvents(), "row;activated;heading2;");
    EXPECT_EQ(object->accDoDefaultAction(Child(rows + 9)), E_INVALIDARG);

    m_grid.reset();
    EXPECT_EQ(object->accDoDefaultAction(Child(1)), CO_E_OBJNOTCONNECTED);
}

TEST_F(GridWindowTest, AnErrorInAnEventComesBackAsFailed) {
    struct Throwing : grid::GridEvents {
        void RowActivated() override { throw com::Error(E_FAIL, L"no"); }
        void HeadingClicked(short) override {}
        void ContextMenuAsked(POINT) override {}
        void CurrentRowChanged() override {}
        void LayoutChanged() override {}
        void Failed(const com::Error& error) noexcept override { text = error.description; }
        std::wstring text;
    } events;
    grid::Grid grid(m_parent, 8, events);
    SetWindowPos(grid.Window(), nullptr, 0, 0, kWidth, kHeight, SWP_NOZORDER);
    grid.SetDataSource(com::Make<MemoryRecordSet>().Get());
    SendMessageW(grid.Window(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(10, 50));
    EXPECT_EQ(events.text, L"no");
}

} // namespace tamvelo::testing
