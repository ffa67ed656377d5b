// The window of the grid: its messages, its place, what is scrolled and painted.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "base/Placement.h"
#include "com/Guard.h"
#include "com/Module.h"
#include "grid/GridAccessible.h"
#include "grid/GridView.h"
#include "win/Dpi.h"

namespace tamvelo::grid {

namespace {

constexpr wchar_t kWindowClass[] = L"TamveloGrid";
constexpr UINT kDpiChangedAfterParent = 0x02E3; // newer than the oldest headers in use

POINT PointOf(LPARAM l) { return {static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l))}; }

HINSTANCE Instance() {
    const HINSTANCE own = com::Module::Instance();
    return own ? own : GetModuleHandleW(nullptr);
}

/// Drawing a bar takes as long as drawing a third of the rows: one that stays as it is, or whose thumb would
/// not move by a pixel, as among a million rows, is not drawn again.
void SetBar(HWND window, int bar, ScrollState& drawn, int most, int page, int position, int length) {
    const bool sameRange = drawn.most == most && drawn.page == page;
    if (sameRange && drawn.position == position) {
        return;
    }
    const int range = std::max(1, most - page + 1);
    const int thumb = static_cast<int>(static_cast<long long>(position) * length / range);
    const bool draw = !sameRange || thumb != drawn.thumb;
    drawn = {most, page, position, thumb};
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_PAGE | SIF_POS | SIF_RANGE | (bar == SB_VERT ? SIF_DISABLENOSCROLL : 0U);
    info.nMax = most;
    info.nPage = static_cast<UINT>(page);
    info.nPos = position;
    SetScrollInfo(window, bar, &info, draw);
}

/// The class of the grids' windows: once for all threads, and as long as the library is loaded.
class WindowClass {
public:
    explicit WindowClass(WNDPROC procedure) {
        WNDCLASSEXW description{};
        description.cbSize = sizeof(description);
        description.style = CS_DBLCLKS;
        description.lpfnWndProc = procedure;
        description.hInstance = Instance();
        description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        description.lpszClassName = kWindowClass;
        if (!RegisterClassExW(&description)) {
            com::ThrowLastError(L"No se pudo registrar el cuadro de datos."); // the next opening tries again
        }
    }
    ~WindowClass() { UnregisterClassW(kWindowClass, Instance()); }
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;
};

} // namespace

void GridView::RegisterWindowClass() { static const WindowClass registered(Procedure); }

void GridView::Create(HWND parent, int controlId) {
    RegisterWindowClass();
    m_window = CreateWindowExW(WS_EX_CLIENTEDGE, kWindowClass, nullptr,
                               WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | WS_VSCROLL | WS_HSCROLL,
                               0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)),
                               Instance(), this);
    if (!m_window) {
        com::ThrowLastError(L"No se pudo crear el cuadro de datos.");
    }
    m_dpi = win::DpiOf(m_window);
    m_look = GridLook::Current();
    m_headings.Create(m_window, nullptr);
    RemakeFont();
    ShowColumns();
}

void GridView::Close() noexcept {
    m_events = nullptr;
    if (m_window) {
        DestroyWindow(m_window);
    }
}

void GridView::Report(const com::Error& error) noexcept {
    if (m_events) {
        m_events->Failed(error);
    }
}

LRESULT CALLBACK GridView::Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<GridView*>(reinterpret_cast<CREATESTRUCTW*>(l)->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const view = reinterpret_cast<GridView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const std::shared_ptr<GridView> alive = view ? view->weak_from_this().lock() : nullptr;
    if (!alive) {
        return DefWindowProcW(window, message, w, l);
    }
    const com::FloatGuard floats;
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        view->m_window = nullptr;
        return DefWindowProcW(window, message, w, l);
    }
    const com::Watch watch(&view->m_window);
    LRESULT answer = 0;
    com::AtEdge([&] { answer = view->Handle(message, w, l); },
                [&](const com::Error& error) { view->Report(error); });
    return answer;
}

