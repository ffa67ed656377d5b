#include "win/Dpi.h"

namespace tamvelo::win {

int DpiOf(HWND window) {
    using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);
    static const auto kAsk = reinterpret_cast<GetDpiForWindowFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (kAsk) {
        if (const UINT dpi = kAsk(window)) {
            return static_cast<int>(dpi);
        }
    }
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

} // namespace tamvelo::win
