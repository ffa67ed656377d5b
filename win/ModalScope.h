#pragma once

#include "com/WinHeaders.h"

#include <vector>

namespace tamvelo::win {

/// The window of this thread that a dialog belongs to: what the user works in now. Null when the thread has
/// none.
HWND OwnerForDialog();

/// While it lives, `dialog` is the only top-level window of the thread that takes input. At the end the
/// others are enabled again, before the dialog goes, and the focus returns to where it was.
class ModalScope {
public:
    explicit ModalScope(HWND dialog);
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

private:
    std::vector<HWND> m_disabled;
    HWND m_active;
    HWND m_focus;
};

} // namespace tamvelo::win
