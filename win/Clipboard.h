#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::win {

/// Puts a text on the clipboard in the name of a window. Throws com::Error when another program holds it.
void CopyText(HWND owner, const std::wstring& text);

/// What the clipboard holds as text, up to its end; "" when it holds none, or another program holds it.
std::wstring CopiedText(HWND owner);

} // namespace tamvelo::win
