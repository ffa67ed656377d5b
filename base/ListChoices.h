#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// How the ticks of a list of reports are kept between openings. A host may add, remove and reorder its
/// reports meanwhile, so they are kept by title; where titles repeat, by which of them it was.
namespace tamvelo::base {

/// One text of the ticked titles, separated by "|"; the second entry of the same title is "title#2" and so
/// on;
/// "\", "|" and "#" of a title have a "\" before them.
std::wstring RememberTicks(std::span<const std::wstring> titles, const std::vector<bool>& ticks);

/// A tick per title; those that the text does not name have none. Any text will do.
std::vector<bool> RestoreTicks(std::span<const std::wstring> titles, std::wstring_view remembered);

} // namespace tamvelo::base
