#pragma once

namespace tamvelo::frame {

/// What a thread leaves open when it ends: its forms and its components. They are let go of while its
/// apartment still stands, or at the latest with the thread. Until then the library stays loaded.
class ApartmentEnd {
public:
    /// The calling thread has something to let go of from now on.
    static void Watch();
    static bool IsWatched() noexcept;
    /// Closes the calling thread's forms, as if the host had destroyed their windows, and forgets its
    /// components.
    static void Now() noexcept;
    /// The library goes without having been asked whether it may: the system must not come back to it.
    static void Unhook() noexcept;
};

} // namespace tamvelo::frame
