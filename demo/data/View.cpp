#include "demo/data/View.h"

#include <algorithm>

#include "base/Text.h"
#include "demo/data/Schema.h"
#include "demo/data/Values.h"

namespace tamvelo::demo {

namespace {

constexpr long kBlockRows = base::BlockCache<std::vector<Value>>::kRowsPerBlock;

/// After every text that begins with what stands before it: the last code point there is.
constexpr std::string_view kAfterAll = "\xF4\x8F\xBF\xBF";

/// Reads a whole block with one statement, for each statement locks the file anew.
std::wstring BlockQuery(const TableInfo& table) {
    std::wstring sql = L"select id";
    for (const Column& column : table.columns) {
        sql += L", " + std::wstring(column.field);
    }
    sql += L" from " + std::wstring(table.sqlName) + L" where id in (?";
    for (long i = 1; i < kBlockRows; ++i) {
        sql += L",?";
    }
    return sql + L')';
}

} // namespace

View::View(Database& database, const TableInfo& table)
    : m_database(database), m_table(table), m_rows(Select({}, {})), m_read(database, BlockQuery(table)) {}

void View::Show(const std::wstring& filter, Order order) {
    Rows rows = Select(filter, order);
    m_rows = std::move(rows);
    m_filter = filter;
    m_order = order;
    m_rowOfId.clear();
    m_cache.BumpEpoch();
}

View::Rows View::Select(const std::wstring& filter, Order order) {
    if (order.column < 0 || static_cast<std::size_t>(order.column) >= m_table.columns.size()) {
        throw DataError(L"No hay ninguna columna " + std::to_wstring(order.column) + L" por la que ordenar.");
    }
    const std::optional<long> ordered =
        order.column == 0 && !order.descending ? RowsInTableOrder(m_database, m_table) : std::nullopt;
    if (ordered && filter.empty()) {
        return {true, *ordered, {}};
    }
    const std::wstring direction = order.descending ? L" desc" : L"";
    std::wstring sql = L"select id from " + std::wstring(m_table.sqlName);
    // On lines of its own, so that a comment in the filter does not swallow what follows.
    sql += filter.empty() ? L"" : L" where (\n" + filter + L"\n)";
    sql += L" order by ";
    if (!ordered) {
        const auto column = static_cast<std::size_t>(order.column);
        sql += std::wstring(m_table.columns[column].field) + direction + L", ";
    }
    sql += L"id" + direction;

    Rows rows;
    Statement statement(m_database, sql);
    while (statement.Step()) {
        rows.ids.push_back(statement.Integer(0));
    }
    return rows;
}

std::span<const Value> View::Row(long row) {
    Block* block = m_cache.Find(row);
    if (block == nullptr) {
        const long first = m_cache.FirstRow(m_cache.BlockOf(row));
        block = m_cache.Insert(m_cache.Epoch(), row, Read(first));
    }
    const std::size_t width = m_table.columns.size();
    return std::span<const Value>(*block).subspan(static_cast<std::size_t>(row % kBlockRows) * width, width);
}

View::Block View::Read(long first) {
    const std::size_t width = m_table.columns.size();
    const long last = std::min(first + kBlockRows, Count());
    m_read.Reset();
    for (long i = 0; i < kBlockRows; ++i) {
        const int parameter = static_cast<int>(i) + 1;
        first + i < last ? m_read.Bind(parameter, IdOf(first + i)) : m_read.BindNull(parameter);
    }
    Block block(static_cast<std::size_t>(kBlockRows) * width);
    while (m_read.Step()) {
        // The statement answers in the order of the ids; the view may have any.
        long row = first;
        while (IdOf(row) != m_read.Integer(0)) {
            ++row;
        }
        const std::size_t start = static_cast<std::size_t>(row - first) * width;
        for (std::size_t i = 0; i < width; ++i) {
            block[start + i] = m_read.Cell(static_cast<int>(i) + 1);
        }
    }
    return block;
}

std::int64_t View::IdOf(long row) const {
    return m_rows.inTableOrder ? row + 1 : m_rows.ids.at(static_cast<std::size_t>(row));
}

std::optional<long> View::RowOf(std::int64_t id) {
    if (m_rows.inTableOrder) {
        return id >= 1 && id <= m_rows.count ? std::optional(static_cast<long>(id - 1)) : std::nullopt;
    }
    if (m_rows.ids.empty()) {
        return std::nullopt;
    }
    if (m_rowOfId.empty()) {
        // Ids come from the table one after another, so a plain table from id to row has few holes.
        m_rowOfId.assign(static_cast<std::size_t>(*std::ranges::max_element(m_rows.ids)) + 1, -1);
        long row = 0;
        for (const std::int64_t known : m_rows.ids) {
            m_rowOfId[static_cast<std::size_t>(known)] = row++;
        }
    }
    const bool known = id >= 0 && static_cast<std::size_t>(id) < m_rowOfId.size();
    const long row = known ? m_rowOfId[static_cast<std::size_t>(id)] : -1;
    return row >= 0 ? std::optional(row) : std::nullopt;
}

std::optional<long> View::Find(std::wstring_view text, int column) {
    if (column < 0 || column >= kIndexedColumns) {
        return std::nullopt;
    }
    const Column& info = m_table.columns[static_cast<std::size_t>(column)];
    const std::optional<Value> value = ParseTyped(info.type, text);
    if (!value || std::holds_alternative<std::monostate>(*value)) {
        return std::nullopt;
    }
    const std::wstring field(info.field);
    std::wstring sql =
        L"select id from " + std::wstring(m_table.sqlName) + L" where " + field + L" between ?1 and ?2";
    sql += m_filter.empty() ? L"" : L" and (\n" + m_filter + L"\n)";
    sql += L" order by " + field + L", id limit 1";
    Statement statement(m_database, sql);
    statement.Bind(1, *value).Bind(2, *value);
    if (info.type == Type::Text) {
        statement.Bind(2, base::ToUtf8(std::get<std::wstring>(*value)) + std::string(kAfterAll));
    }
    return statement.Step() ? RowOf(statement.Integer(0)) : std::nullopt;
}

} // namespace tamvelo::demo
