#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::win {

/// Where a request of the window's bar (SB_VERT, SB_HORZ) leads to from a position, a line being so long; it
/// may be beyond what the bar reaches.
int ScrolledTo(HWND window, int bar, WORD request, int from, int line);

} // namespace tamvelo::win
