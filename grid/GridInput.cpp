// What the user does to the grid with keys and mouse.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "base/Placement.h"
#include "grid/GridAccessible.h"
#include "grid/GridView.h"
#include "win/TextSearch.h"

namespace tamvelo::grid {

namespace {

constexpr int kAcross = 48; // pixels at 96 dpi that one step to the side scrolls

bool Down(int key) { return GetKeyState(key) < 0; }

} // namespace

void GridView::MoveTo(long row) {
    row = std::clamp(row, 0L, std::max(0L, m_data.Count() - 1));
    const long before = m_data.Current();
    if (row == before || m_data.Busy()) {
        return;
    }
    m_data.MoveTo(row); // where the host stands afterwards is what counts, also when it refused
    if (!m_window || m_data.Current() == before) {
        CatchUp();
        return;
    }
    InvalidateRow(before);
    const long current = m_data.Current();
    if (current >= 0) {
        const long whole = m_geometry.WholeRows();
        ScrollTo(std::clamp(m_geometry.top, current - whole + 1, current));
    }
    if (!m_window) {
        return;
    }
    InvalidateRow(current);
    AnnounceCurrent();
    Raise([](GridEvents& events) { events.CurrentRowChanged(); });
    CatchUp();
}

void GridView::Activate(long row) {
    MoveTo(row);
    if (m_window && m_data.Current() == row) {
        Raise([](GridEvents& events) { events.RowActivated(); });
    }
}

void GridView::PressHeading(short column) {
    Raise([&](GridEvents& events) { events.HeadingClicked(column); });
}

void GridView::Step(long row, long top) {
    if (m_data.Count() == 0 || m_data.Busy()) {
        return;
    }
    ScrollTo(top);
    MoveTo(row);
}

bool GridView::Key(WPARAM key) {
    const long whole = m_geometry.WholeRows();
    const long top = m_geometry.top;
    const bool control = Down(VK_CONTROL);
    // Without a current record the first row on screen is where the user starts from.
    const bool none = m_data.Current() < 0;
    const long row = none ? top : m_data.Current();
    const long one = none ? 0 : 1;
    switch (key) {
    case VK_UP:
        Step(control ? 0 : row - one, top);
        return true;
    case VK_DOWN:
        Step(control ? m_data.Count() - 1 : row + one, top);
        return true;
    case VK_HOME: // where they are no commands of the form
        Step(0, top);
        return true;
    case VK_END:
        Step(m_data.Count() - 1, top);
        return true;
    case VK_PRIOR:
        Step(row - whole, top - whole);
        return true;
    case VK_NEXT:
        Step(row + whole, top + whole);
        return true;
    case VK_LEFT:
    case VK_RIGHT:
        if (m_columns.Count() > 0) {
            short column = m_column;
            short next = column;
            do {
                column = next;
                next = m_columns.Neighbour(column, key == VK_LEFT ? -1 : 1);
            } while (control && next != column);
            SetCurrentColumn(next);
        }
        return true;
    case 'C':
        if (control) {
            CopyRow(Down(VK_SHIFT));
        }
        return control;
    case VK_ADD:
    case VK_OEM_PLUS:
        if (control && m_columns.Count() > 0) {
            FitColumn(m_column);
            Raise([](GridEvents& events) { events.LayoutChanged(); });
        }
        return control;
    default:
        return false;
    }
}

/// The row whose current column starts so becomes the current one. Letters in quick succession are one text.
void GridView::Type(wchar_t letter) {
    if (letter <= L' ' || (Down(VK_CONTROL) && !Down(VK_MENU))) { // but AltGr types letters
        return;
    }
    const auto now = static_cast<DWORD>(GetMessageTime());
    const long current = m_data.Current();
    if (now - m_typed.time > 2 * GetDoubleClickTime() || m_typed.row != current ||
        m_typed.column != m_column) {
        m_typed.text.clear();
    }
    const bool first = m_typed.text.empty();
    const bool repeated = !first && m_typed.text.find_first_not_of(letter) == std::wstring::npos;
    m_typed.text += letter;
    m_typed.time = now;
    long row = RowStarting(m_typed.text, first ? current + 1 : current);
    if (row < 0 && repeated) { // the same key again: on to the next one
        row = RowStarting({&letter, 1}, current + 1);
    }
    if (row >= 0) {
        MoveTo(row);
    }
    m_typed.row = m_data.Current();
    m_typed.column = m_column;
}

/// Of the loaded rows the next one at or after `from`, then from the top again; -1 when there is none.
long GridView::RowStarting(std::wstring_view text, long from) {
    long before = -1;
    for (const long first : m_data.LoadedBlocks()) {
        const long end = std::min(first + GridData::kRowsReadTogether, m_data.Count());
        for (long row = first; row < end; ++row) {
            if ((row >= from || before < 0) && win::StartsWith(LoadedText(row, m_column), text)) {
                if (row >= from) {
                    return row;
                }
                before = row;
            }
        }
    }
    return before;
}

void GridView::SetCurrentColumn(short column) {
    column = m_columns.Nearest(column);
    if (column < 0) {
        return;
    }
    const RECT cell = CellRect(m_geometry.top, column);
    int scrolled = m_geometry.scrolled;
    if (cell.right > m_geometry.client.right) {
        scrolled += static_cast<int>(cell.right - m_geometry.client.right);
    }
    scrolled = std::min(scrolled, static_cast<int>(cell.left) + m_geometry.scrolled);
    ScrollAcross(scrolled);
    TakeColumn(column);
}

/// Makes it the current one, wherever it stands.
void GridView::TakeColumn(short column) {
    if (column < 0 || column == m_column) {
        return;
    }
    m_column = column;
    if (m_window) {
        InvalidateRow(m_data.Current());
        NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, m_window, OBJID_CLIENT,
                       RowChild(m_data.Current(), m_geometry.top));
        Raise([](GridEvents& events) { events.CurrentColumnChanged(); });
    }
}

