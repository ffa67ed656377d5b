#pragma once

#include <functional>
#include <map>

#include "com/Automation.h"
#include "com/ConnectionPoint.h"
#include "objects/RelayInterfaces.h"

namespace tamvelo::objects {

/// `ClsEventos`: a sink that raises an event for each result it is given, with the same arguments, by
/// reference.
com::ComPtr<IClsEventos> MakeEventRelay();

/// A form's own relay and its ear: the relay is the sink of a nested call, and what it raises runs the
/// handlers.
class OwnRelay {
public:
    using Handler = std::function<void(com::Invocation&)>;
    /// Handlers by event; other events are ignored. What a handler throws goes back to whoever called the
    /// sink. Their calls out belong to the window in `window`, a variable of the owner's.
    OwnRelay(const HWND* window, std::map<DISPID, Handler> handlers);
    OwnRelay(const OwnRelay&) = delete;
    OwnRelay& operator=(const OwnRelay&) = delete;

    /// The sink to hand to a nested operation.
    IDispatch* Sink() const { return m_relay.Get(); }

private:
    com::ComPtr<IClsEventos> m_relay;
    com::Subscription m_subscription;
};

} // namespace tamvelo::objects
