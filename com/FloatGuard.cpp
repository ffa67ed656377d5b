#include "com/FloatGuard.h"

namespace tamvelo::com {

namespace {

constexpr unsigned short kX87Masked = 0x037F; // all exceptions masked, extended precision, round to nearest
constexpr unsigned int kSseMasked = 0x1F80;

thread_local FloatGuard* g_innermost = nullptr;

bool HasSse() {
    static const bool has = __builtin_cpu_supports("sse") != 0;
    return has;
}

FloatWords Read() {
    FloatWords words{};
    asm volatile("fnstcw %0" : "=m"(words.x87));
    if (HasSse()) {
        asm volatile("stmxcsr %0" : "=m"(words.sse));
    }
    return words;
}

void Write(const FloatWords& words) {
    asm volatile("fnclex"); // a pending exception would fire at the next instruction after unmasking
    asm volatile("fldcw %0" : : "m"(words.x87));
    if (HasSse()) {
        const unsigned int clean = words.sse & ~0x3FU; // the sticky flags are the library's, not the host's
        asm volatile("ldmxcsr %0" : : "m"(clean));
    }
}

} // namespace

FloatGuard::FloatGuard() noexcept : m_host(Read()), m_outer(g_innermost) {
    Write({kX87Masked, kSseMasked});
    g_innermost = this;
}

FloatGuard::~FloatGuard() {
    g_innermost = m_outer;
    Write(m_host);
}

HostFloats::HostFloats() noexcept : m_switched(g_innermost != nullptr) {
    if (m_switched) {
        const FloatGuard* outermost = g_innermost;
        while (outermost->m_outer) {
            outermost = outermost->m_outer;
        }
        Write(outermost->m_host);
    }
}

HostFloats::~HostFloats() {
    if (m_switched) {
        Write({kX87Masked, kSseMasked});
    }
}

} // namespace tamvelo::com
