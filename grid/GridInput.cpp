#include "grid/GridInput.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "win/ScrollBar.h"

namespace tamvelo::grid {

namespace {

bool Down(int key) { return GetKeyState(key) < 0; }

POINT PointOf(LPARAM l) { return {static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l))}; }

} // namespace

std::optional<LRESULT> GridInput::Handle(UINT message, WPARAM w, LPARAM l) {
    const GridViewport& port = m_view.Viewport();
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
        return Key(w) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_CHAR:
        Type(static_cast<wchar_t>(w));
        return 0;
    case WM_LBUTTONDOWN:
        Click(PointOf(l));
        return {};
    case WM_RBUTTONDOWN: // for the menu that follows
        SelectCell(PointOf(l));
        return {};
    case WM_LBUTTONDBLCLK:
        DoubleClick(PointOf(l));
        return 0;
    case WM_MOUSEWHEEL:
        Wheel(static_cast<short>(HIWORD(w)), (LOWORD(w) & MK_SHIFT) != 0);
        return 0;
    case WM_MOUSEHWHEEL:
        Wheel(-static_cast<short>(HIWORD(w)), true);
        return 0;
    case WM_CONTEXTMENU:
        ContextMenu(PointOf(l));
        return 0;
    case WM_VSCROLL:
        m_view.ScrollTo(win::ScrolledTo(m_view.Window(), SB_VERT, LOWORD(w), port.Top(), 1));
        return 0;
    case WM_HSCROLL:
        m_view.ScrollAcross(win::ScrolledTo(m_view.Window(), SB_HORZ, LOWORD(w), port.Scrolled(), Across()));
        return 0;
    case WM_NOTIFY:
        return HeadingNotice(*reinterpret_cast<const NMHDR*>(l));
    case kColumnsDragged:
        m_view.ShowColumns();
        m_view.Tell(&GridEvents::LayoutChanged);
        return 0;
    default:
        return {};
    }
}

bool GridInput::Key(WPARAM key) {
    const GridColumns& columns = m_view.Columns();
    const long whole = m_view.Viewport().WholeRows();
    const long top = m_view.Viewport().Top();
    const long last = m_view.Data().Count() - 1;
    const bool control = Down(VK_CONTROL);
    // Without a current record the first row on screen is where the user starts from.
    const bool none = m_view.Data().Current() < 0;
    const long row = none ? top : m_view.Data().Current();
    const long one = none ? 0 : 1;
    const struct {
        WPARAM key;
        long row;
        long top;
    } steps[] = {
        {VK_UP, control ? 0 : row - one, top},
        {VK_DOWN, control ? last : row + one, top},
        {VK_HOME, 0, top}, // where they are no commands of the form
        {VK_END, last, top},
        {VK_PRIOR, row - whole, top - whole},
        {VK_NEXT, row + whole, top + whole},
    };
    for (const auto& step : steps) {
        if (step.key == key) {
            if (last >= 0 && !m_view.Data().Busy()) {
                m_view.ScrollTo(step.top);
                m_view.MoveTo(step.row);
            }
            return true;
        }
    }
    switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
        if (columns.Count() > 0) {
            short column = columns.Current();
            short next = column;
            do {
                column = next;
                next = columns.Neighbour(column, key == VK_LEFT ? -1 : 1);
            } while (control && next != column);
            m_view.SetCurrentColumn(next);
        }
        return true;
    case 'C':
        if (control) {
            m_view.CopyRow(Down(VK_SHIFT));
        }
        return control;
    case VK_ADD:
    case VK_OEM_PLUS:
        if (control && columns.Count() > 0) {
            m_view.FitColumn(columns.Current());
            m_view.Tell(&GridEvents::LayoutChanged);
        }
        return control;
    default:
        return false;
    }
}

void GridInput::Type(wchar_t letter) {
    if (letter <= L' ' || (Down(VK_CONTROL) && !Down(VK_MENU))) { // but AltGr types letters
        return;
    }
    const long row = m_typed.Type(letter, static_cast<DWORD>(GetMessageTime()), m_view.Columns().Current());
    if (row >= 0) {
        m_view.MoveTo(row);
    }
    m_typed.LedTo(m_view.Data().Current());
}

