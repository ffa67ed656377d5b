#pragma once

#include <utility>

#include "com/CallOut.h"
#include "com/Error.h"
#include "com/FloatGuard.h"

namespace tamvelo::com {

/// The edge of every COM method: runs `body`, and turns whatever it throws into an HRESULT with its error
/// object.
template <class Body>
HRESULT Guard(REFIID interfaceId, Body&& body) noexcept {
    const FloatGuard floats;
    const Watch outermost; // what a form of ours was doing when the host called is no concern of this call
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (...) {
        return PublishError(CurrentError(), interfaceId);
    }
}

/// Any other edge where nothing may be thrown: what `body` throws goes to `failed` as an Error. A window that
/// went ends it without a word.
template <class Body, class Failed>
void AtEdge(Body&& body, Failed&& failed) noexcept {
    try {
        std::forward<Body>(body)();
    } catch (const Gone&) { // nobody is left to tell
    } catch (...) {
        std::forward<Failed>(failed)(CurrentError());
    }
}

} // namespace tamvelo::com
