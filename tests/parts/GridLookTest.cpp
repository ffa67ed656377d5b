// How the grid looks: texts, font, widths, colours, resolution, what is scrolled.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "base/Placement.h"
#include "grid/CellText.h"
#include "grid/GridColumns.h"
#include "grid/GridFont.h"
#include "tests/parts/GridFixture.h"
#include "tests/support/SystemAnswer.h"

namespace tamvelo::testing {

namespace {

using com::Variant;
using grid::CellKind;

constexpr COLORREF kLightYellow = RGB(255, 255, 192);

Variant Money(long long tenThousandths) {
    Variant value;
    value.Address()->vt = VT_CY;
    value.Address()->cyVal.int64 = tenThousandths;
    return value;
}

} // namespace

class GridLookTest : public GridTest {
protected:
    static int Pixels(HWND window, const RECT& area, COLORREF color) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const HDC dc = GetDC(window);
        int found = 0;
        for (LONG y = area.top; y < area.bottom - 2; ++y) {
            for (LONG x = area.left; x < area.right - 2; ++x) {
                found += GetPixel(dc, x, y) == color ? 1 : 0;
            }
        }
        ReleaseDC(window, dc);
        return found;
    }
    /// Those of the row at that place on screen.
    int PixelsOf(LONG place, COLORREF color) {
        return Pixels(m_grid->Window(), LocationOf(place + 1), color);
    }
    /// What the heading's caption takes when it is drawn.
    int CaptionWidth(short column) const {
        const HDC dc = GetDC(Header());
        const HGDIOBJ before =
            SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(Header(), WM_GETFONT, 0, 0)));
        SIZE size{};
        const std::wstring caption = m_grid->Caption(column);
        GetTextExtentPoint32W(dc, caption.c_str(), static_cast<int>(caption.size()), &size);
        SelectObject(dc, before);
        ReleaseDC(Header(), dc);
        return size.cx;
    }
};

TEST_F(GridLookTest, TheBarBelowScrollsRowsAndHeadingsSideways) {
    Bind();
    const auto left = [&] { return static_cast<int>(LocationOf(Heading(0)).left); };
    int total = 0;
    for (short column = 0; column < m_grid->ColumnCount(); ++column) {
        total += WidthOf(column);
    }
    RECT client;
    GetClientRect(m_grid->Window(), &client);
    const int most = total - static_cast<int>(client.right);
    ASSERT_GT(most, 60);
    const int step = base::Scale(48, 96, m_grid->Layout().dpi);
    const struct {
        UINT message;
        WPARAM w;
        int scrolled;
    } turns[] = {
        {WM_HSCROLL, SB_LINERIGHT, step},
        {WM_HSCROLL, SB_LINELEFT, 0},
        {WM_HSCROLL, SB_LINELEFT, 0},
        {WM_HSCROLL, SB_PAGERIGHT, most},
        {WM_HSCROLL, SB_LINERIGHT, most},
        {WM_HSCROLL, SB_PAGELEFT, 0},
        {WM_HSCROLL, SB_THUMBTRACK, 37},
        {WM_HSCROLL, SB_ENDSCROLL, 37},
        {WM_HSCROLL, SB_RIGHT, most},
        {WM_HSCROLL, SB_LEFT, 0},
        {WM_MOUSEHWHEEL, MAKEWPARAM(0, WHEEL_DELTA), std::min(step, most)},
        {WM_MOUSEHWHEEL, MAKEWPARAM(0, static_cast<WORD>(-2 * WHEEL_DELTA)), 0},
    };
    for (const auto& [message, w, scrolled] : turns) {
        SCOPED_TRACE(w);
        if (w == SB_THUMBTRACK) {
            SetScrollPos(m_grid->Window(), SB_HORZ, scrolled, FALSE);
        }
        Send(message, w);
        EXPECT_EQ(left(), -scrolled);
        EXPECT_EQ(GetScrollPos(m_grid->Window(), SB_HORZ), scrolled);
        RECT heading = ItemPlace(0);
        MapWindowPoints(Header(), m_grid->Window(), reinterpret_cast<POINT*>(&heading), 2);
        EXPECT_EQ(heading.left, -scrolled);
    }
    SCROLLINFO bar{};
    bar.cbSize = sizeof(bar);
    bar.fMask = SIF_ALL;
    GetScrollInfo(m_grid->Window(), SB_HORZ, &bar);
    EXPECT_EQ(bar.nMax + 1, total);
    EXPECT_EQ(bar.nPage, static_cast<UINT>(client.right));
    Send(WM_HSCROLL, SB_PAGERIGHT);
    SetWindowPos(m_grid->Window(), nullptr, 0, 0, total + 60, kHeight, SWP_NOZORDER);
    EXPECT_EQ(left(), 0); // what had been scrolled away comes back when there is room
}

