#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::win {

/// The whole text of a window of this thread.
inline std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

} // namespace tamvelo::win
