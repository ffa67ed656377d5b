#pragma once

namespace tamvelo::entry {

/// What leads from a throw to its catch in this library's code. With 64 bits the system knows it; with 32 the
/// run-time library has to be told. The build takes the source of its kind.
struct UnwindFrames {
    static void Register() noexcept;
    static void Deregister() noexcept;
};

} // namespace tamvelo::entry
