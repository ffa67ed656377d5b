#include "tests/support/Clerk.h"

#include <algorithm>

#include "tests/support/Drive.h"

namespace tamvelo::testing {

namespace {

constexpr UINT kNext = WM_APP;
constexpr int kSettle = 4; // a key is several messages, one after the other
constexpr int kMost = 300;

void Press(UINT key, UINT held) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_CONTROL] = held == VK_CONTROL ? 0x80 : 0;
    keys[VK_SHIFT] = held == VK_SHIFT ? 0x80 : 0;
    SetKeyboardState(keys);
    PostMessageW(GetFocus(), WM_KEYDOWN, key, static_cast<LPARAM>(MapVirtualKeyW(key, 0)) << 16 | 1);
}

} // namespace

Clerk::Clerk(HWND owner, const std::wstring& steps, bool patient,
             std::function<void(const wchar_t*)> clickTool)
    : m_owner(owner),
      m_clickTool(std::move(clickTool)),
      m_window(
          CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
    s_clerk = this;
    for (size_t at = 0; at < steps.size();) {
        const size_t end = std::min(steps.find(L' ', at), steps.size());
        const bool rare = steps[at] == L'*';
        if (patient || !rare) {
            m_steps.push_back(steps.substr(at + (rare ? 1 : 0), end - at - (rare ? 1 : 0)));
        }
        at = end + 1;
    }
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    SetTimer(m_window, 1, USER_TIMER_MINIMUM, nullptr);
}

Clerk::~Clerk() {
    DestroyWindow(m_window);
    s_clerk = nullptr;
}

LRESULT CALLBACK Clerk::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == kNext && first > 0) {
        PostMessageW(window, kNext, first - 1, 0);
    } else if (message == kNext || message == WM_TIMER) {
        s_clerk->Turn(message == WM_TIMER);
        return 0;
    }
    return DefWindowProcW(window, message, first, second);
}

void Clerk::Turn(bool idle) {
    if (idle && m_waiting && ++m_idle < 3) { // the posted one comes, or has been thrown away
        return;
    }
    m_idle = 0;
    m_waiting = false;
    const HWND top = TopWindow();
    if (!top || top == m_owner) {
        return;
    }
    if (GetActiveWindow() != top) {
        SetActiveWindow(top);
    }
    if (!GetFocus()) {
        SetFocus(top);
    }
    const HWND yes = GetDlgItem(top, IDYES);
    const std::wstring text = BoxText(top);
    if (!m_dialog && !yes && text.empty()) {
        m_dialog = top;
    }
    if (++m_turns > kMost) {
        stuck = true;
        DestroyWindow(top);
        return;
    }
    if (yes) { // a question tells of no fault
        PostMessageW(top, WM_COMMAND, IDYES, 0);
    } else if (!text.empty()) {
        told.push_back(text);
        PostMessageW(top, WM_COMMAND, IDOK, 0);
    } else if (top != m_dialog) {
        Press(m_inFront++ % 2 == 0 ? VK_RETURN : VK_ESCAPE, 0);
    } else if (m_at < m_steps.size()) {
        Step(m_steps[m_at++]);
    } else {
        Press(VK_ESCAPE, 0);
    }
    if (IsWindow(m_dialog)) {
        RedrawWindow(m_dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    m_waiting = PostMessageW(m_window, kNext, kSettle, 0) != FALSE;
}

void Clerk::Step(std::wstring step) {
    if (step == L"=") {
        kept.push_back(!IsWindow(m_box) || TextOf(m_box).find(m_typed) != std::wstring::npos);
        return;
    }
    if (step[0] == L':') {
        m_clickTool(step.c_str() + 1);
        return;
    }
    const UINT held = step.size() == 1 ? 0 : step[0] == L'^' ? VK_CONTROL : step[0] == L'+' ? VK_SHIFT : 0;
    step.erase(0, held ? 1 : 0);
    if (held || step.size() > 1) {
        Press(KeyNamed(step), held);
    } else {
        m_box = lstrcmpiW(ClassOf(GetFocus()).c_str(), L"Edit") == 0 ? GetFocus() : nullptr;
        m_typed = step;
        PostMessageW(GetFocus(), WM_CHAR, step[0], 1);
    }
}

} // namespace tamvelo::testing
