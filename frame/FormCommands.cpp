#include <algorithm>
#include <iterator>
#include <utility>

#include "base/Commands.h"
#include "frame/Form.h"
#include "frame/FormPart.h"
#include "win/BusyCursor.h"
#include "win/Handles.h"
#include "win/MessageHook.h"
#include "win/MousePointer.h"

// Keys, tools and menus: how they become commands, and how commands run.
namespace tamvelo::frame {

namespace {

constexpr KeyRow kFrameKeys[] = {
    {0, VK_RETURN, base::kAceptar},
    {0, VK_ESCAPE, base::kCancelar},
    {0, VK_INSERT, kNoCommand},
    {0, VK_DELETE, kNoCommand},
    {0, VK_F6, kCustomizeToolbar},
    {0, VK_F8, kEditingBandOnly},
    {0, kByControl | kAlt | VK_F4, base::kCerrar}, // the system closes the window
    {kAnyControl, VK_F4, kLookUp},
    {kAnyControl, kAltDown, kLookUp},
    {kAnyControl, kClick, kLookUp},
};

bool IsTextBox(HWND window) { return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0; }

bool IsPushButton(HWND window) {
    const LRESULT code = SendMessageW(window, WM_GETDLGCODE, 0, 0);
    return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

} // namespace

template <class Matches>
const KeyRow* Form::FindRow(const Matches& matches) const {
    const auto in = [&](std::span<const KeyRow> rows) {
        const auto row = std::ranges::find_if(rows, matches);
        return row == rows.end() ? nullptr : &*row;
    };
    if (const KeyRow* const own = in(m_design.keys)) {
        return own;
    }
    for (const FormPart* part : m_parts) {
        if (const KeyRow* const row = in(part->Keys())) {
            return row;
        }
    }
    const KeyRow* const shared = in(SharedKeys());
    return shared ? shared : in(kFrameKeys);
}

const KeyRow* Form::FindKey(int control, UINT key) const {
    return FindRow([&](const KeyRow& row) {
        return row.controls.Has(control) && row.key == key && Offers(row.command, control);
    });
}

std::wstring Form::KeyOf(std::wstring_view command) const {
    const KeyRow* const found = FindRow([&](const KeyRow& row) {
        const auto stands = [&](const KeyRow& other) {
            return other.controls.Has(row.controls.first) && other.key == row.key;
        };
        return row.command == command && row.key != kClick && FindRow(stands) == &row; // none in its place
    });
    return found && !command.empty() ? KeyName(found->key) : std::wstring();
}

std::wstring Form::WithKey(std::wstring text, std::wstring_view command) const {
    const std::wstring key = KeyOf(command);
    return key.empty() ? text : std::move(text) + L" (" + key + L")";
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
    // Ctrl and Alt together are the key that types @, # and € on Spanish keyboards: no WM_SYSKEYDOWN comes
    // then.
    const bool alt = message.message == WM_SYSKEYDOWN;
    if (alt || (message.message == WM_KEYDOWN && GetKeyState(VK_MENU) >= 0)) {
        const UINT held = (alt ? kAlt : 0) | (GetKeyState(VK_CONTROL) < 0 ? kCtrl : 0) |
                          (GetKeyState(VK_SHIFT) < 0 ? kShift : 0);
        if (PreviewKey(static_cast<UINT>(message.wParam) | held, message.hwnd)) {
            return true;
        }
    }
    return m_window && IsDialogMessageW(m_window, &message);
}

bool Form::PreviewKey(UINT key, HWND focus) {
    if (win::IsListOpen(focus)) {
        return false; // an open list or calendar has the keys for itself
    }
    const HWND before = m_window;
    const int focused = FocusedControl(focus);
    if (RunRow(focused ? FindKey(focused, kFirst | key) : nullptr, focused)) {
        return true;
    }
    const KeyRow* const row = focused ? FindKey(focused, key) : nullptr;
    if (key == VK_RETURN && !row && IsPushButton(focus)) {
        SendMessageW(focus, BM_CLICK, 0, 0); // not what Enter means elsewhere in the form
        return true;
    }
    const KeyRow* const own = IsTextKey(key) && IsTextBox(focus) ? nullptr : FindKey(0, key);
    if (RunRow(own, focused)) {
        if (m_window != before || (key & (kCtrl | kShift | kAlt))) {
            return true; // the form is gone, and the control that the key was meant for; or a key of the form
                         // only
        }
    }
    if (RunRow(row, focused)) {
        return true;
    }
    // The system's own handling would close the form a second time, or press the button that has the focus.
    return key == VK_ESCAPE || (key == VK_RETURN && own && own->command == base::kAceptar);
}

bool Form::RunRow(const KeyRow* row, int control) {
    if (row) {
        Input(row->command, row->on ? row->on : control);
    }
    return row != nullptr;
}

void Form::Input(std::wstring_view command, int control) {
    if (m_running == 0 && !command.empty()) {
        Dispatch(command, control);
    }
}

void Form::Dispatch(std::wstring_view command, int control) {
    const std::shared_ptr<Form> alive = shared_from_this();
    win::MousePointer::Hourglass();
    const win::BusyCommand busy(m_window, command);
    ++m_running;
    Trapped([&] { RunCommand(command, control); });
    --m_running;
    if (command != base::kCerrar) { // that one ends in the unload, which does it
        win::MousePointer::Default();
    }
    Input(std::exchange(m_chosen, {}));
}

void Form::RunCommand(std::wstring_view command, int control) {
    for (const std::span<const CommandRow> rows : {Commands(), SharedCommands()}) {
        const auto row = std::ranges::find(rows, command, &CommandRow::command);
        if (row != rows.end()) {
            row->run(*this, control);
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
        win::MousePointer::Default();
        Bar().Customize();
    } else if (command == kEditingBandOnly) {
        Bar().SetBandVisible(base::kBandRegistros, false);
        Bar().SetBandVisible(base::kBandRegistro, false);
        Bar().SetBandVisible(base::kBandEdicion, true);
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
    const win::UniqueMenu menu(CreatePopupMenu());
    for (size_t i = 0; i < items.size(); ++i) {
        const wchar_t* caption =
            items[i].caption ? items[i].caption : ToolCaption(m_design.tools, items[i].command);
        const std::wstring key = KeyOf(items[i].command);
        const std::wstring text = caption && !key.empty() ? caption + (L'\t' + key) : caption ? caption : L"";
        const UINT off = m_toolbar->IsEnabled(items[i].command) ? 0U : MF_GRAYED;
        AppendMenuW(menu.get(), off | (caption ? MF_STRING : MF_SEPARATOR), i + 1, text.c_str());
    }
    win::MousePointer::Default(); // the user's turn
    const int chosen =
        TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x, screen.y, 0, m_window, nullptr);
    if (chosen > 0 && m_window) {
        m_chosen = items[static_cast<size_t>(chosen) - 1].command;
        if (m_running == 0) {
            Input(std::exchange(m_chosen, {}));
        }
    }
}

void Form::RunMenu(std::span<const MenuItem> items, int button) {
    RECT place{};
    GetWindowRect(Control(button), &place);
    RunMenu(items, POINT{place.left, place.bottom});
}

} // namespace tamvelo::frame
