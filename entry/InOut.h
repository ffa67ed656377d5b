#pragma once

#include <string>
#include <utility>

#include "com/Variant.h"

namespace tamvelo::entry {

inline void FromHost(short host, short& own) { own = host; }
inline void FromHost(VARIANT_BOOL host, bool& own) { own = host != VARIANT_FALSE; }
inline void FromHost(BSTR host, std::wstring& own) {
    own = host ? std::wstring(host, SysStringLen(host)) : std::wstring();
}

inline void ToHost(short own, short& host) noexcept { host = own; }
inline void ToHost(bool own, VARIANT_BOOL& host) noexcept { host = own ? VARIANT_TRUE : VARIANT_FALSE; }
inline void ToHost(const std::wstring& own, BSTR& host) noexcept {
    // A host that is out of memory keeps what it had.
    SysReAllocStringLen(&host, own.c_str(), static_cast<UINT>(own.size()));
}

/// A by-reference argument as a variable of our own. When the scope ends the host's variable gets the new
/// value, but only if it changed: a host's own True, or a string with an odd length, comes back untouched.
template <class Own, class Host>
class InOut {
public:
    /// A null `host` is an optional argument that was left out; the variable then starts as `omitted`.
    InOut(Host* host, Own omitted) : m_host(host), m_own(std::move(omitted)) {
        if (host) {
            FromHost(*host, m_own);
        }
        m_before = m_own;
    }
    ~InOut() {
        if (m_host && m_own != m_before) {
            ToHost(m_own, *m_host);
        }
    }
    InOut(const InOut&) = delete;
    InOut& operator=(const InOut&) = delete;

    operator Own&() { return m_own; }

private:
    Host* m_host;
    Own m_own;
    Own m_before;
};

using ShortInOut = InOut<short, short>;
using BoolInOut = InOut<bool, VARIANT_BOOL>;
using TextInOut = InOut<std::wstring, BSTR>;

} // namespace tamvelo::entry
