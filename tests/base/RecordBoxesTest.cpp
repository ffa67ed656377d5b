#include "base/RecordBoxes.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace tamvelo::base {
namespace {

/// The boxes as "field number", with * for required and f for the family.
std::string Boxes(const std::vector<RecordField>& fields) {
    std::string text;
    for (const RecordBox& box : BoxesFor(fields)) {
        text += (text.empty() ? "" : ", ") + ToUtf8(fields[box.field].name) + " " +
                std::to_string(box.number) + (box.required ? "*" : "") + (box.family ? "f" : "");
    }
    return text;
}

RecordField Field(const wchar_t* name, const wchar_t* relation = L"", std::optional<bool> required = {}) {
    return {name, relation, true, false, required};
}

TEST(RecordBoxes, TheFamilyHasNumberFourAndTheCodeOne) {
    const RecordField mark{L"m", L"", true, true, true};
    const RecordField picture{L"p", L"", false, false, {}};
    const std::pair<std::vector<RecordField>, std::string> cases[] = {
        {{Field(L"c"), Field(L"n"), Field(L"Familia"), Field(L"x"), Field(L"y"), Field(L"z")},
         "Familia 4*f, c 1*, n 2*, x 3, y 5, z 6"},
        {{Field(L"c"), Field(L"n"), Field(L"g", L"FAMILIAS")}, "g 4*f, c 1*, n 2*"},
        {{Field(L"c"), Field(L"n"), Field(L"x"), Field(L"y"), Field(L"z")}, "c 1*, n 2*, x 3, y 4, z 5"},
        {{Field(L"familia1"), Field(L"familia2"), Field(L"x")}, "familia1 4*f, familia2 1*, x 2"},
        {{picture, Field(L"c", L"", false), mark, Field(L"n", L"", true)}, "c 1*, m 2, n 3*"},
        {{Field(L"c"), Field(L"n", L"", false), Field(L"familia", L"", false)}, "familia 4f, c 1*, n 2"},
        {{}, ""},
    };
    for (const auto& [fields, boxes] : cases) {
        EXPECT_EQ(Boxes(fields), boxes);
    }
    EXPECT_EQ(BoxesFor(std::vector(kMostBoxes + 5, Field(L"x"))).size(), kMostBoxes);
}

TEST(RecordBoxes, NumbersAreNotReadStrictly) {
    for (const wchar_t* number : {L"0", L"-3", L"1.234,50", L"12.5", L" 7 "}) {
        EXPECT_TRUE(LooksLikeNumber(number)) << ToUtf8(number);
    }
    for (const wchar_t* other : {L"", L"-", L"doce", L"1e5", L"3 €"}) {
        EXPECT_FALSE(LooksLikeNumber(other)) << ToUtf8(other);
    }
}

TEST(RecordBoxes, EachCaptionGetsAKeyOfItsOwn) {
    std::wstring taken = L"bn";
    const std::pair<const wchar_t*, const wchar_t*> captions[] = {
        {L"Código", L"&Código"}, {L"Nombre corto", L"N&ombre corto"},
        {L"Cc", L"Cc"},          {L"Área & año", L"&Área && año"},
        {L"Año", L"Año"},        {L"ñ0", L"ñ&0"},
        {L"ñ9z", L"ñ&9z"},       {L"{z`", L"{&z`"},
        {L"/:", L"/:"},          {L"", L""},
    };
    for (const auto& [caption, marked] : captions) {
        EXPECT_EQ(ToUtf8(WithAccessKey(caption, taken)), ToUtf8(marked));
    }
    EXPECT_EQ(ToUtf8(taken), "bncoa09z");
}

} // namespace
} // namespace tamvelo::base
