#pragma once

#include <string_view>

#include "grid/GridColumns.h"
#include "grid/GridData.h"
#include "grid/GridFont.h"

namespace tamvelo::grid {

/// Colours of the grid. In high contrast they are system pairs and nothing else.
struct GridLook {
    COLORREF back;
    COLORREF text;
    COLORREF lines;
    COLORREF selectedBack; // the style "Selected"
    COLORREF selectedText;

    static GridLook Current();
};

/// Where things stand in the grid's client area, in pixels.
struct GridGeometry {
    RECT client{};
    int headHeight = 0;
    int rowHeight = 1;
    int padding = 0;  // beside a cell's text
    int scrolled = 0; // to the right
    long top = 0;     // first row on screen

    int BodyHeight() const { return std::max(0, static_cast<int>(client.bottom) - headHeight); }
    /// Rows that fit whole; at least one.
    long WholeRows() const { return std::max(1, BodyHeight() / rowHeight); }
    /// The last row of which anything shows, were there so many.
    long LastShown() const { return top + (BodyHeight() + rowHeight - 1) / rowHeight - 1; }
    int RowTop(long row) const { return headHeight + static_cast<int>(row - top) * rowHeight; }
};

/// Draws what is loaded and calls no one: the host is not asked while the grid paints.
class GridPainter {
public:
    GridPainter(GridData& data, const GridColumns& columns, const GridFont& font, const GridLook& look,
                const GridGeometry& geometry)
        : m_data(data), m_columns(columns), m_font(font), m_look(look), m_geometry(geometry) {}

    struct Cursor {
        long row = -1;
        short column = -1;
        bool focused = false;
    };
    void Paint(HDC dc, const RECT& exposed, const Cursor& cursor, std::wstring_view emptyText);

private:
    /// Drawn once per painting and copied from there: the system takes its time over each.
    struct CheckBox {
        HDC dc = nullptr;
        HGDIOBJ before = nullptr;
        CheckBox() = default;
        ~CheckBox();
        CheckBox(const CheckBox&) = delete;
        CheckBox& operator=(const CheckBox&) = delete;
        void Draw(HDC like, int side, bool checked);
    };

    void PaintRow(HDC dc, const RECT& exposed, long row, const Cursor& cursor,
                  const std::vector<short>& shown);
    void PaintCell(HDC dc, const RECT& cell, const RowBlock& block, const RowBlock::Cell& content,
                   Alignment wanted);
    void PaintCheck(HDC dc, const RECT& cell, bool checked);
    void PaintLines(HDC dc, const RECT& exposed, const std::vector<short>& shown, int bottom);

    GridData& m_data;
    const GridColumns& m_columns;
    const GridFont& m_font;
    const GridLook& m_look;
    const GridGeometry& m_geometry;
    CheckBox m_checks[2];
};

} // namespace tamvelo::grid
