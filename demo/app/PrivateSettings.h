#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::demo {

/// An empty corner of the registry instead of the user's while this lives, and a folder of its own for grid
/// layouts: the pictures show the dialogs as they come, and the user finds his own as he left them. Throws
/// com::Error.
class PrivateSettings {
public:
    explicit PrivateSettings(const std::wstring& layoutFolder);
    ~PrivateSettings();
    PrivateSettings(const PrivateSettings&) = delete;
    PrivateSettings& operator=(const PrivateSettings&) = delete;

private:
    HKEY m_corner = nullptr;
};

} // namespace tamvelo::demo
