#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace tamvelo::demo {

/// Something the user does at the keyboard.
struct Stroke {
    enum Kind {
        Text,   // is typed
        Key,    // a virtual key
        Access, // Alt and a letter
        Box,    // a click into the box with that label
    };
    Kind kind;
    const wchar_t* text = L"";
    UINT key = 0;
};

/// The user of one dialog, from before the operation that opens it: what he does there, a look at it, the key
/// that he leaves with. A timer has him act inside the dialog's own loop.
class Visitor {
public:
    Visitor(HWND main, std::wstring name, std::span<const Stroke> strokes, UINT leave);
    ~Visitor();
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;

    /// What went wrong; empty when the dialog came up, was looked at and left.
    std::wstring Complaint() const { return m_left || !m_complaint.empty() ? m_complaint : L"no aparece"; }
    /// Milliseconds until the first window was up and took input.
    ULONGLONG OpenedAfter() const { return m_opened; }

    std::function<void(HWND dialog)> look;
    /// Told on a thread of its own, before the process is ended, when nothing comes back.
    std::function<void(const std::wstring& text)> gaveUp;

private:
    static void CALLBACK GiveUp(void*, BOOLEAN);
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    void Act();
    void Complain(std::wstring text);

    static inline Visitor* s_current = nullptr;
    const HWND m_main;
    const std::wstring m_name;
    const std::span<const Stroke> m_strokes;
    const UINT m_leave;
    std::wstring m_complaint;
    std::size_t m_next = 0;
    HWND m_left = nullptr; // the window that was told to close last
    bool m_busy = false;
    HANDLE m_watchdog = nullptr;
    const ULONGLONG m_start = GetTickCount64();
    ULONGLONG m_opened = 0;
    const UINT_PTR m_timer;
};

} // namespace tamvelo::demo
