#include "demo/data/Records.h"

#include <sqlite3.h>

#include <algorithm>

#include "base/Text.h"
#include "demo/data/Values.h"

namespace tamvelo::demo {

namespace {

bool IsBlank(const Value& value) {
    const auto* text = std::get_if<std::wstring>(&value);
    return std::holds_alternative<std::monostate>(value) || (text != nullptr && base::Trim(*text).empty());
}

/// Checks the values and gives their columns.
std::vector<const Column*> ColumnsOf(const TableInfo& table, const FieldValues& values) {
    std::vector<const Column*> columns;
    for (const auto& [field, value] : values) {
        const Column* column = table.FindColumn(field);
        if (column == nullptr) {
            throw DataError(std::wstring(table.title) + L": no hay ningún campo «" + field + L"».");
        }
        if (!Fits(*column, value) || (column == &table.Code() && IsBlank(value))) {
            throw DataError(L"El valor de " + std::wstring(column->caption) + L" no es válido.");
        }
        columns.push_back(column);
    }
    return columns;
}

/// Runs a change whose first parameters are the values.
void RunWith(Statement& statement, const FieldValues& values) {
    int parameter = 0;
    for (const auto& [field, value] : values) {
        statement.Bind(++parameter, value);
    }
    try {
        statement.Run();
    } catch (const DataError& error) {
        if (error.Code() == SQLITE_CONSTRAINT_UNIQUE) {
            throw DataError(L"Ya existe un registro con ese código.", error.Code());
        }
        throw;
    }
}

std::wstring NamesOf(const std::vector<const Column*>& columns, std::wstring_view after) {
    std::wstring names;
    for (const Column* column : columns) {
        names += (names.empty() ? L"" : L", ") + std::wstring(column->field) + std::wstring(after);
    }
    return names;
}

std::wstring SqlName(const TableInfo& table) { return std::wstring(table.sqlName); }

void CheckFound(const Database& database) {
    if (sqlite3_changes(database.Handle()) == 0) {
        throw DataError(L"El registro ya no existe.");
    }
}

} // namespace

std::int64_t Insert(Database& database, const TableInfo& table, const FieldValues& values) {
    const auto columns = ColumnsOf(table, values);
    if (std::ranges::find(columns, &table.Code()) == columns.end()) {
        throw DataError(L"Falta el valor de " + std::wstring(table.Code().caption) + L'.');
    }
    std::wstring marks = L"?";
    for (std::size_t i = 1; i < columns.size(); ++i) {
        marks += L", ?";
    }
    Statement statement(database, L"insert into " + SqlName(table) + L" (" + NamesOf(columns, L"") +
                                      L") values (" + marks + L')');
    RunWith(statement, values);
    return database.LastId();
}

void Update(Database& database, const TableInfo& table, std::int64_t id, const FieldValues& values) {
    if (values.empty()) {
        return;
    }
    const auto columns = ColumnsOf(table, values);
    Statement statement(
        database, L"update " + SqlName(table) + L" set " + NamesOf(columns, L" = ?") + L" where id = ?");
    statement.Bind(static_cast<int>(values.size()) + 1, id);
    RunWith(statement, values);
    CheckFound(database);
}

void Delete(Database& database, const TableInfo& table, std::int64_t id) {
    Statement statement(database, L"delete from " + SqlName(table) + L" where id = ?");
    statement.Bind(1, id).Run();
    CheckFound(database);
}

void MarkAll(Database& database, const TableInfo& table, bool marked) {
    std::vector<const Column*> marks;
    for (const Column& column : table.columns) {
        if (column.type == Type::Boolean) {
            marks.push_back(&column);
        }
    }
    if (marks.empty()) {
        throw DataError(std::wstring(table.title) + L": no hay ninguna columna que marcar.");
    }
    Statement statement(database, L"update " + SqlName(table) + L" set " + NamesOf(marks, L" = ?1"));
    statement.Bind(1, std::int64_t{marked}).Run();
}

std::wstring NuevoCodigoFam(Database& database, std::wstring_view family) {
    const std::wstring code(base::Trim(family));
    Statement known(database, L"select 1 from familias where codigo = ?");
    if (!known.Bind(1, Value(code)).Step()) {
        throw DataError(L"No existe la familia «" + code + L"».");
    }
    constexpr std::int64_t kNumbers = 1'000'000;
    Statement last(
        database,
        L"select max(codigo) from articulos where codigo between ?1 || '000000' and ?1 || '999999'"
        L" and length(codigo) = length(?1) + 6 and substr(codigo, length(?1) + 1) not glob '*[^0-9]*'");
    last.Bind(1, Value(code)).Step();
    const Value highest = last.Cell(0);
    const auto* text = std::get_if<std::wstring>(&highest);
    const std::int64_t number = text != nullptr ? std::stoll(text->substr(code.size())) + 1 : 1;
    if (number == kNumbers) {
        throw DataError(L"La familia «" + code + L"» no admite más artículos.");
    }
    return code + std::to_wstring(kNumbers + number).substr(1);
}

} // namespace tamvelo::demo
