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

/// A week as Europe counts them (ISO 8601): the first of a year is the one with its first Thursday, so that
/// days around New Year may belong to a week of the other year.
struct Week {
    int year;
    int number;
    bool operator==(const Week&) const = default;
};
Week WeekOf(Day day);

} // namespace tamvelo::base
