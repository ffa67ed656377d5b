#include "base/Appointment.h"

#include <gtest/gtest.h>

namespace tamvelo::base {
namespace {

TEST(Appointment, WeeksOfTheYearBelongToTheirThursday) {
    const struct {
        CalendarDate date;
        Week week;
        const wchar_t* text;
    } cases[] = {
        {{2026, 11, 21}, {2026, 47}, L"sábado, semana 47"},
        {{2020, 12, 31}, {2020, 53}, L"jueves, semana 53"},
        {{2021, 1, 3}, {2020, 53}, L"domingo, semana 53 de 2020"},
        {{2021, 1, 4}, {2021, 1}, L"lunes, semana 1"},
        {{2024, 12, 30}, {2025, 1}, L"lunes, semana 1 de 2025"},
        {{2028, 1, 1}, {2027, 52}, L"sábado, semana 52 de 2027"},
        {{1601, 1, 1}, {1601, 1}, L"lunes, semana 1"},
    };
    for (const auto& [date, week, text] : cases) {
        EXPECT_EQ(WeekOf(*ToDay(date)), week) << date.year;
        EXPECT_EQ(DescribeDay(*ToDay(date)), text);
    }
}

TEST(Appointment, HoursGoByQuartersWithinTheDay) {
    // minute, later, earlier
    constexpr int kCases[][3] = {{0, 15, 0},         {1, 15, 0},         {14, 15, 0},
                                 {15, 30, 0},        {16, 30, 15},       {724, 735, 720},
                                 {1424, 1425, 1410}, {1425, 1425, 1410}, {1439, 1439, 1425}};
    for (const auto& [minute, later, earlier] : kCases) {
        EXPECT_EQ(StepQuarter(minute, 1), later) << minute;
        EXPECT_EQ(StepQuarter(minute, -1), earlier) << minute;
    }
}

TEST(Appointment, OnlyWhatIsEmptyGetsItsDefaultAndNamesNone) {
    EXPECT_EQ(WithDefaults({}), (AppointmentTexts{L"000", L"", L"-.-", L"000", L"", L"0", L"-.-"}));
    const AppointmentTexts typed{L"1", L"a", L" ", L"2", L"b", L"3", L"c"};
    EXPECT_EQ(WithDefaults(typed), typed);
}

} // namespace
} // namespace tamvelo::base
