#pragma once

#include <string>

#include "base/Calendar.h"

/// Rules of an appointment that need no window.
namespace tamvelo::base {

struct AppointmentTexts {
    std::wstring customerCode;
    std::wstring customerName;
    std::wstring comment;
    std::wstring employeeCode;
    std::wstring employeeName;
    std::wstring box;
    std::wstring type;
    bool operator==(const AppointmentTexts&) const = default;
};

/// No field is required: what was left empty gets what the host's tables keep in its place. Names stay as
/// they are.
AppointmentTexts WithDefaults(AppointmentTexts texts);

/// The next quarter of an hour after a minute of the day (direction 1) or before it (-1). Stays where it is
/// rather than leave the day.
int StepQuarter(int minute, int direction);

/// "sábado, semana 47"; in the weeks that belong to another year than the day, with that year.
std::wstring DescribeDay(Day day);

} // namespace tamvelo::base
