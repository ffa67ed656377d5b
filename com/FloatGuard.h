#pragma once

namespace tamvelo::com {

/// The floating-point environment of a thread: the control words of the x87 unit and of SSE.
struct FloatWords {
    unsigned short x87;
    unsigned int sse;
};

/// Masks floating-point exceptions for the length of a library call. Pascal hosts run with them unmasked, and
/// the system's own drawing and date code raises them; the host's control words are back when the guard goes.
class FloatGuard {
public:
    FloatGuard() noexcept;
    ~FloatGuard();
    FloatGuard(const FloatGuard&) = delete;
    FloatGuard& operator=(const FloatGuard&) = delete;

private:
    friend class HostFloats;
    FloatWords m_host;
    FloatGuard* m_outer;
};

/// Gives the host its own control words back while one of its members runs inside a library call.
class HostFloats {
public:
    HostFloats() noexcept;
    ~HostFloats();
    HostFloats(const HostFloats&) = delete;
    HostFloats& operator=(const HostFloats&) = delete;

private:
    bool m_switched;
};

} // namespace tamvelo::com
