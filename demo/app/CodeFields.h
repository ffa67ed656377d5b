#pragma once

#include "com/WinHeaders.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "demo/data/Database.h"

namespace tamvelo::demo {

std::wstring TextOf(HWND window);

/// The boxes of the order screen for codes of a table, with the names beside them. A field's place is the
/// Index that the dialogs' control has.
class CodeFields {
public:
    explicit CodeFields(std::shared_ptr<Database> database) : m_database(std::move(database)) {}
    /// The window has been made.
    void Attach(HWND window);

    static std::size_t Count();
    /// The field that works with the table chosen in the form.
    static std::size_t Value() { return Count() - 1; }
    /// The field whose box or button this is.
    static std::optional<std::size_t> At(int control);
    static bool IsButton(int control);
    HWND Box(std::size_t field) const;
    HWND Name(std::size_t field) const;

    /// The field for a class: its own, else the value that the menu works with, set to that class's table.
    std::size_t For(std::wstring_view className) const;
    std::wstring ClassOf(std::size_t field) const;
    void Type(std::size_t field, const std::wstring& text) const;
    void Clear() const;
    /// The name that goes with a code; an empty one with no code. Nothing when the table has no such code.
    std::optional<std::wstring> NameFor(std::size_t field, const std::wstring& code) const;
    void ShowName(std::size_t field) const;
    /// In place of the name.
    void Tell(std::size_t field, const wchar_t* text) const;

private:
    const std::shared_ptr<Database> m_database;
    HWND m_window = nullptr;
};

} // namespace tamvelo::demo
