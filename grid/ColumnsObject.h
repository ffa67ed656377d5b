#pragma once

#include <memory>

#include "com/ComPtr.h"

namespace tamvelo::grid {

class GridView;

/// The automation object `Columns` of a grid. It does not keep the grid alive; without one its members fail.
com::ComPtr<IDispatch> MakeColumnsObject(std::weak_ptr<GridView> view);

} // namespace tamvelo::grid
