// Marks: Boolean cells that the user ticks.
#include <windows.h>

#include <algorithm>

#include "grid/GridAccessible.h"
#include "grid/GridView.h"

namespace tamvelo::grid {

/// By the field's type or, of a record set that gives none, by what the current row holds.
bool GridView::IsMark(short column) {
    if (column < 0 || column >= static_cast<short>(m_data.Fields().size())) {
        return false;
    }
    const CellKind kind = m_data.Kind(column);
    if (kind != CellKind::Any) {
        return kind == CellKind::Check;
    }
    const RowBlock* block = m_data.Block(m_data.Current());
    const RowBlock::Cell* cell = block ? block->At(m_data.Current(), column) : nullptr;
    return cell && cell->kind == CellKind::Check;
}

std::vector<short> GridView::MarkColumns() {
    std::vector<short> columns = m_columns.OnScreen();
    std::erase_if(columns, [&](short column) { return !IsMark(column); });
    return columns;
}

void GridView::PutMarksFirst() {
    int place = 0;
    for (const short mark : MarkColumns()) {
        ChangeColumn(mark, [&](GridColumns& columns, GridColumn&) { columns.MoveTo(mark, place++); });
    }
}

bool GridView::ToggleMark(short column) {
    CheckColumn(column);
    if (!Confirm()) {
        return false;
    }
    m_data.Write(column, com::Variant(!m_data.Value(column).ToBool()));
    Sync(HostDid::Something);
    if (m_window) {
        NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, m_window, OBJID_CLIENT,
                       RowChild(m_data.Current(), m_geometry.top));
    }
    return true;
}

MarkCount GridView::CountMarks(short column) {
    constexpr long kFew = GridData::kRowsReadTogether;
    MarkCount count;
    const RowBlock* const only = m_data.Count() <= kFew ? m_data.Block(0) : nullptr;
    count.all = m_data.Count() == 0 || (only && only->IsAllRead());
    const long last = count.all ? m_data.Count() - 1 : std::min(m_geometry.LastShown(), m_data.Count() - 1);
    for (long row = count.all ? 0 : m_geometry.top; row <= last; ++row) {
        const RowBlock* block = m_data.Block(row);
        const RowBlock::Cell* cell = block ? block->At(row, column) : nullptr;
        count.marked += cell && cell->checked ? 1 : 0;
    }
    return count;
}

} // namespace tamvelo::grid
