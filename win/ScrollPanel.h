#pragma once

#include "win/RowLayout.h"

namespace tamvelo::win {

/// A part of a form whose rows of controls scroll when they do not fit. What its controls tell goes on to the
/// form. The control that has the focus is scrolled into view, so that the keyboard reaches every row.
class ScrollPanel {
public:
    /// Makes the empty panel, last in the form's tab order; it goes with the form's window. Throws
    /// com::Error.
    ScrollPanel(HWND form, int id);
    ~ScrollPanel();
    ScrollPanel(const ScrollPanel&) = delete;
    ScrollPanel& operator=(const ScrollPanel&) = delete;

    HWND Window() const { return m_window; }
    /// The controls exist and are children of the panel.
    void SetRows(std::vector<LayoutRow> rows);

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    INT_PTR Handle(UINT message, WPARAM first, LPARAM second);
    void Arrange();
    void ScrollTo(int top);
    int Line() const;
    void Reveal(HWND control);

    HWND m_window = nullptr;
    RowLayout m_layout;
    int m_top = 0; // pixels of the rows above the panel's upper edge
};

} // namespace tamvelo::win
