#pragma once

#include <optional>
#include <string_view>

namespace tamvelo::base {

/// The minute of the day that a typed hour names: 7, 730, 0730, 7:30, 07:30 or 7.30, with blanks around it at
/// most. Nothing for anything else: what is no hour must not become midnight.
std::optional<int> ParseHour(std::wstring_view text);

} // namespace tamvelo::base
