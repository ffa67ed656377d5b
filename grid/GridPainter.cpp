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

void GridPainter::Paint(HDC dc, const RECT& exposed, const Cursor& cursor, std::wstring_view emptyText) {
    const HGDIOBJ before = SelectObject(dc, m_font.Get());
    const std::vector<short> shown = m_columns.OnScreen();
    const long exposedRow = (exposed.top - m_geometry.headHeight) / m_geometry.rowHeight;
    const long first = m_geometry.top + std::max(0L, exposedRow);
    const long last = std::min(m_geometry.LastShown(), m_data.Count() - 1);
    long row = first;
    for (; row <= last && m_geometry.RowTop(row) < exposed.bottom; ++row) {
        PaintRow(dc, exposed, row, cursor, shown);
    }
    const int bottom = std::max(m_geometry.RowTop(row), m_geometry.headHeight);
    PaintLines(dc, exposed, shown, bottom);

    SetBkColor(dc, m_look.back);
    RECT rest{exposed.left, bottom, exposed.right, exposed.bottom};
    if (rest.top < rest.bottom) {
        Fill(dc, rest);
    }
    if (m_data.Count() == 0) {
        RECT middle = m_geometry.client;
        middle.top = m_geometry.headHeight + m_geometry.rowHeight;
        SetTextColor(dc, m_look.text);
        DrawTextW(dc, emptyText.data(), static_cast<int>(emptyText.size()), &middle,
                  DT_CENTER | DT_NOPREFIX | DT_WORDBREAK);
    }
    SelectObject(dc, before);
}

void GridPainter::PaintRow(HDC dc, const RECT& exposed, long row, const Cursor& cursor,
                           const std::vector<short>& shown) {
    const bool selected = row == cursor.row;
    SetBkColor(dc, selected ? m_look.selectedBack : m_look.back);
    SetTextColor(dc, selected ? m_look.selectedText : m_look.text);
    const int top = m_geometry.RowTop(row);
    const RowBlock* block = m_data.Block(row);
    RECT cell{0, top, -m_geometry.scrolled, top + m_geometry.rowHeight - 1};
    for (const short column : shown) {
        cell.left = cell.right;
        cell.right += m_columns[column].width;
        if (cell.right <= exposed.left || cell.left >= exposed.right) {
            continue;
        }
        const RECT inside{cell.left, cell.top, cell.right - 1, cell.bottom};
        const RowBlock::Cell* content = block ? block->At(row, column) : nullptr;
        if (content) {
            PaintCell(dc, inside, *block, *content, m_columns[column].alignment);
        } else {
            Fill(dc, inside);
        }
        if (selected && cursor.focused && column == cursor.column) {
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
    const int room = static_cast<int>(cell.right - cell.left) - 2 * m_geometry.padding;
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
    int x = cell.left + m_geometry.padding;
    if (width <= room && alignment != Alignment::Left) {
        x += alignment == Alignment::Right ? room - width : (room - width) / 2;
    }
    const int y = cell.top + (static_cast<int>(cell.bottom - cell.top) - m_font.Height()) / 2;
    ExtTextOutW(dc, x, y, ETO_OPAQUE | ETO_CLIPPED, &cell, text.data(), static_cast<UINT>(text.size()),
                nullptr);
}

GridPainter::CheckBox::~CheckBox() {
    if (dc) {
        DeleteObject(SelectObject(dc, before));
        DeleteDC(dc);
    }
}

void GridPainter::CheckBox::Draw(HDC like, int side, bool checked) {
    dc = CreateCompatibleDC(like);
    before = SelectObject(dc, CreateCompatibleBitmap(like, side, side));
    RECT area{0, 0, side, side};
    DrawFrameControl(dc, &area, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_FLAT | (checked ? DFCS_CHECKED : 0U));
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
           box.dc, 0, 0, SRCCOPY);
}

void GridPainter::PaintLines(HDC dc, const RECT& exposed, const std::vector<short>& shown, int bottom) {
    SetBkColor(dc, m_look.lines);
    const int right = m_columns.TotalWidth() - m_geometry.scrolled;
    for (int y = m_geometry.headHeight + m_geometry.rowHeight - 1; y < std::min<int>(bottom, exposed.bottom);
         y += m_geometry.rowHeight) {
        if (y >= exposed.top) {
            Fill(dc, {exposed.left, y, std::min<LONG>(exposed.right, right), y + 1});
        }
    }
    int x = -m_geometry.scrolled;
    for (const short column : shown) {
        x += m_columns[column].width;
        if (x > exposed.left && x <= exposed.right) {
            Fill(dc, {x - 1, m_geometry.headHeight, x, bottom});
        }
    }
    SetBkColor(dc, m_look.back);
    if (right < exposed.right) {
        Fill(dc, {std::max<LONG>(right, exposed.left), m_geometry.headHeight, exposed.right, bottom});
    }
}

} // namespace tamvelo::grid
