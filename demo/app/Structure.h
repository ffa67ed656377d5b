#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::demo {

/// Writes down what a window shows, in words: a line for each visible control with its kind, number, place
/// and text, its menus and tools too. What the records say is left out.
void SaveStructure(HWND window, const std::wstring& path);

} // namespace tamvelo::demo
