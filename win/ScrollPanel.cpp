#include "win/ScrollPanel.h"

#include <algorithm>
#include <utility>

#include "com/Error.h"
#include "com/FloatGuard.h"
#include "com/Module.h"
#include "win/Resources.h"
#include "win/ScrollBar.h"
#include "win/ThemeScope.h"

namespace tamvelo::win {

ScrollPanel::ScrollPanel(HWND form, int id) {
    const ThemeScope theme;
    const HWND made = CreateDialogParamW(com::Module::Instance(), MAKEINTRESOURCEW(IDD_SCROLL_PANEL), form,
                                         Procedure, reinterpret_cast<LPARAM>(this));
    if (!made) {
        com::ThrowLastError(L"No se puede crear un panel.");
    }
    SetWindowLongPtrW(made, GWLP_ID, id);
}

ScrollPanel::~ScrollPanel() {
    if (m_window) {
        SetWindowLongPtrW(m_window, DWLP_USER, 0);
    }
}

void ScrollPanel::SetRows(std::vector<LayoutRow> rows) {
    m_layout = RowLayout(m_window, std::move(rows));
    Arrange();
}

INT_PTR CALLBACK ScrollPanel::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    const com::FloatGuard floats;
    if (message == WM_INITDIALOG) {
        reinterpret_cast<ScrollPanel*>(second)->m_window = window;
        SetWindowLongPtrW(window, DWLP_USER, second);
        return FALSE;
    }
    auto* panel = reinterpret_cast<ScrollPanel*>(GetWindowLongPtrW(window, DWLP_USER));
    try {
        return panel ? panel->Handle(message, first, second) : FALSE;
    } catch (...) {
        return FALSE; // only memory can be short here: the form's own procedure traps what it does
    }
}

INT_PTR ScrollPanel::Handle(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_COMMAND:
        if (const HWND sender = reinterpret_cast<HWND>(second); sender && sender == GetFocus()) {
            Reveal(sender);
        }
        SendMessageW(GetParent(m_window), message, first, second);
        return TRUE;
    case WM_SIZE:
        Arrange();
        return FALSE;
    case WM_VSCROLL:
        ScrollTo(ScrolledTo(m_window, SB_VERT, LOWORD(first), m_top, Line()));
        return TRUE;
    case WM_MOUSEWHEEL: {
        constexpr int kLines = 3;
        ScrollTo(m_top - GET_WHEEL_DELTA_WPARAM(first) * kLines * Line() / WHEEL_DELTA);
        return TRUE;
    }
    case WM_NCDESTROY:
        SetWindowLongPtrW(std::exchange(m_window, nullptr), DWLP_USER, 0);
        return FALSE;
    default:
        return FALSE;
    }
}

void ScrollPanel::Arrange() {
    if (!m_layout || !m_window) {
        return;
    }
    RECT area{};
    GetClientRect(m_window, &area);
    const int height = m_layout.Height();
    const int page = static_cast<int>(area.bottom);
    m_top = std::clamp(m_top, 0, std::max(0, height - page));
    const SCROLLINFO bar{sizeof bar,
                         SIF_RANGE | SIF_PAGE | SIF_POS,
                         0,
                         std::max(0, height - 1),
                         static_cast<UINT>(page),
                         m_top,
                         0};
    SetScrollInfo(m_window, SB_VERT, &bar, TRUE);
    GetClientRect(m_window, &area); // the bar comes and goes
    area.top = -m_top;
    area.bottom = height - m_top;
    m_layout.Arrange(area);
    InvalidateRect(m_window, nullptr, TRUE);
}

void ScrollPanel::ScrollTo(int top) {
    const int before = m_top;
    m_top = top;
    RECT area{};
    GetClientRect(m_window, &area);
    m_top = std::clamp(m_top, 0, std::max(0, m_layout.Height() - static_cast<int>(area.bottom)));
    if (m_top != before) {
        Arrange();
    }
}

int ScrollPanel::Line() const {
    RECT line{0, 0, 0, 16}; // about a row
    MapDialogRect(m_window, &line);
    return static_cast<int>(line.bottom);
}

void ScrollPanel::Reveal(HWND control) {
    RECT area{};
    RECT place{};
    GetClientRect(m_window, &area);
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&place), 2);
    const int margin = Line() / 4;
    if (place.top < margin) {
        ScrollTo(m_top + static_cast<int>(place.top) - margin);
    } else if (place.bottom > area.bottom - margin) {
        ScrollTo(m_top + static_cast<int>(place.bottom - area.bottom) + margin);
    }
}

} // namespace tamvelo::win
