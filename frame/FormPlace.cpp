#include "base/Placement.h"
#include "frame/Form.h"

// Where a form stands: opening, monitors, what settings keep.
namespace tamvelo::frame {

namespace {

std::vector<base::Rect> WorkAreas() {
    std::vector<base::Rect> areas;
    const MONITORENUMPROC collect =
        [](HMONITOR monitor, HDC, LPRECT, LPARAM list) __attribute__((stdcall))->BOOL {
        MONITORINFO info{};
        info.cbSize = sizeof info;
        if (GetMonitorInfoW(monitor, &info)) {
            const RECT& work = info.rcWork;
            reinterpret_cast<std::vector<base::Rect>*>(list)->push_back(
                {work.left, work.top, work.right - work.left, work.bottom - work.top});
        }
        return TRUE;
    };
    EnumDisplayMonitors(nullptr, nullptr, collect, reinterpret_cast<LPARAM>(&areas));
    return areas;
}

base::Rect RectOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

} // namespace

void Form::CentreOnOwner() {
    base::Rect place = RectOf(m_window);
    const HWND owner = GetWindow(m_window, GW_OWNER);
    const base::Rect around = owner ? RectOf(owner) : WorkAreas().empty() ? place : WorkAreas().front();
    place.left = around.left + (around.width - place.width) / 2;
    place.top = around.top + (around.height - place.height) * 45 / 100; // where the eye expects the middle
    SetPlace(place);
}

void Form::PullOntoMonitor() {
    const base::Rect now = RectOf(m_window);
    const base::Rect pulled = base::PullOnto(now, WorkAreas(), {m_smallest.cx, m_smallest.cy});
    if (pulled != now) {
        SetPlace(pulled);
    }
}

base::Rect Form::Place() const {
    if (IsIconic(m_window) || IsZoomed(m_window)) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof placement;
        GetWindowPlacement(m_window, &placement);
        const RECT& normal = placement.rcNormalPosition;
        return {normal.left, normal.top, normal.right - normal.left, normal.bottom - normal.top};
    }
    return RectOf(m_window);
}

void Form::SetPlace(const base::Rect& place) {
    SetWindowPos(m_window, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Form::IsMaximised() const {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(m_window, &placement);
    return IsZoomed(m_window) || (IsIconic(m_window) && (placement.flags & WPF_RESTORETOMAXIMIZED));
}

} // namespace tamvelo::frame
