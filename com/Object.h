#pragma once

#include <type_traits>
#include <utility>

#include "com/ComPtr.h"
#include "com/Module.h"

namespace tamvelo::com {

/// IUnknown once for every class: reference count, module count and QueryInterface over the listed
/// interfaces. The first listed is the object's identity; IDispatch is answered when the first interface
/// derives from it. Objects start with one reference: make them with `Make`.
template <class First, class... Others>
class Object : public First, public Others... {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (!out) {
            return E_POINTER;
        }
        *out = nullptr;
        if (id == IID_IUnknown || id == __uuidof(First) ||
            (std::is_base_of_v<IDispatch, First> && id == IID_IDispatch)) {
            *out = static_cast<First*>(this);
        } else {
            ((id == __uuidof(Others) ? void(*out = static_cast<Others*>(this)) : void()), ...);
        }
        if (!*out) {
            return QueryOther(id, out);
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&m_references));
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&m_references);
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }

protected:
    Object() { Module::Lock(); }
    virtual ~Object() { Module::Unlock(); }
    /// For an interface that is not known at compile time (an event interface named by a GUID).
    virtual HRESULT QueryOther(REFIID /*id*/, void** /*out*/) { return E_NOINTERFACE; }

private:
    volatile LONG m_references = 1;
};

/// Makes an object and takes over its first reference.
template <class T, class... Parameters>
ComPtr<T> Make(Parameters&&... parameters) {
    ComPtr<T> made;
    made.Attach(new T(std::forward<Parameters>(parameters)...));
    return made;
}

} // namespace tamvelo::com
