#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <vector>

#include "demo/reports/Report.h"

namespace tamvelo::demo {

/// Opens a window that shows the pages of the reports; it lives until the user or its owner closes it. Page
/// Up and Page Down turn the pages, the arrows move the page, Esc closes. Throws com::Error.
HWND OpenPreview(HWND owner, const std::wstring& caption, std::vector<Report> reports);

} // namespace tamvelo::demo
