#pragma once

#include "grid/GridColumns.h"
#include "grid/GridData.h"

namespace tamvelo::grid {

/// Which part of rows and columns is on screen and where it stands in the client area, in pixels; the bars
/// show it. Calls no host.
class GridViewport {
public:
    /// `window` is null once there is none: then nothing is drawn.
    GridViewport(const HWND& window, const GridData& data, const GridColumns& columns)
        : m_window(window), m_data(data), m_columns(columns) {}

    const RECT& Client() const { return m_client; }
    int HeadHeight() const { return m_headHeight; }
    int RowHeight() const { return m_rowHeight; }
    /// To the right.
    int Scrolled() const { return m_scrolled; }
    /// The first row on screen.
    long Top() const { return m_top; }
    /// The last row of which anything shows, were there so many.
    long Bottom() const { return m_top + (BodyHeight() + m_rowHeight - 1) / m_rowHeight - 1; }
    /// Of the rows that there are; before the first when there are none.
    long LastRow() const { return std::min(Bottom(), m_data.Count() - 1); }
    int BodyHeight() const { return std::max(0, static_cast<int>(m_client.bottom) - m_headHeight); }
    /// Rows that fit whole; at least one.
    long WholeRows() const { return std::max(1, BodyHeight() / m_rowHeight); }
    bool ShowsWhole(long row) const { return row >= m_top && row < m_top + WholeRows(); }
    bool Shows(long row) const { return row >= m_top && row <= Bottom(); }
    int RowTop(long row) const { return m_headHeight + static_cast<int>(row - m_top) * m_rowHeight; }
    /// The columns on screen, from left to right; those at the edges may be cut off or out of sight.
    struct Span {
        short column;
        int left;
        int right;
    };
    std::vector<Span> Spans() const;
    /// In client coordinates; -1 outside the rows or columns.
    long RowAt(int y) const;
    short ColumnAt(int x) const;
    /// Of a visible column; empty for another.
    RECT CellRect(long row, short column) const;

    void SetHeights(int head, int row) {
        m_headHeight = head;
        m_rowHeight = row;
    }
    void TakeClient();
    long NearestTop(long row) const { return std::clamp(row, 0L, MostTop()); }
    /// As far as there are rows; draws nothing.
    void SetTop(long top) { m_top = NearestTop(top); }
    /// Brings the row into view: as far as need be, or one third down when it was out of sight.
    void Reveal(long row, bool oneThirdDown);
    /// Moves what is on screen.
    void ScrollTo(long top);
    /// As far as there are columns; draws nothing. False when it stays where it is.
    bool ScrollAcross(int scrolled);

    void UpdateBars();
    void InvalidateBody() const;
    void InvalidateRow(long row) const;

private:
    /// A scroll bar as it was last drawn.
    struct Bar {
        int most = -1;
        int page = 0;
        int position = 0;
        int thumb = 0; // pixels, about
    };

    long MostTop() const { return std::max(0L, m_data.Count() - WholeRows()); }
    int MostScrolled() const {
        return std::max(0, m_columns.TotalWidth() - static_cast<int>(m_client.right));
    }
    RECT Body() const { return {m_client.left, m_headHeight, m_client.right, m_client.bottom}; }
    void Draw(int which, Bar& drawn, const Bar& wanted, int length);

    const HWND& m_window;
    const GridData& m_data;
    const GridColumns& m_columns;
    RECT m_client{};
    int m_headHeight = 0;
    int m_rowHeight = 1;
    int m_scrolled = 0;
    long m_top = 0;
    Bar m_vertical;
    Bar m_horizontal;
};

} // namespace tamvelo::grid
