#pragma once

#include "com/WinHeaders.h"

#include <memory>

namespace tamvelo::grid {

class GridView;

/// The answer to WM_GETOBJECT for the grid's client area: a table whose children are the rows on screen, from
/// 1, and after them the headings of the visible columns.
LRESULT AnswerAccessible(std::weak_ptr<GridView> view, WPARAM flags);

/// Tell readers of the current row when it is on screen, and of another cell in it.
void AnnounceRow(const GridView& view);
void AnnounceCell(const GridView& view);

} // namespace tamvelo::grid
