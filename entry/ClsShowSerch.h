#pragma once

#include "com/ComPtr.h"
#include "entry/Interfaces.h"

namespace tamvelo::entry {

/// An object of the public class. Throws com::Error when the library's own description cannot be read.
com::ComPtr<IDispatch> MakeClsShowSerch();

} // namespace tamvelo::entry
