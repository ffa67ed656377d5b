#include "base/HourText.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace tamvelo::base {
namespace {

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
