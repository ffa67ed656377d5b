#pragma once

#include <utility>

#include "com/Error.h"
#include "com/FloatGuard.h"

namespace tamvelo::com {

/// The edge of every COM method: runs `body`, and turns whatever it throws into an HRESULT with its error
/// object.
template <class Body>
HRESULT Guard(REFIID interfaceId, Body&& body) noexcept {
    const FloatGuard floats;
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (...) {
        return PublishError(CurrentError(), interfaceId);
    }
}

} // namespace tamvelo::com
