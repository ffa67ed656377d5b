#include "demo/reports/Catalog.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"

namespace tamvelo::demo {

namespace {

using Shape = ReportInfo::Shape;

/// The tables whose screens have reports of their own.
constexpr struct {
    std::wstring_view className;
    unsigned screen;
} kScreens[] = {
    {L"articulos", CatalogEntry::Articles},    {L"articulos_lotes", CatalogEntry::Articles},
    {L"familias", CatalogEntry::Articles},     {L"proveedores", CatalogEntry::Articles},
    {L"clientes", CatalogEntry::Customers},    {L"clientes_direcciones", CatalogEntry::Customers},
    {L"rutas", CatalogEntry::Customers},       {L"Ordenes", CatalogEntry::Orders},
    {L"ordenes_lineas", CatalogEntry::Orders}, {L"hordenes", CatalogEntry::Orders},
};

/// Any table can be listed as it is.
ReportInfo Listing(const TableInfo& table, Shape shape) {
    constexpr std::size_t kMost = 6; // that fit on a sheet
    ReportInfo report{
        shape, (shape == Shape::Labels ? L"Etiquetas: " : L"Listado: ") + std::wstring(table.title), L"", {}};
    for (const Column& column : table.columns.first(std::min(kMost, table.columns.size()))) {
        report.sql += (report.sql.empty() ? L"select " : L", ") + std::wstring(column.field);
        report.columns.push_back({column.caption.data(), column.type, column.width});
    }
    report.sql += L" from " + std::wstring(table.sqlName) + L" order by 1";
    return report;
}

} // namespace

std::vector<ReportInfo> ReportsOf(const TableInfo& table) {
    const auto screen =
        std::ranges::find(kScreens, table.className, [](const auto& s) { return s.className; });
    if (screen == std::end(kScreens)) {
        return {Listing(table, Shape::List), Listing(table, Shape::Labels)};
    }
    std::vector<ReportInfo> reports;
    for (const CatalogEntry& entry : Catalog()) {
        if ((entry.screens & screen->screen) != 0) {
            reports.push_back(entry.report);
        }
    }
    return reports;
}

std::vector<ReportInfo> LabelsOf(const TableInfo& table) {
    std::vector<ReportInfo> labels = ReportsOf(table);
    std::erase_if(labels, [](const ReportInfo& report) { return report.shape != Shape::Labels; });
    return labels;
}

} // namespace tamvelo::demo
