#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <oleacc.h>

#include <memory>
#include <string>
#include <vector>

#include "base/Text.h"
#include "com/LateObject.h"
#include "grid/Grid.h"
#include "tests/support/RecordKinds.h"
#include "tests/support/ShownGrid.h"

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

    void RowActivated() override {
        m_events += "activated;";
        if (m_throws) {
            throw com::Error(E_FAIL, L"no");
        }
    }
    void HeadingClicked(short column) override { m_events += "heading" + std::to_string(column) + ";"; }
    void ContextMenuAsked(POINT) override { m_events += "menu;"; }
    void CurrentRowChanged() override { m_events += "row;"; }
    void LayoutChanged() override { m_events += "layout;"; }
    void MarkClicked() override { m_events += "mark;"; }
    void ShownWasAnother() override { m_events += "another;"; }
    void Failed(const com::Error& error) noexcept override { m_failures.push_back(error.description); }
    std::string TakeEvents() { return std::exchange(m_events, {}); }

    com::ComPtr<MemoryRecordSet> Bind(const RecordSetOptions& options = {}, std::string_view kind = {}) {
        auto set = com::Make<MemoryRecordSet>(options);
        m_grid->SetDataSource(Reach(kind, set.Get()).Get());
        TakeEvents();
        return set;
    }

    /// How often `what` calls the set, its clones and their fields; or that member of them.
    template <class What>
    static int Calls(const com::ComPtr<MemoryRecordSet>& set, What&& what) {
        set->Table().calls.clear();
        what();
        return set->Table().Calls();
    }
    template <class What>
    static int Calls(const com::ComPtr<MemoryRecordSet>& set, const wchar_t* member, What&& what) {
        Calls(set, what);
        return set->Table().Calls(member);
    }

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
    static void Pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }

    // What a screen reader is told: rows are its children from 1, the headings follow.
    com::ComPtr<IAccessible> Accessible() {
        com::ComPtr<IAccessible> object;
        AccessibleObjectFromWindow(m_grid->Window(), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   reinterpret_cast<void**>(&object));
        return object;
    }
    static VARIANT Child(LONG number) { return com::Variant(number).Detach(); }
    LONG Rows() const { return static_cast<LONG>(ReadGrid(m_grid->Window()).rows.size()); }
    /// Of the heading at that place on screen, from 0.
    LONG Heading(LONG place) { return Rows() + 1 + place; }
    std::wstring NameOf(LONG child) {
        com::Bstr name;
        Accessible()->get_accName(Child(child), name.Address());
        return std::wstring(name.View());
    }
    /// What the first cell of the row at that place on screen shows, from 0.
    std::wstring FirstCell(LONG place) { return base::Split(NameOf(place + 1), L";")[0]; }
    RECT LocationOf(LONG child) {
        LONG left = 0, top = 0, width = 0, height = 0;
        Accessible()->accLocation(&left, &top, &width, &height, Child(child));
        POINT corner{left, top};
        ScreenToClient(m_grid->Window(), &corner);
        return {corner.x, corner.y, corner.x + width, corner.y + height};
    }

    HWND Header() const { return FindWindowExW(m_grid->Window(), nullptr, WC_HEADERW, nullptr); }
    RECT ItemPlace(int item) const {
        RECT place{};
        Header_GetItemRect(Header(), item, &place);
        return place;
    }
    int WidthOf(short column) const { return m_grid->Layout().columns[static_cast<size_t>(column)].width; }
    com::LateObject Column(const com::Argument& which) {
        com::LateObject columns(m_grid->Columns().Get(), L"Columns");
        return {columns.Call(L"Item", {which}).ToObject().Get(), L"Column"};
    }

    HWND m_parent = nullptr;
    std::unique_ptr<grid::Grid> m_grid;
    std::string m_events;
    std::vector<std::wstring> m_failures;
    bool m_throws = false;
};

} // namespace tamvelo::testing
