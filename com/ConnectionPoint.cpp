#include "com/ConnectionPoint.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "com/CallOut.h"
#include "com/Enumerator.h"
#include "com/Error.h"

namespace tamvelo::com {

namespace {

void KeepListener(CONNECTDATA& connection) { connection.pUnk->AddRef(); }
void DropListener(CONNECTDATA& connection) { connection.pUnk->Release(); }
void KeepPoint(IConnectionPoint*& point) { point->AddRef(); }
void DropPoint(IConnectionPoint*& point) { point->Release(); }

} // namespace

ConnectionPoint::~ConnectionPoint() = default;

void ConnectionPoint::Raise(DISPID event, DISPPARAMS& parameters) {
    const std::vector<Listener> now = m_listeners; // a listener may leave, or another join, while it is told
    std::optional<Error> failure;
    for (const Listener& listener : now) {
        EXCEPINFO thrown{};
        const HRESULT code = WithHostFloats([&] {
            return listener.target->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                           nullptr, &thrown, nullptr);
        });
        // A listener need not handle every event.
        if (FAILED(code) && code != DISP_E_MEMBERNOTFOUND && code != E_NOTIMPL && !failure) {
            failure = ErrorOfInvoke(code, thrown, L"«ClsEventos»." + std::to_wstring(event));
        }
    }
    if (failure) {
        throw Error(*failure);
    }
}

HRESULT ConnectionPoint::QueryInterface(REFIID id, void** out) {
    if (!out) {
        return E_POINTER;
    }
    if (id == IID_IUnknown || id == IID_IConnectionPoint) {
        *out = static_cast<IConnectionPoint*>(this);
        AddRef();
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* id) {
    if (!id) {
        return E_POINTER;
    }
    *id = m_events;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) {
        return E_POINTER;
    }
    *container = &m_container;
    m_container.AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* listener, DWORD* cookie) {
    if (!listener || !cookie) {
        return E_POINTER;
    }
    *cookie = 0;
    try {
        ComPtr<IDispatch> target;
        if (!(target = Query<IDispatch>(listener, m_events)) && !(target = Query<IDispatch>(listener))) {
            return CONNECT_E_CANNOTCONNECT;
        }
        m_listeners.push_back({++m_lastCookie, std::move(target)});
        *cookie = m_lastCookie;
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    const auto found = std::find_if(m_listeners.begin(), m_listeners.end(),
                                    [&](const Listener& listener) { return listener.cookie == cookie; });
    if (found == m_listeners.end()) {
        return CONNECT_E_NOCONNECTION;
    }
    const ComPtr<IDispatch> leaving = found->target; // its release may come back here
    m_listeners.erase(found);
    return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    if (!connections) {
        return E_POINTER;
    }
    *connections = nullptr;
    try {
        std::vector<CONNECTDATA> now;
        for (const Listener& listener : m_listeners) {
            now.push_back({listener.target.Get(), listener.cookie});
        }
        *connections =
            Make<Enumerator<IEnumConnections, CONNECTDATA, KeepListener, DropListener>>(std::move(now))
                .Detach();
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT ConnectionPoint::EnumOnly(IEnumConnectionPoints** points) {
    if (!points) {
        return E_POINTER;
    }
    *points = nullptr;
    try {
        *points = Make<Enumerator<IEnumConnectionPoints, IConnectionPoint*, KeepPoint, DropPoint>>(
                      std::vector<IConnectionPoint*>{this})
                      .Detach();
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

Subscription::Subscription(IUnknown* source, REFIID events, IUnknown* listener) {
    ComPtr<IConnectionPointContainer> container;
    Check(source->QueryInterface(IID_PPV_ARGS(&container)), L"El objeto no emite eventos.");
    Check(container->FindConnectionPoint(events, &m_point), L"El objeto no emite los eventos esperados.");
    Check(m_point->Advise(listener, &m_cookie), L"No se pueden recibir los eventos del objeto.");
}

Subscription::Subscription(Subscription&& other) noexcept
    : m_point(std::move(other.m_point)), m_cookie(std::exchange(other.m_cookie, 0)) {}

Subscription& Subscription::operator=(Subscription&& other) noexcept {
    if (this != &other) {
        Reset();
        m_point = std::move(other.m_point);
        m_cookie = std::exchange(other.m_cookie, 0);
    }
    return *this;
}

void Subscription::Reset() noexcept {
    if (m_cookie != 0) {
        m_point->Unadvise(std::exchange(m_cookie, 0));
        m_point.Reset();
    }
}

} // namespace tamvelo::com
