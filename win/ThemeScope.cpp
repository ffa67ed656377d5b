#include "win/ThemeScope.h"

#include <commctrl.h>

#include "com/Module.h"

namespace tamvelo::win {

namespace {

constexpr int kManifest = 2;

/// The context belongs to the module, and is needed as long as that is loaded.
struct OwnContext {
    HANDLE handle;
    OwnContext() noexcept {
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(com::Module::Instance(), path, ARRAYSIZE(path));
        ACTCTXW description{};
        description.cbSize = sizeof description;
        description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        description.lpSource = path;
        description.hModule = com::Module::Instance();
        description.lpResourceName = MAKEINTRESOURCEW(kManifest);
        handle = CreateActCtxW(&description);
        NameClasses();
    }
    ~OwnContext() { ReleaseActCtx(handle); } // nothing happens to an invalid one

private:
    /// The system registers a themed class when its name is first asked for. Where two threads do so at once
    /// the later one may get none, and its dialog is not made: so they are all asked for here, while other
    /// threads wait.
    void NameClasses() const noexcept {
        ULONG_PTR cookie = 0;
        if (handle == INVALID_HANDLE_VALUE || !ActivateActCtx(handle, &cookie)) {
            return;
        }
        for (const wchar_t* name : {WC_BUTTONW, WC_STATICW, WC_EDITW, WC_LISTBOXW, WC_COMBOBOXW, L"ComboLBox",
                                    WC_SCROLLBARW, WC_LISTVIEWW, WC_HEADERW, TOOLBARCLASSNAMEW,
                                    TOOLTIPS_CLASSW, DATETIMEPICK_CLASSW, MONTHCAL_CLASSW, UPDOWN_CLASSW}) {
            WNDCLASSEXW known{};
            known.cbSize = sizeof known;
            GetClassInfoExW(nullptr, name, &known);
        }
        DeactivateActCtx(0, cookie);
    }
};

} // namespace

ThemeScope::ThemeScope() noexcept {
    static const OwnContext context;
    m_active = context.handle != INVALID_HANDLE_VALUE && ActivateActCtx(context.handle, &m_cookie) != FALSE;
}

ThemeScope::~ThemeScope() {
    if (m_active) {
        DeactivateActCtx(0, m_cookie);
    }
}

} // namespace tamvelo::win
