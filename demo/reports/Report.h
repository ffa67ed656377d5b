#pragma once

#include <string>
#include <vector>

#include "demo/data/Database.h"
#include "demo/reports/Catalog.h"

namespace tamvelo::demo {

/// A condition that the user set. `name` is the parameter's in the queries.
struct Parameter {
    const char* name;
    Value value;        // Null: lets everything through
    std::wstring shown; // in the heading of the reports on which it acts; empty: not told
};
using Parameters = std::vector<Parameter>;

/// A report with its data, as text.
struct Report {
    struct Line {
        enum Kind { Row, Group, Subtotal, Total } kind;
        std::vector<std::wstring> cells; // of a group the first one only
    };
    ReportInfo::Shape shape;
    std::wstring title;
    std::wstring conditions; // "Entre 01/11/2026 y 30/11/2026; facturado: todos"
    std::wstring stamp;      // printed across every page: "Borrador"
    std::vector<ReportColumn> columns;
    std::vector<Line> lines;
    std::int64_t rows = 0; // found: the totals are of all of them
};

/// Of longer reports only so many rows are printed.
inline constexpr std::int64_t kMostRows = 5000;

/// The parameter whose text is the stamp instead of a condition.
inline constexpr char kDocument[] = ":documento";

/// Reads the data. Parameters that the report's query does not name are ignored. Throws DataError.
Report Produce(Database& database, const ReportInfo& info, const Parameters& parameters);

} // namespace tamvelo::demo
