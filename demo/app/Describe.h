#pragma once

#include <string>
#include <string_view>

#include "com/Automation.h"
#include "com/Error.h"

namespace tamvelo::demo {

/// A call as one line for the user: "AceptarSeleccion(0, TxtFields(3), «00000017»)".
std::wstring Describe(std::wstring_view member, const com::Invocation& call);

/// An error as one line: "Error 445: ... (Tamvelo)".
std::wstring Describe(const com::Error& error);

/// The error that is being handled, also one of the data layer: call inside a catch block only.
com::Error AnyCurrentError();

} // namespace tamvelo::demo
