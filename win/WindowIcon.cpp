#include "win/WindowIcon.h"

#include "com/Module.h"
#include "win/Dpi.h"
#include "win/Handles.h"
#include "win/Resources.h"

namespace tamvelo::win {

namespace {

void SetIcons(HWND window, bool own) {
    constexpr struct {
        WPARAM kind;
        int size; // at the usual resolution
    } kIcons[] = {{ICON_SMALL, 16}, {ICON_BIG, 32}};
    const int dpi = DpiOf(window);
    for (const auto& [kind, usual] : kIcons) {
        const int size = MulDiv(usual, dpi, USER_DEFAULT_SCREEN_DPI);
        const HANDLE icon = own ? LoadImageW(com::Module::Instance(), MAKEINTRESOURCEW(IDI_TAMVELO),
                                             IMAGE_ICON, size, size, LR_DEFAULTCOLOR)
                                : nullptr;
        const UniqueIcon before(
            reinterpret_cast<HICON>(SendMessageW(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(icon))));
    }
}

} // namespace

void GiveIcon(HWND window) { SetIcons(window, true); }
void TakeIcon(HWND window) { SetIcons(window, false); }

} // namespace tamvelo::win
