#include "base/PeriodName.h"

namespace tamvelo::base {

namespace {

constexpr const wchar_t* kMonths[] = {L"enero",      L"febrero", L"marzo",     L"abril",
                                      L"mayo",       L"junio",   L"julio",     L"agosto",
                                      L"septiembre", L"octubre", L"noviembre", L"diciembre"};

std::wstring NameOf(Day day, PeriodParts parts) {
    const CalendarDate date = ToDate(day);
    const std::wstring year = std::to_wstring(date.year);
    return parts == PeriodParts::Year ? year : kMonths[date.month - 1] + (L" " + year);
}

} // namespace

std::wstring PeriodName(const DateRange& range, PeriodParts parts) {
    const std::wstring first = NameOf(range.first, parts);
    const std::wstring last = NameOf(range.last, parts);
    return first == last ? first : first + L" - " + last;
}

} // namespace tamvelo::base
