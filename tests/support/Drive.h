#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

/// A user for modal dialogs, inside the test's own thread.
namespace tamvelo::testing {

/// The window of this thread that takes input: the topmost visible and enabled one.
HWND TopWindow();
std::wstring TextOf(HWND window);
std::wstring ClassOf(HWND window);
/// The text of a message box; "" for any other window.
std::wstring BoxText(HWND window);
/// The key of that name: "Enter", "F4", "A"; 0: none.
UINT KeyNamed(const std::wstring& name);

/// What the user does, one step after the other, inside whatever modal loop is running: steps are taken by a
/// timer, and a timer's turn comes only when every posted message before it has been handled.
class Script {
public:
    /// True: done, go on. False: not yet, ask again.
    using Step = std::function<bool(HWND top)>;

    Script() = default;
    /// Keys, parted by blanks: their names, with "^" or "+" before one that is pressed with Ctrl or Shift;
    /// what follows "'" is typed.
    Script(const wchar_t* keys);
    Script(std::initializer_list<Script> parts) {
        for (const Script& part : parts) {
            Append(part);
        }
    }

    /// A key at the focus; `held` is a modifier or 0.
    Script& Key(UINT key, UINT held = 0);
    Script& Type(std::wstring text);
    Script& Do(std::function<void()> action);
    Script& Until(std::string what, Step condition);
    /// Waits for a message box whose text contains `part` and closes it with Enter.
    Script& Box(std::wstring part);
    Script& Append(const Script& more);

private:
    friend class Player;
    struct NamedStep {
        std::string name;
        Step run;
    };
    std::vector<NamedStep> m_steps;
};

/// Plays a script while it lives. A step that makes no progress for seconds, or a dialog that is left open
/// after the last one, fails the test with a picture and `notes`; then everything is closed.
class Player {
public:
    Player(Script script, std::function<std::string()> notes);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    void Turn();
    void GiveUp(HWND top);

    const Script m_script;
    const std::function<std::string()> m_notes;
    size_t m_at = 0;
    bool m_busy = false;
    bool m_gaveUp = false;
    ULONGLONG m_since = GetTickCount64();
    UINT_PTR m_timer;
};

} // namespace tamvelo::testing
