#pragma once

#include "com/FloatGuard.h"
#include "tests/support/Fake.h"

namespace tamvelo::testing {

/// While it lives, this thread is one of a host written in Pascal, whose floating-point traps are set, and
/// each call of a fake is looked over from inside: the words must be the host's own, the thread's error
/// object must be gone (every answer leaves one, as hosts do), and name and arguments must be listed in the
/// contract.
class HostChecks final : public CallChecks {
public:
    enum class Traps { AsTheyAre, Set };
    explicit HostChecks(Traps traps);
    ~HostChecks();
    HostChecks(const HostChecks&) = delete;
    HostChecks& operator=(const HostChecks&) = delete;

    /// The host changes each argument by reference: another value, in a Variant of another type.
    bool changesReferences = false;

    void LookedFor(const std::wstring& object, const wchar_t* member) override;
    void Called(const std::wstring& object, const wchar_t* member, WORD flags,
                const DISPPARAMS& parameters) override;
    void Answered(DISPPARAMS& parameters) override;

private:
    const DWORD m_thread = GetCurrentThreadId();
    const com::FloatWords m_before;
    com::FloatWords m_host;
};

} // namespace tamvelo::testing
