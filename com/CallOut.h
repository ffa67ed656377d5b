#pragma once

#include "com/WinHeaders.h"

#include <utility>

#include "com/ComPtr.h"
#include "com/FloatGuard.h"

namespace tamvelo::com {

/// Thrown by a call out during which the window that the running code belongs to went. No Error: there is
/// nothing to tell anybody, and code that deals with a host's errors must not take it for one.
struct Gone {};

/// While it lives, calls out that this thread makes belong to the window in `window`, a variable of its
/// owner's that is null without one; the innermost counts. Without a window (the edges of COM methods, code
/// that outlives any window) calls belong to nothing.
class Watch {
public:
    Watch() noexcept : Watch(nullptr) {}
    explicit Watch(const HWND* window) noexcept;
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

private:
    friend class Standing;
    const HWND* m_window;
    Watch* m_outer;
};

/// What stands before something that may run the host's code.
class Standing {
public:
    Standing() noexcept;
    /// Afterwards: throws Gone when the window of the innermost watch went meanwhile.
    void Check() const {
        if (m_before && *m_window != m_before) {
            throw Gone{};
        }
    }

private:
    const HWND* m_window;
    HWND m_before;
};

/// For the few calls whose answer has to be picked up first.
template <class Call>
auto WithHostFloats(Call&& call) {
    const HostFloats floats;
    return std::forward<Call>(call)();
}

/// The one way out of the library: `call` runs with the host's floating-point words, and when it returns its
/// caller goes on only if its window still stands. `call` holds what it uses.
template <class Call>
HRESULT CallOut(Call&& call) {
    const Standing before;
    const HRESULT result = WithHostFloats(std::forward<Call>(call));
    before.Check();
    return result;
}

/// QueryInterface of an object that may be the host's, with its trace; `found` stays null where there is
/// none.
void QueryOut(IUnknown* object, REFIID id, void** found);

/// The same; null when the object has no such interface, or is null.
template <class T>
ComPtr<T> Query(IUnknown* object, REFIID id = __uuidof(T)) {
    ComPtr<T> found;
    if (const ComPtr<IUnknown> held = object) {
        QueryOut(held.Get(), id, reinterpret_cast<void**>(&found));
    }
    return found;
}

/// True when both are the same COM object: identity is decided by IUnknown, never by an interface pointer.
inline bool SameObject(IUnknown* a, IUnknown* b) {
    return a == b || (a && b && Query<IUnknown>(a) == Query<IUnknown>(b));
}

} // namespace tamvelo::com
