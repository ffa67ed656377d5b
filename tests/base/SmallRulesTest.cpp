// Rules of a few lines each.
#include <gtest/gtest.h>

#include <vector>

#include "base/ColumnText.h"
#include "base/CursorFiles.h"
#include "base/SettingsKeys.h"
#include "base/SortNumbers.h"
#include "base/Text.h"
#include "base/TraceText.h"

namespace tamvelo::base {
namespace {

TEST(SmallRules, SettingsKeysAndTheirNames) {
    EXPECT_EQ(FormKey(L"Casa", L"Tamvelo", 1, 20, L"frmOrden"),
              L"SOFTWARE\\Casa\\Tamvelo\\1.20\\Configuracion\\frmOrden\\");
    EXPECT_EQ(SesionKey(L"Casa", L"Ordenes\\Informes"),
              L"SOFTWARE\\Casa\\Global\\Configuracion\\Sesion\\Ordenes\\Informes");
    for (const std::wstring& name :
         {std::wstring(L"a/b: c*."), std::wstring(L" "), std::wstring(255, L'x')}) {
        EXPECT_TRUE(IsKeyName(name));
    }
    for (const std::wstring& name :
         {std::wstring(), std::wstring(L"a\\b"), std::wstring(L"a\0", 2), std::wstring(256, L'x')}) {
        EXPECT_FALSE(IsKeyName(name));
    }
}

TEST(SmallRules, ABusyCursorIsOneOfOurFiles) {
    EXPECT_EQ(CursorFile(L"SaVe"), L"Save.ani");
    EXPECT_EQ(CursorFile(L"wait"), L"KvCur1.ani");
    EXPECT_EQ(CursorFile(L"..\\save"), CursorFile(L"open"));
}

TEST(SmallRules, ARowStaysOneRowAndATextItsLines) {
    const auto line = [](const std::vector<std::wstring>& cells) { return TabLine(cells); };
    EXPECT_EQ(line({}), L"");
    EXPECT_EQ(line({L"", L"a\tb", L"c\r\nd", L""}), L"\ta b\tc  d\t");
    EXPECT_EQ(WithLineEnds(L"\r\na\r\nb\rc\n\nd\r\r\n", L"|"), L"|a|b|c||d||");
    EXPECT_EQ(WithLineEnds(std::wstring_view(L"\r\na").substr(1), L"|"),
              L"|a"); // what is before it is not its
    EXPECT_EQ(TraceText(L"a\tb\n"), L"a b ");
    EXPECT_EQ(TraceText(std::wstring(200, L'x')), std::wstring(200, L'x'));
    EXPECT_EQ(TraceText(std::wstring(201, L'x')), std::wstring(200, L'x') + L"…(201)");
    EXPECT_EQ(WithLineEnds(std::wstring_view(L"a\0b", 3), L"\r\n"), L"a b");
}

TEST(SmallRules, TheHostsReservedSortColumnsAreSkipped) {
    std::vector<short> numbers;
    for (const int entry : {-1, 0, 38, 39, 40, 41, 42, 99}) {
        numbers.push_back(SortNumber(entry));
    }
    EXPECT_EQ(numbers, (std::vector<short>{-1, 0, 38, 47, 48, 51, 52, 109}));
}

} // namespace
} // namespace tamvelo::base
