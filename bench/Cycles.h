#pragma once

#include "bench/Panel.h"

namespace tamvelo::bench {

/// What is left over after a dialog was opened and closed many times: how much more of each than before.
struct Leftovers {
    long windows;
    long gdiObjects;
    long userObjects; // 0 where the system does not count them
    long hostReferences;
    bool libraryInUse;
    double privateBytes;
};

Leftovers OpenAndClose(const Library& library, const GridDialog& dialog, int cycles);

} // namespace tamvelo::bench
