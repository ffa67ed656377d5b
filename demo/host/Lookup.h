#pragma once

#include <string_view>

#include "com/Variant.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

/// The table of a data class. Throws com::Error when there is no such class.
const TableInfo& TableOf(std::wstring_view className);

/// The place of the column that a caller means by a number, from 0, or by its field's name. Throws com::Error
/// when there is none.
std::size_t ColumnIndex(const TableInfo& table, const com::Variant& which);

} // namespace tamvelo::demo