bool GridInput::SelectCell(POINT at) {
    SetFocus(m_view.Window());
    const long row = m_view.Viewport().RowAt(at.y);
    if (row < 0 || !m_view.Window()) {
        return false;
    }
    const short column = m_view.Viewport().ColumnAt(at.x);
    if (column >= 0) {
        m_view.SetCurrentColumn(column); // which may scroll
    }
    m_view.MoveTo(row);
    return m_view.Window() && m_view.Data().Current() == row;
}

void GridInput::Click(POINT at) {
    const short column = m_view.Viewport().ColumnAt(at.x);
    if (SelectCell(at) && m_view.TakesMarks(column)) {
        m_view.Tell(&GridEvents::MarkClicked);
    }
}

void GridInput::DoubleClick(POINT at) {
    const long row = m_view.Viewport().RowAt(at.y);
    const short column = m_view.Viewport().ColumnAt(at.x);
    Click(at);
    if (m_view.Window() && row >= 0 && !m_view.TakesMarks(column)) { // a mark clicked twice is clicked twice
        m_view.Activate(row);
    }
}

/// What one step to the side scrolls.
int GridInput::Across() const { return m_view.Measures().Scaled(48); }

void GridInput::Wheel(int delta, bool across) {
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    m_wheel += delta;
    const int notches = m_wheel / WHEEL_DELTA;
    m_wheel -= notches * WHEEL_DELTA;
    const GridViewport& port = m_view.Viewport();
    if (across) {
        m_view.ScrollAcross(port.Scrolled() - notches * Across());
    } else {
        const long step = lines == WHEEL_PAGESCROLL ? port.WholeRows() : static_cast<long>(lines);
        m_view.ScrollTo(port.Top() - notches * step);
    }
}

void GridInput::ContextMenu(POINT screen) {
    const GridViewport& port = m_view.Viewport();
    if (screen.x == -1 && screen.y == -1) { // from the keyboard: under the current cell
        const RECT cell =
            port.CellRect(std::max(m_view.Data().Current(), port.Top()), m_view.Columns().Current());
        screen = {std::clamp<LONG>(cell.left, 0, port.Client().right),
                  std::clamp<LONG>(cell.bottom, 0, port.Client().bottom)};
        ClientToScreen(m_view.Window(), &screen);
    } else {
        POINT client = screen;
        ScreenToClient(m_view.Window(), &client);
        if (client.y < port.HeadHeight()) { // the heading's, where it stands: nothing scrolls under the menu
            m_view.TakeColumn(port.ColumnAt(client.x));
        }
    }
    m_view.Tell(&GridEvents::ContextMenuAsked, screen);
}

LRESULT GridInput::HeadingNotice(const NMHDR& notice) {
    const GridHeadings& headings = m_view.Headings();
    const bool fromHeadings =
        notice.hwndFrom == headings.Window() && notice.code <= HDN_FIRST && notice.code >= HDN_LAST;
    if (!fromHeadings || headings.Filling()) {
        return 0;
    }
    const auto& heading = reinterpret_cast<const NMHEADERW&>(notice);
    const short column = headings.ColumnOf(heading.iItem);
    if (column < 0 || column >= m_view.Columns().Count()) {
        return 0;
    }
    const HDITEMW* item = heading.pitem;
    switch (notice.code) {
    case HDN_ITEMCHANGEDW:
    case HDN_ENDTRACKW:
        if (item && (item->mask & HDI_WIDTH)) {
            m_view.WidenColumn(column, item->cxy);
        }
        if (notice.code == HDN_ENDTRACKW) {
            m_view.Tell(&GridEvents::LayoutChanged);
        }
        return 0;
    case HDN_DIVIDERDBLCLICKW:
        m_view.FitColumn(column);
        m_view.Tell(&GridEvents::LayoutChanged);
        return 0;
    case HDN_ITEMCLICKW:
        m_view.Tell(&GridEvents::HeadingClicked, column);
        return 0;
    case HDN_ENDDRAG:
        // Ours is the order; the control, which is still at work on its items, gets them anew afterwards.
        if (item && (item->mask & HDI_ORDER) && item->iOrder >= 0) {
            m_view.DragColumn(column, item->iOrder);
            PostMessageW(m_view.Window(), kColumnsDragged, 0, 0);
        }
        return TRUE;
    default:
        return 0;
    }
}

} // namespace tamvelo::grid
