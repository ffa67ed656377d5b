#pragma once

namespace tamvelo::base {

/// The column number that a host's sort takes for an entry of the sort-order editor, counted from 0; -1, for
/// no entry, stays. Hosts keep their numbers 39 to 46, 49 and 50 for columns that are never offered.
constexpr short SortNumber(int entry) {
    const int reserved = entry >= 41 ? 10 : entry >= 39 ? 8 : 0;
    return static_cast<short>(entry + reserved);
}

} // namespace tamvelo::base
