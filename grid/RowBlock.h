#pragma once

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
          m_cells(static_cast<size_t>(rows) * static_cast<size_t>(columns)) {}

    void Set(long row, short column, std::wstring_view text, CellKind kind, bool checked);
    /// Null for a cell that was not read.
    const Cell* At(long row, short column) const;
    std::wstring_view Text(const Cell& cell) const {
        return std::wstring_view(m_text).substr(cell.start, cell.length);
    }

private:
    static constexpr size_t kMostShown = 1024;

    long m_firstRow = 0;
    short m_columns = 0;
    std::vector<Cell> m_cells;
    std::wstring m_text; // of all cells, one after the other
};

inline void RowBlock::Set(long row, short column, std::wstring_view text, CellKind kind, bool checked) {
    const size_t index =
        static_cast<size_t>(row - m_firstRow) * static_cast<size_t>(m_columns) + static_cast<size_t>(column);
    if (column >= m_columns || index >= m_cells.size()) {
        return;
    }
    text = text.substr(0, kMostShown);
    m_cells[index] = {static_cast<std::uint32_t>(m_text.size()), static_cast<std::uint32_t>(text.size()),
                      kind, checked};
    for (const wchar_t c : text) {
        m_text += c < L' ' ? L' ' : c;
    }
}

inline const RowBlock::Cell* RowBlock::At(long row, short column) const {
    const size_t index =
        static_cast<size_t>(row - m_firstRow) * static_cast<size_t>(m_columns) + static_cast<size_t>(column);
    return row >= m_firstRow && column >= 0 && column < m_columns && index < m_cells.size() ? &m_cells[index]
                                                                                            : nullptr;
}

} // namespace tamvelo::grid
