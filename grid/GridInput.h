#pragma once

#include <optional>

#include "grid/GridView.h"
#include "grid/TypeAhead.h"

namespace tamvelo::grid {

/// What the user does with keys, letters, mouse, bars and headings, as what the view does.
class GridInput {
public:
    explicit GridInput(GridView& view) : m_view(view) {}

    /// The answer to a message that is the user's; nothing for one that the system has to do with, too.
    std::optional<LRESULT> Handle(UINT message, WPARAM w, LPARAM l);

private:
    static constexpr UINT kColumnsDragged = WM_USER + 1;

    bool Key(WPARAM key);
    void Type(wchar_t letter);
    /// What a press of either button does: its cell becomes the current one. False when it hit none.
    bool SelectCell(POINT at);
    void Click(POINT at);
    void DoubleClick(POINT at);
    int Across() const;
    void Wheel(int delta, bool across);
    void ContextMenu(POINT screen);
    LRESULT HeadingNotice(const NMHDR& notice);

    GridView& m_view;
    TypeAhead m_typed{m_view.Data()};
    int m_wheel = 0; // what is left of the wheel's turns
};

} // namespace tamvelo::grid
