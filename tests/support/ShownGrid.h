#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <vector>

namespace tamvelo::testing {

/// What a grid shows, as it tells a screen reader, also one of another process.
struct ShownGrid {
    std::vector<std::wstring> rows; // those on screen, their cells parted by "; "
    int selected = -1;              // among them
    std::wstring Selected() const { return selected < 0 ? L"" : rows.at(static_cast<size_t>(selected)); }
};

ShownGrid ReadGrid(HWND grid);

} // namespace tamvelo::testing
