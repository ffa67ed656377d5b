#include "demo/app/Visitor.h"

#include "base/Text.h"
#include "com/Error.h"
#include "demo/app/Console.h"
#include "demo/app/Describe.h"
#include "demo/app/Hands.h"

namespace tamvelo::demo {

namespace {

constexpr UINT kTick = 20;
constexpr DWORD kPatience = 10'000;

/// The control that a label names: the one after it that is no label. Null when there is none.
HWND BoxAfter(HWND window, std::wstring_view label) {
    const auto isLabel = [](HWND control) {
        wchar_t name[16] = L"";
        GetClassNameW(control, name, ARRAYSIZE(name));
        return lstrcmpiW(name, L"STATIC") == 0;
    };
    for (HWND control = GetWindow(window, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        wchar_t text[64] = L"";
        GetWindowTextW(control, text, ARRAYSIZE(text));
        std::wstring shown = text;
        std::erase(shown, L'&');
        if (isLabel(control) && IsWindowVisible(control) && base::Trim(shown) == label) {
            const HWND box = GetWindow(control, GW_HWNDNEXT);
            return box != nullptr && isLabel(box) ? nullptr : box;
        }
        if (const HWND box = BoxAfter(control, label)) { // in a panel of the dialog's
            return box;
        }
    }
    return nullptr;
}

void Press(const Stroke& stroke) {
    switch (stroke.kind) {
    case Stroke::Box:
        if (const HWND box = BoxAfter(GetActiveWindow(), stroke.text)) {
            SetFocus(box);
        } else {
            throw com::Error(E_FAIL, L"No hay ninguna casilla «" + std::wstring(stroke.text) + L"».");
        }
        break;
    case Stroke::Text:
        TypeText(stroke.text);
        break;
    case Stroke::Key:
        PressKey(stroke.key);
        break;
    case Stroke::Access:
        PressAccess(*stroke.text);
        break;
    }
}

} // namespace

Visitor::Visitor(HWND main, std::wstring name, std::span<const Stroke> strokes, UINT leave)
    : m_main(main),
      m_name(std::move(name)),
      m_strokes(strokes),
      m_leave(leave),
      m_timer(SetTimer(nullptr, 0, kTick, Tick)) {
    s_current = this;
    CreateTimerQueueTimer(&m_watchdog, nullptr, GiveUp, nullptr, 2 * kPatience, 0, WT_EXECUTEONLYONCE);
}

Visitor::~Visitor() {
    DeleteTimerQueueTimer(nullptr, m_watchdog, INVALID_HANDLE_VALUE);
    KillTimer(nullptr, m_timer);
    s_current = nullptr;
}

/// On a thread of its own: this one does not come back from the operation, or nothing comes up that could be
/// closed.
void CALLBACK Visitor::GiveUp(void*, BOOLEAN) {
    const std::wstring text = s_current->m_name + L": no aparece o no se cierra; se termina aquí";
    if (s_current->gaveUp) {
        s_current->gaveUp(text);
    }
    Say(text);
    TerminateProcess(GetCurrentProcess(), 1);
}

void CALLBACK Visitor::Tick(HWND, UINT, UINT_PTR, DWORD) {
    Visitor* const self = s_current;
    if (self == nullptr || self->m_busy) {
        return;
    }
    self->m_busy = true;
    try {
        self->Act();
    } catch (...) {
        self->Complain(Describe(AnyCurrentError()));
    }
    self->m_busy = false;
}

void Visitor::Act() {
    const HWND top = TopWindow();
    if (top == nullptr || top == m_main) {
        return;
    }
    const ULONGLONG now = GetTickCount64() - m_start;
    if (m_opened == 0) {
        m_opened = now;
    }
    if (const std::wstring text = BoxText(top); !text.empty()) {
        Complain(L"mensaje: " + text);
    } else if (now > kPatience) {
        Complain(L"no se cierra");
    }
    if (!m_complaint.empty()) {
        PostMessageW(top, WM_CLOSE, 0, 0);
    } else if (m_next < m_strokes.size()) {
        Press(m_strokes[m_next++]);
    } else if (top != m_left) { // after a dialog over it also the dialog below
        if (!m_left && look) {
            look(top);
        }
        m_left = top;
        Press({Stroke::Key, L"", m_leave});
    }
}

void Visitor::Complain(std::wstring text) {
    if (m_complaint.empty()) {
        m_complaint = std::move(text);
    }
}

} // namespace tamvelo::demo
