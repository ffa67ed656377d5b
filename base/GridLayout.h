#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/LayoutText.h"

namespace tamvelo::base {

/// How a user left a grid: font and columns. Kept per host class in a text file ("Tamvelo cuadrícula 1").
struct GridLayout {
    struct Font {
        std::wstring face = L"Tahoma"; // at most 31 characters, the longest face that Windows takes
        int tenthsOfPoint = 100;       // 40..960
        bool bold = false;
        bool italic = false;
        bool underline = false;
        bool operator==(const Font&) const = default;
    };

    struct Column {
        std::wstring field;
        int width = 100; // pixels at the layout's dpi, 0..10000
        bool visible = true;
        int order = 0; // place on screen from the left, 0..999
        bool operator==(const Column&) const = default;
    };

    int dpi = 96; // 48..960
    Font font;
    /// In record-set order. A field name may be empty or repeat: a column's identity is its exact name and
    /// its occurrence, the how-manieth of that name it is in this list.
    std::vector<Column> columns;
    bool operator==(const GridLayout&) const = default;
};

/// The file's text. Values out of range are brought into it; columns after the first 1000, those whose names
/// are too long and those for which the file has no room are left out.
std::string FormatGridLayout(const GridLayout& layout);

/// Refuses what is malformed, repeated or out of range, with the line and the reason.
std::variant<GridLayout, LayoutError> ParseGridLayout(std::string_view utf8);

/// The `occurrence`-th column (from 1) of that field name, or null. Points into `layout`.
const GridLayout::Column* FindColumn(const GridLayout& layout, std::wstring_view field,
                                     std::size_t occurrence);

} // namespace tamvelo::base
