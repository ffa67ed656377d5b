#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <string_view>

namespace tamvelo::com {

/// The log of every call that leaves the library, one line each, as UTF-8 text. A host developer's debugger,
/// and what the tests compare. Off until a file is named; a file that cannot be written switches it off
/// silently, because a diagnosis must never disturb the host.
class Trace {
public:
    /// Appends to `path` from now on; an empty path switches the trace off.
    static void WriteTo(const std::wstring& path) noexcept;
    static bool Enabled() noexcept { return s_enabled; }
    static void Line(std::wstring_view text) noexcept;
    /// A value as the trace shows it: type and content, "&" before one passed by reference.
    static std::wstring Describe(const VARIANT& value);

private:
    static inline bool s_enabled = false;
};

} // namespace tamvelo::com