TEST_F(GridLookTest, TheCurrentRowIsDrawnInTheSelectedStyleWithAndWithoutFocus) {
    Bind();
    EXPECT_GT(PixelsOf(0, kLightYellow), 1000);
    EXPECT_EQ(PixelsOf(1, kLightYellow), 0);
    EXPECT_GT(PixelsOf(1, GetSysColor(COLOR_WINDOWTEXT)), 40); // letters
    RECT line = LocationOf(2);
    line.left = WidthOf(0) - 1;
    line.right = line.left + 3;
    for (const COLORREF other : {GetSysColor(COLOR_WINDOW), RGB(0, 0, 0)}) { // between two columns
        EXPECT_EQ(Pixels(m_grid->Window(), line, other), 0);
    }
    line.left = WidthOf(0);
    line.right = line.left + base::Scale(4, 96, m_grid->Layout().dpi) + 2; // beside it there is some air
    EXPECT_EQ(Pixels(m_grid->Window(), line, GetSysColor(COLOR_WINDOWTEXT)), 0);
    line.right += 8;
    EXPECT_GT(Pixels(m_grid->Window(), line, GetSysColor(COLOR_WINDOWTEXT)), 0);
    SetFocus(m_parent);
    EXPECT_GT(PixelsOf(0, kLightYellow), 1000);
    Press(VK_DOWN);
    RECT changed{};
    GetUpdateRect(m_grid->Window(), &changed, FALSE); // both rows, and no others
    EXPECT_EQ(changed.top, LocationOf(1).top);
    EXPECT_EQ(changed.bottom, LocationOf(2).bottom);
    EXPECT_EQ(PixelsOf(0, kLightYellow), 0);
    EXPECT_GT(PixelsOf(1, kLightYellow), 1000);
}

