#pragma once

#include <span>
#include <string>

namespace tamvelo::base {

/// One row for the clipboard: the cells parted by tabs. Tabs and line ends inside a cell become spaces, so
/// that the row stays one row of as many cells wherever it is pasted.
std::wstring TabLine(std::span<const std::wstring> cells);

} // namespace tamvelo::base
