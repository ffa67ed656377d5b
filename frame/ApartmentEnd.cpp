#include "frame/ApartmentEnd.h"

#include <ole2.h>

#include <utility>

#include "com/FloatGuard.h"
#include "com/Object.h"
#include "frame/Environment.h"
#include "frame/FormInstances.h"

namespace tamvelo::frame {

namespace {

/// The system tells it before it takes an apartment down: the one moment when objects can still be called and
/// no lock of the loader is held.
class Spy final : public com::Object<IInitializeSpy> {
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
            const com::FloatGuard floats;
            ApartmentEnd::Now();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD /*count*/) override { return S_OK; }

private:
    ULARGE_INTEGER m_cookie{};
};

thread_local Spy* g_spy = nullptr;

} // namespace

void ApartmentEnd::Watch() {
    if (!g_spy) {
        g_spy = com::Make<Spy>().Detach();
    }
}

bool ApartmentEnd::IsWatched() noexcept { return g_spy != nullptr; }

void ApartmentEnd::Now() noexcept {
    if (g_spy) {
        FormInstances::CloseThread();
        Environment::Release();
        std::exchange(g_spy, nullptr)->Leave(); // last: closing a form asks for the environment
    }
}

void ApartmentEnd::Unhook() noexcept {
    if (Spy* const spy = std::exchange(g_spy, nullptr)) {
        spy->Leave();
    }
}

} // namespace tamvelo::frame
