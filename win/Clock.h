#pragma once

#include "com/WinHeaders.h"

#include "base/Calendar.h"

namespace tamvelo::win {

/// The one place where the library asks for the date.
base::Day Today();

/// The day of a time that the system gave; its hours are dropped. Throws for a time outside the calendar.
base::Day DayOf(const SYSTEMTIME& time);
/// Midnight at the start of a valid day.
SYSTEMTIME SystemTimeOf(base::Day day);

} // namespace tamvelo::win