bool GridView::SelectCell(int x, int y) {
    SetFocus(m_window);
    const long row = RowAt(y);
    if (row < 0 || !m_window) {
        return false;
    }
    const short column = ColumnAt(x);
    if (column >= 0) {
        SetCurrentColumn(column); // which may scroll
    }
    MoveTo(row);
    return m_window && m_data.Current() == row;
}

void GridView::Click(int x, int y) {
    const short column = ColumnAt(x);
    if (SelectCell(x, y) && TakesMarks(column)) {
        Raise([](GridEvents& events) { events.MarkClicked(); });
    }
}

bool GridView::TakesMarks(short column) { return m_offersMarks && m_window && IsMark(column); }

void GridView::DoubleClick(int x, int y) {
    const long row = RowAt(y);
    const short column = ColumnAt(x);
    Click(x, y);
    if (m_window && row >= 0 && !TakesMarks(column)) { // a mark clicked twice is clicked twice
        Activate(row);
    }
}

void GridView::ScrollVertically(WORD request) {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(m_window, SB_VERT, &info); // the message itself carries 16 bits only
    const long top = m_geometry.top;
    const long whole = m_geometry.WholeRows();
    switch (request) {
    case SB_LINEUP:
        return ScrollTo(top - 1);
    case SB_LINEDOWN:
        return ScrollTo(top + 1);
    case SB_PAGEUP:
        return ScrollTo(top - whole);
    case SB_PAGEDOWN:
        return ScrollTo(top + whole);
    case SB_TOP:
        return ScrollTo(0);
    case SB_BOTTOM:
        return ScrollTo(MostTop());
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return ScrollTo(info.nTrackPos);
    default:
        return;
    }
}

