#include "base/DateRanges.h"

#include <cstdlib>

namespace tamvelo::base {

namespace {

constexpr DatePreset kPresets[] = {
    {L"&Hoy", Period::OneDay, 0, false},
    {L"A&yer", Period::OneDay, -1, false},
    {L"Esta &semana", Period::Week, 0, false},
    {L"&Mes actual", Period::Month, 0, false},
    {L"Mes a&nterior", Period::Month, -1, false},
    {L"&Trimestre actual", Period::Quarter, 0, false},
    {L"T&rimestre anterior", Period::Quarter, -1, false},
    {L"&Año actual", Period::Year, 0, false},
    {L"Año ant&erior", Period::Year, -1, false},
    {L"Año hasta h&oy", Period::Year, 0, true},
};

DateRange Whole(Period period, Day day, int offset) {
    return {StartOf(period, day, offset), EndOf(period, day, offset)};
}

DateRange Moved(const DateRange& range, int direction) {
    for (const Period period : {Period::Month, Period::Quarter, Period::Year}) {
        if (range == Whole(period, range.first, 0)) {
            return Whole(period, range.first, direction);
        }
    }
    const Day length = std::labs(range.last - range.first) + 1;
    return {range.first + direction * length, range.last + direction * length};
}

} // namespace

DateRange WholeMonth(Day today) { return Whole(Period::Month, today, 0); }

DateRange WholeYear(Day today) { return Whole(Period::Year, today, 0); }

DateRange DatePreset::Of(Day today) const {
    const DateRange whole = Whole(period, today, offset);
    return toToday ? DateRange{whole.first, today} : whole;
}

std::span<const DatePreset> DatePresets() { return kPresets; }

DateRange Step(const DateRange& range, int direction) {
    const DateRange moved = Moved(range, direction);
    return IsValid(moved.first) && IsValid(moved.last) ? moved : range;
}

std::wstring DescribeLength(const DateRange& range) {
    if (range.first > range.last) {
        return L"La primera fecha es posterior a la última";
    }
    const Day length = range.last - range.first + 1;
    return std::to_wstring(length) + (length == 1 ? L" día" : L" días");
}

} // namespace tamvelo::base
