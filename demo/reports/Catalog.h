#pragma once

#include <string>
#include <vector>

#include "demo/data/Tables.h"

namespace tamvelo::demo {

struct ReportColumn {
    const wchar_t* caption;
    Type type;
    int width; // in characters
    bool total = false;
};

/// What the host can print: a query whose columns are the report's. The conditions that act on a report are
/// the named parameters in its query; each of them is Null when the user was not asked for it.
struct ReportInfo {
    enum class Shape {
        List,
        Groups, // the query's first column is no column of the report: lines with the same value in it belong
                // together, under a heading and with a subtotal
        Labels, // each row is a label, each column a line of it
    };
    Shape shape;
    std::wstring title;
    std::wstring sql;
    std::vector<ReportColumn> columns;
};

/// The reports that the host offers on the screen of a table, always in the same order.
std::vector<ReportInfo> ReportsOf(const TableInfo& table);
/// Those of them that are labels.
std::vector<ReportInfo> LabelsOf(const TableInfo& table);

/// A report of the catalog and on which screens it is offered.
struct CatalogEntry {
    enum Screens : unsigned { Articles = 1, Customers = 2, Orders = 4 };
    unsigned screens;
    ReportInfo report;
};
const std::vector<CatalogEntry>& Catalog();

} // namespace tamvelo::demo
