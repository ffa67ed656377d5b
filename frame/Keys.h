#pragma once

#include "com/WinHeaders.h"

#include <algorithm>
#include <array>
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

/// Added to a key of a control that the form's own row for it must not come before.
inline constexpr UINT kFirst = 0x10000;
/// In place of a key: the button was clicked, with the mouse, its access key or the space bar.
inline constexpr UINT kClick = 0;

/// The controls that a row is for: one, or those with numbers from first to last. 0 is the form.
struct Controls {
    constexpr Controls(int control) : first(control), last(control) {}
    constexpr Controls(int from, int to) : first(from), last(to) {}
    constexpr bool Has(int control) const { return first <= control && control <= last; }

    int first;
    int last;
};

/// Every control, for commands that a form offers at some of them (Form::Offers).
inline constexpr Controls kAnyControl{1, 0xFFFF};

/// A key, or the click of a button, and the command it dispatches. Rows for the form (control 0) act first;
/// one with Ctrl, Shift or Alt is then used up. Then those of the control that has the focus act; a key that
/// no control row takes goes on to the control itself. A command's first key is the one that tips and menus
/// name.
struct KeyRow {
    Controls controls = 0;
    UINT key = kClick;
    std::wstring_view command;
    /// The control that the command is for, where it is another than the one with the focus.
    int on = 0;
};

/// The rows of a kind of form and those of one of them.
template <std::size_t N, std::size_t M>
consteval std::array<KeyRow, N + M> KeysAnd(const std::array<KeyRow, N>& kind, const KeyRow (&own)[M]) {
    std::array<KeyRow, N + M> all{};
    std::ranges::copy(kind, all.begin());
    std::ranges::copy(own, all.begin() + N);
    return all;
}

/// As users read it: "Ctrl+Mayús+C".
std::wstring KeyName(UINT key);

/// Whether a text box needs the key for its text: select all, copy, cut, paste, undo.
bool IsTextKey(UINT key);

} // namespace tamvelo::frame
