#include "base/DateRanges.h"

#include <gtest/gtest.h>

#include <set>

#include "base/PeriodName.h"

namespace tamvelo::base {

static void PrintTo(const CalendarDate& date, std::ostream* out) {
    *out << date.year << '-' << date.month << '-' << date.day;
}

static void PrintTo(const DateRange& range, std::ostream* out) {
    PrintTo(ToDate(range.first), out);
    *out << " to ";
    PrintTo(ToDate(range.last), out);
}

namespace {

Day D(int year, int month, int day) { return ToDay({year, month, day}).value(); }

TEST(DateRanges, CountDaysAsAutomationDoesAndKnowTheCalendar) {
    EXPECT_EQ(D(1899, 12, 30), 0);
    EXPECT_EQ(D(1900, 1, 1), 2);
    EXPECT_EQ(D(2026, 1, 1), 46023);
    EXPECT_EQ(D(1601, 1, 1), -109205);
    EXPECT_EQ(D(9999, 12, 31), 2958465);
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
    EXPECT_TRUE(IsValid(-109205) && IsValid(2958465));
    EXPECT_FALSE(IsValid(-109206) || IsValid(2958466));
}

// What each preset must hold, said without the arithmetic of the code: by the dates' own parts.
TEST(DateRanges, PresetsHoldOnEveryDayOfYearsWithAndWithoutLeapDay) {
    const auto presets = DatePresets();
    for (Day today = D(1999, 1, 1); today <= D(2005, 12, 31); ++today) {
        const CalendarDate now = ToDate(today);
        const int quarter = 1 + (now.month > 3) + (now.month > 6) + (now.month > 9);
        const auto spans = [&](const wchar_t* command, const CalendarDate& first, const CalendarDate& next) {
            for (const DatePreset& preset : presets) {
                if (preset.command == std::wstring(command)) {
                    EXPECT_EQ(preset.Of(today), (DateRange{*ToDay(first), *ToDay(next) - 1}))
                        << "on " << ::testing::PrintToString(now) << ", preset "
                        << ::testing::PrintToString(std::wstring(command));
                    return;
                }
            }
            ADD_FAILURE() << "no such preset";
        };
        const int year = now.year;
        const auto month = [&](int number) { // 0 and 13 are of the years beside this one
            return CalendarDate{number < 1    ? year - 1
                                : number > 12 ? year + 1
                                              : year,
                                (number + 11) % 12 + 1, 1};
        };
        const int start = quarter * 3 - 2;
        spans(L"{HOY}", now, ToDate(today + 1));
        spans(L"{AYER}", ToDate(today - 1), now);
        spans(L"{MES}", month(now.month), month(now.month + 1));
        spans(L"{MES_ANTERIOR}", month(now.month - 1), month(now.month));
        spans(L"{TRIMESTRE}", month(start), month(start + 3));
        spans(L"{TRIMESTRE_ANTERIOR}", month(start == 1 ? -2 : start - 3), month(start));
        spans(L"{AÑO}", {year, 1, 1}, {year + 1, 1, 1});
        spans(L"{AÑO_ANTERIOR}", {year - 1, 1, 1}, {year, 1, 1});
        spans(L"{AÑO_HASTA_HOY}", {year, 1, 1}, ToDate(today + 1));
        const DateRange week = presets[2].Of(today);
        EXPECT_TRUE(week.first <= today && today <= week.last && week.last - week.first == 6);
        EXPECT_EQ((week.first - D(2001, 1, 1)) % 7, 0) << "1 January 2001 was a Monday";
        EXPECT_EQ(WholeMonth(today), presets[3].Of(today));
        EXPECT_EQ(WholeYear(today), presets[7].Of(today));
        // A range stepped on and back is itself, and the next one begins where it ends.
        for (const DatePreset& preset : presets) {
            const DateRange range = preset.Of(today);
            EXPECT_EQ(Step(range, 1).first, range.last + 1);
            EXPECT_EQ(Step(range, -1).last, range.first - 1);
            EXPECT_EQ(Step(Step(range, 1), -1), range);
        }
    }
}

TEST(DateRanges, StepByWholePeriodsOrByTheirOwnLength) {
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
}

TEST(DateRanges, EveryPresetHasAnAccessKeyAndACommandOfItsOwn) {
    std::set<wchar_t> keys;
    std::set<std::wstring> commands;
    for (const DatePreset& preset : DatePresets()) {
        const std::wstring caption = preset.caption;
        keys.insert(caption.at(caption.find(L'&') + 1));
        commands.insert(preset.command);
    }
    EXPECT_EQ(keys.size(), DatePresets().size());
    EXPECT_EQ(commands.size(), DatePresets().size());
}

TEST(DateRanges, APeriodHasTheNameThatAClerkCallsIt) {
    const DateRange month{*ToDay({2026, 11, 1}), *ToDay({2026, 11, 30})};
    const DateRange winter{*ToDay({2026, 12, 31}), *ToDay({2027, 1, 1})};
    EXPECT_EQ(PeriodName(month, PeriodParts::MonthAndYear), L"noviembre 2026");
    EXPECT_EQ(PeriodName(month, PeriodParts::Year), L"2026");
    EXPECT_EQ(PeriodName(winter, PeriodParts::MonthAndYear), L"diciembre 2026 - enero 2027");
    EXPECT_EQ(PeriodName(winter, PeriodParts::Year), L"2026 - 2027");
}

} // namespace
} // namespace tamvelo::base
