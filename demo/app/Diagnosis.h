#pragma once

#include "demo/app/Findings.h"
#include "demo/app/MainWindow.h"

namespace tamvelo::demo {

/// The computer, how the library is registered there, what it needs. False when there is no library to use.
bool LookAtInstallation(Findings& findings);

/// Opens every operation over the window's data, with the user's own settings, and cancels it; `only` as
/// IsWanted has it.
void TryOperations(MainWindow& window, Findings& findings, const std::wstring& only);

} // namespace tamvelo::demo
