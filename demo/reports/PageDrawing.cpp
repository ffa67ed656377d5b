#include "demo/reports/PageDrawing.h"

#include <algorithm>
#include <numeric>

#include "demo/data/Values.h"

namespace tamvelo::demo {

namespace {

using Line = Report::Line;
using Shape = ReportInfo::Shape;

// Places on the sheet, in tenths of a millimetre.
constexpr RECT kBody{150, 470, 1950, 2770};
constexpr int kRow = 50;
constexpr int kGap = 25; // between columns
constexpr int kText = 32;
constexpr std::size_t kRowsOnPage = (kBody.bottom - kBody.top) / kRow;
constexpr RECT kLabels{75, 145, 2025, 2825};
constexpr int kLabelColumns = 3;
constexpr int kLabelRows = 8;
constexpr std::size_t kLabelsOnPage = kLabelColumns * kLabelRows;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kGrey = RGB(160, 160, 160);
constexpr COLORREF kPale = RGB(228, 228, 228);

/// The device, measured in tenths of a millimetre of the sheet, until this goes.
class Sheet {
public:
    Sheet(HDC device, const RECT& sheet)
        : m_device(device),
          m_saved(SaveDC(device)),
          m_line(std::max<int>(3, kSheet.cx / std::max(1L, sheet.right - sheet.left) + 1)) {
        SetMapMode(device, MM_ANISOTROPIC);
        SetWindowExtEx(device, kSheet.cx, kSheet.cy, nullptr);
        SetViewportExtEx(device, sheet.right - sheet.left, sheet.bottom - sheet.top, nullptr);
        SetViewportOrgEx(device, sheet.left, sheet.top, nullptr);
        SetBkMode(device, TRANSPARENT);
    }
    ~Sheet() {
        RestoreDC(m_device, m_saved);
        for (const HFONT font : m_fonts) {
            DeleteObject(font);
        }
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    void UseFont(int height, bool bold, COLORREF colour = kBlack, int tenthsOfDegree = 0) {
        const HFONT font = CreateFontW(-height, 0, tenthsOfDegree, tenthsOfDegree, bold ? FW_BOLD : FW_NORMAL,
                                       0, 0, 0, DEFAULT_CHARSET, OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS,
                                       DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Arial");
        m_fonts.push_back(font);
        SelectObject(m_device, font);
        SetTextColor(m_device, colour);
    }
    void Write(const std::wstring& text, RECT place, UINT how = DT_LEFT) const {
        DrawTextW(
            m_device, text.c_str(), static_cast<int>(text.size()), &place,
            DT_NOPREFIX | DT_NOCLIP | DT_END_ELLIPSIS | (how & DT_WORDBREAK ? 0U : DT_SINGLELINE) | how);
    }
    void WriteAt(const std::wstring& text, int x, int y, UINT align) const {
        SetTextAlign(m_device, align);
        TextOutW(m_device, x, y, text.c_str(), static_cast<int>(text.size()));
        SetTextAlign(m_device, TA_LEFT | TA_TOP);
    }
    void Fill(const RECT& place, COLORREF colour) const {
        const HBRUSH brush = CreateSolidBrush(colour);
        FillRect(m_device, &place, brush);
        DeleteObject(brush);
    }
    void Rule(int y) const { Fill({kBody.left, y, kBody.right, y + m_line}, kBlack); }
    void Frame(const RECT& place) const {
        Fill({place.left, place.top, place.right, place.top + m_line}, kGrey);
        Fill({place.left, place.bottom - m_line, place.right, place.bottom}, kGrey);
        Fill({place.left, place.top, place.left + m_line, place.bottom}, kGrey);
        Fill({place.right - m_line, place.top, place.right, place.bottom}, kGrey);
    }

private:
    const HDC m_device;
    const int m_saved;
    const int m_line; // the thickness of lines: never less than a pixel, which might not be seen
    std::vector<HFONT> m_fonts;
};

std::wstring Today() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t text[16];
    wsprintfW(text, L"%02d/%02d/%d", now.wDay, now.wMonth, now.wYear);
    return text;
}

bool AtRight(const ReportColumn& column) {
    return column.type == Type::Integer || column.type == Type::Money;
}

/// Where each column begins and ends: the sheet's width shared out by the columns' characters.
std::vector<RECT> ColumnPlaces(const std::vector<ReportColumn>& columns) {
    const int characters = std::accumulate(columns.begin(), columns.end(), 0,
                                           [](int sum, const ReportColumn& c) { return sum + c.width; });
    std::vector<RECT> places;
    int before = 0;
    for (const ReportColumn& column : columns) {
        const auto x = [&](int at) { return kBody.left + (kBody.right - kBody.left) * at / characters; };
        const int left = x(before);
        before += column.width;
        places.push_back({left, 0, x(before) - (before < characters ? kGap : 0), 0});
    }
    return places;
}

void DrawHead(Sheet& sheet, const Page& page) {
    const Report& report = *page.report;
    sheet.UseFont(26, false);
    sheet.Write(L"Gestión de pedidos", {kBody.left, 140, kBody.right, 180});
    sheet.Write(Today(), {kBody.left, 140, kBody.right, 180}, DT_RIGHT);
    sheet.UseFont(54, true);
    sheet.Write(report.title, {kBody.left, 190, kBody.right, 265});
    sheet.UseFont(28, false);
    sheet.Write(report.conditions, {kBody.left, 280, kBody.right, 370}, DT_WORDBREAK);
}

void DrawFoot(Sheet& sheet, const Page& page) {
    sheet.UseFont(26, false);
    sheet.Write(L"Página " + ShowCount(page.number) + L" de " + ShowCount(page.of),
                {kBody.left, 2850, kBody.right, 2890}, DT_CENTER);
}

void DrawLine(Sheet& sheet, const Report& report, const std::vector<RECT>& places, const Line& line, int y) {
    if (line.kind == Line::Group) {
        sheet.Fill({kBody.left, y + 4, kBody.right, y + kRow - 2}, kPale);
        sheet.Write(line.cells[0], {kBody.left + 8, y, kBody.right, y + kRow}, DT_VCENTER);
        return;
    }
    if (line.kind != Line::Row) {
        sheet.Rule(y + 1);
    }
    for (std::size_t i = 0; i < line.cells.size(); ++i) {
        RECT place{places[i].left, y, places[i].right, y + kRow};
        if (i == 0 && line.kind != Line::Row) { // the sum's name may need more than its column has
            const auto next = std::ranges::find_if(report.columns, &ReportColumn::total);
            place.right = next != report.columns.begin() && next != report.columns.end()
                              ? places[static_cast<std::size_t>(next - report.columns.begin()) - 1].right
                              : kBody.right;
        }
        sheet.Write(line.cells[i], place, DT_VCENTER | (AtRight(report.columns[i]) ? DT_RIGHT : DT_LEFT));
    }
}

void DrawTable(Sheet& sheet, const Page& page) {
    const Report& report = *page.report;
    const std::vector<RECT> places = ColumnPlaces(report.columns);
    sheet.UseFont(kText, true);
    for (std::size_t i = 0; i < places.size(); ++i) {
        sheet.Write(report.columns[i].caption,
                    {places[i].left, kBody.top - 70, places[i].right, kBody.top - 15},
                    DT_BOTTOM | (AtRight(report.columns[i]) ? DT_RIGHT : DT_LEFT));
    }
    sheet.Rule(kBody.top - 10);
    bool bold = true;
    for (std::size_t i = 0; i < page.count; ++i) {
        const Line& line = report.lines[page.first + i];
        if (const bool wanted = line.kind != Line::Row; wanted != bold) {
            bold = wanted;
            sheet.UseFont(kText, bold);
        }
        DrawLine(sheet, report, places, line, kBody.top + static_cast<int>(i) * kRow);
    }
    if (report.rows == 0) {
        sheet.UseFont(kText, false);
        sheet.Write(L"No hay datos con estas condiciones.",
                    {kBody.left, kBody.top + 2 * kRow, kBody.right, kBody.top + 3 * kRow});
    }
}

void DrawLabels(Sheet& sheet, const Page& page) {
    constexpr int kWidth = (kLabels.right - kLabels.left) / kLabelColumns;
    constexpr int kHeight = (kLabels.bottom - kLabels.top) / kLabelRows;
    constexpr int kPadding = 30;
    const Report& report = *page.report;
    for (std::size_t i = 0; i < page.count; ++i) {
        const int left = kLabels.left + static_cast<int>(i) % kLabelColumns * kWidth;
        const int top = kLabels.top + static_cast<int>(i) / kLabelColumns * kHeight;
        sheet.Frame({left, top, left + kWidth, top + kHeight});
    }
    // The first line of every label, which may need two, then the others: two fonts are enough.
    constexpr std::size_t kMostLines = 5;
    for (const bool head : {true, false}) {
        sheet.UseFont(kText, head);
        for (std::size_t i = 0; i < page.count; ++i) {
            const std::vector<std::wstring>& cells = report.lines[page.first + i].cells;
            const int left = kLabels.left + static_cast<int>(i) % kLabelColumns * kWidth + kPadding;
            int y = kLabels.top + static_cast<int>(i) / kLabelColumns * kHeight + kPadding;
            const RECT title{left, y, left + kWidth - 2 * kPadding, y + 2 * kRow};
            if (head) {
                sheet.Write(cells[0], title, DT_WORDBREAK);
                continue;
            }
            for (std::size_t line = 1; line < std::min(cells.size(), kMostLines); ++line) {
                const std::wstring caption = report.columns[line].caption;
                y = title.bottom + static_cast<int>(line - 1) * kRow;
                sheet.Write(caption + (caption.empty() ? L"" : L" ") + cells[line],
                            {title.left, y, title.right, y + kRow});
            }
        }
    }
}

void DrawStamp(Sheet& sheet, const std::wstring& stamp) {
    constexpr int kSteep = 500; // tenths of a degree
    sheet.UseFont(280, true, kPale, kSteep);
    sheet.WriteAt(stamp, kSheet.cx / 2, kSheet.cy / 2, TA_CENTER | TA_BASELINE);
}

} // namespace

std::vector<Page> Paginate(const std::vector<Report>& reports) {
    std::vector<Page> pages;
    for (const Report& report : reports) {
        const std::size_t most = report.shape == Shape::Labels ? kLabelsOnPage : kRowsOnPage;
        const std::size_t sheets = std::max<std::size_t>(1, (report.lines.size() + most - 1) / most);
        for (std::size_t i = 0; i < sheets; ++i) {
            pages.push_back({&report, i * most, std::min(most, report.lines.size() - i * most),
                             static_cast<int>(i) + 1, static_cast<int>(sheets)});
        }
    }
    return pages;
}

void DrawPage(HDC device, const RECT& sheet, const Page& page) {
    Sheet paper(device, sheet);
    paper.Fill({0, 0, kSheet.cx, kSheet.cy}, RGB(255, 255, 255));
    if (!page.report->stamp.empty()) {
        DrawStamp(paper, page.report->stamp);
    }
    if (page.report->shape == Shape::Labels && page.report->rows > 0) {
        DrawLabels(paper, page);
        return;
    }
    DrawHead(paper, page);
    DrawTable(paper, page);
    DrawFoot(paper, page);
}

} // namespace tamvelo::demo
