#pragma once

#include "com/WinHeaders.h"

#include "grid/GridColumns.h"

namespace tamvelo::grid {

/// The system header control above the rows. Its items are the visible columns from left to right.
class GridHeadings {
public:
    /// Throws when the window cannot be made. It is the parent's child and goes with it.
    void Create(HWND parent);
    HWND Window() const { return m_window; }
    void SetFont(HFONT font);
    /// What the control wants with its font.
    int Height() const;
    void Fill(const GridColumns& columns);
    void Place(const RECT& client, int height, int scrolled);

    short ColumnOf(int item) const;
    bool Filling() const { return m_filling; }

private:
    HWND m_window = nullptr;
    bool m_filling = false;
};

} // namespace tamvelo::grid
