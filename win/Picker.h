#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::win {

/// A field that is being typed in a date or time picker counts only once the picker has lost the focus.
inline void TakeTyped(HWND picker) {
    if (GetFocus() == picker) {
        SendMessageW(picker, WM_KILLFOCUS, 0, 0);
        SendMessageW(picker, WM_SETFOCUS, 0, 0);
    }
}

} // namespace tamvelo::win
