#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::bench {

/// Seconds for one call of a host's member, through the adapter and by a bare Invoke.
struct HostCall {
    double adapter;
    double bare;
};

/// No arguments, no answer: the least that a call can be.
HostCall MeasureMoveNext(IDispatch* data, int repetitions);
/// A text and a number.
HostCall MeasureFindRecord(IDispatch* data, int repetitions);

} // namespace tamvelo::bench
