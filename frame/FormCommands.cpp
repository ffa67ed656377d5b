#include <algorithm>
#include <iterator>

#include "base/Commands.h"
#include "frame/Form.h"
#include "frame/FormPart.h"
#include "frame/FormPreview.h"
#include "frame/Handles.h"
#include "frame/MousePointer.h"

// Keys, tools and menus: how they become commands, and how commands run.
namespace tamvelo::frame {

namespace {

constexpr KeyRow kFrameKeys[] = {
    {0, VK_RETURN, base::kAceptar}, {0, VK_ESCAPE, base::kCancelar}, {0, VK_INSERT, kNoCommand},
    {0, VK_DELETE, kNoCommand},     {0, VK_F6, kCustomizeToolbar},   {0, VK_F8, kEditingBandOnly},
};

} // namespace

const KeyRow* Form::FindKey(int control, UINT key) const {
    const auto matches = [&](const KeyRow& row) { return row.control == control && row.key == key; };
    const auto own = std::find_if(m_design.keys.begin(), m_design.keys.end(), matches);
    if (own != m_design.keys.end()) {
        return &*own;
    }
    const auto* common = std::find_if(std::begin(kFrameKeys), std::end(kFrameKeys), matches);
    return common == std::end(kFrameKeys) ? nullptr : common;
}

int Form::FocusedControl(HWND focus) const {
    while (focus && GetParent(focus) != m_window && GetParent(focus) != m_container) {
        focus = GetParent(focus);
    }
    return focus ? GetDlgCtrlID(focus) : 0;
}

bool Form::Preview(MSG& message) {
    if (!m_window || (message.hwnd != m_window && !IsChild(m_window, message.hwnd))) {
        return false;
    }
    const std::shared_ptr<Form> alive = shared_from_this();
    if (message.message == WM_KEYDOWN && PreviewKey(static_cast<UINT>(message.wParam), message.hwnd)) {
        return true;
    }
    if (message.message == WM_SYSKEYDOWN && message.wParam == VK_DOWN && PreviewAltDown(message.hwnd)) {
        return true;
    }
    return m_window && IsDialogMessageW(m_window, &message);
}

bool Form::PreviewKey(UINT key, HWND focus) {
    if ((key == VK_RETURN || key == VK_ESCAPE) && IsListOpen(focus)) {
        return false; // an open list or calendar takes these two for itself
    }
    if (GetKeyState(VK_MENU) < 0) {
        return false; // Ctrl and Alt together are the key that types @, # and € on Spanish keyboards
    }
    const bool control = GetKeyState(VK_CONTROL) < 0;
    const bool shift = GetKeyState(VK_SHIFT) < 0;
    bool used = false;
    Trapped([&] { used = PartTakesKey(key, control, shift) || OnKey(key, control, shift); });
    if (used || control || shift) {
        return used;
    }
    const HWND before = m_window;
    const KeyRow* const own = FindKey(0, key);
    if (own) {
        Input(own->command);
        if (m_window != before) {
            return true; // the form is gone; so is the control that the key was meant for
        }
    }
    const int focused = FocusedControl(focus);
    if (const KeyRow* row = focused ? FindKey(focused, key) : nullptr) {
        Input(row->command);
        return true;
    }
    // The system's own handling would close the form a second time, or press the button that has the focus.
    return key == VK_ESCAPE || (key == VK_RETURN && own && own->command == base::kAceptar);
}

bool Form::PreviewAltDown(HWND focus) {
    const int focused = FocusedControl(focus);
    const KeyRow* const row = focused ? FindKey(focused, kAltDown) : nullptr;
    if (row) {
        Input(row->command);
        return true;
    }
    bool used = false;
    Trapped([&] { used = OnKey(kAltDown, false, false); });
    return used;
}

bool Form::PartTakesKey(UINT key, bool control, bool shift) {
    for (const FormPart* part : m_parts) {
        if (const std::wstring_view command = part->CommandOf(key, control, shift); !command.empty()) {
            Input(command);
            return true;
        }
    }
    return false;
}

void Form::Input(std::wstring_view command) {
    if (m_running == 0 && !command.empty()) {
        Dispatch(command);
    }
}

void Form::Dispatch(std::wstring_view command) {
    const std::shared_ptr<Form> alive = shared_from_this();
    MousePointer::Hourglass();
    ++m_running;
    try {
        RunCommand(command);
    } catch (...) {
        // A form that went while the host ran has let go of all it held: the rest of its command is void.
        const com::Error error = com::CurrentError();
        if (m_window || error.source != com::Error::kOwnSource) {
            ControlErrores(error);
        }
    }
    --m_running;
    if (command != base::kCerrar) { // that one ends in the unload, which does it
        MousePointer::Default();
    }
}

void Form::RunCommand(std::wstring_view command) {
    for (const std::span<const CommandRow> rows : {Commands(), SharedCommands()}) {
        const auto row = std::ranges::find(rows, command, &CommandRow::command);
        if (row != rows.end()) {
            row->run(*this);
            return;
        }
    }
    const auto takes = [&](FormPart* part) { return part->OnCommand(command); };
    if (std::ranges::any_of(m_parts, takes)) {
        return;
    }
    if (command == base::kCancelar || command == base::kCerrar) {
        Unload();
    } else if (command == kTabKey) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE);
    } else if (command == kCustomizeToolbar) {
        MousePointer::Default();
        m_toolbar->Customize();
    } else if (command == kEditingBandOnly) {
        m_toolbar->SetBandVisible(base::kBandRegistros, false);
        m_toolbar->SetBandVisible(base::kBandRegistro, false);
        m_toolbar->SetBandVisible(base::kBandEdicion, true);
        Relayout();
    }
}

void Form::OnTool(std::wstring_view id) {
    // A copy: the command may unload the form, and the bar that owns the text with it.
    Input(std::wstring(id));
}

void Form::ToolbarChanged() {
    m_toolbar->SetPressed(base::kFiltro, false);
    Relayout();
    m_toolbar->Save(m_toolbarFile);
}

void Form::RunMenu(std::span<const MenuItem> items, POINT screen) {
    const UniqueMenu menu(CreatePopupMenu());
    for (size_t i = 0; i < items.size(); ++i) {
        const wchar_t* caption =
            items[i].caption ? items[i].caption : ToolCaption(m_design.tools, items[i].command);
        const UINT off = m_toolbar->IsEnabled(items[i].command) ? 0U : MF_GRAYED;
        AppendMenuW(menu.get(), off | (caption ? MF_STRING : MF_SEPARATOR), i + 1, caption);
    }
    const int chosen =
        TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x, screen.y, 0, m_window, nullptr);
    if (chosen > 0 && m_window) {
        Input(items[static_cast<size_t>(chosen) - 1].command);
    }
}

} // namespace tamvelo::frame
