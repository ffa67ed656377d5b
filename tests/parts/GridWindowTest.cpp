#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "tests/parts/GridFixture.h"

namespace tamvelo::testing {

namespace {

using com::LateObject;
using com::Variant;

std::wstring Clipboard() {
    OpenClipboard(nullptr);
    const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
    const std::wstring text = memory ? static_cast<const wchar_t*>(GlobalLock(memory)) : L"";
    CloseClipboard();
    return text;
}

} // namespace

using GridWindowTest = GridTest;

TEST_F(GridWindowTest, KeysMoveTheRecordAndTheColumn) {
    const auto set = Bind();
    const long page = (kHeight - 4 - ItemPlace(0).bottom) / (LocationOf(1).bottom - LocationOf(1).top);
    const struct {
        WPARAM key;
        bool control;
        long row;
        short column;
    } steps[] = {
        {VK_UP, false, 0, 0},     {VK_DOWN, false, 1, 0},   {VK_NEXT, false, page + 1, 0},
        {VK_PRIOR, false, 1, 0},  {VK_DOWN, true, 999, 0},  {VK_NEXT, false, 999, 0},
        {VK_UP, true, 0, 0},      {VK_END, false, 999, 0},  {VK_HOME, false, 0, 0},
        {VK_LEFT, false, 0, 0},   {VK_RIGHT, false, 0, 1},  {VK_RIGHT, false, 0, 2},
        {VK_RIGHT, true, 0, 7},   {VK_RETURN, false, 0, 7}, {VK_ESCAPE, false, 0, 7}, // the form's
        {VK_INSERT, false, 0, 7}, {VK_DELETE, false, 0, 7}, {VK_F3, false, 0, 7},
        {'A', true, 0, 7},
    };
    for (const auto& [key, control, row, column] : steps) {
        SCOPED_TRACE(::testing::Message() << key << " at " << set->Position());
        const bool moves = row != set->Position();
        Press(key, {control ? VK_CONTROL : 0});
        EXPECT_EQ(set->Position(), row);
        EXPECT_EQ(m_grid->CurrentRow(), row);
        EXPECT_EQ(m_grid->CurrentColumn(), column);
        const long top = std::stol(FirstCell(0)) - 1;
        EXPECT_TRUE(top <= row && row < top + page) << "on screen from " << top;
        EXPECT_EQ(TakeEvents(), moves ? "row;" : "");
    }
    m_grid->SetCurrentColumn(99);
    EXPECT_EQ(m_grid->CurrentColumn(), 7);
    EXPECT_LT(LocationOf(Heading(7)).right, kWidth);
    m_grid->SetCurrentColumn(-4);
    EXPECT_EQ(m_grid->CurrentColumn(), 0);
    EXPECT_EQ(LocationOf(Heading(0)).left, 0);
    EXPECT_EQ(Send(WM_GETDLGCODE) & (DLGC_WANTARROWS | DLGC_WANTTAB | DLGC_WANTALLKEYS), DLGC_WANTARROWS);

    set->SetPosition(1000); // without a current record the user starts at the top
    m_grid->HostChanged();
    EXPECT_EQ(m_grid->CurrentRow(), -1);
    EXPECT_EQ(m_grid->CounterText(), L"1000 registros");
    EXPECT_TRUE(m_grid->Value(0).IsEmpty());
    m_grid->CopyRow(true);
    Press(VK_DOWN);
    EXPECT_EQ(m_grid->CurrentRow(), 0);
    EXPECT_EQ(m_grid->CounterText(), L"Registro 1 de 1000");
    set->SetPosition(500); // a record that is found opens a third from the top
    m_grid->HostChanged();
    EXPECT_EQ(ReadGrid(m_grid->Window()).selected, page / 3);
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
    const auto type = [&](std::wstring_view letters, bool pause) { // as the keyboard sends them, with a time
        Sleep(pause ? 250 : 0);
        for (const wchar_t letter : letters) {
            PostMessageW(m_grid->Window(), WM_CHAR, letter, 1);
            Pump();
        }
    };
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
        type(typed, pause);
        EXPECT_EQ(set->Position(), row);
        EXPECT_EQ(m_grid->CurrentRow(), row);
    }
    EXPECT_EQ(Calls(set, [&] { type(L"q \x3\x7f", true); }), 0); // no row, and nothing to begin a text with
    Press(VK_DOWN);
    const auto oneStep = std::exchange(set->Table().calls, {});
    TakeEvents();
    Hold({VK_CONTROL, VK_MENU}); // AltGr types letters
    type(L"a", true);
    Hold({});
    EXPECT_EQ(set->Table().calls, oneStep); // the row change, and no other call
    EXPECT_EQ(TakeEvents(), "row;");
    type(L"r", false);
    Press(VK_DOWN);
    type(L"n", false); // elsewhere by now: another text
    EXPECT_EQ(m_grid->CurrentRow(), 1);
    SetDoubleClickTime(pace);
}

