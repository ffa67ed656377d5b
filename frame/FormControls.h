#pragma once

#include "com/WinHeaders.h"

#include <map>
#include <string>

#include "objects/ControlObject.h"

namespace tamvelo::frame {

/// A form's window and the controls in it, by their numbers. Without a window there are no controls, and what
/// is done with them does nothing.
class FormControls {
public:
    FormControls(const FormControls&) = delete;
    FormControls& operator=(const FormControls&) = delete;

    HWND Window() const { return m_window; }
    bool IsLoaded() const { return m_window != nullptr; }
    /// Throws Gone when there is no window.
    void CheckStands() const;
    /// The variable with the window, which calls out that belong to the form are watched by.
    const HWND* Watched() const { return &m_window; }

    HWND Control(int id) const;
    /// The number of the control that a window is, or is a part of; 0 for none.
    int ControlAt(HWND window) const;
    /// A control that the template does not have, last in the tab order; its size in dialog units.
    HWND AddControl(int id, const wchar_t* windowClass, const wchar_t* text, DWORD style, SIZE units);
    /// A push button that the template does not have, last in the tab order; the width in dialog units.
    void AddButton(int id, const wchar_t* caption, int width);
    /// A child window whose controls count as the form's own: AddControl makes them in it from now on.
    void SetContainer(HWND container) { m_container = container; }
    /// What a text takes, in dialog units; in the form's own font unless another is given.
    int WidthOf(const wchar_t* text, HFONT font = nullptr) const;

    bool IsShownControl(int id) const;
    void ShowControl(int id, bool shown);
    void EnableControl(int id, bool enabled);
    std::wstring ControlText(int id) const;
    void SetControlText(int id, const std::wstring& text);
    /// What the mouse learns over a control, also over one that is off; "" nothing.
    void SetTip(int id, std::wstring text);
    /// After controls have moved.
    void PlaceTips() const;
    /// The automation object of a control, made on first use and kept until unload.
    com::ComPtr<objects::ControlObject> ObjectOf(int id, const wchar_t* name, short index);
    /// The same where it has been made; else null.
    com::ComPtr<objects::ControlObject> KnownObjectOf(int id) const;

protected:
    FormControls() = default;
    ~FormControls() = default;
    void Attach(HWND window) { m_window = window; }
    /// The window is going.
    void Detach() noexcept;

private:
    HWND m_window = nullptr;
    HWND m_container = nullptr;
    HWND m_tips = nullptr; // a window of the form's, made with the first tip
    std::map<int, std::wstring> m_tipTexts;
    std::map<int, com::ComPtr<objects::ControlObject>> m_objects;
};

} // namespace tamvelo::frame
