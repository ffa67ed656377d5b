#pragma once

#include <string_view>

namespace tamvelo::base {

/// The animated-cursor file for a kind of busy work, in any case; the plain one for a kind that is not known.
std::wstring_view CursorFile(std::wstring_view kind);

} // namespace tamvelo::base
