#pragma once

#include <optional>

#include "demo/data/Database.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

/// Makes the tables anew, empty and without indexes; what they held is gone.
void CreateTables(Database& database);

/// Makes the indexes, faster after the rows are there than before, and remembers of each table that it is in
/// order: its ids run from 1 without a gap and the codes rise with them. The first row added, deleted or
/// given another code ends that for its table.
void FinishTables(Database& database);

/// The number of rows of a table that is still in order; nothing for any other.
std::optional<long> RowsInTableOrder(Database& database, const TableInfo& table);

} // namespace tamvelo::demo
