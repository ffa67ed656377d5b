#pragma once

#include <span>
#include <string>
#include <string_view>

#include "demo/data/Tables.h"

namespace tamvelo::demo {

/// What a search box stands for: the numbers are those that the dialogs pass with it. The one box over a list
/// comes without a number: it looks for a text anywhere.
enum class Bound { Anywhere = -1, Equal = 0, Lower = 1, Upper = 2 };

/// The SQL condition for what was typed for a column; empty when it asks for every row (blank, "*", "2 -
/// Todos"). Texts are equal without regard to accents and case, and each * stands for any text; every other
/// type is compared by value, after the stars are left out. Throws DataError, with the column's caption, when
/// the text is no value of the column's type.
std::wstring BuildFilter(const Column& column, std::wstring_view typed, Bound bound = Bound::Anywhere);

/// The condition that one of several typed texts is equal: for a list of values.
std::wstring BuildFilterAny(const Column& column, std::span<const std::wstring> typed);

} // namespace tamvelo::demo
