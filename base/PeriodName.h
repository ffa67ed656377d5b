#pragma once

#include <string>

#include "base/DateRanges.h"

namespace tamvelo::base {

enum class PeriodParts { Year, MonthAndYear };

/// What a clerk calls a range: "noviembre 2026", "2026", "noviembre 2026 - enero 2027".
std::wstring PeriodName(const DateRange& range, PeriodParts parts);

} // namespace tamvelo::base
