#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::win {

/// A message box, with the arrow as its cursor; which button ended it. Of a text that is too long for a
/// screen it shows the first lines, and the trace gets the whole. `tail` is short and stands below it always.
int ShowMessage(HWND owner, const std::wstring& text, const std::wstring& title, UINT style,
                const std::wstring& tail = {}) noexcept;

} // namespace tamvelo::win
