#pragma once

#include <span>
#include <string>

#include "base/Calendar.h"

/// Ranges of days as the dialogs offer them. Every rule that depends on the present takes it as `today`.
namespace tamvelo::base {

/// Both ends belong to it. The user may put them the wrong way round.
struct DateRange {
    Day first;
    Day last;
    bool operator==(const DateRange&) const = default;
};

DateRange WholeMonth(Day today);
DateRange WholeYear(Day today);

/// A range that is had by its name.
struct DatePreset {
    const wchar_t* caption; // with its access key
    Period period;
    int offset;   // of the period from the present one
    bool toToday; // ends today instead of with its period

    DateRange Of(Day today) const;
};

std::span<const DatePreset> DatePresets();

/// The range as long again after this one (direction 1) or before it (-1): a whole month, quarter or year
/// goes to the whole next one, any other range moves by its own length. Stays where it is at the calendar's
/// ends.
DateRange Step(const DateRange& range, int direction);

/// "1 día", "365 días", or what is odd about a range that ends before it begins.
std::wstring DescribeLength(const DateRange& range);

} // namespace tamvelo::base
