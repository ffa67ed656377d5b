#pragma once

#include <string>
#include <vector>

#include "demo/reports/Report.h"

namespace tamvelo::demo {

/// Prints on the system's default printer; with none installed, leaves a picture of each page (.emf) in the
/// folder instead, which is made. Answers in words what was done. Throws com::Error.
std::wstring Print(const std::vector<Report>& reports, int copies, const std::wstring& folder);

} // namespace tamvelo::demo
