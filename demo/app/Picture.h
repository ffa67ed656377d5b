#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::demo {

/// Writes a window of this thread, with its caption and children, into a PNG file. Throws com::Error.
void SavePicture(HWND window, const std::wstring& path);

} // namespace tamvelo::demo
