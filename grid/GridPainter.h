#pragma once

#include <string_view>

#include "grid/GridMeasures.h"
#include "grid/GridViewport.h"

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

/// Draws what is loaded and calls no one: the host is not asked while the grid paints.
class GridPainter {
public:
    GridPainter(GridData& data, const GridColumns& columns, const GridMeasures& measures,
                const GridViewport& viewport, const GridLook& look)
        : m_data(data),
          m_columns(columns),
          m_measures(measures),
          m_font(measures.Font()),
          m_viewport(viewport),
          m_look(look) {}

    void Paint(HDC dc, const RECT& exposed, bool focused, std::wstring_view emptyText);

private:
    /// Drawn once per painting and copied from there: the system takes its time over each.
    struct CheckBox {
        win::UniqueBitmap bitmap;
        win::UniqueHandle<HDC, DeleteDC> dc; // goes first
        void Draw(HDC like, int side, bool checked);
    };

    void PaintRow(HDC dc, const RECT& exposed, long row, bool focused,
                  const std::vector<GridViewport::Span>& spans);
    void PaintCell(HDC dc, const RECT& cell, const RowBlock& block, const RowBlock::Cell& content,
                   Alignment wanted);
    void PaintCheck(HDC dc, const RECT& cell, bool checked);
    void PaintLines(HDC dc, const RECT& exposed, const std::vector<GridViewport::Span>& spans, int bottom);

    GridData& m_data;
    const GridColumns& m_columns;
    const GridMeasures& m_measures;
    const GridFont& m_font;
    const GridViewport& m_viewport;
    const GridLook& m_look;
    CheckBox m_checks[2];
};

} // namespace tamvelo::grid
