#include "demo/app/Hands.h"

#include <algorithm>
#include <array>

namespace tamvelo::demo {

namespace {

void Hold(UINT key, bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[key] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

} // namespace

HWND TopWindow() {
    HWND found = nullptr;
    const WNDENUMPROC look = [](HWND window, LPARAM out) __attribute__((stdcall))->BOOL {
        constexpr std::array<std::wstring_view, 3> kOthers = {L"tooltips_class32", L"IME", L"#32768"};
        wchar_t name[32] = L"";
        GetClassNameW(window, name, ARRAYSIZE(name));
        const bool input = IsWindowVisible(window) && IsWindowEnabled(window) &&
                           std::ranges::find(kOthers, name) == kOthers.end();
        return input ? (*reinterpret_cast<HWND*>(out) = window, FALSE) : TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&found));
    // Another program may be in front: the thread's own idea of its active window is what counts here.
    if (found != nullptr && GetActiveWindow() != found) {
        SetActiveWindow(found);
    }
    return found;
}

std::wstring BoxText(HWND window) {
    constexpr int kMessage = 0xFFFF; // the control that every message box keeps its text in
    wchar_t text[512] = L"";
    const auto has = [window](int button) { return GetDlgItem(window, button) != nullptr; };
    if (has(IDOK) || has(IDCANCEL) || has(IDYES)) {
        GetDlgItemTextW(window, kMessage, text, ARRAYSIZE(text));
    }
    return text;
}

void PressKey(UINT key, UINT held) {
    if (held != 0) {
        Hold(held, true);
    }
    const HWND focus = GetFocus();
    const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(focus, WM_KEYDOWN, key, scan | 1);
    PostMessageW(focus, WM_KEYUP, key, scan | static_cast<LPARAM>(0xC0000001));
}

void LetGo(UINT held) { Hold(held, false); }

void TypeText(std::wstring_view text) {
    for (const wchar_t letter : text) {
        PostMessageW(GetFocus(), WM_CHAR, letter, 1);
    }
}

void PressAccess(wchar_t letter) { PostMessageW(GetFocus(), WM_SYSCHAR, letter, 1 | 1 << 29); }

void UntilAlone(HWND main) {
    MSG message;
    while (TopWindow() != main && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace tamvelo::demo
