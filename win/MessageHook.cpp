#include "win/MessageHook.h"

#include <commctrl.h>

#include <map>
#include <utility>

#include "com/FloatGuard.h"
#include "win/Handles.h"

namespace tamvelo::win {

namespace {

struct Previews {
    std::map<HWND, std::function<bool(MSG&)>> forms;
    UniqueHook hook;
};

/// One per thread; a pointer, because the thread may end while the library is being unloaded.
thread_local Previews* g_previews = nullptr;

LRESULT CALLBACK Hook(int code, WPARAM removed, LPARAM second) {
    const com::FloatGuard floats;
    auto& message = *reinterpret_cast<MSG*>(second);
    if (code == HC_ACTION && removed == PM_REMOVE && g_previews) {
        try {
            const HWND root = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
            const auto found = g_previews->forms.find(root);
            if (found != g_previews->forms.end()) {
                const auto preview = found->second; // the form may go while it looks
                if (preview(message)) {
                    message.message = WM_NULL;
                }
            }
        } catch (...) {
            message.message = WM_NULL; // forms trap their own errors: only memory can be short here
        }
    }
    return CallNextHookEx(nullptr, code, removed, second);
}

} // namespace

void MessageHook::Add(HWND form, std::function<bool(MSG&)> preview) {
    if (!g_previews) {
        g_previews = new Previews;
        g_previews->hook.reset(SetWindowsHookExW(WH_GETMESSAGE, Hook, nullptr, GetCurrentThreadId()));
    }
    g_previews->forms[form] = std::move(preview);
}

void MessageHook::Remove(HWND form) noexcept {
    if (g_previews && g_previews->forms.erase(form) > 0 && g_previews->forms.empty()) {
        delete std::exchange(g_previews, nullptr);
    }
}

bool IsListOpen(HWND focus) {
    wchar_t name[32] = L"";
    GetClassNameW(focus, name, ARRAYSIZE(name));
    if (lstrcmpiW(name, L"ComboBox") == 0) {
        return SendMessageW(focus, CB_GETDROPPEDSTATE, 0, 0) != 0;
    }
    if (lstrcmpiW(name, DATETIMEPICK_CLASSW) == 0) {
        // Some systems keep the calendar's window between openings.
        const LRESULT calendar = SendMessageW(focus, DTM_GETMONTHCAL, 0, 0);
        return IsWindowVisible(reinterpret_cast<HWND>(calendar)) != FALSE;
    }
    return lstrcmpiW(name, MONTHCAL_CLASSW) == 0 && !(GetWindowLongW(focus, GWL_STYLE) & WS_TABSTOP);
}

} // namespace tamvelo::win
