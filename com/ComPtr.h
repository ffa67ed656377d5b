#pragma once

#include "com/WinHeaders.h"

#include <cstddef>
#include <utility>

#include "com/FloatGuard.h"

namespace tamvelo::com {

/// A counted reference to a COM object. Our own, because the one that comes with the compiler takes a
/// reference too many in Attach and does not move.
template <class T>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    ComPtr(T* object) : m_object(object) {
        if (m_object) {
            m_object->AddRef();
        }
    }
    ComPtr(const ComPtr& other) : ComPtr(other.m_object) {}
    ComPtr(ComPtr&& other) noexcept : m_object(other.Detach()) {}
    template <class Derived>
    ComPtr(const ComPtr<Derived>& other) : ComPtr(static_cast<T*>(other.Get())) {}
    ~ComPtr() { Reset(); }
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* Get() const { return m_object; }
    T* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    friend bool operator==(const ComPtr& a, const ComPtr& b) { return a.m_object == b.m_object; }

    void Reset() {
        if (T* const leaving = Detach()) {
            const HostFloats floats; // a last release runs the host's code
            leaving->Release();
        }
    }
    /// Takes over a reference that the caller owns.
    void Attach(T* object) {
        Reset();
        m_object = object;
    }
    /// Gives the reference away.
    T* Detach() { return std::exchange(m_object, nullptr); }
    /// The address for a callee that reads and may replace the object.
    T** GetAddressOf() { return &m_object; }
    /// The address for a callee that fills it; what it held is let go.
    T** operator&() {
        Reset();
        return &m_object;
    }
    template <class Other>
    HRESULT As(Other** out) const {
        return m_object->QueryInterface(__uuidof(Other), reinterpret_cast<void**>(out));
    }
    HRESULT CopyTo(T** out) const {
        if (m_object) {
            m_object->AddRef();
        }
        *out = m_object;
        return S_OK;
    }

private:
    T* m_object = nullptr;
};

} // namespace tamvelo::com
