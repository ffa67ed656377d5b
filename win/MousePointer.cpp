#include "win/MousePointer.h"

#include "win/BusyCursor.h"

namespace tamvelo::win {

namespace {

thread_local bool g_hourglass = false;

} // namespace

void MousePointer::Hourglass() {
    g_hourglass = true;
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
}

void MousePointer::Default() {
    g_hourglass = false;
    BusyCommand::End();
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

bool MousePointer::IsHourglass() { return g_hourglass; }

} // namespace tamvelo::win
