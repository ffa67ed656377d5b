#include <gtest/gtest.h>

#include "grid/CellText.h"
#include "grid/GridColumns.h"
#include "grid/GridFont.h"

namespace tamvelo::grid {

namespace {

using com::Variant;

Variant Money(long long tenThousandths) {
    Variant value;
    value.Address()->vt = VT_CY;
    value.Address()->cyVal.int64 = tenThousandths;
    return value;
}

} // namespace

// The tests run in the Spanish locale.
TEST(GridTextTest, ValuesAreWrittenAsTheUserWritesThem) {
    Variant bytes;
    bytes.Address()->vt = VT_ARRAY | VT_UI1;
    bytes.Address()->parray = SafeArrayCreateVector(VT_UI1, 0, 4);
    Variant error;
    error.Address()->vt = VT_ERROR;
    error.Address()->scode = E_FAIL;
    const struct {
        Variant value;
        std::wstring text;
        CellKind kind = CellKind::Any;
    } cases[] = {
        {Variant::Null(), L""},
        {Variant(), L""},
        {Variant(-12345L), L"-12345"},
        {Variant(1234.5), L"1234,5"},
        {Variant(0.1 + 0.2), L"0,3"},
        {Variant(-0.0), L"0"},
        {Variant(-1e20), L"-1E+20"},
        {Money(123456789000), L"12.345.678,90"},
        {Money(-5000), L"-0,50"},
        {Variant(1234.567), L"1.234,57", CellKind::Money},
        {Variant(7L), L"7,00", CellKind::Money},
        {Variant(true), L"Sí"},
        {Variant(0L), L"No", CellKind::Check},
        {Variant(L"texto"), L"texto", CellKind::Check},
        {Variant(L"fin "), L"fin "},
        {Variant::Date(45351), L"29/2/2024"},
        {Variant::Date(45351.75), L"29/2/2024 18:00:00"},
        {Variant::Date(0.25), L"6:00:00"},
        {Variant::Date(45351.25), L"6:00:00", CellKind::Time},
        {Variant::Date(1e300), L"#Fecha"},
        {bytes, L"#Binario"},
        {Variant(static_cast<IDispatch*>(nullptr)), L"#Objeto"},
        {error, L"#Error"},
    };
    for (const auto& [value, text, kind] : cases) {
        EXPECT_EQ(Format(value.Get(), kind), text);
    }
    EXPECT_EQ(KindOfValue(Variant(5L).Get(), KindOfField(0)), CellKind::Number);
    EXPECT_EQ(KindOfValue(Variant(L"007").Get(), KindOfField(202)), CellKind::Text);
    EXPECT_EQ(KindOfValue(Variant(1L).Get(), KindOfField(11)), CellKind::Check);
}

TEST(GridTextTest, AFontComesBackAtEveryResolution) {
    for (const int dpi : {96, 120, 144, 192}) {
        for (int tenths = 60; tenths <= 480; tenths += 10) {
            base::GridLayout::Font font{L"Arial", tenths, true, false, true};
            const LOGFONTW made = ToLogFont(font, dpi);
            const base::GridLayout::Font back = FromLogFont(made, dpi);
            EXPECT_EQ(ToLogFont(back, dpi).lfHeight, made.lfHeight) << tenths << " at " << dpi;
            EXPECT_EQ(back.tenthsOfPoint % 10, 0) << tenths << " at " << dpi;
            font.tenthsOfPoint = back.tenthsOfPoint;
            EXPECT_EQ(back, font);
        }
    }
}

TEST(GridColumnsTest, OrderAndVisibilityAreIndependent) {
    GridColumns columns;
    columns.SetFields({{L"A", L"", 0, 0}, {L"B", L"", 0, 0}, {L"C", L"", 0, 0}, {L"D", L"", 0, 0}}, 96);
    columns[1].visible = false;
    columns.MoveOnScreen(0, 1); // behind C, past the hidden B
    EXPECT_EQ(columns.OnScreen(), (std::vector<short>{2, 0, 3}));
    EXPECT_EQ(columns.Neighbour(2, -1), 2);
    EXPECT_EQ(columns.Neighbour(2, 1), 0);
    EXPECT_EQ(columns.Nearest(1), 2);
    columns.MoveOnScreen(2, 2);
    EXPECT_EQ(columns.OnScreen(), (std::vector<short>{0, 3, 2}));
    columns.MoveTo(2, -5);
    EXPECT_EQ(columns.OrderOf(2), 0);
    for (short column = 0; column < 4; ++column) {
        columns[column].visible = false;
    }
    EXPECT_EQ(columns.Nearest(2), -1);
}

TEST(GridColumnsTest, ALayoutWaitsForItsColumnsAndOutlivesOthers) {
    base::GridLayout layout;
    layout.dpi = 96;
    layout.columns = {{L"B", 50, true, 0}, {L"X", 70, false, 1}, {L"A", 60, false, 2}, {L"B", 80, true, 3}};
    GridColumns columns;
    columns.Apply(layout, 144);
    // Two columns B are told apart by their occurrence; C is new, X is gone.
    columns.SetFields({{L"A", L"Alfa", 0, 0}, {L"B", L"", 0, 0}, {L"C", L"", 0, 0}, {L"B", L"", 0, 0}}, 144);
    EXPECT_EQ(columns.OnScreen(), (std::vector<short>{1, 3, 2}));
    EXPECT_EQ(columns[0].width, 90);
    EXPECT_EQ(columns[1].width, 75);
    EXPECT_EQ(columns[3].width, 120);
    EXPECT_EQ(columns[0].caption, L"Alfa");

    columns[2].width = 33;
    columns.SetFields({{L"C", L"", 0, 0}, {L"A", L"", 0, 0}}, 144);
    EXPECT_EQ(columns[0].width, 33);
    EXPECT_FALSE(columns[1].visible);
    EXPECT_EQ(columns.ToLayout(144, {}).columns[1], (base::GridLayout::Column{L"A", 90, false, 0}));
}

} // namespace tamvelo::grid
