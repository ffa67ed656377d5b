#pragma once

#include <vector>

namespace tamvelo::bench {

/// Seconds on a clock that never goes back; only differences mean anything.
double Now();

/// The lower quartile: other programs on the machine can only add to a time, and often add to half of them.
/// Empty lists have none.
double Typical(std::vector<double> values);

} // namespace tamvelo::bench
