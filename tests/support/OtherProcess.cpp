#include "tests/support/OtherProcess.h"

namespace tamvelo::testing {

bool Eventually(const std::function<bool()>& condition) {
    constexpr ULONGLONG kPatience = 10000;
    const ULONGLONG start = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - start > kPatience) {
            return false;
        }
        Sleep(10);
    }
    return true;
}

HWND WindowOfAnyProcess(const std::wstring& caption) {
    HWND found = nullptr;
    Eventually([&] {
        found = FindWindowW(nullptr, caption.c_str());
        return found && IsWindowVisible(found) && FocusIn(found);
    });
    return found;
}

HWND FocusIn(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

std::wstring FocusedText(HWND window) {
    wchar_t text[256] = L"";
    SendMessageTimeoutW(FocusIn(window), WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text),
                        SMTO_ABORTIFHUNG, 2000, nullptr);
    return text;
}

void PostKeyTo(HWND window, UINT key) {
    const HWND focus = FocusIn(window);
    PostMessageW(focus, WM_KEYDOWN, key, 1);
    PostMessageW(focus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void PostTextTo(HWND window, const std::wstring& text) {
    const HWND focus = FocusIn(window);
    for (const wchar_t letter : text) {
        PostMessageW(focus, WM_CHAR, letter, 1);
    }
}

} // namespace tamvelo::testing
