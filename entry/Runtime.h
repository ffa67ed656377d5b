#pragma once

namespace tamvelo::entry {

/// The compiler's run-time library inside a DLL that comes and goes in processes of others, which may have
/// one of their own: nothing of it is shared with theirs, and nothing of it stays when the DLL goes.
class Runtime {
public:
    static void Attach() noexcept;
    /// A thread ends: what the library keeps per thread goes with it.
    static void ThreadEnds() noexcept;
    /// The library is unloaded, and the process lives on.
    static void Detach() noexcept;
};

} // namespace tamvelo::entry
