#pragma once

/// What a process holds that must not grow: counted from inside, before and after.
namespace tamvelo::demo {

/// Top-level windows of this thread, hidden ones too.
long WindowCount();
long GdiObjects();
/// Bytes in use of the system's heap and of the run-time library's.
long long HeapInUse();

} // namespace tamvelo::demo
