#pragma once

#include <string_view>

namespace tamvelo::demo {

/// Writes a line to the standard output, as UTF-8. False when there is none, as is usual for a program with
/// windows.
bool Say(std::wstring_view line);

} // namespace tamvelo::demo
