#include "frame/BusyCursor.h"

#include <string>

#include "base/CursorFiles.h"
#include "frame/Product.h"

namespace tamvelo::frame {

namespace {

thread_local HCURSOR g_animated = nullptr;

/// Null when the path has characters outside the ANSI code page: then there is no such file to this function.
HCURSOR LoadAnimated(const std::wstring& path) {
    char narrow[MAX_PATH];
    BOOL lost = FALSE;
    const int length =
        WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, narrow, ARRAYSIZE(narrow), nullptr, &lost);
    return length > 0 && !lost ? LoadCursorFromFileA(narrow) : nullptr;
}

} // namespace

void PlainBusyCursor(HWND form, bool on) {
    if (on) {
        SetCapture(form);
        SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(32514)));
    } else {
        ReleaseCapture();
        SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)));
    }
}

void AnimatedBusyCursor(HWND form, bool on, std::wstring_view kind) {
    if (on) {
        AnimatedBusyCursor(form, false, kind); // a second "on" must not lose the first one's handle
        SetCapture(form);
        g_animated = LoadAnimated(LibraryFolder() + L"\\Image\\" + std::wstring(base::CursorFile(kind)));
        SetCursor(g_animated);
        return;
    }
    PlainBusyCursor(form, false); // the arrow first: a cursor in use is not destroyed
    if (g_animated) {
        DestroyCursor(g_animated);
        g_animated = nullptr;
    }
}

} // namespace tamvelo::frame
