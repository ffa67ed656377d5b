#include "win/EditWatch.h"

#include <utility>

#include "win/Clipboard.h"

namespace tamvelo::win {

namespace {

constexpr UINT kSettle = WM_APP + 1;
constexpr wchar_t kFirstPrintable = L' ';
constexpr wchar_t kDeleteWord = 0x7F; // what Ctrl+Backspace types

/// While a box takes the focus back, the box that it is taken from has not been left by the user.
thread_local bool g_returning = false;

} // namespace

std::shared_ptr<EditWatch> EditWatch::Start(HWND edit, Handlers handlers) {
    return std::shared_ptr<EditWatch>(new EditWatch(edit, std::move(handlers)));
}

bool EditWatch::Settle() {
    if (!std::exchange(m_left, false)) {
        return true;
    }
    const std::shared_ptr<EditWatch> alive = shared_from_this();
    if (m_handlers.left()) {
        return true;
    }
    if (Window()) {
        g_returning = true;
        SetFocus(Window());
        g_returning = false;
    }
    return false;
}

LRESULT EditWatch::Handle(UINT message, WPARAM first, LPARAM second) {
    const std::shared_ptr<EditWatch> alive = shared_from_this();
    const HWND edit = Window();
    switch (message) {
    case WM_CHAR:
        if (first >= kFirstPrintable && first != kDeleteWord) {
            auto letter = static_cast<wchar_t>(first);
            m_handlers.typed(letter);
            if (!Window() || letter == L'\0') {
                return 0;
            }
            first = letter;
        }
        break;
    case WM_PASTE:
        if (m_handlers.pasted && m_handlers.pasted(CopiedText(edit))) {
            return 0;
        }
        break;
    case WM_SETFOCUS:
        m_left = false;
        break;
    case WM_KILLFOCUS:
        if (!g_returning && first != 0 &&
            IsChild(GetAncestor(edit, GA_ROOT), reinterpret_cast<HWND>(first))) {
            m_left = true;
            PostMessageW(edit, kSettle, 0, 0);
        }
        break;
    case kSettle:
        Settle();
        return 0;
    default:
        break;
    }
    return Default(message, first, second);
}

} // namespace tamvelo::win
