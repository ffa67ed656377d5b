#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::bench {

/// What a panel's window costs at the very least: a modal dialog without controls of the same size, whose
/// only child lies where the panel's list shows its rows and paints eight columns of text from an array in
/// memory. It knows one key: PgDn.
struct Floor {
    SIZE dialog;
    RECT list; // in the dialog's client area
};

/// Returns when the dialog is closed.
void ShowFloor(const Floor& floor);
HWND ListOfFloor(HWND dialog);

} // namespace tamvelo::bench
