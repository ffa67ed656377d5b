#include <gtest/gtest.h>

#include <set>

#include "base/Appointment.h"
#include "base/DateRanges.h"
#include "base/HourText.h"
#include "base/PeriodName.h"
#include "base/Text.h"

namespace tamvelo::base {

static void PrintTo(const CalendarDate& date, std::ostream* out) {
    *out << date.day << '/' << date.month << '/' << date.year;
}

static void PrintTo(const DateRange& range, std::ostream* out) {
    PrintTo(ToDate(range.first), out);
    *out << '-';
    PrintTo(ToDate(range.last), out);
}

namespace {

Day D(int year, int month, int day) { return ToDay({year, month, day}).value(); }

TEST(Dates, AreCountedAsAutomationDoesAndKnowTheCalendar) {
    const std::pair<CalendarDate, Day> days[] = {{{1899, 12, 30}, 0},
                                                 {{1900, 1, 1}, 2},
                                                 {{2026, 1, 1}, 46023},
                                                 {{1601, 1, 1}, -109205},
                                                 {{9999, 12, 31}, 2958465}};
    for (const auto& [date, day] : days) {
        EXPECT_EQ(ToDay(date), day);
        EXPECT_EQ(ToDate(day), date);
        EXPECT_TRUE(IsValid(day));
    }
    EXPECT_FALSE(IsValid(-109206) || IsValid(2958466));
    for (const CalendarDate& none : {CalendarDate{2025, 2, 29},
                                     {1900, 2, 29},
                                     {2024, 13, 1},
                                     {2024, 4, 31},
                                     {2024, 0, 1},
                                     {1600, 12, 31},
                                     {10000, 1, 1},
                                     {2024, 257, 1}}) {
        EXPECT_FALSE(ToDay(none)) << ::testing::PrintToString(none);
    }
}

TEST(Dates, PresetsAreTheRangesThatAClerkMeans) {
    const struct {
        CalendarDate today;
        const char* ranges[10];
    } cases[] = {
        {{2024, 2, 29}, // a Thursday
         {"29/2/2024-29/2/2024", "28/2/2024-28/2/2024", "26/2/2024-3/3/2024", "1/2/2024-29/2/2024",
          "1/1/2024-31/1/2024", "1/1/2024-31/3/2024", "1/10/2023-31/12/2023", "1/1/2024-31/12/2024",
          "1/1/2023-31/12/2023", "1/1/2024-29/2/2024"}},
        {{2026, 1, 1}, // a Thursday
         {"1/1/2026-1/1/2026", "31/12/2025-31/12/2025", "29/12/2025-4/1/2026", "1/1/2026-31/1/2026",
          "1/12/2025-31/12/2025", "1/1/2026-31/3/2026", "1/10/2025-31/12/2025", "1/1/2026-31/12/2026",
          "1/1/2025-31/12/2025", "1/1/2026-1/1/2026"}},
        {{2023, 7, 9}, // a Sunday, the last day of its week
         {"9/7/2023-9/7/2023", "8/7/2023-8/7/2023", "3/7/2023-9/7/2023", "1/7/2023-31/7/2023",
          "1/6/2023-30/6/2023", "1/7/2023-30/9/2023", "1/4/2023-30/6/2023", "1/1/2023-31/12/2023",
          "1/1/2022-31/12/2022", "1/1/2023-9/7/2023"}},
        {{2001, 12, 31}, // a Monday, the first
         {"31/12/2001-31/12/2001", "30/12/2001-30/12/2001", "31/12/2001-6/1/2002", "1/12/2001-31/12/2001",
          "1/11/2001-30/11/2001", "1/10/2001-31/12/2001", "1/7/2001-30/9/2001", "1/1/2001-31/12/2001",
          "1/1/2000-31/12/2000", "1/1/2001-31/12/2001"}},
    };
    std::set<wchar_t> keys;
    for (const DatePreset& preset : DatePresets()) {
        const std::wstring caption = preset.caption;
        keys.insert(caption.at(caption.find(L'&') + 1));
    }
    ASSERT_EQ(keys.size(), 10U) << "each has an access key of its own";
    for (const auto& [today, ranges] : cases) {
        for (size_t i = 0; i < std::size(ranges); ++i) {
            EXPECT_EQ(::testing::PrintToString(DatePresets()[i].Of(*ToDay(today))), ranges[i]);
        }
    }
}

TEST(Dates, RangesStepByWholePeriodsOrByTheirOwnLength) {
    struct Row {
        DateRange range;
        int direction;
        DateRange expected;
        const wchar_t* length;
    };
    const Row rows[] = {
        {{D(2024, 2, 1), D(2024, 2, 29)}, 1, {D(2024, 3, 1), D(2024, 3, 31)}, L"29 días"},
        {{D(2024, 2, 1), D(2024, 2, 28)}, 1, {D(2024, 2, 29), D(2024, 3, 27)}, L"28 días"},
        {{D(2024, 1, 1), D(2024, 1, 31)}, -1, {D(2023, 12, 1), D(2023, 12, 31)}, L"31 días"},
        {{D(2023, 10, 1), D(2023, 12, 31)}, 1, {D(2024, 1, 1), D(2024, 3, 31)}, L"92 días"},
        {{D(2024, 1, 1), D(2024, 3, 31)}, -1, {D(2023, 10, 1), D(2023, 12, 31)}, L"91 días"},
        {{D(2023, 1, 1), D(2023, 12, 31)}, 1, {D(2024, 1, 1), D(2024, 12, 31)}, L"365 días"},
        {{D(2023, 2, 1), D(2023, 4, 30)}, 1, {D(2023, 5, 1), D(2023, 7, 28)}, L"89 días"},
        {{D(2026, 3, 15), D(2026, 3, 15)}, -1, {D(2026, 3, 14), D(2026, 3, 14)}, L"1 día"},
        {{D(2026, 3, 10), D(2026, 3, 1)},
         1,
         {D(2026, 3, 20), D(2026, 3, 11)},
         L"La primera fecha es posterior a la última"},
        {{D(9999, 1, 1), D(9999, 12, 31)}, 1, {D(9999, 1, 1), D(9999, 12, 31)}, L"365 días"},
        {{D(1601, 1, 1), D(1601, 1, 31)}, -1, {D(1601, 1, 1), D(1601, 1, 31)}, L"31 días"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Step(row.range, row.direction), row.expected) << ::testing::PrintToString(row.range);
        EXPECT_EQ(DescribeLength(row.range), row.length);
    }
    const DateRange month{D(2026, 11, 1), D(2026, 11, 30)};
    const DateRange winter{D(2026, 12, 31), D(2027, 1, 1)};
    EXPECT_EQ(PeriodName(month, PeriodParts::MonthAndYear), L"noviembre 2026");
    EXPECT_EQ(PeriodName(month, PeriodParts::Year), L"2026");
    EXPECT_EQ(PeriodName(winter, PeriodParts::MonthAndYear), L"diciembre 2026 - enero 2027");
    EXPECT_EQ(PeriodName(winter, PeriodParts::Year), L"2026 - 2027");
}

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

TEST(Appointment, HoursGoByQuarters) {
    // minute, later, earlier
    constexpr int kCases[][3] = {{0, 15, 0},         {1, 15, 0},         {14, 15, 0},
                                 {15, 30, 0},        {16, 30, 15},       {724, 735, 720},
                                 {1424, 1425, 1410}, {1425, 1425, 1410}, {1439, 1439, 1425}};
    for (const auto& [minute, later, earlier] : kCases) {
        EXPECT_EQ(StepQuarter(minute, 1), later) << minute;
        EXPECT_EQ(StepQuarter(minute, -1), earlier) << minute;
    }
}

TEST(HourText, HoursAreReadAsPeopleWriteThemAndNothingElse) {
    const struct {
        const wchar_t* text;
        std::optional<int> minute;
    } cases[] = {
        {L"7", 420},     {L"07", 420},   {L"730", 450},      {L"0730", 450},     {L"7:30", 450},
        {L"07:30", 450}, {L"7.30", 450}, {L" 23:59 ", 1439}, {L"0", 0},          {L"000", 0},
        {L"2359", 1439}, {L"", {}},      {L" ", {}},         {L"24", {}},        {L"2400", {}},
        {L"7:60", {}},   {L"760", {}},   {L"7:3", {}},       {L"7:", {}},        {L":30", {}},
        {L"7,30", {}},   {L"7 30", {}},  {L"7:30:00", {}},   {L"12/5/2026", {}}, {L"07300", {}},
        {L"007:30", {}}, {L"-7", {}},    {L"7:+3", {}},      {L"siete", {}},     {L"7h", {}},
        {L"\u0667", {}},
    };
    for (const auto& [text, minute] : cases) {
        EXPECT_EQ(ParseHour(text), minute) << ToUtf8(text);
    }
}

} // namespace
} // namespace tamvelo::base
