#include "bench/DialogSession.h"

#include <string>

#include "bench/Clock.h"
#include "com/Error.h"

namespace tamvelo::bench {

namespace {

constexpr UINT kLook = WM_APP + 1;

struct Session {
    HWND (*list)(HWND dialog);
    const std::function<void(HWND list)>& inside;
    double complete = 0;
    std::wstring stranger; // what came up in place of the dialog
};
Session* g_session = nullptr; // while a dialog is being opened

void Paint(HWND dialog) {
    RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    GdiFlush();
}

HWND VisibleDialog() {
    HWND found = nullptr;
    const WNDENUMPROC take = [](HWND window, LPARAM result) __attribute__((stdcall))->BOOL {
        wchar_t name[16] = L"";
        GetClassNameW(window, name, ARRAYSIZE(name));
        if (!IsWindowVisible(window) || lstrcmpW(name, L"IME") == 0) {
            return TRUE;
        }
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
    };
    EnumThreadWindows(GetCurrentThreadId(), take, reinterpret_cast<LPARAM>(&found));
    return found;
}

/// Runs inside the dialog's own message loop, after whatever was posted before: what is then neither queued
/// nor left to paint is done.
void Look(HWND watcher, Session& session) {
    const HWND dialog = VisibleDialog();
    if (dialog) {
        Paint(dialog);
    }
    if (!dialog || HIWORD(GetQueueStatus(QS_POSTMESSAGE | QS_SENDMESSAGE | QS_PAINT)) != 0) {
        PostMessageW(watcher, kLook, 0, 0);
        return;
    }
    session.complete = Now();
    if (const HWND list = session.list(dialog); !list) {
        wchar_t caption[80] = L"";
        GetWindowTextW(dialog, caption, ARRAYSIZE(caption));
        session.stranger = caption;
    } else if (session.inside) {
        session.inside(list);
    }
    PostMessageW(dialog, WM_CLOSE, 0, 0);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == kLook && g_session) {
        Look(window, *g_session);
        return 0;
    }
    return DefWindowProcW(window, message, first, second);
}

HWND Watcher() {
    static const HWND watcher = [] {
        WNDCLASSW description{};
        description.lpfnWndProc = Procedure;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = L"BenchWatcher";
        RegisterClassW(&description);
        return CreateWindowW(description.lpszClassName, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                             description.hInstance, nullptr);
    }();
    return watcher;
}

} // namespace

double OpenDialog(const std::function<void()>& show, HWND (*list)(HWND),
                  const std::function<void(HWND)>& inside) {
    Session session{list, inside, 0, {}};
    g_session = &session;
    PostMessageW(Watcher(), kLook, 0, 0);
    const double start = Now();
    show();
    g_session = nullptr;
    if (!session.stranger.empty()) {
        throw com::Error(E_UNEXPECTED, L"En lugar del diálogo se abrió «" + session.stranger + L"».");
    }
    return session.complete - start;
}

double TurnPages(HWND list, int pages) {
    const HWND dialog = GetParent(list);
    Paint(dialog);
    const double start = Now();
    for (int page = 0; page < pages; ++page) {
        SendMessageW(list, WM_KEYDOWN, VK_NEXT, 1);
        Paint(dialog);
    }
    return (Now() - start) / pages;
}

} // namespace tamvelo::bench
