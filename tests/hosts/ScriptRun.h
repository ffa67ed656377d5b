#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/support/OtherProcess.h"

namespace tamvelo::hosts {

using tamvelo::testing::Eventually;

/// Closes a dialog at the end whatever failed, or the script would wait for ever.
struct Closing {
    HWND dialog;
    ~Closing() { PostMessageW(dialog, WM_CLOSE, 0, 0); }
};

/// Runs a script of this folder under the script host, with the library registered, while `user` works its
/// dialogs from outside, as a person would. What it printed.
std::string RunScript(const wchar_t* name, const std::function<void()>& user);

/// Waits until control `id` of another process's dialog has the focus.
::testing::AssertionResult FocusReaches(HWND dialog, int id);

} // namespace tamvelo::hosts
