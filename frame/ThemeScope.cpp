#include "frame/ThemeScope.h"

#include "com/Module.h"

namespace tamvelo::frame {

namespace {

constexpr int kManifest = 2;

/// Made once and kept: the context belongs to the module and is needed as long as it is loaded.
HANDLE OwnContext() noexcept {
    static const HANDLE context = [] {
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(com::Module::Instance(), path, ARRAYSIZE(path));
        ACTCTXW description{};
        description.cbSize = sizeof description;
        description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        description.lpSource = path;
        description.hModule = com::Module::Instance();
        description.lpResourceName = MAKEINTRESOURCEW(kManifest);
        return CreateActCtxW(&description);
    }();
    return context;
}

} // namespace

ThemeScope::ThemeScope() noexcept
    : m_active(OwnContext() != INVALID_HANDLE_VALUE && ActivateActCtx(OwnContext(), &m_cookie) != FALSE) {}

ThemeScope::~ThemeScope() {
    if (m_active) {
        DeactivateActCtx(0, m_cookie);
    }
}

} // namespace tamvelo::frame
