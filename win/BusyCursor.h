#pragma once

#include "com/WinHeaders.h"

#include <string_view>

/// The busy cursors that dialogs show around long work. They capture the mouse to the form; a missing file
/// shows no cursor and says nothing.
namespace tamvelo::win {

/// The system's wait cursor, or back to the arrow with the capture released.
void PlainBusyCursor(HWND form, bool on);

/// The animated cursor of a kind ("open", "save", "wait", "working", "sort", any case) from the folder
/// "Image" beside the library. Off destroys it, releases the capture and brings the arrow back; off twice is
/// harmless.
void AnimatedBusyCursor(HWND form, bool on, std::wstring_view kind);

/// While it lives, work on so many items is done in a form; the cursor shows if that takes a user's notice.
class BusyWork {
public:
    BusyWork(HWND form, size_t items);
    ~BusyWork();
    BusyWork(const BusyWork&) = delete;
    BusyWork& operator=(const BusyWork&) = delete;

private:
    const bool m_shows;
};

/// While it lives, a command of a form runs. No timer runs with it: a call out shows the cursor beforehand,
/// when the command has taken long already or the same member did the last time. What takes the user's eyes
/// elsewhere (another window, the default pointer) ends it.
class BusyCommand {
public:
    /// `window` is the form's own variable, null once it is gone.
    BusyCommand(const HWND& window, std::wstring_view command) noexcept;
    ~BusyCommand();
    BusyCommand(const BusyCommand&) = delete;
    BusyCommand& operator=(const BusyCommand&) = delete;

    /// It is the user's turn.
    static void End() noexcept;

private:
    static void Calling(const wchar_t* member) noexcept;
    static void Called(const wchar_t* member, ULONGLONG milliseconds) noexcept;

    const HWND& m_window;
    const std::wstring_view m_kind;
    const ULONGLONG m_since;
    BusyCommand* const m_outer;
};

} // namespace tamvelo::win
