#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::win {

/// The resolution that the window lives at: the window's own where the system knows one per window, else the
/// screen's.
int DpiOf(HWND window);

} // namespace tamvelo::win
