#include "bench/Floor.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace tamvelo::bench {

namespace {

constexpr wchar_t kListClass[] = L"BenchFloor";
constexpr int kColumns = 8;
constexpr int kRows = 1000;
constexpr int kPadding = 3;
constexpr int kRowSpace = 5; // as much as the panel's grid leaves between the rows

using Row = std::array<std::wstring, kColumns>;

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = [] {
        std::vector<Row> made;
        for (int i = 0; i < kRows; ++i) {
            const std::wstring number = std::to_wstring(i + 1);
            made.push_back({number, L"Artículo " + number, number + L",45 €", L"21/11/2026", L"Sí",
                            number + L",25", L"Nota de " + number, std::to_wstring(i % 12)});
        }
        return made;
    }();
    return rows;
}

/// The list's state; there is one floor at a time.
struct List {
    HFONT font = nullptr;
    int rowHeight = 1;
    int top = 0;
};
List g_list;

void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    const HGDIOBJ before = SelectObject(dc, g_list.font);
    RECT client;
    GetClientRect(window, &client);
    int row = g_list.top;
    int y = 0;
    for (; y < client.bottom && row < kRows; y += g_list.rowHeight, ++row) {
        for (int column = 0; column < kColumns; ++column) {
            const std::wstring& text = Rows()[static_cast<size_t>(row)][static_cast<size_t>(column)];
            const RECT cell{client.right * column / kColumns, y, client.right * (column + 1) / kColumns,
                            y + g_list.rowHeight};
            ExtTextOutW(dc, cell.left + kPadding, y + 1, ETO_OPAQUE | ETO_CLIPPED, &cell, text.data(),
                        static_cast<UINT>(text.size()), nullptr);
        }
    }
    const RECT rest{0, y, client.right, client.bottom};
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rest, nullptr, 0, nullptr);
    SelectObject(dc, before);
    EndPaint(window, &paint);
}

LRESULT CALLBACK ListProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_PAINT:
        Paint(window);
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_KEYDOWN:
        if (first == VK_NEXT) {
            RECT client;
            GetClientRect(window, &client);
            const int page = static_cast<int>(client.bottom) / g_list.rowHeight;
            g_list.top = std::min(g_list.top + page, kRows - page);
            InvalidateRect(window, nullptr, FALSE);
        }
        return 0;
    default:
        return DefWindowProcW(window, message, first, second);
    }
}

void CreateList(HWND dialog, const RECT& place) {
    LOGFONTW font{};
    const HDC dc = GetDC(dialog);
    font.lfHeight = -MulDiv(10, GetDeviceCaps(dc, LOGPIXELSY), 72);
    lstrcpyW(font.lfFaceName, L"Tahoma");
    g_list = {CreateFontIndirectW(&font), 1, 0};
    const HGDIOBJ before = SelectObject(dc, g_list.font);
    TEXTMETRICW metrics;
    GetTextMetricsW(dc, &metrics);
    g_list.rowHeight = static_cast<int>(metrics.tmHeight) + kRowSpace;
    SelectObject(dc, before);
    ReleaseDC(dialog, dc);
    const HWND list = CreateWindowExW(0, kListClass, nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP, place.left,
                                      place.top, place.right - place.left, place.bottom - place.top, dialog,
                                      nullptr, GetModuleHandleW(nullptr), nullptr);
    SetFocus(list);
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM, LPARAM second) {
    switch (message) {
    case WM_INITDIALOG: {
        const Floor& floor = *reinterpret_cast<const Floor*>(second);
        SetWindowPos(dialog, nullptr, 0, 0, floor.dialog.cx, floor.dialog.cy, SWP_NOZORDER | SWP_NOMOVE);
        CreateList(dialog, floor.list);
        return FALSE; // the list has the focus
    }
    case WM_CLOSE:
        EndDialog(dialog, 0);
        return TRUE;
    case WM_DESTROY:
        DeleteObject(g_list.font);
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

void ShowFloor(const Floor& floor) {
    struct Template {
        DLGTEMPLATE head;
        WORD menu, windowClass, title;
    };
    // Visible from the start: the quickest way that there is.
    static const Template dialog{
        {WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX | WS_CLIPCHILDREN | WS_VISIBLE,
         0, 0, 100, 60, 200, 100},
        0,
        0,
        0};
    WNDCLASSW description{};
    description.lpfnWndProc = ListProcedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kListClass;
    RegisterClassW(&description); // from the second time on it is known
    DialogBoxIndirectParamW(description.hInstance, &dialog.head, nullptr, DialogProcedure,
                            reinterpret_cast<LPARAM>(&floor));
}

HWND ListOfFloor(HWND dialog) { return FindWindowExW(dialog, nullptr, kListClass, nullptr); }

} // namespace tamvelo::bench
