#pragma once

#include <cstddef>
#include <new>

namespace tamvelo::base {

/// A static object that is never destroyed: at process end its content may refer to what has gone before. In
/// its own place, so that an empty one leaves nothing when the library is unloaded.
template <class T>
class NeverDestroyed {
public:
    NeverDestroyed() { new (m_place) T; }
    T& operator*() { return *std::launder(reinterpret_cast<T*>(m_place)); }

private:
    alignas(T) std::byte m_place[sizeof(T)];
};

} // namespace tamvelo::base
