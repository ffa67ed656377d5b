#include "com/Module.h"
#include "frame/Form.h"
#include "frame/ThemeScope.h"
#include "frame/WindowText.h"

// What a form does with its controls by number.
namespace tamvelo::frame {

void Form::AddButton(int id, const wchar_t* caption, int width) {
    constexpr int kHeight = 14; // dialog units, as everywhere
    const ThemeScope theme;
    RECT size{0, 0, width, kHeight};
    MapDialogRect(m_window, &size);
    const HWND button =
        CreateWindowExW(0, L"BUTTON", caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, size.right,
                        size.bottom, m_window, nullptr, com::Module::Instance(), nullptr);
    if (!button) {
        com::ThrowLastError(L"No se puede crear el botón.");
    }
    SetWindowLongPtrW(button, GWLP_ID, id);
    SendMessageW(button, WM_SETFONT, static_cast<WPARAM>(SendMessageW(m_window, WM_GETFONT, 0, 0)), FALSE);
}

void Form::ShowControl(int id, bool shown) {
    const HWND control = Control(id);
    if (shown == ((GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0)) {
        return;
    }
    if (!shown && (GetFocus() == control || IsChild(control, GetFocus()))) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE); // a hidden control must not keep the focus
    }
    ShowWindow(control, shown ? SW_SHOWNA : SW_HIDE);
}

void Form::EnableControl(int id, bool enabled) {
    const HWND control = Control(id);
    if (!enabled && GetFocus() == control) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE);
    }
    EnableWindow(control, enabled);
}

std::wstring Form::ControlText(int id) const { return TextOf(Control(id)); }

void Form::SetControlText(int id, const std::wstring& text) { SetWindowTextW(Control(id), text.c_str()); }

com::ComPtr<ControlObject> Form::ObjectOf(int id, const wchar_t* name, short index) {
    com::ComPtr<ControlObject>& object = m_objects[id];
    if (!object) {
        object = com::Make<ControlObject>(Control(id), std::wstring(name), index);
    }
    return object;
}

} // namespace tamvelo::frame
