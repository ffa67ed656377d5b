#pragma once

#include <optional>

/// Days as automation counts them: whole days since 30 December 1899, negative before. Valid from 1601 to
/// 9999, the years that both the system's calendar and automation know.
namespace tamvelo::base {

using Day = long;

struct CalendarDate {
    int year;
    int month; // 1 to 12
    int day;   // 1 to 31
    bool operator==(const CalendarDate&) const = default;
};

/// Nothing for a date that is not in the calendar, or in no valid year.
std::optional<Day> ToDay(const CalendarDate& date);
CalendarDate ToDate(Day day);
bool IsValid(Day day);

/// Spans that people plan in; a week goes from Monday to Sunday.
enum class Period { OneDay, Week, Month, Quarter, Year };

/// The first day of the period that holds `day`, or of the one `offset` periods later (earlier if negative).
/// The answer may lie outside the valid years.
Day StartOf(Period period, Day day, int offset = 0);
/// The last day of the same period.
Day EndOf(Period period, Day day, int offset = 0);

} // namespace tamvelo::base
