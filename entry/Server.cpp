#include <string_view>

#include "com/ApartmentEnd.h"
#include "com/Guard.h"
#include "com/Module.h"
#include "com/Object.h"
#include "entry/ClsShowSerch.h"
#include "entry/Registration.h"
#include "entry/ServerClass.h"

namespace tamvelo::entry {

namespace {

class Factory final : public com::Object<IClassFactory> {
public:
    explicit Factory(const ServerClass& served) : m_served(served) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** out) override {
        if (!out) {
            return E_POINTER;
        }
        *out = nullptr;
        if (outer) {
            return CLASS_E_NOAGGREGATION;
        }
        return com::Guard(IID_IClassFactory, [&] { com::Check(m_served.create()->QueryInterface(id, out)); });
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        lock ? com::Module::Lock() : com::Module::Unlock();
        return S_OK;
    }

private:
    const ServerClass& m_served;
};

const ServerClass kClasses[] = {
    {kClsShowSerchId, L"Tamvelo.ClsShowSerch", L"Tamvelo.ClsShowSerch",
     [] { return com::ComPtr<IUnknown>(MakeClsShowSerch().Get()); }},
};

} // namespace

std::span<const ServerClass> ServerClasses() { return kClasses; }

} // namespace tamvelo::entry

using namespace tamvelo; // the exports cannot live in a namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** out) {
    if (!out) {
        return E_POINTER;
    }
    *out = nullptr;
    for (const entry::ServerClass& served : entry::ServerClasses()) {
        if (served.id == classId) {
            return com::Guard(IID_IClassFactory, [&] {
                com::Check(com::Make<entry::Factory>(served)->QueryInterface(id, out));
            });
        }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    if (com::Module::Locks() > (com::ApartmentEnd::IsWatched() ? 1 : 0)) {
        return S_FALSE;
    }
    com::ApartmentEnd::Now(); // components belong to the host: they must not outlive the library
    return com::Module::Unused() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return com::Guard(IID_NULL, [] { entry::Register(entry::Scope::Machine); });
}

STDAPI DllUnregisterServer() {
    return com::Guard(IID_NULL, [] { entry::Unregister(entry::Scope::Machine); });
}

/// `regsvr32 /n /i:user`: for the current user only, which needs no administrator.
STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
    return com::Guard(IID_NULL, [&] {
        const std::wstring_view words = commandLine ? commandLine : L"";
        if (!words.empty() && words != L"user") {
            throw com::Error(E_INVALIDARG, L"Se esperaba «/i:user» o «/i».");
        }
        const entry::Scope scope = words.empty() ? entry::Scope::Machine : entry::Scope::User;
        install ? entry::Register(scope) : entry::Unregister(scope);
    });
}
