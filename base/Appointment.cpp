#include "base/Appointment.h"

namespace tamvelo::base {

namespace {

constexpr int kMinutesPerDay = 24 * 60;
constexpr int kQuarter = 15;

constexpr const wchar_t* kWeekdays[] = {L"lunes",   L"martes", L"miércoles", L"jueves",
                                        L"viernes", L"sábado", L"domingo"};

struct Default {
    std::wstring AppointmentTexts::*text;
    const wchar_t* value;
};
constexpr Default kDefaults[] = {
    {&AppointmentTexts::customerCode, L"000"}, {&AppointmentTexts::comment, L"-.-"},
    {&AppointmentTexts::employeeCode, L"000"}, {&AppointmentTexts::box, L"0"},
    {&AppointmentTexts::type, L"-.-"},
};

} // namespace

AppointmentTexts WithDefaults(AppointmentTexts texts) {
    for (const Default& entry : kDefaults) {
        if ((texts.*entry.text).empty()) {
            texts.*entry.text = entry.value;
        }
    }
    return texts;
}

int StepQuarter(int minute, int direction) {
    const int below = minute / kQuarter * kQuarter;
    const int next = direction > 0 ? below + kQuarter : below < minute ? below : below - kQuarter;
    return next >= 0 && next < kMinutesPerDay ? next : minute;
}

std::wstring DescribeDay(Day day) {
    const Week week = WeekOf(day);
    const auto weekday = static_cast<size_t>(day - StartOf(Period::Week, day));
    std::wstring text = std::wstring(kWeekdays[weekday]) + L", semana " + std::to_wstring(week.number);
    return week.year == ToDate(day).year ? text : text + L" de " + std::to_wstring(week.year);
}

} // namespace tamvelo::base
