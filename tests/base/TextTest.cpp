#include "base/Text.h"

#include <gtest/gtest.h>

namespace tamvelo::base {
namespace {

TEST(Text, LowersSpanishLettersAndNothingElse) {
    EXPECT_EQ(Lower(L"ÁRTÍCULOS_Ñ Ü 09[]"), L"ártículos_ñ ü 09[]");
    EXPECT_EQ(Lower(L"\u00D7\u00DF\u00F7\u0130\u0391"), L"\u00D7\u00DF\u00F7\u0130\u0391");
}

TEST(Text, FoldsAccentsButKeepsTheEne) {
    EXPECT_EQ(Fold(L"PINGÜINO Año Ñu Façade"), L"pinguino año ñu facade");
    EXPECT_EQ(Fold(L"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞßàÿ÷"), L"aaaaaaæceeeeiiiiðñooooo×øuuuuyþßay÷");
}

TEST(Text, TrimsAndSplits) {
    EXPECT_EQ(Trim(L" \t a b \r\n"), L"a b");
    EXPECT_EQ(Trim(L" \t "), L"");
    EXPECT_EQ(Split(L"a;;b,c;", L";,"), (std::vector<std::wstring>{L"a", L"", L"b", L"c", L""}));
    EXPECT_EQ(Split(L"", L";"), std::vector<std::wstring>{L""});
}

TEST(Text, Utf8RoundTripsEveryLength) {
    // The borders of the four sequence lengths and of the surrogate gap.
    const std::wstring text = L"\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF";
    const std::string utf8 =
        "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF"
        "\xBF";
    EXPECT_EQ(ToUtf8(text), utf8);
    EXPECT_EQ(FromUtf8(utf8), text);
    EXPECT_EQ(FromUtf8(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(Text, MalformedUtf8IsRefused) {
    for (const char* bad : {"\x80", "a\xBF", "\xC3", "\xC3(", "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF",
                            "\xE2\x82", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF0\x9F\x98",
                            "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"}) {
        EXPECT_FALSE(FromUtf8(bad)) << testing::PrintToString(bad);
    }
}

TEST(Text, HalfASurrogatePairBecomesTheReplacementCharacter) {
    const auto unit = [](int code) { return std::wstring(1, static_cast<wchar_t>(code)); };
    EXPECT_EQ(ToUtf8(L"a" + unit(0xD83D) + L"b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(ToUtf8(unit(0xDE00) + L"b"),
              "\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(ToUtf8(L"a" + unit(0xD83D)), "a\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(unit(0xDE00) + unit(0xD83D)), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Text, NumbersAreReadWholeAndInRange) {
    EXPECT_EQ(ParseLong(L"0"), 0);
    EXPECT_EQ(ParseLong(L"+0012"), 12);
    EXPECT_EQ(ParseLong(L"2147483647"), 2147483647L);
    EXPECT_EQ(ParseLong(L"-2147483648"), -2147483647L - 1);
    for (const wchar_t* bad : {L"", L"-", L"+", L"+-1", L" 1", L"1 ", L"1.", L"0x1", L"12a", L"\u0661",
                               L"2147483648", L"-2147483649", L"99999999999999999999999999"}) {
        EXPECT_FALSE(ParseLong(bad)) << ToUtf8(bad);
    }
}

} // namespace
} // namespace tamvelo::base
