#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::com {

/// What keeps the library loaded: living objects and explicit locks.
class Module {
public:
    static void Attach(HINSTANCE instance) { s_instance = instance; }
    /// The module that holds the library's resources.
    static HINSTANCE Instance() { return s_instance; }
    /// The folder that the library was loaded from, without a backslash at the end.
    static std::wstring Folder();
    static void Lock() { InterlockedIncrement(&s_locks); }
    static void Unlock() { InterlockedDecrement(&s_locks); }
    static LONG Locks() { return s_locks; }
    static bool Unused() { return s_locks == 0; }

private:
    static inline HINSTANCE s_instance = nullptr;
    static inline volatile LONG s_locks = 0;
};

} // namespace tamvelo::com
