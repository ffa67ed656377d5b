#pragma once

namespace tamvelo::com {

/// What a thread leaves open when it ends is let go of while its apartment still stands, or at the latest
/// with the thread. Until then the library stays loaded.
class ApartmentEnd {
public:
    /// In the order in which they go: a form that closes still asks for the components.
    enum class What { Forms, Components };
    /// The calling thread has something of this kind from now on; `leave` lets go of the calling thread's.
    static void Watch(What what, void (*leave)() noexcept);
    static bool IsWatched() noexcept;
    /// Lets go of all that the calling thread has.
    static void Now() noexcept;
    /// The library goes without having been asked whether it may: the system must not come back to it.
    static void Unhook() noexcept;
};

} // namespace tamvelo::com