LRESULT GridView::Handle(UINT message, WPARAM w, LPARAM l) {
    const HWND window = m_window;
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SIZE:
        Resize();
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(m_font ? m_font->Get() : nullptr);
    case WM_KEYDOWN:
        if (Key(w)) {
            return 0;
        }
        break;
    case WM_CHAR:
        Type(static_cast<wchar_t>(w));
        return 0;
    case WM_LBUTTONDOWN:
        Click(PointOf(l).x, PointOf(l).y);
        break;
    case WM_RBUTTONDOWN: // for the menu that follows
        SelectCell(PointOf(l).x, PointOf(l).y);
        break;
    case WM_LBUTTONDBLCLK:
        DoubleClick(PointOf(l).x, PointOf(l).y);
        return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL: {
        const bool across = message == WM_MOUSEHWHEEL || (LOWORD(w) & MK_SHIFT);
        const int delta = static_cast<short>(HIWORD(w));
        Wheel(message == WM_MOUSEHWHEEL ? -delta : delta, across);
        return 0;
    }
    case WM_CONTEXTMENU:
        ContextMenu(l);
        return 0;
    case WM_VSCROLL:
        ScrollVertically(LOWORD(w));
        return 0;
    case WM_HSCROLL:
        ScrollHorizontally(LOWORD(w));
        return 0;
    case WM_SETFOCUS:
        AnnounceCurrent();
        [[fallthrough]];
    case WM_KILLFOCUS:
        InvalidateRow(m_data.Current());
        return 0;
    case WM_NOTIFY:
        return HeadingNotice(*reinterpret_cast<const NMHDR*>(l));
    case kColumnsDragged:
        return ColumnsDragged();
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
    case WM_THEMECHANGED:
        m_look = GridLook::Current();
        SendMessageW(m_headings.Window(), message, w, l);
        InvalidateBody();
        return 0;
    case kDpiChangedAfterParent:
        ChangeDpi(win::DpiOf(window));
        return 0;
    case WM_GETOBJECT:
        if (static_cast<LONG>(l) == OBJID_CLIENT) {
            return AnswerAccessible(weak_from_this(), w);
        }
        break;
    default:
        break;
    }
    return DefWindowProcW(window, message, w, l);
}

long GridView::MostTop() const { return std::max(0L, m_data.Count() - m_geometry.WholeRows()); }

void GridView::Resize() {
    if (!m_font) {
        return; // still being created
    }
    const bool first = m_geometry.BodyHeight() == 0;
    const long current = m_data.Current();
    const bool wasShown = current >= m_geometry.top && current < m_geometry.top + m_geometry.WholeRows();
    GetClientRect(m_window, &m_geometry.client);
    m_geometry.top = std::clamp(m_geometry.top, 0L, MostTop());
    m_geometry.scrolled =
        std::clamp(m_geometry.scrolled, 0,
                   std::max(0, m_columns.TotalWidth() - static_cast<int>(m_geometry.client.right)));
    m_headings.Place(m_geometry.client, m_geometry.headHeight, m_geometry.scrolled);
    if (first || wasShown) {
        ShowCurrent(first);
    }
    Load(m_geometry.top);
    UpdateScrollBars();
    InvalidateBody();
    Raise([](GridEvents& events) { events.RowsShown(); });
}

/// Brings the current row into view: as far as need be, or one third down when it was out of sight.
void GridView::ShowCurrent(bool oneThirdDown) {
    const long current = m_data.Current();
    const long whole = m_geometry.WholeRows();
    if (current < 0 || (current >= m_geometry.top && current < m_geometry.top + whole)) {
        return;
    }
    const long down = oneThirdDown ? whole / 3 : current < m_geometry.top ? 0 : whole - 1;
    m_geometry.top = std::clamp(current - down, 0L, MostTop());
}

/// Reads what a screen that begins at row `top` shows; true when there was anything to read. A host that
/// fails to deliver leaves cells blank.
bool GridView::Load(long top) {
    bool read = false;
    if (m_geometry.BodyHeight() == 0) {
        return read;
    }
    const com::Standing before;
    try {
        read = m_data.Load(top, top + m_geometry.LastShown() - m_geometry.top);
    } catch (const com::Error& error) {
        Report(error);
        before.Check();
    }
    if (read && m_window) {
        WidenGuessed();
    }
    CatchUp();
    return read;
}

/// Looks for what the host said while we were in the middle of calling it. Once: a host that says so at every
/// call must not keep us here.
void GridView::CatchUp() {
    if (m_catchingUp || m_data.Busy() || !m_data.TakeMissedSync()) {
        return;
    }
    m_catchingUp = true;
    try {
        Sync(HostDid::Something);
    } catch (const com::Error& error) {
        Report(error);
    } catch (...) {
        m_catchingUp = false;
        throw;
    }
    m_catchingUp = false;
}

