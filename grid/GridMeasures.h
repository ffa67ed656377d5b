#pragma once

#include <memory>

#include "base/Placement.h"
#include "grid/CellText.h"
#include "grid/GridColumns.h"
#include "grid/GridFont.h"

namespace tamvelo::grid {

/// How large things are with the chosen font at the window's resolution, in pixels.
class GridMeasures {
public:
    int Dpi() const { return m_dpi; }
    void SetDpi(int dpi) { m_dpi = dpi; }
    const base::GridLayout::Font& Choice() const { return m_choice; }
    void Choose(const base::GridLayout::Font& font) { m_choice = font; }

    /// As chosen by now. Returns the former one: the headings have it until they get the new one.
    std::unique_ptr<GridFont> RemakeFont();
    /// False until there is a font, which what follows asks.
    bool Ready() const { return m_font != nullptr; }
    const GridFont& Font() const { return *m_font; }

    /// Of a length at 96 dpi.
    int Scaled(int length) const { return base::Scale(length, 96, m_dpi); }
    /// Beside a cell's text.
    int Padding() const { return Scaled(4); }
    int RowHeight() const { return m_font->Height() + Padding() + 1; }
    int CellWidth(std::wstring_view text) const { return m_font->Width(text) + 2 * Padding() + 1; }
    /// With room for the arrow beside it.
    int CaptionWidth(const GridColumn& column) const;
    /// The widest that a column is made unasked.
    int MostWidth() const { return Scaled(320); }
    int LeastWidth() const { return Scaled(30); }
    /// The width before anything is read.
    void GuessWidth(GridColumn& column, const FieldInfo& field) const;

private:
    int m_dpi = USER_DEFAULT_SCREEN_DPI;
    base::GridLayout::Font m_choice;
    std::unique_ptr<GridFont> m_font;
};

} // namespace tamvelo::grid
