#include <windows.h>

// Wine ends its desktop with the last window and takes a second over it. This window, never shown, takes no
// focus and keeps the desktop alive from one test program to the next.
int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    CreateWindowExW(0, L"STATIC", L"keeper", WS_OVERLAPPED, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
