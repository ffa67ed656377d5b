#include "win/ThemeScope.h"

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
    }
    ~OwnContext() { ReleaseActCtx(handle); } // nothing happens to an invalid one
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
