#include "frame/Placement.h"

#include "objects/FormObject.h"

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

void Placement::Forget() noexcept {
    m_object.Reset();
    m_showAs = SW_SHOW;
}

void Placement::CentreOnOwner() {
    base::Rect place = RectOf(m_form.Window());
    const HWND owner = GetWindow(m_form.Window(), GW_OWNER);
    const base::Rect around = owner ? RectOf(owner) : WorkAreas().empty() ? place : WorkAreas().front();
    place.left = around.left + (around.width - place.width) / 2;
    place.top = around.top + (around.height - place.height) * 45 / 100; // where the eye expects the middle
    SetPlace(place);
}

void Placement::PullOntoMonitor(SIZE smallest) {
    const base::Rect now = RectOf(m_form.Window());
    const base::Rect pulled = base::PullOnto(now, WorkAreas(), {smallest.cx, smallest.cy});
    if (pulled != now) {
        SetPlace(pulled);
    }
}

base::Rect Placement::Place() const {
    if (IsIconic(m_form.Window()) || IsZoomed(m_form.Window())) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof placement;
        GetWindowPlacement(m_form.Window(), &placement);
        const RECT& normal = placement.rcNormalPosition;
        return {normal.left, normal.top, normal.right - normal.left, normal.bottom - normal.top};
    }
    return RectOf(m_form.Window());
}

void Placement::SetPlace(const base::Rect& place) {
    SetWindowPos(m_form.Window(), nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Placement::IsMaximised() const {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(m_form.Window(), &placement);
    return IsZoomed(m_form.Window()) ||
           (IsIconic(m_form.Window()) && (placement.flags & WPF_RESTORETOMAXIMIZED));
}

com::ComPtr<IDispatch> Placement::FormObject() {
    if (!m_object) {
        m_object = com::Make<objects::FormObject>(m_form.Window(), m_name);
    }
    return m_object;
}

} // namespace tamvelo::frame
