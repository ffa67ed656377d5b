#pragma once

#include "com/WinHeaders.h"

#include <functional>

namespace tamvelo::win {

/// Gives modeless forms their keys while the host's own message loop runs: each of the thread's messages is
/// shown to the form it belongs to before the loop sees it.
class MessageHook {
public:
    /// `preview` answers true for a message that is used up.
    static void Add(HWND form, std::function<bool(MSG&)> preview);
    static void Remove(HWND form) noexcept;
};

/// Whether the control with the focus has its list or calendar dropped down.
bool IsListOpen(HWND focus);

} // namespace tamvelo::win
