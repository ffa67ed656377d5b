#include "win/Clock.h"

#include "com/Error.h"

namespace tamvelo::win {

base::Day Today() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return DayOf(now);
}

base::Day DayOf(const SYSTEMTIME& time) {
    const std::optional<base::Day> day = base::ToDay({time.wYear, time.wMonth, time.wDay});
    if (!day) {
        throw com::Error(E_INVALIDARG, L"La fecha está fuera del calendario.");
    }
    return *day;
}

SYSTEMTIME SystemTimeOf(base::Day day) {
    const base::CalendarDate date = base::ToDate(day);
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(date.year);
    time.wMonth = static_cast<WORD>(date.month);
    time.wDay = static_cast<WORD>(date.day);
    return time;
}

} // namespace tamvelo::win
