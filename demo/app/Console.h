#pragma once

#include <string_view>

namespace tamvelo::demo {

/// Writes a line to the standard output, as UTF-8; nowhere when there is none, as is usual for a program with
/// windows.
void Say(std::wstring_view line);

} // namespace tamvelo::demo
