#include "grid/GridHeadings.h"

#include <windows.h>

#include <commctrl.h>

#include "com/Error.h"
#include "com/Module.h"

namespace tamvelo::grid {

namespace {

constexpr int kFarRight = 0x4000; // wider than any window

} // namespace

void GridHeadings::Create(HWND parent) {
    const INITCOMMONCONTROLSEX wanted{sizeof(wanted), ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&wanted);
    m_window = CreateWindowExW(0, WC_HEADERW, nullptr,
                               WS_CHILD | WS_VISIBLE | HDS_HORZ | HDS_BUTTONS | HDS_DRAGDROP | HDS_FULLDRAG,
                               0, 0, 0, 0, parent, nullptr, com::Module::Instance(), nullptr);
    if (!m_window) {
        com::ThrowLastError(L"No se pudieron crear los títulos de las columnas.");
    }
}

void GridHeadings::SetFont(HFONT font) {
    SendMessageW(m_window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

int GridHeadings::Height() const {
    RECT room{0, 0, 1000, 1000};
    WINDOWPOS place{};
    HDLAYOUT layout{&room, &place};
    return Header_Layout(m_window, &layout) ? place.cy : 0;
}

void GridHeadings::Fill(const GridColumns& columns) {
    m_filling = true;
    SendMessageW(m_window, WM_SETREDRAW, FALSE, 0);
    while (Header_DeleteItem(m_window, 0)) {
    }
    int item = 0;
    for (const short column : columns.OnScreen()) {
        const GridColumn& shown = columns[column];
        HDITEMW heading{};
        heading.mask = HDI_TEXT | HDI_WIDTH | HDI_FORMAT | HDI_LPARAM;
        heading.pszText = const_cast<LPWSTR>(shown.caption.c_str());
        heading.cxy = shown.width;
        const bool right =
            shown.alignment == Alignment::Right || (shown.alignment == Alignment::General && shown.numeric);
        heading.fmt = HDF_STRING | (right ? HDF_RIGHT : HDF_LEFT);
        if (const auto& arrow = columns.Arrow(); arrow && arrow->column == column) {
            heading.fmt |= arrow->descending ? HDF_SORTDOWN : HDF_SORTUP;
        }
        heading.lParam = column;
        Header_InsertItem(m_window, item++, &heading);
    }
    if (item == 0) { // some systems do not draw a control without items at all
        HDITEMW empty{};
        empty.mask = HDI_WIDTH | HDI_FORMAT | HDI_LPARAM;
        empty.cxy = kFarRight;
        empty.fmt = HDF_STRING | HDF_FIXEDWIDTH;
        empty.lParam = -1; // no column
        Header_InsertItem(m_window, 0, &empty);
    }
    SendMessageW(m_window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_window, nullptr, TRUE);
    m_filling = false;
}

void GridHeadings::Place(const RECT& client, int height, int scrolled) {
    // It reaches past the right edge by what is scrolled away to the left.
    SetWindowPos(m_window, nullptr, -scrolled, 0, client.right + scrolled, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

short GridHeadings::ColumnOf(int item) const {
    HDITEMW heading{};
    heading.mask = HDI_LPARAM;
    return Header_GetItem(m_window, item, &heading) ? static_cast<short>(heading.lParam) : short{-1};
}

} // namespace tamvelo::grid
