#pragma once

#include "demo/app/MainWindow.h"

namespace tamvelo::demo {

/// Uses the operations from the first to the last of an endless row at random, with random values, arguments
/// and keys, and looks after each whether anything is left of it, and at the end whether the process is as
/// large as at the start. The same seed makes the same run. Tells of every operation on the standard output
/// before it begins, so that the last line names the one that killed the process; ends the process when one
/// does not come back. False when something was wrong.
bool Soak(MainWindow& window, long first, long last, long seed);

} // namespace tamvelo::demo
