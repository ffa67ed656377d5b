#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The rules of the search panel that need no window.
namespace tamvelo::base {

/// The one class that is offered kinds of search and whose choices are remembered. Compared exactly.
inline constexpr wchar_t kClassOfOrders[] = L"Ordenes";

/// A way to compare, by the place of its option. Box 0 takes a single value, box 1 a lower and box 2 an upper
/// bound.
struct SearchMode {
    std::array<bool, 3> boxes; // which of them are shown
    bool list;                 // whether values are collected in a list
    short focus;               // the box that the user types into first
};

inline constexpr std::array<SearchMode, 5> kSearchModes = {{
    {{true, false, false}, false, 0}, // equal
    {{false, true, true}, false, 1},  // between two bounds
    {{false, true, false}, false, 1}, // from a bound on
    {{false, false, true}, false, 2}, // up to a bound
    {{true, false, false}, true, 0},  // any of several
}};

/// A remembered index of `count` things; `fallback` for anything else.
int StoredIndex(std::wstring_view text, int count, int fallback);

/// Whether a column of this heading is offered as a kind of search.
bool IsSearchKind(std::wstring_view heading);
/// The field that the kind at this place of the list searches; nothing for the places that have none.
std::optional<std::wstring_view> SearchKindField(int index);

/// Fields that take any text: neither keys nor values are checked. In any case of letters.
bool IsUncheckedField(std::wstring_view field);
/// What is kept of a text when its box is left: trimmed, then the first `size` characters; a negative
/// size is none.
std::wstring TrimmedTo(std::wstring_view text, long size);

/// The values of a list copied elsewhere, one per line, cell or `;`, without blanks; nothing when the text is
/// a single value. A comma never separates: it is the decimal sign.
std::optional<std::vector<std::wstring>> PastedValues(std::wstring_view text);
/// "1 valor", "3 valores".
std::wstring CountOfValues(long count);

} // namespace tamvelo::base
