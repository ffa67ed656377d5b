#pragma once

#include "com/LateObject.h"

namespace tamvelo::frame {

/// Makes the public object that nested dialogs are opened through. A form that needs another dialog goes the
/// way a host goes; the top storey says here how the object is made.
using ShowSerchFactory = com::ComPtr<IDispatch> (*)();
void SetShowSerchFactory(ShowSerchFactory factory);
com::LateObject NewShowSerch();

} // namespace tamvelo::frame
