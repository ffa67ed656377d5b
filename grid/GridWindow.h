#pragma once

#include "grid/GridInput.h"
#include "grid/GridPainter.h"

namespace tamvelo::grid {

/// The window of a grid: its class and life, its messages and its painting. Held while it handles one,
/// because a host that is called meanwhile may let go of the grid. The view holds it, too.
class GridWindow : public std::enable_shared_from_this<GridWindow> {
public:
    explicit GridWindow(GridEvents& events) : m_view(m_window, events) {}
    /// The view of a new window.
    static std::shared_ptr<GridView> Open(HWND parent, int controlId, GridEvents& events);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept;
    void Create(HWND parent, int controlId);
    std::shared_ptr<GridView> View() { return {shared_from_this(), &m_view}; }
    LRESULT Handle(UINT message, WPARAM w, LPARAM l);
    void Paint();

    HWND m_window = nullptr;
    GridView m_view;
    GridInput m_input{m_view};
    GridLook m_look = GridLook::Current();
};

} // namespace tamvelo::grid