TEST_F(GridWindowTest, TheMouseChoosesActivatesAndScrolls) {
    m_grid->NameField(L"ACTIVO", L"¿Activo?");
    const auto set = Bind();
    const RECT third = LocationOf(3);
    const auto click = [&](UINT message, LONG x, LONG y) { Send(message, MK_LBUTTON, MAKELPARAM(x, y)); };
    click(WM_LBUTTONDOWN, third.left + 120, third.top + 3);
    EXPECT_EQ(set->Position(), 2);
    EXPECT_EQ(m_grid->CurrentColumn(), 1);
    click(WM_LBUTTONDBLCLK, third.left + 120, third.top + 3);
    click(WM_LBUTTONDBLCLK, 5, 2); // not on a row
    Send(WM_CONTEXTMENU, 0, -1);
    EXPECT_EQ(TakeEvents(), "row;activated;menu;");
    m_throws = true;
    click(WM_LBUTTONDBLCLK, third.left + 120, third.top + 3);
    EXPECT_EQ(m_failures, std::vector<std::wstring>{L"no"});
    m_throws = false;
    TakeEvents();

    EXPECT_EQ(NameOf(Heading(4)), L"¿Activo?");
    const LONG mark = LocationOf(Heading(4)).left + 9;
    for (const char* events : {"activated;", "mark;mark;"}) { // one of its own where marks are offered
        click(WM_LBUTTONDOWN, mark, third.top + 3);
        click(WM_LBUTTONDBLCLK, mark, third.top + 3);
        EXPECT_EQ(TakeEvents(), events);
        m_grid->OfferMarks();
    }
    EXPECT_EQ(m_grid->CurrentColumn(), 4);

    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(FirstCell(0), L"4");
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA / 2), 0);
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA / 2), 0);
    EXPECT_EQ(FirstCell(0), L"1");
    EXPECT_EQ(set->Position(), 2); // scrolling is not moving
    Send(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -WHEEL_DELTA), 0);
    EXPECT_LT(LocationOf(Heading(0)).left, 0);
}

