#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tamvelo::base {

inline constexpr std::size_t kLongestTraceText = 200;

/// A text from outside as it stands in a line of the trace: a space for each control character, and only the
/// beginning of a long one, with its length behind it.
std::wstring TraceText(std::wstring_view text);

} // namespace tamvelo::base
