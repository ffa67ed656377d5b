#pragma once

#include <string>

#include "frame/FrameCommands.h"

namespace tamvelo::frame {

class Form;

/// How keys, buttons, tools and menus become commands of a form, and how commands run: one at a time. The
/// form's own rows come first, then those of its parts in their order, then those that every form has.
class Dispatcher {
public:
    explicit Dispatcher(Form& form) : m_form(form), m_frame(form) {}

    /// Whether a message of the form's loop was a key that is used up.
    bool Preview(MSG& message);
    /// A push button was clicked; whether that is a command.
    bool Click(int button);
    /// A command from outside: a key, a tool, a button. Ignored while another one runs, so that a host that
    /// pumps messages inside a call cannot start a second one.
    void Input(std::wstring_view command, int control = 0);
    /// A menu of commands; the chosen one is dispatched, after the one that runs.
    void RunMenu(std::span<const MenuItem> items, POINT screen);
    /// A text with the key of a command behind it: "Orden ascendente (F9)".
    std::wstring WithKey(std::wstring text, std::wstring_view command) const;

private:
    struct Found {
        CommandTarget* target = nullptr;
        const CommandRow* row = nullptr;
    };
    template <class Matches>
    const KeyRow* FindRow(const Matches& matches) const;
    /// The row of a key, or of a click, at a control where its command is offered.
    const KeyRow* FindKey(int control, UINT key);
    /// What a command does at a control, and whose it is. A row without a target: it means nothing there.
    Found FindCommand(std::wstring_view command, int control);
    bool IsOffered(std::wstring_view command, int control);
    /// The key of a command as users read it; "" when it has none.
    std::wstring KeyOf(std::wstring_view command) const;
    bool PreviewKey(UINT key, HWND focus);
    bool RunRow(const KeyRow* row, int control);
    /// Runs a command with the hourglass; errors end in ControlErrores.
    void Dispatch(std::wstring_view command, int control);
    void RunChosen();
    void RunCommand(std::wstring_view command, int control);

    Form& m_form;
    FrameCommands m_frame;
    int m_running = 0;
    struct {
        std::wstring_view command;
        int control = 0;
    } m_chosen; // from a menu that a command showed
};

} // namespace tamvelo::frame
