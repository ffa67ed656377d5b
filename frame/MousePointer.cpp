#include "frame/MousePointer.h"

#include "com/WinHeaders.h"

namespace tamvelo::frame {

namespace {

thread_local bool t_hourglass = false;

}  // namespace

void MousePointer::Hourglass() {
    t_hourglass = true;
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
}

void MousePointer::Default() {
    t_hourglass = false;
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

bool MousePointer::IsHourglass() {
    return t_hourglass;
}

}  // namespace tamvelo::frame
