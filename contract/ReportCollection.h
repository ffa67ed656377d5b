#pragma once

#include <string>
#include <vector>

#include "com/ComPtr.h"

namespace tamvelo::contract {

/// What the reports of `cReports` are called, in its order: an item that is a text is its own title, an
/// object gives its `Titulo`, else its default value. Throws the host's own error, or one of ours for an item
/// that has no title. Nothing is an empty collection.
std::vector<std::wstring> ReportTitles(IDispatch* reports);

} // namespace tamvelo::contract
