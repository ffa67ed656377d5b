#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::entry {

enum class Scope : unsigned char { Machine, User };

/// Writes all that a host needs to find the classes, the type library and the interfaces. All or nothing:
/// throws com::Error with the registry's own code after taking back what was written.
void Register(Scope scope);

/// Removes it, and every parent key left empty. Nothing registered is no error; throws com::Error when the
/// registry refuses.
void Unregister(Scope scope);

} // namespace tamvelo::entry
