#pragma once

#include "com/WinHeaders.h"

#include <memory>

namespace tamvelo::grid {

class GridView;

/// The answer to WM_GETOBJECT for the grid's client area: a table whose children are the rows on screen, from
/// 1, and after them the headings of the visible columns.
LRESULT AnswerAccessible(std::weak_ptr<GridView> view, WPARAM flags);

/// The child number of a row on screen.
constexpr LONG RowChild(long row, long top) { return row - top + 1; }

} // namespace tamvelo::grid
