#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <string_view>

/// The hands of a user who is none: what they find on the screen and press there. Keys are posted to whoever
/// has the focus; a timer's turn comes only when all that was posted before has been handled and painted, so
/// one key a turn is what a person does.
namespace tamvelo::demo {

/// The window of this thread that takes input: the topmost visible and enabled one, made the active one.
HWND TopWindow();
/// The text of a message box; empty for any other window.
std::wstring BoxText(HWND window);

/// `held`: a modifier that is down meanwhile, 0 for none; LetGo in the next turn.
void PressKey(UINT key, UINT held = 0);
void LetGo(UINT held);
void TypeText(std::wstring_view text);
/// Alt and a letter.
void PressAccess(wchar_t letter);

/// Turns the thread's loop until nothing but that window takes input: after a dialog that is not modal.
void UntilAlone(HWND main);

} // namespace tamvelo::demo
