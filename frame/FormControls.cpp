#include "frame/FormControls.h"

#include <commctrl.h>

#include <utility>

#include "base/MessageText.h"
#include "com/CallOut.h"
#include "com/Error.h"
#include "com/Module.h"
#include "win/ThemeScope.h"
#include "win/WindowText.h"

namespace tamvelo::frame {

void FormControls::Detach() noexcept {
    m_window = nullptr;
    m_container = nullptr;
    m_tips = nullptr;
    m_tipTexts.clear();
    m_objects.clear();
}

void FormControls::CheckStands() const {
    if (!m_window) {
        throw com::Gone{};
    }
}

HWND FormControls::Control(int id) const {
    const HWND own = GetDlgItem(m_window, id);
    return own || !m_container ? own : GetDlgItem(m_container, id);
}

int FormControls::ControlAt(HWND window) const {
    while (window && GetParent(window) != m_window && GetParent(window) != m_container) {
        window = GetParent(window);
    }
    return window ? GetDlgCtrlID(window) : 0;
}

int FormControls::WidthOf(const wchar_t* text, HFONT font) const {
    RECT unit{0, 0, 4, 8}; // an average letter
    MapDialogRect(m_window, &unit);
    const auto letters = static_cast<int>(wcslen(text));
    SIZE size{};
    if (const HDC screen = GetDC(m_window)) {
        const HGDIOBJ before = SelectObject(
            screen, font ? font : reinterpret_cast<HFONT>(SendMessageW(m_window, WM_GETFONT, 0, 0)));
        GetTextExtentPoint32W(screen, text, letters, &size);
        SelectObject(screen, before);
        ReleaseDC(m_window, screen);
    }
    if (size.cx <= 0 || unit.right <= 0) {
        return letters * 4 + 2; // the system has no object left to measure with: letters of average width
    }
    return static_cast<int>(size.cx * 4 / unit.right) + 2;
}

HWND FormControls::AddControl(int id, const wchar_t* windowClass, const wchar_t* text, DWORD style,
                              SIZE units) {
    const win::ThemeScope theme;
    RECT size{0, 0, units.cx, units.cy};
    MapDialogRect(m_window, &size);
    const DWORD edge = lstrcmpW(windowClass, L"EDIT") == 0 ? WS_EX_CLIENTEDGE : 0; // as a template gives it
    const HWND control =
        CreateWindowExW(edge, windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, size.right, size.bottom,
                        m_container ? m_container : m_window, nullptr, com::Module::Instance(), nullptr);
    if (!control) {
        com::ThrowLastError(L"No se puede crear un control.");
    }
    SetWindowLongPtrW(control, GWLP_ID, id);
    SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(SendMessageW(m_window, WM_GETFONT, 0, 0)), FALSE);
    return control;
}

void FormControls::AddButton(int id, const wchar_t* caption, int width) {
    constexpr int kHeight = 14; // dialog units, as everywhere
    AddControl(id, L"BUTTON", caption, WS_TABSTOP, {width, kHeight});
}

bool FormControls::IsShownControl(int id) const {
    return (GetWindowLongW(Control(id), GWL_STYLE) & WS_VISIBLE) != 0;
}

void FormControls::ShowControl(int id, bool shown) {
    const HWND control = Control(id);
    if (shown == IsShownControl(id)) {
        return;
    }
    if (!shown && (GetFocus() == control || IsChild(control, GetFocus()))) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE); // a hidden control must not keep the focus
    }
    ShowWindow(control, shown ? SW_SHOWNA : SW_HIDE);
}

void FormControls::EnableControl(int id, bool enabled) {
    const HWND control = Control(id);
    if (!enabled && GetFocus() == control) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE);
    }
    EnableWindow(control, enabled);
}

void FormControls::SetTip(int id, std::wstring text) {
    if (!m_tips) {
        const win::ThemeScope theme;
        m_tips =
            CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                            0, 0, 0, 0, m_window, nullptr, com::Module::Instance(), nullptr);
    }
    m_tipTexts[id] = std::move(text);
    PlaceTips();
}

void FormControls::PlaceTips() const {
    // By place, not by window: a control that is off hears nothing of the mouse.
    for (const auto& [id, text] : m_tipTexts) {
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.uFlags = TTF_SUBCLASS;
        tool.hwnd = m_window;
        tool.uId = static_cast<UINT_PTR>(id);
        SendMessageW(m_tips, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        if (!text.empty()) {
            tool.lpszText = const_cast<wchar_t*>(text.c_str());
            GetWindowRect(Control(id), &tool.rect);
            MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&tool.rect), 2);
            SendMessageW(m_tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        }
    }
}

std::wstring FormControls::ControlText(int id) const { return win::TextOf(Control(id)); }

void FormControls::SetControlText(int id, const std::wstring& text) {
    const HWND control = Control(id);
    const bool label = (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) != 0;
    SetWindowTextW(control, label ? base::Shortened(text, base::kLongestLabel).c_str() : text.c_str());
}

com::ComPtr<objects::ControlObject> FormControls::ObjectOf(int id, const wchar_t* name, short index) {
    com::ComPtr<objects::ControlObject>& object = m_objects[id];
    if (!object) {
        object = com::Make<objects::ControlObject>(Control(id), std::wstring(name), index);
    }
    return object;
}

com::ComPtr<objects::ControlObject> FormControls::KnownObjectOf(int id) const {
    const auto known = m_objects.find(id);
    return known == m_objects.end() ? nullptr : known->second;
}

} // namespace tamvelo::frame
