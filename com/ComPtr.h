#pragma once

#include "com/WinHeaders.h"

#include <wrl/client.h>

namespace tamvelo::com {

template <class T>
using ComPtr = Microsoft::WRL::ComPtr<T>;

/// True when both are the same COM object: identity is decided by IUnknown, never by an interface pointer.
inline bool SameObject(IUnknown* a, IUnknown* b) {
    if (a == b) {
        return true;
    }
    ComPtr<IUnknown> first;
    ComPtr<IUnknown> second;
    return a && b && SUCCEEDED(a->QueryInterface(IID_PPV_ARGS(&first))) &&
           SUCCEEDED(b->QueryInterface(IID_PPV_ARGS(&second))) && first.Get() == second.Get();
}

}  // namespace tamvelo::com