TEST_F(GridWindowTest, TheMouseOnTheHeadingsChoosesWidensSortsMovesAndFitsColumns) {
    Bind();
    // A right click is about its column, also where that is cut off: nothing scrolls.
    int last = 0; // of which something is to be seen
    for (int right = WidthOf(0); right <= kWidth - 40; right += WidthOf(static_cast<short>(last))) {
        ++last;
    }
    POINT place{kWidth - 40, 4};
    ClientToScreen(m_grid->Window(), &place);
    SendMessageW(Header(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Header()), MAKELPARAM(place.x, place.y));
    EXPECT_EQ(TakeEvents(), "menu;");
    EXPECT_EQ(m_grid->CurrentColumn(), last);
    EXPECT_EQ(LocationOf(Heading(0)).left, 0);
    EXPECT_EQ(m_grid->CurrentRow(), 0);

    const int y = ItemPlace(0).bottom / 2;
    const auto mouse = [&](UINT message, int x) {
        SendMessageW(Header(), message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(x, y));
    };
    const auto drag = [&](int from, int to) {
        mouse(WM_LBUTTONDOWN, from);
        for (const int x : {(from * 3 + to) / 4, (from + to) / 2, to}) {
            mouse(WM_MOUSEMOVE, x);
        }
        mouse(WM_LBUTTONUP, to);
        Pump();
        return TakeEvents();
    };
    const int first = WidthOf(0);
    EXPECT_EQ(drag(first - 1, first + 59), "layout;");
    EXPECT_EQ(WidthOf(0), first + 60);
    EXPECT_EQ(drag(20, first + 60 + WidthOf(1) - 10), "layout;");
    EXPECT_EQ(FirstCell(0), L"Artículo 1");
    EXPECT_EQ(m_grid->Layout().columns[0].order, 1);
    EXPECT_EQ(drag(20, 20), "heading1;"); // by the column's number, wherever it stands
    EXPECT_EQ(drag(WidthOf(1) + 20, WidthOf(1) + 20), "heading0;");

    const int wide = WidthOf(1);
    mouse(WM_LBUTTONDBLCLK, wide - 1);
    EXPECT_EQ(TakeEvents(), "layout;");
    EXPECT_LT(WidthOf(1), wide - 50);
    m_grid->SetCurrentColumn(0);
    Press(VK_ADD, {VK_CONTROL});
    EXPECT_EQ(TakeEvents(), "layout;");
    EXPECT_LT(WidthOf(0), first + 60);
}

