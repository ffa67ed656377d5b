#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <string>
#include <vector>

#include "com/ComPtr.h"

namespace tamvelo::demo {

/// Puts components of this program into the library's environment while it lives: other code of this process
/// can create them, and the library finds them by the settings that name them. A setting that the user's
/// environment has already is left as it is.
class Components {
public:
    Components() = default;
    ~Components();
    Components(const Components&) = delete;
    Components& operator=(const Components&) = delete;

    using Maker = std::function<com::ComPtr<IDispatch>()>;
    /// `setting` is the environment's value that names the component ("Clases"). Throws com::Error.
    void Add(const wchar_t* setting, const CLSID& id, Maker make);

private:
    std::vector<DWORD> m_registered;
    std::vector<std::wstring> m_settings; // that we wrote
};

} // namespace tamvelo::demo
