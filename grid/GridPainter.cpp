#include "grid/GridPainter.h"

#include <algorithm>

namespace tamvelo::grid {

namespace {

constexpr COLORREF kLightYellow = RGB(255, 255, 192);
constexpr wchar_t kEllipsis = L'\u2026';

void Fill(HDC dc, const RECT& area) { ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr); }

/// The back colour with an eighth of the text's in it: seen, but not read.
COLORREF Mix(COLORREF back, COLORREF text) {
    const auto part = [](int more, int less) { return static_cast<BYTE>((7 * more + less) / 8); };
    return RGB(part(GetRValue(back), GetRValue(text)), part(GetGValue(back), GetGValue(text)),
               part(GetBValue(back), GetBValue(text)));
}

bool HighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof(contrast);
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, contrast.cbSize, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace

GridLook GridLook::Current() {
    const COLORREF back = GetSysColor(COLOR_WINDOW);
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    if (HighContrast()) {
        return {back, text, text, GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_HIGHLIGHTTEXT)};
    }
    // Black on the light yellow: the system's text colour could be a light one.
    return {back, text, Mix(back, text), kLightYellow, RGB(0, 0, 0)};
}

void GridPainter::Paint(HDC dc, const RECT& exposed, bool focused, std::wstring_view emptyText) {
    const HGDIOBJ before = SelectObject(dc, m_font.Get());
    const std::vector<GridViewport::Span> spans = m_viewport.Spans();
    const long exposedRow = (exposed.top - m_viewport.HeadHeight()) / m_viewport.RowHeight();
    const long first = m_viewport.Top() + std::max(0L, exposedRow);
    const long last = m_viewport.LastRow();
    long row = first;
    for (; row <= last && m_viewport.RowTop(row) < exposed.bottom; ++row) {
        PaintRow(dc, exposed, row, focused, spans);
    }
    const int bottom = std::max(m_viewport.RowTop(row), m_viewport.HeadHeight());
    PaintLines(dc, exposed, spans, bottom);

    SetBkColor(dc, m_look.back);
    RECT rest{exposed.left, bottom, exposed.right, exposed.bottom};
    if (rest.top < rest.bottom) {
        Fill(dc, rest);
    }
    if (m_data.Count() == 0) {
        RECT middle = m_viewport.Client();
        middle.top = m_viewport.HeadHeight() + m_viewport.RowHeight();
        SetTextColor(dc, m_look.text);
        DrawTextW(dc, emptyText.data(), static_cast<int>(emptyText.size()), &middle,
                  DT_CENTER | DT_NOPREFIX | DT_WORDBREAK);
    }
    SelectObject(dc, before);
}

void GridPainter::PaintRow(HDC dc, const RECT& exposed, long row, bool focused,
                           const std::vector<GridViewport::Span>& spans) {
    const bool selected = row == m_data.Current();
    SetBkColor(dc, selected ? m_look.selectedBack : m_look.back);
    SetTextColor(dc, selected ? m_look.selectedText : m_look.text);
    const int top = m_viewport.RowTop(row);
    const RowBlock* block = m_data.Block(row);
    for (const auto& [column, left, right] : spans) {
        if (right <= exposed.left || left >= exposed.right) {
            continue;
        }
        const RECT inside{left, top, right - 1, top + m_viewport.RowHeight() - 1};
        const RowBlock::Cell* content = block ? block->At(row, column) : nullptr;
        if (content) {
            PaintCell(dc, inside, *block, *content, m_columns[column].alignment);
        } else {
            Fill(dc, inside);
        }
        if (selected && focused && column == m_columns.Current()) {
            DrawFocusRect(dc, &inside);
        }
    }
}

void GridPainter::PaintCell(HDC dc, const RECT& cell, const RowBlock& block, const RowBlock::Cell& content,
                            Alignment wanted) {
    if (content.kind == CellKind::Check) {
        Fill(dc, cell);
        PaintCheck(dc, cell, content.checked);
        return;
    }
    std::wstring_view text = block.Text(content);
    std::wstring cut;
    const int room = static_cast<int>(cell.right - cell.left) - 2 * m_measures.Padding();
    const int width = m_font.Width(text);
    if (width > room) {
        if (IsRightAligned(content.kind)) {
            cut.assign(text.size(), L'#'); // part of a number would read as another number
        } else {
            cut = text.substr(0, m_font.Fitting(text, room - m_font.Width({&kEllipsis, 1})));
            cut += kEllipsis;
        }
        text = cut;
    }
    const Alignment alignment = wanted != Alignment::General   ? wanted
                                : IsRightAligned(content.kind) ? Alignment::Right
                                                               : Alignment::Left;
    int x = cell.left + m_measures.Padding();
    if (width <= room && alignment != Alignment::Left) {
        x += alignment == Alignment::Right ? room - width : (room - width) / 2;
    }
    const int y = cell.top + (static_cast<int>(cell.bottom - cell.top) - m_font.Height()) / 2;
    ExtTextOutW(dc, x, y, ETO_OPAQUE | ETO_CLIPPED, &cell, text.data(), static_cast<UINT>(text.size()),
                nullptr);
}

void GridPainter::CheckBox::Draw(HDC like, int side, bool checked) {
    dc.reset(CreateCompatibleDC(like));
    bitmap.reset(CreateCompatibleBitmap(like, side, side));
    SelectObject(dc.get(), bitmap.get());
    RECT area{0, 0, side, side};
    DrawFrameControl(dc.get(), &area, DFC_BUTTON,
                     DFCS_BUTTONCHECK | DFCS_FLAT | (checked ? DFCS_CHECKED : 0U));
}

void GridPainter::PaintCheck(HDC dc, const RECT& cell, bool checked) {
    const int side = m_font.Height() - 1;
    const int width = static_cast<int>(cell.right - cell.left);
    CheckBox& box = m_checks[checked ? 1 : 0];
    if (!box.dc) {
        box.Draw(dc, side, checked);
    }
    BitBlt(dc, cell.left + std::max(0, (width - side) / 2),
           cell.top + (static_cast<int>(cell.bottom - cell.top) - side) / 2, std::min(side, width), side,
           box.dc.get(), 0, 0, SRCCOPY);
}

void GridPainter::PaintLines(HDC dc, const RECT& exposed, const std::vector<GridViewport::Span>& spans,
                             int bottom) {
    SetBkColor(dc, m_look.lines);
    const int right = m_columns.TotalWidth() - m_viewport.Scrolled();
    for (int y = m_viewport.HeadHeight() + m_viewport.RowHeight() - 1;
         y < std::min<int>(bottom, exposed.bottom); y += m_viewport.RowHeight()) {
        if (y >= exposed.top) {
            Fill(dc, {exposed.left, y, std::min<LONG>(exposed.right, right), y + 1});
        }
    }
    for (const GridViewport::Span& span : spans) {
        if (span.right > exposed.left && span.right <= exposed.right) {
            Fill(dc, {span.right - 1, m_viewport.HeadHeight(), span.right, bottom});
        }
    }
    SetBkColor(dc, m_look.back);
    if (right < exposed.right) {
        Fill(dc, {std::max<LONG>(right, exposed.left), m_viewport.HeadHeight(), exposed.right, bottom});
    }
}

} // namespace tamvelo::grid
