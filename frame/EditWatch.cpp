#include "frame/EditWatch.h"

#include <commctrl.h>

#include <utility>

#include "com/FloatGuard.h"

namespace tamvelo::frame {

namespace {

constexpr UINT kSettle = WM_APP + 1;
constexpr wchar_t kFirstPrintable = L' ';
constexpr wchar_t kDeleteWord = 0x7F; // what Ctrl+Backspace types

/// While a box takes the focus back, the box that it is taken from has not been left by the user.
thread_local bool g_returning = false;

std::wstring ClipboardText(HWND owner) {
    std::wstring text;
    if (OpenClipboard(owner)) {
        const HANDLE held = GetClipboardData(CF_UNICODETEXT);
        if (const auto* letters = held ? static_cast<const wchar_t*>(GlobalLock(held)) : nullptr) {
            const std::wstring_view all(letters, GlobalSize(held) / sizeof(wchar_t));
            text = all.substr(0, all.find(L'\0'));
            GlobalUnlock(held);
        }
        CloseClipboard();
    }
    return text;
}

} // namespace

std::shared_ptr<EditWatch> EditWatch::Start(HWND edit, Handlers handlers) {
    std::shared_ptr<EditWatch> watch(new EditWatch(edit, std::move(handlers)));
    SetWindowSubclass(edit, Procedure, 0, reinterpret_cast<DWORD_PTR>(watch.get()));
    return watch;
}

EditWatch::~EditWatch() {
    if (m_edit) {
        RemoveWindowSubclass(m_edit, Procedure, 0);
    }
}

bool EditWatch::Settle() {
    if (!std::exchange(m_left, false)) {
        return true;
    }
    const std::shared_ptr<EditWatch> alive = shared_from_this();
    if (m_handlers.left()) {
        return true;
    }
    if (m_edit) {
        g_returning = true;
        SetFocus(m_edit);
        g_returning = false;
    }
    return false;
}

LRESULT CALLBACK EditWatch::Procedure(HWND edit, UINT message, WPARAM first, LPARAM second, UINT_PTR /*id*/,
                                      DWORD_PTR data) noexcept {
    const com::FloatGuard floats;
    try {
        const std::shared_ptr<EditWatch> watch = reinterpret_cast<EditWatch*>(data)->shared_from_this();
        if (message != WM_NCDESTROY) {
            return watch->Handle(message, first, second);
        }
        RemoveWindowSubclass(edit, Procedure, 0);
        watch->m_edit = nullptr;
    } catch (...) {
        return 0; // the handlers trap their own errors: only memory can be short here
    }
    return DefSubclassProc(edit, message, first, second);
}

LRESULT EditWatch::Handle(UINT message, WPARAM first, LPARAM second) {
    const HWND edit = m_edit;
    switch (message) {
    case WM_CHAR:
        if (first >= kFirstPrintable && first != kDeleteWord) {
            auto letter = static_cast<wchar_t>(first);
            m_handlers.typed(letter);
            if (!m_edit || letter == L'\0') {
                return 0;
            }
            first = letter;
        }
        break;
    case WM_PASTE:
        if (m_handlers.pasted && m_handlers.pasted(ClipboardText(edit))) {
            return 0;
        }
        break;
    case WM_SETFOCUS:
        m_left = false;
        break;
    case WM_KILLFOCUS:
        if (!g_returning && first != 0 &&
            IsChild(GetAncestor(edit, GA_ROOT), reinterpret_cast<HWND>(first))) {
            m_left = true;
            PostMessageW(edit, kSettle, 0, 0);
        }
        break;
    case kSettle:
        Settle();
        return 0;
    default:
        break;
    }
    return m_edit ? DefSubclassProc(edit, message, first, second) : 0;
}

} // namespace tamvelo::frame
