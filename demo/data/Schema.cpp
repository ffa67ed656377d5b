#include "demo/data/Schema.h"

namespace tamvelo::demo {

namespace {

const wchar_t* SqlType(Type type) {
    return type == Type::Text || type == Type::Date ? L" text collate espanol" : L" integer";
}

void CreateTable(Database& database, const TableInfo& table) {
    const std::wstring name(table.sqlName);
    std::wstring sql =
        L"drop table if exists " + name + L"; create table " + name + L"(id integer primary key";
    for (const Column& column : table.columns) {
        sql += L", ";
        sql += column.field;
        sql += SqlType(column.type);
        sql += &column == &table.Code() ? L" not null" : L"";
    }
    database.Execute(sql + L')');
}

void CreateIndex(Database& database, const TableInfo& table, int column) {
    const std::wstring name(table.sqlName);
    const std::wstring field(table.columns[static_cast<std::size_t>(column)].field);
    database.Execute(L"create " + std::wstring(column == 0 ? L"unique " : L"") + L"index " + name + L"_" +
                     std::to_wstring(column) + L" on " + name + L"(" + field + L")");
}

/// `change` ends the table's being in order.
void Watch(Database& database, const TableInfo& table, const std::wstring& trigger,
           const std::wstring& change) {
    const std::wstring name(table.sqlName);
    database.Execute(L"create trigger " + name + L"_" + trigger + L" after " + change + L" on " + name +
                     L" begin delete from tablas_en_orden where tabla = '" + name + L"'; end");
}

void RememberOrder(Database& database, const TableInfo& table) {
    const std::wstring name(table.sqlName);
    database.Execute(L"insert into tablas_en_orden select '" + name + L"', count(*) from " + name);
    Watch(database, table, L"alta", L"insert");
    Watch(database, table, L"baja", L"delete");
    Watch(database, table, L"cambio", L"update of " + std::wstring(table.Code().field));
}

} // namespace

void CreateTables(Database& database) {
    database.Execute(
        L"drop table if exists tablas_en_orden;"
        L"create table tablas_en_orden(tabla text primary key, filas integer not null) without rowid");
    for (const TableInfo& table : Tables()) {
        CreateTable(database, table);
    }
}

void FinishTables(Database& database) {
    for (const TableInfo& table : Tables()) {
        for (int column = 0; column < kIndexedColumns; ++column) {
            CreateIndex(database, table, column);
        }
        RememberOrder(database, table);
    }
}

std::optional<long> RowsInTableOrder(Database& database, const TableInfo& table) {
    Statement statement(database, L"select filas from tablas_en_orden where tabla = ?");
    statement.Bind(1, Value(std::wstring(table.sqlName)));
    return statement.Step() ? std::optional(static_cast<long>(statement.Integer(0))) : std::nullopt;
}

} // namespace tamvelo::demo
