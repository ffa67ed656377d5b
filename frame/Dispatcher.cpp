#include "frame/Dispatcher.h"

#include <algorithm>
#include <utility>

#include "base/Commands.h"
#include "frame/Form.h"
#include "frame/FormPart.h"
#include "win/BusyCursor.h"
#include "win/Handles.h"
#include "win/MessageHook.h"
#include "win/MousePointer.h"

namespace tamvelo::frame {

namespace {

bool IsTextBox(HWND window) { return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0; }

bool IsPushButton(HWND window) {
    const LRESULT code = SendMessageW(window, WM_GETDLGCODE, 0, 0);
    return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

} // namespace

template <class Matches>
const KeyRow* Dispatcher::FindRow(const Matches& matches) const {
    const auto in = [&](std::span<const KeyRow> rows) {
        const auto row = std::ranges::find_if(rows, matches);
        return row == rows.end() ? nullptr : &*row;
    };
    const KeyRow* found = in(m_form.Keys());
    for (const FormPart* part : m_form.FormParts()) {
        found = found ? found : in(part->Keys());
    }
    return found ? found : in(m_frame.Keys());
}

const KeyRow* Dispatcher::FindKey(int control, UINT key) {
    return FindRow([&](const KeyRow& row) {
        return row.controls.Has(control) && row.key == key && IsOffered(row.command, control);
    });
}

std::wstring Dispatcher::KeyOf(std::wstring_view command) const {
    const KeyRow* const found = FindRow([&](const KeyRow& row) {
        const auto stands = [&](const KeyRow& other) {
            return other.controls.Has(row.controls.first) && other.key == row.key;
        };
        return row.command == command && row.key != kClick && FindRow(stands) == &row; // none in its place
    });
    return found && !command.empty() ? KeyName(found->key) : std::wstring();
}

std::wstring Dispatcher::WithKey(std::wstring text, std::wstring_view command) const {
    const std::wstring key = KeyOf(command);
    return key.empty() ? text : std::move(text) + L" (" + key + L")";
}

bool Dispatcher::Preview(MSG& message) {
    const HWND window = m_form.Window();
    if (!window || (message.hwnd != window && !IsChild(window, message.hwnd))) {
        return false;
    }
    const std::shared_ptr<Form> alive = m_form.shared_from_this();
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
    return m_form.IsLoaded() && IsDialogMessageW(m_form.Window(), &message);
}

bool Dispatcher::PreviewKey(UINT key, HWND focus) {
    if (win::IsListOpen(focus)) {
        return false; // an open list or calendar has the keys for itself
    }
    const HWND before = m_form.Window();
    const int focused = m_form.ControlAt(focus);
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
        if (m_form.Window() != before || (key & (kCtrl | kShift | kAlt))) {
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

bool Dispatcher::Click(int button) { return RunRow(FindKey(button, kClick), button); }

bool Dispatcher::RunRow(const KeyRow* row, int control) {
    if (row) {
        Input(row->command, row->on ? row->on : control);
    }
    return row != nullptr;
}

void Dispatcher::Input(std::wstring_view command, int control) {
    if (m_running == 0 && !command.empty()) {
        Dispatch(command, control);
    }
}

void Dispatcher::Dispatch(std::wstring_view command, int control) {
    const std::shared_ptr<Form> alive = m_form.shared_from_this();
    win::MousePointer::Hourglass();
    const win::BusyCommand busy(*m_form.Watched(), command);
    ++m_running;
    m_form.Trapped([&] { RunCommand(command, control); });
    --m_running;
    if (command != base::kCerrar) { // that one ends in the unload, which does it
        win::MousePointer::Default();
    }
    RunChosen();
}

void Dispatcher::RunChosen() {
    const auto chosen = std::exchange(m_chosen, {});
    Input(chosen.command, chosen.control);
}

Dispatcher::Found Dispatcher::FindCommand(std::wstring_view command, int control) {
    Found found;
    const auto look = [&](CommandTarget& target, std::span<const CommandRow> rows) {
        const auto row = std::ranges::find(rows, command, &CommandRow::command);
        if (row != rows.end() && !found.target) {
            found.row = &*row;
            found.target = target.Offers(command, control) ? &target : nullptr;
        }
    };
    look(m_form, m_form.Commands());
    for (FormPart* part : m_form.FormParts()) {
        look(*part, part->Commands());
    }
    look(m_frame, m_frame.Commands());
    return found;
}

bool Dispatcher::IsOffered(std::wstring_view command, int control) {
    const Found found = FindCommand(command, control);
    return found.target || (!found.row && command != kLookUp);
}

void Dispatcher::RunCommand(std::wstring_view command, int control) {
    if (const Found found = FindCommand(command, control); found.target) {
        found.row->run(*found.target, control);
    }
}

void Dispatcher::RunMenu(std::span<const MenuItem> items, POINT screen) {
    const win::UniqueMenu menu(CreatePopupMenu());
    for (size_t i = 0; i < items.size(); ++i) {
        const wchar_t* caption =
            items[i].caption ? items[i].caption : ToolCaption(m_form.Tools(), items[i].command);
        const std::wstring key = KeyOf(items[i].command);
        const std::wstring text = caption && !key.empty() ? caption + (L'\t' + key) : caption ? caption : L"";
        const UINT off = m_form.Bar().IsEnabled(items[i].command) ? 0U : MF_GRAYED;
        AppendMenuW(menu.get(), off | (caption ? MF_STRING : MF_SEPARATOR), i + 1, text.c_str());
    }
    win::MousePointer::Default(); // the user's turn
    const int chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x, screen.y, 0,
                                      m_form.Window(), nullptr);
    if (chosen > 0 && m_form.IsLoaded()) {
        const MenuItem& item = items[static_cast<size_t>(chosen) - 1];
        m_chosen = {item.command, item.on};
        if (m_running == 0) {
            RunChosen();
        }
    }
}

} // namespace tamvelo::frame
