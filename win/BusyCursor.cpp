#include "win/BusyCursor.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/Commands.h"
#include "base/CursorFiles.h"
#include "com/CallTimer.h"
#include "com/Module.h"
#include "win/MousePointer.h"

namespace tamvelo::win {

namespace {

constexpr ULONGLONG kLong = 500;    // milliseconds that a user waits without wondering
constexpr size_t kManyItems = 2000; // that a list takes without a pause

thread_local HCURSOR g_animated = nullptr;
thread_local BusyCommand* g_command = nullptr; // the innermost
thread_local bool g_shown = false;
thread_local const wchar_t* g_slow[8] = {}; // members that took long the last time; the oldest goes first

/// What a command does, as its cursor shows it; others make the user wait.
constexpr std::pair<std::wstring_view, std::wstring_view> kKinds[] = {
    {base::kOrdenAsc, L"sort"},
    {base::kOrdenDesc, L"sort"},
    {base::kAceptar, L"save"},
};

std::wstring_view KindOf(std::wstring_view command) {
    const auto* const row =
        std::ranges::find(kKinds, command, &std::pair<std::wstring_view, std::wstring_view>::first);
    return row != std::end(kKinds) ? row->second : L"wait";
}

/// Null when the path has characters outside the ANSI code page: then there is no such file to this function.
HCURSOR LoadAnimated(const std::wstring& path) {
    char narrow[MAX_PATH];
    BOOL lost = FALSE;
    const int length =
        WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, narrow, ARRAYSIZE(narrow), nullptr, &lost);
    return length > 0 && !lost ? LoadCursorFromFileA(narrow) : nullptr;
}

} // namespace

void PlainBusyCursor(HWND form, bool on) {
    if (on) {
        SetCapture(form);
        SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(32514)));
    } else {
        ReleaseCapture();
        SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)));
    }
}

void AnimatedBusyCursor(HWND form, bool on, std::wstring_view kind) {
    if (on) {
        AnimatedBusyCursor(form, false, kind); // a second "on" must not lose the first one's handle
        SetCapture(form);
        g_animated =
            LoadAnimated(com::Module::Folder() + L"\\Image\\" + std::wstring(base::CursorFile(kind)));
        SetCursor(g_animated);
        return;
    }
    PlainBusyCursor(form, false); // the arrow first: a cursor in use is not destroyed
    if (g_animated) {
        DestroyCursor(g_animated);
        g_animated = nullptr;
    }
}

BusyWork::BusyWork(HWND form, size_t items) : m_shows(items >= kManyItems) {
    if (m_shows) {
        AnimatedBusyCursor(form, true, L"working");
    }
}

BusyWork::~BusyWork() {
    if (m_shows) {
        g_shown = true;
        BusyCommand::End();
    }
}

BusyCommand::BusyCommand(const HWND& window, std::wstring_view command) noexcept
    : m_window(window),
      m_kind(KindOf(command)),
      m_since(GetTickCount64()),
      m_outer(std::exchange(g_command, this)) {
    static constexpr com::CallListener kListener{Calling, Called};
    com::SetCallListener(kListener);
}

BusyCommand::~BusyCommand() {
    End();
    g_command = m_outer;
}

void BusyCommand::Calling(const wchar_t* member) noexcept {
    const BusyCommand* const command = g_command;
    // A form that is hidden, or has another window before it, leaves the mouse to the host.
    if (!command || g_shown || !MousePointer::IsHourglass() || !command->m_window ||
        GetActiveWindow() != command->m_window) {
        return;
    }
    if (GetTickCount64() - command->m_since >= kLong ||
        std::ranges::find(g_slow, member) != std::end(g_slow)) {
        AnimatedBusyCursor(command->m_window, true, command->m_kind);
        g_shown = true;
    }
}

void BusyCommand::Called(const wchar_t* member, ULONGLONG milliseconds) noexcept {
    auto* const known = std::ranges::find(g_slow, member);
    if (milliseconds < kLong && known != std::end(g_slow)) {
        *known = nullptr;
    } else if (milliseconds >= kLong && known == std::end(g_slow)) {
        std::rotate(std::begin(g_slow), std::begin(g_slow) + 1, std::end(g_slow));
        g_slow[std::size(g_slow) - 1] = member;
    }
}

void BusyCommand::End() noexcept {
    if (std::exchange(g_shown, false)) {
        AnimatedBusyCursor(nullptr, false, {});
        if (MousePointer::IsHourglass()) {
            MousePointer::Hourglass(); // the command goes on
        }
    }
}

} // namespace tamvelo::win
