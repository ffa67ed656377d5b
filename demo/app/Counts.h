#pragma once

/// What a process holds that must not grow: counted from inside, before and after.
namespace tamvelo::demo {

/// Top-level windows of this thread, hidden ones too.
long WindowCount();
long GdiObjects();
/// Bytes in use of the run-time library's heap, from which the library allocates, and with the system's.
long long OwnHeapInUse();
long long HeapInUse();

} // namespace tamvelo::demo
