#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::reports {

/// The printer that the system prints on; "" when there is none.
std::wstring DefaultPrinter();

/// The system's print set-up dialog; the chosen printer becomes the system's default, on which the host
/// prints. Nothing else is offered, for nothing else would be kept. False when the user cancelled. Throws
/// com::Error when there is no printer.
bool ChoosePrinter(HWND owner);

} // namespace tamvelo::reports