TEST_F(GridLookTest, TheOrderMarkIsInTheHeadingAndItsNameAndLeavesCaptionsWholeInEveryFont) {
    Bind();
    m_grid->MarkOrder(1, true);
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    SendMessageW(Header(), HDM_GETITEMW, 1, reinterpret_cast<LPARAM>(&item));
    EXPECT_TRUE(item.fmt & HDF_SORTDOWN);
    EXPECT_EQ(item.fmt & HDF_JUSTIFYMASK, HDF_LEFT);
    SendMessageW(Header(), HDM_GETITEMW, 2, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(item.fmt & HDF_JUSTIFYMASK, HDF_RIGHT); // over its numbers
    EXPECT_EQ(NameOf(Heading(1)), L"Nombre, orden descendente");
    EXPECT_EQ(NameOf(Heading(0)), L"Código");
    m_grid->ClearOrderMark();
    EXPECT_EQ(NameOf(Heading(1)), L"Nombre");
    EXPECT_THROW(m_grid->MarkOrder(8, true), com::Error);
    m_grid->FitColumn(5);
    Column(0L).Put(L"Width", 20L);
    EXPECT_LT(WidthOf(0), CaptionWidth(0));
    m_grid->MarkOrder(0, false);
    for (const int points : {80, 100, 200, 100}) {
        SCOPED_TRACE(points);
        const int before = WidthOf(1);
        const LONG height = m_grid->Font().lfHeight;
        base::GridLayout::Font font;
        font.tenthsOfPoint = points;
        m_grid->SetFont(grid::ToLogFont(font, m_grid->Layout().dpi));
        EXPECT_NEAR(WidthOf(1), before * m_grid->Font().lfHeight / height, before / 5);
        EXPECT_GT(ItemPlace(0).bottom, -m_grid->Font().lfHeight);
        for (const short column : {0, 3, 4, 5}) {
            EXPECT_GT(WidthOf(column), CaptionWidth(column) + 10) << column;
            if (column == 0) {
                const long width = WidthOf(column);
                const int ink = Pixels(Header(), ItemPlace(0), RGB(0, 0, 0)); // the letters and not the mark
                Column(0L).Put(L"Width", width + 60);
                EXPECT_EQ(Pixels(Header(), ItemPlace(0), RGB(0, 0, 0)), ink); // nothing was cut
                Column(0L).Put(L"Width", width);
            }
            EXPECT_EQ(ItemPlace(column).right - ItemPlace(column).left, WidthOf(column));
        }
    }
}

TEST_F(GridLookTest, AColumnOfUnknownLengthIsAsWideAsItsCellsOnScreen) {
    const auto set = com::Make<MemoryRecordSet>(RecordSetOptions{.fieldTypes = false});
    set->Table().value = [](long, short) { return Variant(L"más largo que su título"); };
    m_grid->SetDataSource(set.Get());
    const int width = WidthOf(1);
    EXPECT_GT(width, CaptionWidth(1) + 60);
    m_grid->FitColumn(1);
    EXPECT_EQ(WidthOf(1), width);
}

TEST_F(GridLookTest, AnotherResolutionAndOtherColoursAreTaken) {
    Bind();
    m_grid->MarkOrder(1, false);
    const int width = WidthOf(1);
    const LONG font = m_grid->Font().lfHeight;
    const int head = ItemPlace(0).bottom;
    const int dpi = m_grid->Layout().dpi;
    {
        const SystemAnswer moved(L"user32.dll", "GetDpiForWindow", 1, dpi * 2); // another monitor
        Send(0x02E3);                                                           // WM_DPICHANGED_AFTERPARENT
        EXPECT_EQ(m_grid->Layout().dpi, dpi * 2);
        EXPECT_EQ(WidthOf(1), width * 2);
        EXPECT_NEAR(m_grid->Font().lfHeight, font * 2, 1);
        EXPECT_GT(ItemPlace(0).bottom, head * 3 / 2);
        EXPECT_GT(WidthOf(1), CaptionWidth(1));
    }
    Send(0x02E3);
    EXPECT_EQ(WidthOf(1), width);
    EXPECT_EQ(ItemPlace(0).bottom, head);

    const int element = COLOR_WINDOW;
    const COLORREF before = GetSysColor(element);
    const COLORREF other = RGB(250, 240, 230);
    for (const UINT message : {UINT{WM_SYSCOLORCHANGE}, UINT{WM_SETTINGCHANGE}, UINT{WM_THEMECHANGED}}) {
        EXPECT_EQ(PixelsOf(1, other), 0);
        SetSysColors(1, &element, &other);
        Send(message);
        EXPECT_GT(PixelsOf(1, other), 1000) << message;
        SetSysColors(1, &element, &before);
        Send(message);
    }
}

TEST_F(GridLookTest, TheLayoutComesBack) {
    base::GridLayout layout;
    layout.dpi = 192;
    layout.font = {L"Arial", 120, true, false, false};
    layout.columns = {{L"Nombre", 300, true, 0}, {L"Grupo", 80, true, 1}, {L"Precio", 90, false, 2}};
    m_grid->Apply(layout);
    Bind();
    const base::GridLayout now = m_grid->Layout();
    EXPECT_EQ(now.font, layout.font);
    EXPECT_EQ(now.columns[1], (base::GridLayout::Column{L"Nombre", base::Scale(300, 192, now.dpi), true, 0}));
    EXPECT_FALSE(now.columns[2].visible);
    EXPECT_EQ(FirstCell(0), L"Artículo 1");
    m_grid->Apply(now);
    EXPECT_EQ(m_grid->Layout(), now);

    m_grid->DefaultLook();
    EXPECT_STREQ(m_grid->Font().lfFaceName, L"Tahoma");
    EXPECT_EQ(m_grid->Layout().font, base::GridLayout::Font{});
    LOGFONTW font = m_grid->Font();
    font.lfHeight *= 2;
    m_grid->SetFont(font);
    EXPECT_EQ(m_grid->Font().lfHeight, font.lfHeight);
    EXPECT_TRUE(m_failures.empty());
}

TEST_F(GridLookTest, ItLivesWhenTheSystemHasNothingLeftToMeasureOrDrawWith) {
    Bind();
    LOGFONTW font = m_grid->Font();
    font.lfHeight *= 2;
    for (const auto& [module, function] :
         {std::pair{L"user32.dll", "GetDC"}, {L"gdi32.dll", "CreateFontIndirectW"}}) {
        const SystemAnswer none(module, function, 1, 0);
        m_grid->SetFont(font);
        m_grid->MarkOrder(2, true);
        m_grid->FitColumn(1);
        EXPECT_GT(WidthOf(1), 0);
        EXPECT_LT(ItemPlace(0).bottom, kHeight / 2); // whatever height the headings ask for
        m_grid->ClearOrderMark();                    // they would draw one of any height, too
        Repaint();
        Press(VK_NEXT);
        grid::Grid another(m_parent, 8, *this);
        another.SetDataSource(com::Make<MemoryRecordSet>().Get());
        EXPECT_EQ(another.RowCount(), 1000);
    }
    EXPECT_TRUE(m_failures.empty());
}

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
        EXPECT_EQ(grid::Format(value.Get(), kind), text);
    }
    EXPECT_EQ(grid::KindOfValue(Variant(5L).Get(), grid::KindOfField(0)), CellKind::Number);
    EXPECT_EQ(grid::KindOfValue(Variant(L"007").Get(), grid::KindOfField(202)), CellKind::Text);
    EXPECT_EQ(grid::KindOfValue(Variant(1L).Get(), grid::KindOfField(11)), CellKind::Check);
}

TEST(GridTextTest, AFontComesBackAtEveryResolution) {
    for (const int dpi : {96, 120, 144, 192}) {
        for (int tenths = 60; tenths <= 480; tenths += 10) {
            base::GridLayout::Font font{L"Arial", tenths, true, false, true};
            const LOGFONTW made = grid::ToLogFont(font, dpi);
            const base::GridLayout::Font back = grid::FromLogFont(made, dpi);
            EXPECT_EQ(grid::ToLogFont(back, dpi).lfHeight, made.lfHeight) << tenths << " at " << dpi;
            EXPECT_EQ(back.tenthsOfPoint % 10, 0) << tenths << " at " << dpi;
            font.tenthsOfPoint = back.tenthsOfPoint;
            EXPECT_EQ(back, font);
        }
    }
}

TEST(GridColumnsTest, OrderAndVisibilityAreIndependent) {
    grid::GridColumns columns;
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
    grid::GridColumns columns;
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

} // namespace tamvelo::testing
