#pragma once

#include <string>

#include "com/Automation.h"

namespace tamvelo::testing {

/// Looks over a call into the tests' host.
class CallChecks {
public:
    /// The library looks for a member of that object; calls it; gets the answer.
    virtual void LookedFor(const std::wstring& object, const wchar_t* member) = 0;
    virtual void Called(const std::wstring& object, const wchar_t* member, WORD flags,
                        const DISPPARAMS& parameters) = 0;
    virtual void Answered(DISPPARAMS& parameters) = 0;

protected:
    ~CallChecks() = default;
};

/// Stands for the name of an object's default member.
constexpr wchar_t kOwnValue[] = L"?";

/// An object of the tests' host, with a name that the contract knows.
class Fake : public com::Automation {
public:
    explicit Fake(std::wstring name) : m_name(std::move(name)) {}
    const std::wstring& Name() const { return m_name; }

    /// On every thread, while they live.
    static inline CallChecks* checks = nullptr;

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        if (checks) {
            checks->LookedFor(m_name, names[0]);
        }
        return Automation::GetIDsOfNames(reserved, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown,
                                     UINT* wrong) override {
        if (checks) {
            const wchar_t* called = id == DISPID_NEWENUM ? L"_NewEnum" : kOwnValue;
            for (const com::Member& member : Members()) {
                called = member.id == id ? member.name : called;
            }
            checks->Called(m_name, called, flags, *parameters);
        }
        m_running.push_back(id);
        Entered(id, *parameters);
        const HRESULT code =
            Automation::Invoke(id, reserved, locale, flags, parameters, result, thrown, wrong);
        m_running.pop_back();
        if (checks && SUCCEEDED(code)) {
            checks->Answered(*parameters);
        }
        return code;
    }

protected:
    virtual void Entered(DISPID /*id*/, const DISPPARAMS& /*parameters*/) {}
    /// The member that runs.
    DISPID Running() const { return m_running.back(); }

private:
    const std::wstring m_name;
    std::vector<DISPID> m_running;
};

} // namespace tamvelo::testing
