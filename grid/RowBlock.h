#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "grid/CellText.h"

namespace tamvelo::grid {

/// The cells of some consecutive rows, ready to be drawn: no conversion is left for the painting. One line
/// each, and no longer than any column can show.
class RowBlock {
public:
    struct Cell {
        std::uint32_t start = 0;
        std::uint32_t length = 0;
        CellKind kind = CellKind::Text;
        bool checked = false;
    };

    RowBlock() = default;
    RowBlock(long firstRow, long rows, short columns)
        : m_firstRow(firstRow),
          m_columns(columns),
          m_read(static_cast<size_t>(rows)),
          m_cells(static_cast<size_t>(rows) * static_cast<size_t>(columns)) {}

    /// The value as it is displayed.
    void Set(long row, short column, const VARIANT& value, CellKind kind) {
        const CellKind shown = KindOfValue(value, kind);
        const std::wstring text = Format(value, kind);
        Set(row, column, text, shown, shown == CellKind::Check && text != L"No");
    }
    void Set(long row, short column, std::wstring_view text, CellKind kind, bool checked) {
        if (row < m_firstRow || column >= m_columns || Index(row) >= m_read.size()) {
            return;
        }
        text = text.substr(0, kMostShown);
        m_cells[Index(row, column)] = {static_cast<std::uint32_t>(m_text.size()),
                                       static_cast<std::uint32_t>(text.size()), kind, checked};
        for (const wchar_t c : text) {
            m_text += c < L' ' ? L' ' : c;
        }
    }
    /// The row's cells are there from now on, blank where none was set.
    void SetRead(long row) { m_read[Index(row)] = true; }
    bool IsRead(long row) const {
        return row >= m_firstRow && Index(row) < m_read.size() && m_read[Index(row)];
    }
    bool IsAllRead() const { return std::find(m_read.begin(), m_read.end(), false) == m_read.end(); }
    /// Takes over the other's rows that were read.
    void Merge(const RowBlock& other) {
        for (size_t i = 0; i < other.m_read.size(); ++i) {
            const long row = other.m_firstRow + static_cast<long>(i);
            for (short column = 0; other.m_read[i] && column < m_columns; ++column) {
                const Cell& cell = *other.At(row, column);
                Set(row, column, other.Text(cell), cell.kind, cell.checked);
            }
            if (other.m_read[i]) {
                SetRead(row);
            }
        }
    }
    /// Null for a cell that was not read.
    const Cell* At(long row, short column) const {
        return IsRead(row) && column >= 0 && column < m_columns ? &m_cells[Index(row, column)] : nullptr;
    }
    std::wstring_view Text(const Cell& cell) const {
        return std::wstring_view(m_text).substr(cell.start, cell.length);
    }

private:
    static constexpr size_t kMostShown = 1024;

    size_t Index(long row) const { return static_cast<size_t>(row - m_firstRow); }
    size_t Index(long row, short column) const {
        return Index(row) * static_cast<size_t>(m_columns) + static_cast<size_t>(column);
    }

    long m_firstRow = 0;
    short m_columns = 0;
    std::vector<bool> m_read; // by row
    std::vector<Cell> m_cells;
    std::wstring m_text; // of all cells, one after the other
};

} // namespace tamvelo::grid
