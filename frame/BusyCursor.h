#pragma once

#include "com/WinHeaders.h"

#include <string_view>

/// The busy cursors that dialogs show around long work. They capture the mouse to the form; a missing file
/// shows no cursor and says nothing.
namespace tamvelo::frame {

/// The system's wait cursor, or back to the arrow with the capture released.
void PlainBusyCursor(HWND form, bool on);

/// The animated cursor of a kind ("open", "save", "wait", "working", "sort", any case) from the folder
/// "Image" beside the library. Off destroys it, releases the capture and brings the arrow back; off twice is
/// harmless.
void AnimatedBusyCursor(HWND form, bool on, std::wstring_view kind);

} // namespace tamvelo::frame
