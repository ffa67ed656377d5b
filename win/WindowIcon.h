#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::win {

/// Gives the window the library's icon, large and small, as its resolution wants them.
void GiveIcon(HWND window);
/// Before the window goes.
void TakeIcon(HWND window);

} // namespace tamvelo::win
