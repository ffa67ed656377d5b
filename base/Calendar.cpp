#include "base/Calendar.h"

#include <chrono>

namespace tamvelo::base {

namespace {

namespace chrono = std::chrono;

constexpr chrono::sys_days kEpoch = chrono::year(1899) / 12 / 30;
constexpr int kFirstYear = 1601;
constexpr int kLastYear = 9999;

constexpr Day Count(chrono::sys_days point) { return static_cast<Day>((point - kEpoch).count()); }
chrono::sys_days Point(Day day) { return kEpoch + chrono::days(day); }

constexpr Day kFirstDay = Count(chrono::year(kFirstYear) / 1 / 1);
constexpr Day kLastDay = Count(chrono::year(kLastYear) / 12 / 31);

/// How many months a period has; 0 for one that is counted in days.
int MonthsIn(Period period) {
    switch (period) {
    case Period::Month:
        return 1;
    case Period::Quarter:
        return 3;
    case Period::Year:
        return 12;
    default:
        return 0;
    }
}

} // namespace

std::optional<Day> ToDay(const CalendarDate& date) {
    const chrono::year_month_day known{chrono::year(date.year),
                                       chrono::month(static_cast<unsigned>(date.month)),
                                       chrono::day(static_cast<unsigned>(date.day))};
    // The parts are kept in bytes: what does not come out as it went in was no date.
    if (!known.ok() || date.year < kFirstYear || date.year > kLastYear || ToDate(Count(known)) != date) {
        return {};
    }
    return Count(known);
}

CalendarDate ToDate(Day day) {
    const chrono::year_month_day date{Point(day)};
    return {int{date.year()}, static_cast<int>(unsigned{date.month()}),
            static_cast<int>(unsigned{date.day()})};
}

bool IsValid(Day day) { return day >= kFirstDay && day <= kLastDay; }

Day StartOf(Period period, Day day, int offset) {
    if (const int length = MonthsIn(period)) {
        const CalendarDate date = ToDate(day);
        const int month = (date.month - 1) / length * length + offset * length;
        return Count(chrono::year(date.year) / 1 / 1 + chrono::months(month));
    }
    if (period == Period::Week) {
        const unsigned sinceMonday = chrono::weekday(Point(day)).iso_encoding() - 1;
        return day - static_cast<Day>(sinceMonday) + 7L * offset;
    }
    return day + offset;
}

Day EndOf(Period period, Day day, int offset) { return StartOf(period, day, offset + 1) - 1; }

Week WeekOf(Day day) {
    const Day thursday = StartOf(Period::Week, day) + 3;
    const int year = ToDate(thursday).year;
    return {year, static_cast<int>((thursday - StartOf(Period::Year, thursday)) / 7) + 1};
}

} // namespace tamvelo::base
