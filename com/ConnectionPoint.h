#pragma once

#include <vector>

#include "com/Object.h"

namespace tamvelo::com {

/// The one outgoing interface of an object: a connection point that belongs to its container and shares its
/// life.
class ConnectionPoint final : public IConnectionPoint {
public:
    /// `container` owns this point and outlives it.
    ConnectionPoint(IConnectionPointContainer& container, REFIID events)
        : m_container(container), m_events(events) {}
    virtual ~ConnectionPoint();
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;

    /// Raises one event at every listener with the same arguments. A listener that fails does not keep the
    /// others from hearing it; the first failure is thrown at the end, so that it reaches whoever caused the
    /// event.
    void Raise(DISPID event, DISPPARAMS& parameters);
    /// What the container answers to EnumConnectionPoints: this point.
    HRESULT EnumOnly(IEnumConnectionPoints** points);
    REFIID Events() const { return m_events; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return m_container.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_container.Release(); }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* listener, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

private:
    struct Listener {
        DWORD cookie;
        ComPtr<IDispatch> target;
    };
    IConnectionPointContainer& m_container;
    const IID m_events;
    std::vector<Listener> m_listeners;
    DWORD m_lastCookie = 0;
};

/// A listener's end of a connection; it is taken down with this object.
class Subscription {
public:
    Subscription() = default;
    /// Throws com::Error when the source does not offer `events` or refuses the listener.
    Subscription(IUnknown* source, REFIID events, IUnknown* listener);
    ~Subscription() { Reset(); }
    Subscription(Subscription&& other) noexcept;
    Subscription& operator=(Subscription&& other) noexcept;
    void Reset() noexcept;

private:
    ComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
};

} // namespace tamvelo::com
