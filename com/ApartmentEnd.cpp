#include "com/ApartmentEnd.h"

#include <ole2.h>

#include <atomic>
#include <utility>

#include "com/FloatGuard.h"
#include "com/Object.h"

namespace tamvelo::com {

namespace {

/// The system tells it before it takes an apartment down: the one moment when objects can still be called and
/// no lock of the loader is held.
class Spy final : public Object<IInitializeSpy> {
public:
    Spy() { CoRegisterInitializeSpy(this, &m_cookie); }
    void Leave() noexcept {
        CoRevokeInitializeSpy(m_cookie);
        Release();
    }

    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD /*kind*/, DWORD /*count*/) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD /*kind*/, DWORD /*count*/) override {
        return result;
    }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD count) override {
        if (count <= 1) {
            const FloatGuard floats;
            ApartmentEnd::Now();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD /*count*/) override { return S_OK; }

private:
    ULARGE_INTEGER m_cookie{};
};

thread_local Spy* g_spy = nullptr;

/// By What. A kind has one way to go, whichever thread names it first.
std::atomic<void (*)() noexcept> g_leave[2];

} // namespace

void ApartmentEnd::Watch(What what, void (*leave)() noexcept) {
    g_leave[static_cast<size_t>(what)] = leave;
    if (!g_spy) {
        g_spy = Make<Spy>().Detach();
    }
}

bool ApartmentEnd::IsWatched() noexcept { return g_spy != nullptr; }

void ApartmentEnd::Now() noexcept {
    if (g_spy) {
        for (const auto& leave : g_leave) {
            if (void (*const now)() noexcept = leave) {
                now();
            }
        }
        std::exchange(g_spy, nullptr)->Leave(); // last: what goes may ask to be watched
    }
}

void ApartmentEnd::Unhook() noexcept {
    if (Spy* const spy = std::exchange(g_spy, nullptr)) {
        spy->Leave();
    }
}

} // namespace tamvelo::com
