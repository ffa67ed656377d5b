#include "grid/GridViewport.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace tamvelo::grid {

long GridViewport::RowAt(int y) const {
    if (y < m_headHeight || y >= m_client.bottom) {
        return -1;
    }
    const long row = m_top + (y - m_headHeight) / m_rowHeight;
    return row < m_data.Count() ? row : -1;
}

std::vector<GridViewport::Span> GridViewport::Spans() const {
    std::vector<Span> spans;
    int left = -m_scrolled;
    for (const short column : m_columns.OnScreen()) {
        const int right = left + m_columns[column].width;
        spans.push_back({column, left, right});
        left = right;
    }
    return spans;
}

short GridViewport::ColumnAt(int x) const {
    for (const Span& span : Spans()) {
        if (x < span.right) {
            return span.column;
        }
    }
    return -1;
}

RECT GridViewport::CellRect(long row, short column) const {
    for (const Span& span : Spans()) {
        if (span.column == column) {
            return {span.left, RowTop(row), span.right, RowTop(row) + m_rowHeight};
        }
    }
    return {};
}

void GridViewport::TakeClient() {
    GetClientRect(m_window, &m_client);
    SetTop(m_top);
    ScrollAcross(m_scrolled);
}

void GridViewport::Reveal(long row, bool oneThirdDown) {
    if (row >= 0 && !ShowsWhole(row)) {
        const long down = oneThirdDown ? WholeRows() / 3 : row < m_top ? 0 : WholeRows() - 1;
        SetTop(row - down);
    }
}

void GridViewport::ScrollTo(long top) {
    const long rows = m_top - top;
    m_top = top;
    UpdateBars();
    if (rows > -WholeRows() && rows < WholeRows()) {
        const RECT body = Body();
        ScrollWindowEx(m_window, 0, static_cast<int>(rows) * m_rowHeight, &body, &body, nullptr, nullptr,
                       SW_INVALIDATE);
    } else {
        InvalidateBody();
    }
}

bool GridViewport::ScrollAcross(int scrolled) {
    const int before = std::exchange(m_scrolled, std::clamp(scrolled, 0, MostScrolled()));
    return before != m_scrolled;
}

void GridViewport::UpdateBars() {
    const int rows = static_cast<int>(std::max(0L, m_data.Count() - 1));
    Draw(SB_VERT, m_vertical, {rows, static_cast<int>(WholeRows()), static_cast<int>(m_top)},
         m_client.bottom);
    // Showing or hiding a bar resizes the window.
    Draw(SB_HORZ, m_horizontal,
         {std::max(0, m_columns.TotalWidth() - 1), static_cast<int>(m_client.right), m_scrolled},
         m_client.right);
}

/// Drawing a bar takes as long as drawing a third of the rows: one that stays as it is, or whose thumb would
/// not move by a pixel, as among a million rows, is not drawn again.
void GridViewport::Draw(int which, Bar& drawn, const Bar& wanted, int length) {
    const bool sameRange = drawn.most == wanted.most && drawn.page == wanted.page;
    if (!m_window || (sameRange && drawn.position == wanted.position)) {
        return;
    }
    const int range = std::max(1, wanted.most - wanted.page + 1);
    const int thumb = static_cast<int>(static_cast<long long>(wanted.position) * length / range);
    const bool draw = !sameRange || thumb != drawn.thumb;
    drawn = {wanted.most, wanted.page, wanted.position, thumb};
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_PAGE | SIF_POS | SIF_RANGE | (which == SB_VERT ? SIF_DISABLENOSCROLL : 0U);
    info.nMax = wanted.most;
    info.nPage = static_cast<UINT>(wanted.page);
    info.nPos = wanted.position;
    SetScrollInfo(m_window, which, &info, draw);
}

void GridViewport::InvalidateBody() const {
    if (m_window) {
        const RECT body = Body();
        InvalidateRect(m_window, &body, FALSE);
    }
}

void GridViewport::InvalidateRow(long row) const {
    if (m_window && Shows(row)) {
        const RECT area{0, RowTop(row), m_client.right, RowTop(row) + m_rowHeight};
        InvalidateRect(m_window, &area, FALSE);
    }
}

} // namespace tamvelo::grid
