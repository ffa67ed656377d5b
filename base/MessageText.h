#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts of a host's that may be of any length, as people can be shown them.
namespace tamvelo::base {

inline constexpr std::size_t kLongestLabel = 1000; // what stands in a line of a dialog

/// The first `most` characters, the last of them "…" when there are more.
std::wstring Shortened(std::wstring_view text, std::size_t most);

/// The text as part of a sentence or a title: one line, not long.
std::wstring Named(std::wstring_view text);

/// What a message box shows of a text: its first lines, with an end of its own in a line that has no blank to
/// break at, or the box grows beyond the screen and takes its buttons along. A text that was cut says so.
std::wstring MessageText(std::wstring_view text);

} // namespace tamvelo::base
