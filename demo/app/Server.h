#pragma once

#include <string>

#include "com/LateObject.h"

namespace tamvelo::demo {

/// A new Tamvelo.ClsShowSerch: of the registered library, else of Tamvelo.dll beside this program. Throws
/// com::Error.
com::LateObject MakeShowSerch();

/// The folder of this program, without a backslash at the end.
std::wstring ProgramFolder();

} // namespace tamvelo::demo
