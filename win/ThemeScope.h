#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::win {

/// While it lives, windows that are created get the themed common controls, whatever the host's own manifest
/// says: window classes are looked up in the active context. Activating fails on systems without the feature;
/// then the older controls serve.
class ThemeScope {
public:
    ThemeScope() noexcept;
    ~ThemeScope();
    ThemeScope(const ThemeScope&) = delete;
    ThemeScope& operator=(const ThemeScope&) = delete;

private:
    ULONG_PTR m_cookie = 0;
    bool m_active = false;
};

} // namespace tamvelo::win
