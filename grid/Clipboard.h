#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::grid {

/// Puts a text on the clipboard in the name of a window. Throws com::Error when another program holds it.
void CopyText(HWND owner, const std::wstring& text);

} // namespace tamvelo::grid
