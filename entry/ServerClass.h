#pragma once

#include <span>

#include "com/ComPtr.h"

namespace tamvelo::entry {

/// A class that hosts can create. The class factory and the registration both read the one table of them.
struct ServerClass {
    CLSID id;
    const wchar_t* progId;
    const wchar_t* description;
    /// Throws com::Error.
    com::ComPtr<IUnknown> (*create)();
};

std::span<const ServerClass> ServerClasses();

} // namespace tamvelo::entry
