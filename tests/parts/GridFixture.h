#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <oleacc.h>

#include <memory>
#include <string>
#include <vector>

#include "grid/Grid.h"
#include "tests/support/RecordSets.h"

namespace tamvelo::testing {

/// A grid in a window of its own, with what it tells its owner.
class GridTest : public ::testing::Test, public grid::GridEvents {
protected:
    static constexpr int kWidth = 700;
    static constexpr int kHeight = 400;

    void SetUp() override {
        OleInitialize(nullptr);
        m_parent = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, kWidth + 40,
                                   kHeight + 60, nullptr, nullptr, nullptr, nullptr);
        m_grid = std::make_unique<grid::Grid>(m_parent, 7, *this);
        SetWindowPos(m_grid->Window(), nullptr, 0, 0, kWidth, kHeight, SWP_NOZORDER);
        SetFocus(m_grid->Window());
    }
    void TearDown() override {
        m_grid.reset();
        DestroyWindow(m_parent);
        OleUninitialize();
    }

    void RowActivated() override { m_events += "activated;"; }
    void HeadingClicked(short column) override { m_events += "heading" + std::to_string(column) + ";"; }
    void ContextMenuAsked(POINT) override { m_events += "menu;"; }
    void CurrentRowChanged() override { m_events += "row;"; }
    void LayoutChanged() override { m_events += "layout;"; }
    void MarkClicked() override { m_events += "mark;"; }
    void ShownWasAnother() override { m_events += "another;"; }
    void Failed(const com::Error& error) noexcept override { m_failures.push_back(error.description); }

    com::ComPtr<MemoryRecordSet> Bind(const RecordSetOptions& options = {}) {
        auto set = com::Make<MemoryRecordSet>(options);
        m_grid->SetDataSource(set.Get());
        return set;
    }

    std::string TakeEvents() { return std::exchange(m_events, {}); }

    LRESULT Send(UINT message, WPARAM w = 0, LPARAM l = 0) {
        return SendMessageW(m_grid->Window(), message, w, l);
    }
    static void Hold(std::initializer_list<int> held) {
        BYTE keys[256]{};
        for (const int modifier : held) {
            keys[modifier] = 0x80;
        }
        SetKeyboardState(keys);
    }
    void Press(WPARAM key, std::initializer_list<int> held = {}) {
        Hold(held);
        Send(WM_KEYDOWN, key);
        Hold({});
    }
    void Repaint() {
        InvalidateRect(m_grid->Window(), nullptr, FALSE);
        UpdateWindow(m_grid->Window());
    }

    com::ComPtr<IAccessible> Accessible() {
        com::ComPtr<IAccessible> object;
        AccessibleObjectFromWindow(m_grid->Window(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                   reinterpret_cast<void**>(&object));
        return object;
    }
    static VARIANT Child(LONG number) {
        VARIANT child;
        child.vt = VT_I4;
        child.lVal = number;
        return child;
    }
    std::wstring NameOf(LONG child) {
        com::Bstr name;
        Accessible()->get_accName(Child(child), name.Address());
        return std::wstring(name.View());
    }
    /// What the first cell of the row at that place on screen shows, from 0.
    std::wstring FirstCell(LONG place) {
        const std::wstring name = NameOf(place + 1);
        return name.substr(0, name.find(L';'));
    }
    LONG ChildrenOfRole(LONG wanted) {
        const auto object = Accessible();
        LONG count = 0;
        LONG found = 0;
        object->get_accChildCount(&count);
        for (LONG child = 1; child <= count; ++child) {
            com::Variant role;
            object->get_accRole(Child(child), role.Address());
            found += role.ToLong() == wanted ? 1 : 0;
        }
        return found;
    }

    HWND Header() const { return FindWindowExW(m_grid->Window(), nullptr, WC_HEADERW, nullptr); }
    int HeadHeight() const {
        RECT area;
        GetWindowRect(Header(), &area);
        return static_cast<int>(area.bottom - area.top);
    }
    /// As the header control tells its parent.
    LRESULT Notify(UINT code, int item, UINT mask = 0, int value = 0) {
        HDITEMW changed{};
        changed.mask = mask;
        changed.cxy = value;
        changed.iOrder = value;
        NMHEADERW notice{};
        notice.hdr.hwndFrom = Header();
        notice.hdr.code = code;
        notice.iItem = item;
        notice.pitem = &changed;
        return Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
    }
    void Pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
    RECT LocationOf(LONG child) {
        LONG left = 0, top = 0, width = 0, height = 0;
        Accessible()->accLocation(&left, &top, &width, &height, Child(child));
        POINT corner{left, top};
        ScreenToClient(m_grid->Window(), &corner);
        return {corner.x, corner.y, corner.x + width, corner.y + height};
    }
    /// Pixels of that colour on the row at the place on screen.
    int PixelsOf(LONG place, COLORREF color) {
        Repaint();
        const RECT row = LocationOf(place + 1);
        const HDC dc = GetDC(m_grid->Window());
        int found = 0;
        for (LONG y = row.top; y < row.bottom; y += 2) {
            for (LONG x = row.left; x < row.right; x += 2) {
                found += GetPixel(dc, x, y) == color ? 1 : 0;
            }
        }
        ReleaseDC(m_grid->Window(), dc);
        return found;
    }
    /// As the keyboard sends them, with a message time.
    void Type(std::wstring_view letters) {
        for (const wchar_t letter : letters) {
            PostMessageW(m_grid->Window(), WM_CHAR, letter, 1);
            Pump();
        }
    }
    int WidthOf(short column) const { return m_grid->Layout().columns[static_cast<size_t>(column)].width; }
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
    static std::wstring Clipboard() {
        OpenClipboard(nullptr);
        const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
        const std::wstring text = memory ? static_cast<const wchar_t*>(GlobalLock(memory)) : L"";
        CloseClipboard();
        return text;
    }

    HWND m_parent = nullptr;
    std::unique_ptr<grid::Grid> m_grid;
    std::string m_events;
    std::vector<std::wstring> m_failures;
};

} // namespace tamvelo::testing