void GridView::ScrollHorizontally(WORD request) {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(m_window, SB_HORZ, &info);
    const int step = base::Scale(kAcross, 96, m_dpi);
    const int page = static_cast<int>(m_geometry.client.right);
    switch (request) {
    case SB_LINELEFT:
        return ScrollAcross(m_geometry.scrolled - step);
    case SB_LINERIGHT:
        return ScrollAcross(m_geometry.scrolled + step);
    case SB_PAGELEFT:
        return ScrollAcross(m_geometry.scrolled - page);
    case SB_PAGERIGHT:
        return ScrollAcross(m_geometry.scrolled + page);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return ScrollAcross(info.nTrackPos);
    default:
        return;
    }
}

void GridView::Wheel(int delta, bool across) {
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    m_wheel += delta;
    const int notches = m_wheel / WHEEL_DELTA;
    m_wheel -= notches * WHEEL_DELTA;
    if (across) {
        ScrollAcross(m_geometry.scrolled - notches * base::Scale(kAcross, 96, m_dpi));
    } else {
        const long step = lines == WHEEL_PAGESCROLL ? m_geometry.WholeRows() : static_cast<long>(lines);
        ScrollTo(m_geometry.top - notches * step);
    }
}

void GridView::ContextMenu(LPARAM place) {
    POINT screen{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    if (screen.x == -1 && screen.y == -1) { // from the keyboard: under the current cell
        const RECT cell = CellRect(std::max(m_data.Current(), m_geometry.top), m_column);
        screen = {std::clamp<LONG>(cell.left, 0, m_geometry.client.right),
                  std::clamp<LONG>(cell.bottom, 0, m_geometry.client.bottom)};
        ClientToScreen(m_window, &screen);
    } else {
        POINT client = screen;
        ScreenToClient(m_window, &client);
        if (client.y < m_geometry.headHeight) {
            TakeColumn(ColumnAt(client.x)); // the heading's, where it stands: nothing scrolls under the menu
        }
    }
    Raise([&](GridEvents& events) { events.ContextMenuAsked(screen); });
}

LRESULT GridView::HeadingNotice(const NMHDR& notice) {
    const bool fromHeadings =
        notice.hwndFrom == m_headings.Window() && notice.code <= HDN_FIRST && notice.code >= HDN_LAST;
    if (!fromHeadings || m_headings.Filling()) {
        return 0;
    }
    const auto& heading = reinterpret_cast<const NMHEADERW&>(notice);
    const short column = m_headings.ColumnOf(heading.iItem);
    if (column < 0 || column >= m_columns.Count()) {
        return 0;
    }
    const HDITEMW* item = heading.pitem;
    switch (notice.code) {
    case HDN_ITEMCHANGEDW:
    case HDN_ENDTRACKW:
        if (item && (item->mask & HDI_WIDTH)) {
            m_columns[column].width = std::max(0, item->cxy);
            m_columns[column].guessed = false;
            UpdateScrollBars();
            InvalidateBody();
        }
        if (notice.code == HDN_ENDTRACKW) {
            Raise([](GridEvents& events) { events.LayoutChanged(); });
        }
        return 0;
    case HDN_DIVIDERDBLCLICKW:
        FitColumn(column);
        Raise([](GridEvents& events) { events.LayoutChanged(); });
        return 0;
    case HDN_ITEMCLICKW:
        PressHeading(column);
        return 0;
    case HDN_ENDDRAG:
        // Ours is the order; the control, which is still at work on its items, gets them anew afterwards.
        if (item && (item->mask & HDI_ORDER) && item->iOrder >= 0) {
            m_columns.MoveOnScreen(column, item->iOrder);
            PostMessageW(m_window, kColumnsDragged, 0, 0);
        }
        return TRUE;
    default:
        return 0;
    }
}

LRESULT GridView::ColumnsDragged() {
    ShowColumns();
    Raise([](GridEvents& events) { events.LayoutChanged(); });
    return 0;
}

} // namespace tamvelo::grid
