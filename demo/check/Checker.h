#pragma once

#include <string>

#include "demo/check/HostSource.h"

namespace tamvelo::demo {

struct CheckRequest {
    std::wstring source;     // a ProgID or a script, see HostSource
    std::wstring operations; // what is asked for, with commas; empty for all that the host has objects for
    bool write = false;      // members that change something are called too
};

/// Calls what the dialogs would call and tells, line by line, what is missing, what answers with another type
/// and for which operations the host is ready. True when it is ready for all that was asked. Throws
/// com::Error when there is nothing to look at.
bool CheckHost(const CheckRequest& request, const SayLine& say);

} // namespace tamvelo::demo
