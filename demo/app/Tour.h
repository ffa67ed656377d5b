#pragma once

#include <string>

#include "demo/app/MainWindow.h"

namespace tamvelo::demo {

/// Opens the dialogs one after another without any user, the main window last, and leaves a picture of each
/// in the folder: "01-seleccion-articulos-96.png", beside it as text what it shows. `only` names the stops to
/// make, with commas between, empty for all. Tells of every stop on the standard output; false when one did
/// not come up as it should.
bool TakeTour(MainWindow& window, const std::wstring& folder, const std::wstring& only);

} // namespace tamvelo::demo
