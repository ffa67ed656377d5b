#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::demo {

/// The menus of the order screen, with every operation of the library as IDM_OPERACIONES plus its place in
/// Operations(). The window that it is set to destroys it.
HMENU MakeMenuBar();

} // namespace tamvelo::demo
