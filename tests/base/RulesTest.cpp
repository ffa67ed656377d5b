// Rules of a few lines each.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "base/BlockCache.h"
#include "base/ColumnText.h"
#include "base/CursorFiles.h"
#include "base/FilterText.h"
#include "base/ListChoices.h"
#include "base/Placement.h"
#include "base/RecordBoxes.h"
#include "base/SearchModes.h"
#include "base/SelectionAnswers.h"
#include "base/SettingsKeys.h"
#include "base/SortNumbers.h"
#include "base/Text.h"
#include "base/TraceText.h"

namespace tamvelo::base {

static void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.left << ',' << rect.top << ' ' << rect.width << 'x' << rect.height;
}

namespace {

TEST(Text, LowersSpanishLettersAndFoldsAccentsButKeepsTheEne) {
    EXPECT_EQ(Lower(L"ÁRTÍCULOS_Ñ Ü 09[]"), L"ártículos_ñ ü 09[]");
    EXPECT_EQ(Lower(L"\u00D7\u00DF\u00F7\u0130\u0391"), L"\u00D7\u00DF\u00F7\u0130\u0391");
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
    const std::wstring high(1, static_cast<wchar_t>(0xD83D));
    const std::wstring low(1, static_cast<wchar_t>(0xDE00));
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(ToUtf8(L"a" + high + L"b"), "a" + replaced + "b");
    EXPECT_EQ(ToUtf8(low + L"b"), replaced + "b");
    EXPECT_EQ(ToUtf8(L"a" + high), "a" + replaced);
    EXPECT_EQ(ToUtf8(low + high), replaced + replaced);
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

TEST(SmallRules, SettingsKeysCursorsAndSortColumns) {
    EXPECT_EQ(FormKey(L"Casa", L"Tamvelo", 1, 20, L"frmOrden"),
              L"SOFTWARE\\Casa\\Tamvelo\\1.20\\Configuracion\\frmOrden\\");
    EXPECT_TRUE(IsKeyName(L"a/b: c*.") && IsKeyName(L" ") && IsKeyName(std::wstring(255, L'x')));
    EXPECT_FALSE(IsKeyName(L"") || IsKeyName(L"a\\b") || IsKeyName({L"a\0", 2}) ||
                 IsKeyName(std::wstring(256, L'x')));
    EXPECT_EQ(CursorFile(L"SaVe"), L"Save.ani");
    EXPECT_EQ(CursorFile(L"wait"), L"KvCur1.ani");
    EXPECT_EQ(CursorFile(L"..\\save"), CursorFile(L"open"));
    std::vector<short> numbers;
    for (const int entry : {-1, 0, 38, 39, 40, 41, 42, 99}) {
        numbers.push_back(SortNumber(entry));
    }
    EXPECT_EQ(numbers, (std::vector<short>{-1, 0, 38, 47, 48, 51, 52, 109}));
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

using Cache = BlockCache<std::string>;

TEST(BlockCache, BlocksAnswerForTheirRowsAndTheLeastRecentlyUsedGivesWay) {
    Cache cache(2);
    EXPECT_EQ(cache.Find(0), nullptr);
    cache.Insert(cache.Epoch(), 70, "1");
    EXPECT_EQ(cache.Find(63), nullptr);
    ASSERT_NE(cache.Find(64), nullptr);
    EXPECT_EQ(*cache.Find(127), "1");
    EXPECT_EQ(cache.Find(128), nullptr);
    cache.Insert(cache.Epoch(), 0, "0");
    cache.Find(64);
    cache.Insert(cache.Epoch(), 128, "2");
    EXPECT_EQ(cache.Find(0), nullptr);
    EXPECT_NE(cache.Find(64), nullptr);
    cache.Insert(cache.Epoch(), 130, "2b"); // read again it takes its own slot, not another block's
    EXPECT_EQ(*cache.Find(128), "2b");
    EXPECT_EQ(cache.FirstRows(), (std::vector<long>{64, 128}));

    const auto began = cache.Epoch();
    cache.BumpEpoch(); // which nothing crosses
    EXPECT_EQ(cache.Find(64), nullptr);
    EXPECT_EQ(cache.Insert(began, 0, "read while the record set changed"), nullptr);
    EXPECT_EQ(cache.Find(0), nullptr);
    EXPECT_EQ(cache.FirstRows(), std::vector<long>());
    ASSERT_NE(cache.Insert(cache.Epoch(), 0, "new"), nullptr);
    EXPECT_EQ(*cache.Find(0), "new");
}

TEST(Placement, PullsWhatIsNotInsideOneWorkArea) {
    // A screen with its bar at the bottom, and a bigger one to its left that begins higher up.
    const std::vector<Rect> screens = {{0, 0, 1920, 1040}, {-2560, -400, 2560, 1400}};
    const struct {
        const char* what;
        Rect saved;
        Rect shown;
    } rows[] = {
        {"inside the first", {100, 100, 600, 400}, {100, 100, 600, 400}},
        {"fills the first", {0, 0, 1920, 1040}, {0, 0, 1920, 1040}},
        {"inside the left one, negative", {-2000, -300, 600, 400}, {-2000, -300, 600, 400}},
        {"over both, more on the left", {-400, 100, 600, 400}, {-600, 100, 600, 400}},
        {"over both, more on the right", {-200, 100, 600, 400}, {0, 100, 600, 400}},
        {"below the bar", {100, 900, 600, 400}, {100, 640, 600, 400}},
        {"on a monitor that went away, right", {4000, 200, 600, 400}, {1320, 200, 600, 400}},
        {"on a monitor that went away, left", {-5000, 200, 600, 400}, {-2560, 200, 600, 400}},
        {"minimised when saved", {-32000, -32000, 600, 400}, {-2560, -400, 600, 400}},
        {"larger than its screen", {10, 10, 5000, 3000}, {0, 0, 1920, 1040}},
        {"too small", {100, 100, 3, -7}, {100, 100, 300, 200}},
        {"nonsense", {INT_MAX, INT_MIN, INT_MAX, INT_MAX}, {0, 0, 1920, 1040}},
    };
    for (const auto& [what, saved, shown] : rows) {
        EXPECT_EQ(PullOnto(saved, screens, {300, 200}), shown) << what;
    }
    // A work area smaller than the minimum wins.
    EXPECT_EQ(PullOnto({50, 50, 100, 100}, std::vector<Rect>{{0, 0, 250, 150}}, {300, 200}),
              (Rect{0, 0, 250, 150}));
    EXPECT_EQ(PullOnto({50, 50, 100, 100}, {}, {300, 200}), (Rect{50, 50, 300, 200}));
}

TEST(Placement, StoredNumbersMustBeAWindowAndScalingDoesNotDrift) {
    EXPECT_TRUE(IsSanePlacement({-32768, 32767, 1, 32767}));
    for (const Rect& bad : {Rect{-32769, 0, 9, 9}, Rect{0, 32768, 9, 9}, Rect{0, 0, 0, 9}, Rect{0, 0, 9, -1},
                            Rect{0, 0, 32768, 9}, Rect{0, 0, 9, INT_MAX}}) {
        EXPECT_FALSE(IsSanePlacement(bad)) << testing::PrintToString(bad);
    }
    EXPECT_EQ(Scale(100, 96, 144), 150);
    EXPECT_EQ(Scale(1, 96, 144), 2);
    EXPECT_EQ(Scale(-1, 96, 144), -2);
    EXPECT_EQ(Scale(3, 96, 120), 4);
    EXPECT_EQ(Scale(2000000000, 96, 96), 2000000000);
    for (const int dpi : {96, 120, 144, 168, 192, 480}) {
        for (int length = -300; length <= 300; ++length) {
            ASSERT_EQ(Scale(Scale(length, 96, dpi), dpi, 96), length) << dpi;
        }
    }
}

// The call as a host sees it that passed Column 4 and Indx 7; "=" before a literal, which it cannot change.
std::wstring CallFor(const Answer& answer) {
    const auto number = [](NumberSource source) { return std::to_wstring(source.Resolve(4, 7)); };
    std::wstring call = answer.member == SinkMember::AceptarSeleccion ? L"Seleccion" : L"SeleccionParam";
    call += (answer.first.kind == NumberSource::Kind::Fixed ? L"(=" : L"(") + number(answer.first);
    for (const NumberSource& column : answer.Columns()) {
        call += (answer.asValue ? L", v" : L", t") + number(column);
    }
    return call + L")";
}

TEST(SelectionAnswers, EachClassGetsItsCallInAnyCaseAndColumnsAreClamped) {
    const struct {
        Answer (*rule)(std::wstring_view);
        const wchar_t* classes;
        const wchar_t* call;
    } rows[] = {
        {AnswerFor, L"hordenes", L"SeleccionParam(4, t4, t0, t2)"},
        {AnswerFor, L"fases|pruebas|rutas|EMPLEADOS|Clientes_Direcciones", L"SeleccionParam(4, t4, t0, t1)"},
        {AnswerFor, L"Ordenes", L"SeleccionParam(=0, t0, t0, t1)"},
        {AnswerFor, L"familias|Secciones|impuestos", L"Seleccion(7, t0)"},
        {AnswerFor, L"clientes|proveedores|cuentas", L"Seleccion(4, t0)"},
        {AnswerFor, L"pRODUCTOS", L"Seleccion(4, t1)"},
        {AnswerFor, L"tipos_producto|ordenes_lineas|articulos", L"Seleccion(4, t7)"},
        {AnswerFor, L"articulos_lotes|cliente| clientes|", L"Seleccion(4, t4)"},
        {AnswerInBrowser, L"HOrdenes", L"SeleccionParam(7, t7, t0, t2)"},
        {AnswerInBrowser, L"fases|Empleados", L"SeleccionParam(7, t7, t0, t1)"},
        {AnswerInBrowser, L"ordenes|clientes|pruebas|", L"Seleccion(7, t7)"},
        {AnswerInAddPanel, L"HOrdenes", L"SeleccionParam(4, t4, t0, t2)"},
        {AnswerInAddPanel, L"Articulos", L"Seleccion(4, v0)"},
        {AnswerInAddPanel, L"familias", L"Seleccion(4, v7)"},
    };
    for (const auto& [rule, classes, call] : rows) {
        for (const std::wstring& className : Split(classes, L"|")) {
            EXPECT_EQ(CallFor(rule(className)), call) << ToUtf8(className);
        }
    }
    EXPECT_EQ(ClampColumn(6, 5), 0);
    EXPECT_EQ(ClampColumn(5, 5), 5);
    EXPECT_EQ(ClampColumn(-1, 5), -1);
    EXPECT_EQ(ClampColumn(32767, 100000), 32767);
    EXPECT_TRUE(DoubleClickAnswerFor(L"Articulos_Lotes"));
    EXPECT_FALSE(DoubleClickAnswerFor(L"hordenes"));
    EXPECT_FALSE(FindRuleFor(-1));
}

TEST(SearchModes, OnlyAnIndexInRangeIsRememberedAndKindsHaveTheirFields) {
    for (const auto& [text, index] :
         {std::pair{L"0", 0}, {L"4", 4}, {L"5", -1}, {L"-1", -1}, {L"", -1}, {L"dos", -1}}) {
        EXPECT_EQ(StoredIndex(text, 5, -1), index) << ToUtf8(text);
    }
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
}

using Titles = std::vector<std::wstring>;
using Ticks = std::vector<bool>;

TEST(ListChoices, TicksFollowTheirReports) {
    const Titles then{L"Listado", L"Resumen", L"Etiquetas", L"Resumen"};
    const std::wstring text = RememberTicks(then, {true, false, false, true});
    EXPECT_EQ(text, L"Listado|Resumen#2|");
    EXPECT_EQ(RestoreTicks(then, text), (Ticks{true, false, false, true}));
    // Reordered, one removed, one added.
    EXPECT_EQ(RestoreTicks(Titles{L"Nuevo", L"Resumen", L"Listado", L"Resumen"}, text),
              (Ticks{false, false, true, true}));
    EXPECT_EQ(RestoreTicks(Titles{L"Resumen"}, text), (Ticks{false}));
}

TEST(ListChoices, TitlesWithMarksAndTextsThatAreNoneOfOurs) {
    const Titles titles{L"A|B", L"A#2", L"A", L"A", L"C\\", L""};
    const Ticks all(titles.size(), true);
    EXPECT_EQ(RestoreTicks(titles, RememberTicks(titles, all)), all);
    const Ticks second{false, false, false, true, false, false};
    EXPECT_EQ(RestoreTicks(titles, RememberTicks(titles, second)), second);
    EXPECT_EQ(RestoreTicks(Titles{L"A"}, L"\\"), (Ticks{false}));
    EXPECT_EQ(RestoreTicks(Titles{L"A", L"B"}, L"||B#|A"), (Ticks{true, false})); // cut after the last
    EXPECT_EQ(RememberTicks(titles, {}), L"");
}

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