void GridView::UpdateScrollBars() {
    if (m_window) {
        const int rows = static_cast<int>(std::max(0L, m_data.Count() - 1));
        SetBar(m_window, SB_VERT, m_vertical, rows, static_cast<int>(m_geometry.WholeRows()),
               static_cast<int>(m_geometry.top), m_geometry.client.bottom);
    }
    if (m_window) { // showing or hiding the bar resizes the window
        SetBar(m_window, SB_HORZ, m_horizontal, std::max(0, m_columns.TotalWidth() - 1),
               static_cast<int>(m_geometry.client.right), m_geometry.scrolled, m_geometry.client.right);
    }
}

void GridView::ScrollTo(long top) {
    top = std::clamp(top, 0L, MostTop());
    if (top == m_geometry.top) {
        return;
    }
    Load(top); // before anything moves on screen: the host may let windows paint meanwhile
    if (!m_window) {
        return;
    }
    top = std::clamp(top, 0L, MostTop());
    const long rows = m_geometry.top - top;
    m_geometry.top = top;
    UpdateScrollBars();
    if (rows > -m_geometry.WholeRows() && rows < m_geometry.WholeRows()) {
        RECT body = m_geometry.client;
        body.top = m_geometry.headHeight;
        ScrollWindowEx(m_window, 0, static_cast<int>(rows) * m_geometry.rowHeight, &body, &body, nullptr,
                       nullptr, SW_INVALIDATE);
    } else {
        InvalidateBody();
    }
    Raise([](GridEvents& events) { events.RowsShown(); });
}

void GridView::ScrollAcross(int scrolled) {
    const int most = std::max(0, m_columns.TotalWidth() - static_cast<int>(m_geometry.client.right));
    scrolled = std::clamp(scrolled, 0, most);
    if (scrolled == m_geometry.scrolled || !m_window) {
        return;
    }
    m_geometry.scrolled = scrolled;
    m_headings.Place(m_geometry.client, m_geometry.headHeight, scrolled);
    UpdateScrollBars();
    InvalidateBody();
}

void GridView::InvalidateBody() {
    if (m_window) {
        RECT body = m_geometry.client;
        body.top = m_geometry.headHeight;
        InvalidateRect(m_window, &body, FALSE);
    }
}

void GridView::InvalidateRow(long row) {
    if (m_window && row >= m_geometry.top && row <= m_geometry.LastShown()) {
        const RECT area{0, m_geometry.RowTop(row), m_geometry.client.right,
                        m_geometry.RowTop(row) + m_geometry.rowHeight};
        InvalidateRect(m_window, &area, FALSE);
    }
}

void GridView::Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(m_window, &paint);
    const struct End {
        HWND window;
        const PAINTSTRUCT& started;
        ~End() { EndPaint(window, &started); }
    } end{m_window, paint};
    GridPainter painter(m_data, m_columns, *m_font, m_look, m_geometry);
    painter.Paint(dc, paint.rcPaint, {m_data.Current(), m_column, GetFocus() == m_window}, m_emptyText);
}

long GridView::RowAt(int y) const {
    if (y < m_geometry.headHeight || y >= m_geometry.client.bottom) {
        return -1;
    }
    const long row = m_geometry.top + (y - m_geometry.headHeight) / m_geometry.rowHeight;
    return row < m_data.Count() ? row : -1;
}

short GridView::ColumnAt(int x) const {
    int right = -m_geometry.scrolled;
    for (const short column : m_columns.OnScreen()) {
        right += m_columns[column].width;
        if (x < right) {
            return column;
        }
    }
    return -1;
}

RECT GridView::CellRect(long row, short column) const {
    int left = -m_geometry.scrolled;
    for (const short shown : m_columns.OnScreen()) {
        const int right = left + m_columns[shown].width;
        if (shown == column) {
            return {left, m_geometry.RowTop(row), right, m_geometry.RowTop(row) + m_geometry.rowHeight};
        }
        left = right;
    }
    return {};
}

void GridView::AnnounceCurrent() {
    const long row = m_data.Current();
    if (!m_window || row < m_geometry.top || row > m_geometry.LastShown()) {
        return;
    }
    const LONG child = RowChild(row, m_geometry.top);
    NotifyWinEvent(EVENT_OBJECT_SELECTION, m_window, OBJID_CLIENT, child);
    if (GetFocus() == m_window) {
        NotifyWinEvent(EVENT_OBJECT_FOCUS, m_window, OBJID_CLIENT, child);
    }
}

} // namespace tamvelo::grid
