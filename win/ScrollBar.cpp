#include "win/ScrollBar.h"

namespace tamvelo::win {

int ScrolledTo(HWND window, int bar, WORD request, int from, int line) {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    GetScrollInfo(window, bar, &info); // the message itself carries 16 bits only
    const int page = static_cast<int>(info.nPage);
    switch (request) { // the numbers are those of SB_LINELEFT and so on, too
    case SB_LINEUP:
        return from - line;
    case SB_LINEDOWN:
        return from + line;
    case SB_PAGEUP:
        return from - page;
    case SB_PAGEDOWN:
        return from + page;
    case SB_TOP:
        return info.nMin;
    case SB_BOTTOM:
        return info.nMax;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return info.nTrackPos;
    default:
        return from;
    }
}

} // namespace tamvelo::win
