#pragma once

#include "com/WinHeaders.h"

#include <string>

/// What a host may be asked, by the list of the library's own (contract/Members.h).
namespace tamvelo::testing {

/// Whether the library may look for that member of that object; objects that are not listed have any.
bool IsListed(const std::wstring& object, const std::wstring& member);
/// Whether such a call is listed; `put` writes the property.
bool IsListed(const std::wstring& object, const std::wstring& member, bool put, const DISPPARAMS& parameters);

} // namespace tamvelo::testing
