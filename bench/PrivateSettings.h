#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::bench {

/// The user's settings in an empty corner of the registry while this lives: what the user arranged does not
/// change the figures, and the thousand dialogs leave no trace with him.
class PrivateSettings {
public:
    PrivateSettings();
    ~PrivateSettings();
    PrivateSettings(const PrivateSettings&) = delete;
    PrivateSettings& operator=(const PrivateSettings&) = delete;

private:
    HKEY m_corner = nullptr;
};

} // namespace tamvelo::bench
