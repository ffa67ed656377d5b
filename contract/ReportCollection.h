#pragma once

#include <string>
#include <vector>

#include "com/ComPtr.h"

namespace tamvelo::contract {

/// What the reports of `cReports` are called, in its order: an item that is a text is its own title, an
/// object gives its `Titulo`, else its default value; one without a title, and Nothing, is called by its
/// place, "Informe 3". Throws the host's own error. Nothing in place of the collection is an empty one.
std::vector<std::wstring> ReportTitles(IDispatch* reports);

} // namespace tamvelo::contract
