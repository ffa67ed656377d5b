#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <string_view>

namespace tamvelo::frame {

// What is held with a key, added to its virtual-key code.
inline constexpr UINT kCtrl = 0x1000;
inline constexpr UINT kShift = 0x2000;
inline constexpr UINT kAlt = 0x4000;
/// Added to a key that the control handles by itself: the row stands there to be read in tips and menus.
inline constexpr UINT kByControl = 0x8000;

/// With these a box opens what it can be filled from.
inline constexpr UINT kAltDown = kAlt | VK_DOWN;

/// A key and the command it dispatches. Rows for the form (control 0) act first; one with Ctrl, Shift or Alt
/// is then used up. Then those of the control that has the focus act; a key that no control row takes goes on
/// to the control itself. A command's first row is the key that tips and menus name.
struct KeyRow {
    int control;
    UINT key;
    std::wstring_view command;
};

/// As users read it: "Ctrl+Mayús+C".
std::wstring KeyName(UINT key);

/// Whether a text box needs the key for its text: select all, copy, cut, paste, undo.
bool IsTextKey(UINT key);

} // namespace tamvelo::frame
