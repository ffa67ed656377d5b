#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/BlockCache.h"
#include "demo/data/Database.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

struct Order {
    int column = 0;
    bool descending = false;
};

/// The rows of one table under a filter and an order: what stands behind a record set. Rows count from 0. It
/// is an image: rows that others add or delete later are seen at the next Requery. Database and table outlive
/// it.
class View {
public:
    /// Every row, by code.
    View(Database& database, const TableInfo& table);

    long Count() const { return m_rows.inTableOrder ? m_rows.count : static_cast<long>(m_rows.ids.size()); }
    const TableInfo& Table() const { return m_table; }
    const std::wstring& Filter() const { return m_filter; }
    Order CurrentOrder() const { return m_order; }
    /// Another number after every change of the rows, their order or values that this view knows of.
    std::uint32_t Version() const { return m_cache.Epoch(); }

    /// The filter is an SQL condition, empty for every row; the order's column is one of the table's. Each
    /// throws DataError when it cannot be, and then the view is as it was.
    void SetFilter(const std::wstring& filter) { Show(filter, m_order); }
    void SetOrder(Order order) { Show(m_filter, order); }
    void Requery() { Show(m_filter, m_order); }

    /// The cells of a row (0 to Count() - 1), in the table's columns; all Null for one deleted since. Good
    /// until the next call.
    std::span<const Value> Row(long row);

    /// The identity of a row, and the row that has it (nothing when it is not in the view).
    std::int64_t IdOf(long row) const;
    std::optional<long> RowOf(std::int64_t id);

    /// The row whose value in the column (0, 1 or 2, the indexed ones) is the text typed; for a text column
    /// else the next value that begins with it, without regard to accents and case. Nothing when there is
    /// none.
    std::optional<long> Find(std::wstring_view text, int column);

private:
    /// The rows in order. A table as it was filled, its ids 1 to `count` in the order of the codes, needs no
    /// list: a million rows open as quickly as ten.
    struct Rows {
        bool inTableOrder = false;
        long count = 0;
        std::vector<std::int64_t> ids;
    };
    using Block = std::vector<Value>;

    void Show(const std::wstring& filter, Order order);
    Rows Select(const std::wstring& filter, Order order);
    Block Read(long first);

    Database& m_database;
    const TableInfo& m_table;
    std::wstring m_filter;
    Order m_order;
    Rows m_rows;
    std::vector<long> m_rowOfId; // made by the first RowOf that needs it; -1 for ids outside the view
    base::BlockCache<Block> m_cache{8};
    Statement m_read;
};

} // namespace tamvelo::demo