TEST_F(GridWindowTest, TheClipboardGetsWholeValues) {
    const auto set = Bind();
    set->Table().value = [](long, short column) {
        return column == 1 ? Variant(std::wstring(3000, L'ñ') + L"\tfin\r\n")
                           : Variant(static_cast<long>(column));
    };
    m_grid->HostChanged();
    for (long i = 2; i < 8; ++i) {
        Column(i).Put(L"Visible", false);
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
    LateObject name = Column(1L);
    EXPECT_EQ(Column(0L).Call(L"Caption").ToText(), L"Código");
    EXPECT_EQ(Column(L"codigo").Call(L"DataField").ToText(), L"Codigo");
    EXPECT_EQ(name.Call(L"Text").ToText(), L"Artículo 1");
    EXPECT_EQ(Column(0L).Call(L"Value").Type(), VT_I4);
    EXPECT_THROW(name.Put(L"DataField", L"otro"), com::Error);
    EXPECT_THROW(Column(8L), com::Error);
    EXPECT_THROW(Column(L"Ninguna"), com::Error);

    name.Put(L"Width", 321L);
    name.Put(L"Order", 0L);
    name.Put(L"Caption", L"Denominación");
    name.Put(L"Alignment", 1L);
    EXPECT_EQ(LocationOf(Heading(0)).right, 321);
    EXPECT_EQ(NameOf(Heading(0)), L"Denominación");
    name.Put(L"Visible", false);
    EXPECT_EQ(FirstCell(0), L"1");
    m_grid->SetCurrentColumn(3);
    Column(3L).Put(L"Visible", false); // another one is the current one now
    EXPECT_EQ(m_grid->CurrentColumn(), 4);
    m_grid->Requeried(); // the same fields: all of it stays
    EXPECT_FALSE(name.Call(L"Visible").ToBool());
    EXPECT_EQ(name.Call(L"Caption").ToText(), L"Denominación");
    EXPECT_EQ(name.Call(L"Order").ToLong(), 0);

    const auto set = Bind({.rows = 0});
    Column(6L).Put(L"Width", 77L); // which was a guess, until there is a text
    set->Grow(9);
    m_grid->Requeried();
    EXPECT_EQ(WidthOf(6), 77);

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
    const LONG rows = Rows();
    EXPECT_GT(rows, 10);
    EXPECT_LT(rows, 64);
    LONG children = 0;
    object->get_accChildCount(&children);
    EXPECT_EQ(children, rows + 8);
    Variant role;
    object->get_accRole(Child(children), role.Address());
    EXPECT_EQ(role.ToLong(), ROLE_SYSTEM_COLUMNHEADER);
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

    RECT fifth = LocationOf(5);
    MapWindowPoints(m_grid->Window(), nullptr, reinterpret_cast<POINT*>(&fifth), 2);
    Variant hit;
    object->accHitTest(fifth.left + 5, (fifth.top + fifth.bottom) / 2, hit.Address());
    EXPECT_EQ(hit.ToLong(), 5);
    const struct {
        long direction;
        LONG from;
        LONG to; // 0: nowhere
    } ways[] = {
        {NAVDIR_NEXT, 5, 6},    {NAVDIR_PREVIOUS, 5, 4},  {NAVDIR_DOWN, 5, 6},
        {NAVDIR_UP, 5, 4},      {NAVDIR_PREVIOUS, 1, 0},  {NAVDIR_UP, 1, 0},
        {NAVDIR_DOWN, rows, 0}, {NAVDIR_LEFT, 5, 0},      {NAVDIR_FIRSTCHILD, 0, 1},
        {NAVDIR_NEXT, 0, 0},    {NAVDIR_UP, rows + 1, 0}, {NAVDIR_LASTCHILD, 0, children},
    };
    for (const auto& [direction, from, to] : ways) {
        Variant next;
        const HRESULT found = object->accNavigate(direction, Child(from), next.Address());
        EXPECT_EQ(found == S_OK ? next.ToLong() : 0, to) << direction << " from " << from;
    }
    TakeEvents();
    object->accDoDefaultAction(Child(4));
    object->accDoDefaultAction(Child(rows + 3));
    EXPECT_EQ(TakeEvents(), "row;activated;heading2;");
    EXPECT_EQ(object->accDoDefaultAction(Child(rows + 9)), E_INVALIDARG);

    m_grid.reset();
    EXPECT_EQ(object->accDoDefaultAction(Child(1)), CO_E_OBJNOTCONNECTED);
}

TEST_F(GridWindowTest, AReaderIsToldOfTheRowAndTheCellThatAreCurrentNow) {
    static std::map<DWORD, LONG> told;
    const WINEVENTPROC note =
        [](HWINEVENTHOOK, DWORD event, HWND, LONG, LONG child, DWORD, DWORD) __attribute__((stdcall)) {
        told[event] = child;
    };
    const HWINEVENTHOOK hook = SetWinEventHook(EVENT_OBJECT_FOCUS, EVENT_OBJECT_VALUECHANGE, nullptr, note,
                                               GetCurrentProcessId(), GetCurrentThreadId(), 0);
    const auto tells = [&](std::map<DWORD, LONG> expected) {
        Pump();
        std::erase_if(told, [](const auto& each) { return each.second == CHILDID_SELF; }); // of windows
        EXPECT_EQ(std::exchange(told, {}), expected);
    };
    Bind();
    tells({{EVENT_OBJECT_FOCUS, 1}, {EVENT_OBJECT_SELECTION, 1}});
    Press(VK_DOWN);
    tells({{EVENT_OBJECT_FOCUS, 2}, {EVENT_OBJECT_SELECTION, 2}});
    Press(VK_RIGHT);
    tells({{EVENT_OBJECT_VALUECHANGE, 2}});
    m_grid->ToggleMark(4);
    tells({{EVENT_OBJECT_FOCUS, 2}, {EVENT_OBJECT_SELECTION, 2}, {EVENT_OBJECT_VALUECHANGE, 2}});
    SetFocus(m_parent);
    Press(VK_DOWN);
    tells({{EVENT_OBJECT_SELECTION, 3}});
    SetFocus(m_grid->Window());
    tells({{EVENT_OBJECT_FOCUS, 3}, {EVENT_OBJECT_SELECTION, 3}});
    Send(WM_VSCROLL, SB_BOTTOM);
    SetWindowPos(m_grid->Window(), nullptr, 0, 0, 300, 150, SWP_NOMOVE | SWP_NOZORDER);
    SetFocus(m_parent);
    SetFocus(m_grid->Window());
    tells({}); // it is not on screen, and a new size does not bring it back
    UnhookWinEvent(hook);
}

} // namespace tamvelo::testing
