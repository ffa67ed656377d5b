#include "win/RowLayout.h"

#include <algorithm>

namespace tamvelo::win {

namespace {

constexpr int kMargin = 4;    // dialog units, around the rows and between rows and cells
constexpr int kFrameTop = 10; // dialog units, from the top of a frame to its first row: its caption

} // namespace

RowLayout::RowLayout(HWND dialog, std::vector<LayoutRow> rows) : m_dialog(dialog), m_rows(std::move(rows)) {
    std::map<int, HWND> windows;
    for (HWND child = GetWindow(m_dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        windows.emplace(GetDlgCtrlID(child), child);
    }
    const auto note = [&](int control) {
        RECT own{};
        GetWindowRect(windows[control], &own);
        m_own[control] = {windows[control], {own.right - own.left, own.bottom - own.top}};
    };
    for (const LayoutRow& row : m_rows) {
        if (row.frame) {
            note(row.frame);
        }
        for (const LayoutCell& cell : row.cells) {
            note(cell.control);
        }
    }
}

SIZE RowLayout::Units(int width, int height) const {
    RECT units{0, 0, width, height};
    MapDialogRect(m_dialog, &units);
    return {units.right, units.bottom};
}

bool RowLayout::Shown(int control) const {
    // The style, not IsWindowVisible: the dialog itself may not be shown yet.
    return (GetWindowLongW(m_own.at(control).window, GWL_STYLE) & WS_VISIBLE) != 0;
}

int RowLayout::RowHeight(const LayoutRow& row) const {
    int height = 0;
    for (const LayoutCell& cell : row.cells) {
        if (Shown(cell.control)) {
            const int own = static_cast<int>(m_own.at(cell.control).size.cy);
            // A filling row has some height even when its control was made without one.
            height = std::max({height, row.height > 0 ? static_cast<int>(Units(0, row.height).cy) : own, 1});
        }
    }
    return height;
}

RowLayout::Measures RowLayout::Measure() const {
    const int margin = static_cast<int>(Units(0, kMargin).cy);
    const int frameTop = static_cast<int>(Units(0, kFrameTop).cy);
    Measures all{margin, 0};
    int open = 0; // the frame that the row before is in
    for (const LayoutRow& row : m_rows) {
        if (const int height = RowHeight(row)) {
            all.height += margin + (row.height == kFill ? 0 : height);
            all.height += row.frame && row.frame != open ? frameTop + margin : 0;
            all.fillers += row.height == kFill ? 1 : 0;
            open = row.frame;
        }
    }
    return all;
}

void RowLayout::Arrange(const RECT& area) const {
    const SIZE margin = Units(kMargin, kMargin);
    const int frameTop = static_cast<int>(Units(0, kFrameTop).cy);
    const auto [taken, fillers] = Measure();
    const int left = std::max(0, static_cast<int>(area.bottom - area.top) - taken);
    RECT place{area.left + margin.cx, area.top + margin.cy, area.right - margin.cx, 0};
    HDWP batch = BeginDeferWindowPos(static_cast<int>(m_own.size()));
    RECT frame{};
    int open = 0; // the frame that the row before is in
    const auto changeFrame = [&](int next) {
        if (open) {
            frame.bottom = place.top;
            Move(open, frame, batch);
            place = {frame.left, frame.bottom + margin.cy, frame.right, 0};
        }
        if (next) {
            frame = place;
            place = {frame.left + margin.cx, frame.top + frameTop, frame.right - margin.cx, 0};
        }
        open = next;
    };
    for (const LayoutRow& row : m_rows) {
        const int own = RowHeight(row);
        if (own == 0) {
            continue;
        }
        if (row.frame != open) {
            changeFrame(row.frame);
        }
        place.bottom = place.top + (row.height == kFill ? left / fillers : own);
        ArrangeRow(row, place, batch);
        place.top = place.bottom + margin.cy;
    }
    changeFrame(0);
    if (batch) {
        EndDeferWindowPos(batch);
    }
}

void RowLayout::ArrangeRow(const LayoutRow& row, const RECT& place, HDWP& batch) const {
    const int gap = static_cast<int>(Units(kMargin, 0).cx);
    const auto widthOf = [&](const LayoutCell& cell) {
        return cell.width > 0 ? static_cast<int>(Units(cell.width, 0).cx)
                              : static_cast<int>(m_own.at(cell.control).size.cx);
    };
    int taken = -gap;
    int fillers = 0;
    for (const LayoutCell& cell : row.cells) {
        if (Shown(cell.control)) {
            taken += gap + (cell.width == kFill ? 0 : widthOf(cell));
            fillers += cell.width == kFill ? 1 : 0;
        }
    }
    const int left = std::max(0, static_cast<int>(place.right - place.left) - taken);
    const int height = static_cast<int>(place.bottom - place.top);
    int x = place.left;
    for (const LayoutCell& cell : row.cells) {
        if (!Shown(cell.control)) {
            continue;
        }
        const int width = cell.width == kFill ? left / fillers : widthOf(cell);
        const int own =
            row.height == kOwn ? std::min(height, static_cast<int>(m_own.at(cell.control).size.cy)) : height;
        const LONG top = place.top + (height - own) / 2;
        Move(cell.control, {x, top, x + width, top + own}, batch);
        x += width + gap;
    }
}

void RowLayout::Move(int control, const RECT& place, HDWP& batch) const {
    // Before the dialog is shown there is nothing to draw again.
    const UINT quiet = IsWindowVisible(m_dialog) ? 0 : SWP_NOREDRAW;
    if (batch) {
        batch = DeferWindowPos(batch, m_own.at(control).window, nullptr, place.left, place.top,
                               place.right - place.left, place.bottom - place.top,
                               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS | quiet);
    }
}

} // namespace tamvelo::win
