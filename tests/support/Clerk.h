#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <string>
#include <vector>

namespace tamvelo::testing {

/// Uses whatever dialog opens in this thread while it lives, closes what comes in front of it, and leaves
/// when there is nothing left to do. Unlike a script it takes what comes.
class Clerk {
public:
    /// What it does, parted by blanks: the name of a key or a letter, "^" and "+" before it hold Ctrl and
    /// Shift, ":" before the caption of a tool clicks it, "=" looks whether what was typed is still in its
    /// box; "*" before any of these is for the `patient` one only.
    Clerk(HWND owner, const std::wstring& steps, bool patient, std::function<void(const wchar_t*)> clickTool);
    ~Clerk();
    Clerk(const Clerk&) = delete;
    Clerk& operator=(const Clerk&) = delete;

    std::vector<std::wstring> told; // texts of the boxes
    std::vector<bool> kept;         // what was typed, each time that it was looked for
    bool stuck = false;             // there was always something more to close; its window is destroyed

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    void Turn(bool idle);
    void Step(std::wstring step);

    static inline Clerk* s_clerk = nullptr;
    const HWND m_owner;
    const std::function<void(const wchar_t*)> m_clickTool;
    std::vector<std::wstring> m_steps;
    HWND m_window;
    HWND m_dialog = nullptr;
    HWND m_box = nullptr;
    std::wstring m_typed;
    size_t m_at = 0;
    int m_turns = 0;
    int m_inFront = 0;
    int m_idle = 0;
    bool m_waiting = false;
};

} // namespace tamvelo::testing
