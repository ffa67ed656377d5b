#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::com {

/// Told of each call of a host's member, before it and when it is over: for whoever shows that the user
/// waits. `member` is a literal.
struct CallListener {
    void (*calling)(const wchar_t* member) noexcept;
    void (*called)(const wchar_t* member, ULONGLONG milliseconds) noexcept;
};

/// One for the process; it stays.
void SetCallListener(const CallListener& listener) noexcept;

/// Lives as long as one call.
class CallTimer {
public:
    explicit CallTimer(const wchar_t* member) noexcept;
    ~CallTimer();
    CallTimer(const CallTimer&) = delete;
    CallTimer& operator=(const CallTimer&) = delete;

private:
    const CallListener* const m_listener;
    const wchar_t* const m_member;
    ULONGLONG m_since = 0;
};

} // namespace tamvelo::com
