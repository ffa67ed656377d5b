#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <string>

namespace tamvelo::testing {

/// Waits until the condition holds; false after ten seconds.
bool Eventually(const std::function<bool()>& condition);

/// The visible window of any process with that caption, waited for; null when it does not come.
HWND WindowOfAnyProcess(const std::wstring& caption);
/// The control that has the focus in the window's thread, and its text.
HWND FocusIn(HWND window);
std::wstring FocusedText(HWND window);
/// Posted to the control that has the focus when this is called.
void PostKeyTo(HWND window, UINT key);
void PostTextTo(HWND window, const std::wstring& text);

} // namespace tamvelo::testing
