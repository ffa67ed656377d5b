#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::win {

/// Gives an owner-drawn push button the look of a link: keyboard, clicks and role stay the button's. Under
/// the mouse its text is white, on a background that keeps it readable. Lives as long as the button.
void MakeLink(HWND button);

} // namespace tamvelo::win
