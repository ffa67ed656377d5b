#pragma once

#include <string>
#include <utility>
#include <vector>

#include "demo/data/Database.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

// Changes to the rows of a table. Each is one statement, so it happens whole or not at all, and throws
// DataError, in words for the user, when it cannot be. Views see it at their next Requery.

using FieldValues = std::vector<std::pair<std::wstring, Value>>;

/// The id of the new row. Fields not given are Null; the code must be given.
std::int64_t Insert(Database& database, const TableInfo& table, const FieldValues& values);
void Update(Database& database, const TableInfo& table, std::int64_t id, const FieldValues& values);
void Delete(Database& database, const TableInfo& table, std::int64_t id);

/// Sets or clears the marks of a check list: every Boolean column of every row.
void MarkAll(Database& database, const TableInfo& table, bool marked);

/// The next free article code of a family: the family's two figures and a number of six.
std::wstring NuevoCodigoFam(Database& database, std::wstring_view family);

} // namespace tamvelo::demo
