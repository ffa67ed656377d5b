#pragma once

#include "com/WinHeaders.h"

#include <map>
#include <vector>

namespace tamvelo::win {

/// In place of a length: take all that the others leave.
inline constexpr int kFill = -1;
/// In place of a length: the control's own, as the dialog template has it.
inline constexpr int kOwn = 0;

struct LayoutCell {
    int control;
    int width = kOwn; // dialog units
};

/// Controls side by side. Hidden controls take no room, and a row of hidden controls none at all.
struct LayoutRow {
    int height = kOwn; // dialog units
    std::vector<LayoutCell> cells;
    int frame = 0; // the group box around this row and its neighbours that name the same one
};

/// Rows of controls from top to bottom, always computed from the template's sizes, so that nothing drifts,
/// and moved in one batch. A control lower than its row is centred in it.
class RowLayout {
public:
    RowLayout() = default;
    /// Reads the controls' sizes now; all of them exist.
    RowLayout(HWND dialog, std::vector<LayoutRow> rows);
    explicit operator bool() const { return m_dialog != nullptr; }
    /// Fills `area`, client pixels of the dialog, less a margin.
    void Arrange(const RECT& area) const;
    /// What the rows take with their own heights, margins included, in pixels.
    int Height() const { return Measure().height; }

private:
    struct Own {
        HWND window;
        SIZE size; // as the template has it
    };
    bool Shown(int control) const;
    struct Measures {
        int height;
        int fillers;
    };
    Measures Measure() const;
    int RowHeight(const LayoutRow& row) const;
    void ArrangeRow(const LayoutRow& row, const RECT& place, HDWP& batch) const;
    void Move(int control, const RECT& place, HDWP& batch) const;
    SIZE Units(int width, int height) const;

    HWND m_dialog = nullptr;
    std::vector<LayoutRow> m_rows;
    std::map<int, Own>
        m_own; // by the control's number; looking windows up by it takes as long as there are many
};

} // namespace tamvelo::win
