#pragma once

#include <span>
#include <string_view>

#include "frame/Keys.h"

namespace tamvelo::frame {

/// Commands that only keys, buttons and menus know.
inline constexpr wchar_t kLookUp[] = L"{CONSULTAR}"; // at the controls where it is offered
inline constexpr wchar_t kTabKey[] = L"{TAB}";       // moves the focus on, as the Tab key does
inline constexpr wchar_t kCustomizeToolbar[] = L"{BARRA}";
inline constexpr wchar_t kEditingBandOnly[] = L"{EDICION}";
inline constexpr wchar_t kGoToSearch[] = L"{IR_A_BUSCAR}";
inline constexpr wchar_t kNoCommand[] = L""; // takes the key and does nothing

class CommandTarget;

/// What a command does in a form or one of its parts; identifiers without a row mean nothing there.
struct CommandRow {
    std::wstring_view command;
    void (*run)(CommandTarget& target, int control);
};

/// What has commands, and the keys for them: a form, or one of its parts.
class CommandTarget {
public:
    virtual std::span<const CommandRow> Commands() const { return {}; }
    virtual std::span<const KeyRow> Keys() const { return {}; }
    /// Whether a command means something at a control now; where it does not, the key goes on. Calls no host.
    virtual bool Offers(std::wstring_view command, int /*control*/) const { return command != kLookUp; }

protected:
    ~CommandTarget() = default;
};

namespace detail {
template <class Class>
void Run(CommandTarget& target, void (Class::*function)(), int /*control*/) {
    (static_cast<Class&>(target).*function)();
}
template <class Class>
void Run(CommandTarget& target, void (Class::*function)(int), int control) {
    (static_cast<Class&>(target).*function)(control);
}
} // namespace detail

/// Adapts a member function for a command row: `{base::kAceptar, Do<&FrmSeleccion::Aceptar>}`. One that takes
/// a number gets that of the control that the command came from or is for; 0 from a menu or a tool.
template <auto Function>
void Do(CommandTarget& target, int control) {
    detail::Run(target, Function, control);
}

/// A line of a menu of commands.
struct MenuItem {
    std::wstring_view command;
    const wchar_t* caption; // without its key; null: the tool's; for a separator the command is empty too
    int on = 0;             // what the command gets for a control
};

} // namespace tamvelo::frame
