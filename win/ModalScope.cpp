#include "win/ModalScope.h"

namespace tamvelo::win {

namespace {

bool IsTip(HWND window) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return lstrcmpiW(name, L"tooltips_class32") == 0 || lstrcmpiW(name, L"IME") == 0;
}

std::vector<HWND> InputWindows() {
    std::vector<HWND> windows;
    const WNDENUMPROC collect = [](HWND window, LPARAM list) __attribute__((stdcall))->BOOL {
        if (IsWindowVisible(window) && IsWindowEnabled(window) && !IsTip(window)) {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        }
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

} // namespace

HWND OwnerForDialog() {
    if (const HWND active = GetActiveWindow()) {
        return active;
    }
    // No window of the thread is active while another program is in front: take the one on top.
    const std::vector<HWND> windows = InputWindows();
    return windows.empty() ? nullptr : windows.front();
}

ModalScope::ModalScope(HWND dialog) : m_active(GetActiveWindow()), m_focus(GetFocus()) {
    for (const HWND window : InputWindows()) {
        if (window != dialog) {
            EnableWindow(window, FALSE);
            m_disabled.push_back(window);
        }
    }
}

ModalScope::~ModalScope() {
    for (const HWND window : m_disabled) {
        if (IsWindow(window)) {
            EnableWindow(window, TRUE);
        }
    }
    if (m_active && IsWindow(m_active)) {
        SetActiveWindow(m_active);
    }
    if (m_focus && IsWindow(m_focus)) {
        SetFocus(m_focus);
    }
}

} // namespace tamvelo::win
