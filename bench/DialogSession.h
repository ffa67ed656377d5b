#pragma once

#include "com/WinHeaders.h"

#include <functional>

namespace tamvelo::bench {

/// Opens a modal dialog, closes it again, and answers the seconds from the call to the first complete
/// picture. `show` runs the dialog and returns when it is closed; `list` finds its list; `inside` runs before
/// it is closed, when the picture is there. A picture is complete when the dialog is visible, every window in
/// it is painted and its thread has nothing left to do; the same for every kind of dialog. Throws com::Error
/// when something without a list came up instead, a message box, say.
double OpenDialog(const std::function<void()>& show, HWND (*list)(HWND dialog),
                  const std::function<void(HWND list)>& inside = {});

/// Seconds for one PgDn in `list` until the whole dialog is painted again, as the mean of `pages` of them:
/// every so many pages a list reads, and that belongs to the price.
double TurnPages(HWND list, int pages);

} // namespace tamvelo::bench
