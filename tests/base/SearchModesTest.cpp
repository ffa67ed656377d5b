#include "base/SearchModes.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace tamvelo::base {
namespace {

TEST(SearchModes, BoxesListAndFocusOfEachOption) {
    std::string shown;
    for (const SearchMode& mode : kSearchModes) {
        EXPECT_TRUE(mode.boxes.at(static_cast<size_t>(mode.focus)));
        for (size_t i = 0; i < mode.boxes.size(); ++i) {
            shown += mode.boxes.at(i) ? static_cast<char>('0' + i) : '-';
        }
        shown += mode.list ? "L " : " ";
    }
    EXPECT_EQ(shown, "0-- -12 -1- --2 0--L ");
}

TEST(SearchModes, OnlyAnIndexInRangeIsRemembered) {
    struct Row {
        const wchar_t* text;
        int index;
    };
    for (const Row& row : {Row{L"0", 0}, {L"4", 4}, {L"5", -1}, {L"-1", -1}, {L"", -1}, {L"dos", -1}}) {
        EXPECT_EQ(StoredIndex(row.text, 5, -1), row.index) << ToUtf8(row.text);
    }
}

TEST(SearchModes, KindsAndTheirFields) {
    for (const wchar_t* heading : {L"Caja", L"Prescripción", L"Orden", L"Núm. Prescripción", L"Paciente"}) {
        EXPECT_TRUE(IsSearchKind(heading)) << ToUtf8(heading);
    }
    EXPECT_FALSE(IsSearchKind(L"caja"));
    EXPECT_FALSE(IsSearchKind(L""));
    std::wstring fields;
    for (int i = -1; i < 6; ++i) {
        fields += std::wstring(SearchKindField(i).value_or(L"?")) + L" ";
    }
    EXPECT_EQ(fields, L"? Orden Paciente Caja Prescripción ? ? ");
}

TEST(SearchModes, FieldsAndTextsAreChecked) {
    EXPECT_TRUE(IsUncheckedField(L"Parcial"));
    EXPECT_TRUE(IsUncheckedField(L"DESCUENTOS"));
    EXPECT_FALSE(IsUncheckedField(L"parciales"));
    EXPECT_EQ(TrimmedTo(L"  abc d ", 4), L"abc ");
    EXPECT_EQ(TrimmedTo(L" abc ", 9), L"abc");
    EXPECT_EQ(TrimmedTo(L" abc ", 0), L"");
    EXPECT_EQ(TrimmedTo(L" abc ", -1), L"abc");
}

TEST(SearchModes, APastedListIsSplitButNotAtCommas) {
    using Values = std::vector<std::wstring>;
    EXPECT_EQ(PastedValues(L"1,5\r\n2,5\r\n"), (Values{L"1,5", L"2,5"}));
    EXPECT_EQ(PastedValues(L" a\tb;;\n \nc"), (Values{L"a", L"b", L"c"}));
    EXPECT_EQ(PastedValues(L"\r\n"), Values{});
    EXPECT_FALSE(PastedValues(L"1,5 y 2,5"));
    EXPECT_FALSE(PastedValues(L""));
    EXPECT_EQ(CountOfValues(0) + L", " + CountOfValues(1) + L", " + CountOfValues(3),
              L"0 valores, 1 valor, 3 valores");
}

} // namespace
} // namespace tamvelo::base
