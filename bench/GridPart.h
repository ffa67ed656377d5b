#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::bench {

/// Seconds that the grid itself takes, at two numbers of rows.
struct GridPart {
    double few;
    double many;
};

/// From the end of the host's own work until the grid shows it.
GridPart MeasureFilter(long few, long many, int repetitions);
GridPart MeasureOrder(long few, long many, int repetitions);

} // namespace tamvelo::bench
