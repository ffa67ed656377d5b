#include "com/CallTimer.h"

#include <atomic>

namespace tamvelo::com {

namespace {

std::atomic<const CallListener*> g_listener = nullptr;

} // namespace

void SetCallListener(const CallListener& listener) noexcept { g_listener = &listener; }

CallTimer::CallTimer(const wchar_t* member) noexcept : m_listener(g_listener), m_member(member) {
    if (m_listener) {
        m_listener->calling(member);
        m_since = GetTickCount64();
    }
}

CallTimer::~CallTimer() {
    if (m_listener) {
        m_listener->called(m_member, GetTickCount64() - m_since);
    }
}

} // namespace tamvelo::com
