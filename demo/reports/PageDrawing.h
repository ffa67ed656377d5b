#pragma once

#include "com/WinHeaders.h"

#include <vector>

#include "demo/reports/Report.h"

namespace tamvelo::demo {

/// A sheet of A4, in tenths of a millimetre.
inline constexpr SIZE kSheet{2100, 2970};

/// A part of a report that fits on a sheet.
struct Page {
    const Report* report;
    std::size_t first; // of its lines
    std::size_t count;
    int number; // from 1
    int of;
};

/// The sheets of the reports, each report on sheets of its own. The reports must outlive them.
std::vector<Page> Paginate(const std::vector<Report>& reports);

/// Draws a page into a rectangle of the device's pixels that stands for the whole sheet: the same on the
/// screen, on paper and in a file.
void DrawPage(HDC device, const RECT& sheet, const Page& page);

} // namespace tamvelo::demo
