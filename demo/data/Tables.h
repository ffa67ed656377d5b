#pragma once

#include <span>
#include <string_view>

#include "demo/data/SampleRecipe.h"

namespace tamvelo::demo {

/// How a column keeps its values, and so how they are typed, checked and shown.
enum class Type {
    Text,
    Integer,
    Money,   // whole cents: sums stay exact; also percentages, in hundredths
    Date,    // ISO text, "2026-11-21": sorts as it reads
    Boolean, // 0 or 1
};

/// The first columns of a table, those that the panels answer with, are indexed.
inline constexpr int kIndexedColumns = 3;

struct Column {
    std::wstring_view field;
    std::wstring_view caption;
    Type type;
    int width;                 // of the grid column, in characters
    int maxLength;             // of what may be typed into a box for it
    std::wstring_view related; // class whose first column this one holds a value of; empty for none
    Recipe recipe;             // what fills it in the sample data
};

/// One table and the data class that wraps it. The panels answer with the columns by number: 0 is the code,
/// unique and the default order; 1 the name or description; 2 what else one looks for. Every table has a
/// column `id` besides, the row's identity, which no grid shows.
struct TableInfo {
    std::wstring_view className;
    std::wstring_view sqlName;
    std::wstring_view title;
    std::span<const Column> columns;
    SampleRows sampleRows;

    const Column& Code() const { return columns.front(); }
    /// Null when there is none of that name, in any case.
    const Column* FindColumn(std::wstring_view field) const;
};

std::span<const TableInfo> Tables();

/// The table of a data class, its name in any case; null when there is none.
const TableInfo* FindTable(std::wstring_view className);

} // namespace tamvelo::demo
