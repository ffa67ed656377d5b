#include "demo/reports/Preview.h"

#include <algorithm>
#include <memory>

#include "com/Error.h"
#include "com/Module.h"
#include "demo/data/Values.h"
#include "demo/reports/PageDrawing.h"

namespace tamvelo::demo {

namespace {

constexpr wchar_t kClass[] = L"TamveloDemoVistaPrevia";

int Scaled(int at96, int dpi) { return MulDiv(at96, dpi, USER_DEFAULT_SCREEN_DPI); }

/// Looked up, for older versions of Windows have one resolution for all monitors.
int DpiOf(HWND window) {
    using GetDpi = UINT WINAPI(HWND);
    const auto get = reinterpret_cast<GetDpi*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (get != nullptr) {
        return static_cast<int>(get(window));
    }
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi;
}

class Preview {
public:
    Preview(std::wstring caption, std::vector<Report> reports)
        : m_caption(std::move(caption)), m_reports(std::move(reports)), m_pages(Paginate(m_reports)) {}
    ~Preview() { DeleteObject(m_font); }
    Preview(const Preview&) = delete;
    Preview& operator=(const Preview&) = delete;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_NCCREATE) {
            const auto& creation = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
            Preview* const made = static_cast<std::unique_ptr<Preview>*>(creation.lpCreateParams)->release();
            made->m_window = window;
            SetWindowLongPtrW(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(made)); // it goes with its window
        }
        auto* const self = reinterpret_cast<Preview*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self == nullptr) {
            return DefWindowProcW(window, message, wParam, lParam);
        }
        if (message == WM_NCDESTROY) {
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            delete self;
            return 0;
        }
        try {
            return self->OnMessage(message, wParam, lParam);
        } catch (const std::exception&) {
            return 0; // out of memory while painting: the next painting may do better
        }
    }

    /// As large as a page in its own size, as far as the monitor allows.
    void PlaceOver(HWND owner) {
        m_dpi = DpiOf(m_window);
        MakeFont();
        MONITORINFO monitor{};
        monitor.cbSize = sizeof monitor;
        GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTONEAREST), &monitor);
        const RECT& work = monitor.rcWork;
        RECT wanted{0, 0, PageWidth() + 2 * Margin() + GetSystemMetrics(SM_CXVSCROLL),
                    PageHeight(PageWidth()) + 2 * Margin() + BarHeight()};
        AdjustWindowRectEx(&wanted, WS_OVERLAPPEDWINDOW | WS_VSCROLL, FALSE, 0);
        const LONG width = std::min(wanted.right - wanted.left, work.right - work.left);
        const LONG height = std::min(wanted.bottom - wanted.top, work.bottom - work.top);
        SetWindowPos(m_window, nullptr, (work.left + work.right - width) / 2,
                     (work.top + work.bottom - height) / 2, width, height, SWP_NOZORDER);
        TurnTo(0);
    }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_SIZE:
            ScrollTo(m_offset);
            return 0;
        case WM_KEYDOWN:
            OnKey(wParam);
            return 0;
        case WM_VSCROLL:
            OnScrollBar(LOWORD(wParam));
            return 0;
        case WM_MOUSEWHEEL:
            Move(-GET_WHEEL_DELTA_WPARAM(wParam) * 3 * LineStep() / WHEEL_DELTA);
            return 0;
        case WM_DPICHANGED: {
            const RECT& place = *reinterpret_cast<const RECT*>(lParam);
            m_dpi = LOWORD(wParam);
            MakeFont();
            SetWindowPos(m_window, nullptr, place.left, place.top, place.right - place.left,
                         place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
            return 0;
        }
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {Scaled(320, m_dpi), Scaled(240, m_dpi)};
            return 0;
        default:
            return DefWindowProcW(m_window, message, wParam, lParam);
        }
    }

    void OnKey(WPARAM key) {
        const int last = static_cast<int>(m_pages.size()) - 1;
        switch (key) {
        case VK_PRIOR:
            TurnTo(m_page - 1);
            break;
        case VK_NEXT:
            TurnTo(m_page + 1);
            break;
        case VK_HOME:
            TurnTo(0);
            break;
        case VK_END:
            TurnTo(last);
            break;
        case VK_UP:
            Move(-LineStep());
            break;
        case VK_DOWN:
            Move(LineStep());
            break;
        case VK_ESCAPE:
            DestroyWindow(m_window);
            break;
        default:
            break;
        }
    }

    void OnScrollBar(int what) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_TRACKPOS | SIF_PAGE;
        GetScrollInfo(m_window, SB_VERT, &info);
        switch (what) {
        case SB_LINEUP:
            Move(-LineStep());
            break;
        case SB_LINEDOWN:
            Move(LineStep());
            break;
        case SB_PAGEUP:
            Move(-static_cast<int>(info.nPage));
            break;
        case SB_PAGEDOWN:
            Move(static_cast<int>(info.nPage));
            break;
        case SB_THUMBTRACK:
            ScrollTo(info.nTrackPos);
            break;
        default:
            break;
        }
    }

    void TurnTo(int page) {
        m_page = std::clamp(page, 0, static_cast<int>(m_pages.size()) - 1);
        SetWindowTextW(m_window, (m_caption + L" - " + Where()).c_str());
        ScrollTo(0);
    }

    void Move(int pixels) { ScrollTo(m_offset + pixels); }

    void ScrollTo(int offset) {
        const RECT sheet = SheetPlace(0);
        const int all = sheet.bottom - sheet.top + 2 * Margin();
        const int seen = std::max(0, static_cast<int>(View().bottom));
        m_offset = std::clamp(offset, 0, std::max(0, all - seen));
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
        info.nMax = all - 1;
        info.nPage = static_cast<UINT>(seen);
        info.nPos = m_offset;
        SetScrollInfo(m_window, SB_VERT, &info, TRUE);
        InvalidateRect(m_window, nullptr, FALSE);
    }

    /// What the user sees of the page.
    RECT View() const {
        RECT client;
        GetClientRect(m_window, &client);
        client.bottom -= BarHeight();
        return client;
    }
    int Margin() const { return Scaled(8, m_dpi); }
    int BarHeight() const { return Scaled(22, m_dpi); }
    int LineStep() const { return Scaled(40, m_dpi); }
    int PageWidth() const { return MulDiv(kSheet.cx, m_dpi, 254); }
    static int PageHeight(int width) { return MulDiv(width, kSheet.cy, kSheet.cx); }

    /// The sheet fills the window's width, up to half as large again as it is on paper.
    RECT SheetPlace(int offset) const {
        const RECT view = View();
        const int room = static_cast<int>(view.right) - 2 * Margin();
        const int width = std::clamp(room, Scaled(200, m_dpi), PageWidth() * 3 / 2);
        const int left = std::max(Margin(), (static_cast<int>(view.right) - width) / 2);
        const int top = Margin() - offset;
        return {left, top, left + width, top + PageHeight(width)};
    }

    std::wstring Where() const {
        return L"página " + ShowCount(m_page + 1) + L" de " +
               ShowCount(static_cast<std::int64_t>(m_pages.size()));
    }

    void MakeFont() {
        DeleteObject(m_font);
        m_font = CreateFontW(-Scaled(12, m_dpi), 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, OUT_TT_PRECIS,
                             CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Tahoma");
    }

    void Paint() const {
        PAINTSTRUCT paint;
        const HDC window = BeginPaint(m_window, &paint);
        RECT client;
        GetClientRect(m_window, &client);
        const HDC memory = CreateCompatibleDC(window);
        const HBITMAP bitmap = CreateCompatibleBitmap(window, client.right, client.bottom);
        const HGDIOBJ before = SelectObject(memory, bitmap);

        FillRect(memory, &client, GetSysColorBrush(COLOR_APPWORKSPACE));
        DrawPage(memory, SheetPlace(m_offset), m_pages[static_cast<std::size_t>(m_page)]);
        DrawBar(memory, {0, View().bottom, client.right, client.bottom});
        BitBlt(window, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);

        SelectObject(memory, before);
        DeleteObject(bitmap);
        DeleteDC(memory);
        EndPaint(m_window, &paint);
    }

    void DrawBar(HDC device, RECT bar) const {
        FillRect(device, &bar, GetSysColorBrush(COLOR_BTNFACE));
        const HGDIOBJ before = SelectObject(device, m_font);
        SetBkMode(device, TRANSPARENT);
        SetTextColor(device, GetSysColor(COLOR_BTNTEXT));
        InflateRect(&bar, -Margin(), 0);
        std::wstring text = Where();
        text[0] = L'P';
        text += L"    Re Pág y Av Pág: pasar páginas    flechas: mover la página    Esc: cerrar";
        DrawTextW(device, text.c_str(), -1, &bar, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        SelectObject(device, before);
    }

    const std::wstring m_caption;
    const std::vector<Report> m_reports;
    const std::vector<Page> m_pages;
    HWND m_window = nullptr;
    HFONT m_font = nullptr;
    int m_dpi = USER_DEFAULT_SCREEN_DPI;
    int m_page = 0;
    int m_offset = 0; // of the page, in pixels
};

} // namespace

HWND OpenPreview(HWND owner, const std::wstring& caption, std::vector<Report> reports) {
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = Preview::Procedure;
    info.hInstance = com::Module::Instance();
    info.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    info.hIcon = LoadIconW(com::Module::Instance(), MAKEINTRESOURCEW(1)); // the program's
    info.lpszClassName = kClass;
    RegisterClassExW(&info); // fails when it is registered already
    auto made = std::make_unique<Preview>(caption, std::move(reports));
    Preview* const preview = made.get();
    const HWND window = CreateWindowExW(0, kClass, caption.c_str(), WS_OVERLAPPEDWINDOW | WS_VSCROLL,
                                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner,
                                        nullptr, com::Module::Instance(), &made);
    if (window == nullptr) {
        com::ThrowLastError(L"No se puede abrir la vista previa.");
    }
    preview->PlaceOver(owner);
    ShowWindow(window, SW_SHOWNORMAL);
    UpdateWindow(window);
    return window;
}

} // namespace tamvelo::demo
