#include "demo/app/Components.h"

#include "ProductVersion.h"
#include "com/Error.h"
#include "com/Object.h"

namespace tamvelo::demo {

namespace {

constexpr wchar_t kEnvironment[] = L"Software\\" TAMVELO_COMPANY L"\\Global\\Configuracion\\Entorno";

class Factory final : public com::Object<IClassFactory> {
public:
    explicit Factory(Components::Maker make) : m_make(std::move(make)) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** out) override {
        *out = nullptr;
        if (outer != nullptr) {
            return CLASS_E_NOAGGREGATION;
        }
        try {
            return m_make()->QueryInterface(id, out);
        } catch (...) {
            return com::CurrentError().number;
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    const Components::Maker m_make;
};

/// The text of a setting; empty when there is none.
std::wstring Setting(const wchar_t* name) {
    wchar_t text[64] = L"";
    DWORD bytes = sizeof text;
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, kEnvironment, name, RRF_RT_REG_SZ, nullptr, text, &bytes);
    return status == ERROR_SUCCESS || status == ERROR_MORE_DATA ? text : L"";
}

} // namespace

void Components::Add(const wchar_t* setting, const CLSID& id, Maker make) {
    DWORD registered = 0;
    com::Check(CoRegisterClassObject(id, com::Make<Factory>(std::move(make)).Get(), CLSCTX_INPROC_SERVER,
                                     REGCLS_MULTIPLEUSE, &registered));
    m_registered.push_back(registered);
    wchar_t name[40];
    StringFromGUID2(id, name, ARRAYSIZE(name));
    const std::wstring before = Setting(setting);
    if (!before.empty() && before != name) { // our own name may be left of a run that did not end well
        return;
    }
    const DWORD bytes = static_cast<DWORD>(std::wstring_view(name).size() + 1) * sizeof(wchar_t);
    com::Check(HRESULT_FROM_WIN32(
        static_cast<DWORD>(RegSetKeyValueW(HKEY_CURRENT_USER, kEnvironment, setting, REG_SZ, name, bytes))));
    m_settings.emplace_back(setting);
}

Components::~Components() {
    for (const std::wstring& setting : m_settings) {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, kEnvironment, setting.c_str());
    }
    for (const DWORD registered : m_registered) {
        CoRevokeClassObject(registered);
    }
}

} // namespace tamvelo::demo
