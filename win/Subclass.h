#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::win {

/// Sees the messages of a window of another class before the window does. Ends with the window or before it;
/// a window may have several.
class Subclass {
public:
    Subclass(const Subclass&) = delete;
    Subclass& operator=(const Subclass&) = delete;

protected:
    explicit Subclass(HWND window);
    virtual ~Subclass();

    /// Null once the window has gone.
    HWND Window() const { return m_window; }
    /// The answer to a message; it may destroy the window and this object. What it throws is dropped: whoever
    /// may fail traps that himself, so that only memory can be short.
    virtual LRESULT Handle(UINT message, WPARAM first, LPARAM second) = 0;
    /// What the window itself makes of a message.
    LRESULT Default(UINT message, WPARAM first, LPARAM second) const;
    /// The window has gone; the object may go, too.
    virtual void OnWindowGone() noexcept {}

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                      DWORD_PTR data) noexcept;

    HWND m_window;
};

} // namespace tamvelo::win
