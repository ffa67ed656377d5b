#include "grid/GridWindow.h"

#include <windows.h>

#include "com/Guard.h"
#include "com/Module.h"
#include "grid/GridAccessible.h"
#include "win/Dpi.h"

namespace tamvelo::grid {

namespace {

constexpr wchar_t kWindowClass[] = L"TamveloGrid";
constexpr UINT kDpiChangedAfterParent = 0x02E3; // newer than the oldest headers in use

HINSTANCE Instance() {
    const HINSTANCE own = com::Module::Instance();
    return own ? own : GetModuleHandleW(nullptr);
}

/// The class of the grids' windows: once for all threads, and as long as the library is loaded.
struct WindowClass {
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
};

} // namespace

std::shared_ptr<GridView> GridWindow::Open(HWND parent, int controlId, GridEvents& events) {
    const auto window = std::make_shared<GridWindow>(events);
    try {
        window->Create(parent, controlId);
    } catch (...) {
        window->m_view.Close();
        throw;
    }
    return window->View();
}

void GridWindow::Create(HWND parent, int controlId) {
    static const WindowClass registered(Procedure);
    m_window = CreateWindowExW(WS_EX_CLIENTEDGE, kWindowClass, nullptr,
                               WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | WS_VSCROLL | WS_HSCROLL,
                               0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)),
                               Instance(), this);
    if (!m_window) {
        com::ThrowLastError(L"No se pudo crear el cuadro de datos.");
    }
    m_view.Open();
}

LRESULT CALLBACK GridWindow::Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<GridWindow*>(reinterpret_cast<CREATESTRUCTW*>(l)->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const own = reinterpret_cast<GridWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const std::shared_ptr<GridWindow> alive = own ? own->weak_from_this().lock() : nullptr;
    if (!alive) {
        return DefWindowProcW(window, message, w, l);
    }
    const com::FloatGuard floats;
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        own->m_window = nullptr;
        return DefWindowProcW(window, message, w, l);
    }
    const com::Watch watch(&own->m_window);
    LRESULT answer = 0;
    com::AtEdge([&] { answer = own->Handle(message, w, l); },
                [&](const com::Error& error) { own->m_view.Report(error); });
    return answer;
}

LRESULT GridWindow::Handle(UINT message, WPARAM w, LPARAM l) {
    const HWND window = m_window;
    if (const std::optional<LRESULT> answer = m_input.Handle(message, w, l)) {
        return *answer;
    }
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SIZE:
        m_view.Resize();
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(m_view.Measures().Ready() ? m_view.Measures().Font().Get()
                                                                   : nullptr);
    case WM_SETFOCUS:
        AnnounceRow(m_view);
        [[fallthrough]];
    case WM_KILLFOCUS:
        m_view.Viewport().InvalidateRow(m_view.Data().Current());
        return 0;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
    case WM_THEMECHANGED:
        m_look = GridLook::Current();
        SendMessageW(m_view.Headings().Window(), message, w, l);
        m_view.Viewport().InvalidateBody();
        return 0;
    case kDpiChangedAfterParent:
        m_view.ChangeDpi(win::DpiOf(window));
        return 0;
    case WM_GETOBJECT:
        if (static_cast<LONG>(l) == OBJID_CLIENT) {
            return AnswerAccessible(View(), w);
        }
        break;
    default:
        break;
    }
    return DefWindowProcW(window, message, w, l);
}

void GridWindow::Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(m_window, &paint);
    const struct End {
        HWND window;
        const PAINTSTRUCT& started;
        ~End() { EndPaint(window, &started); }
    } end{m_window, paint};
    GridPainter painter(m_view.Data(), m_view.Columns(), m_view.Measures(), m_view.Viewport(), m_look);
    painter.Paint(dc, paint.rcPaint, GetFocus() == m_window, m_view.EmptyText());
}

} // namespace tamvelo::grid
