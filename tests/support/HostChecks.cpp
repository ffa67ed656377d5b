#include "tests/support/HostChecks.h"

#include <gtest/gtest.h>

#include "base/Text.h"
#include "com/Variant.h"
#include "tests/support/Contract.h"

namespace tamvelo::testing {

namespace {

constexpr com::FloatWords kPascal{0x1332, 0x1900};
constexpr unsigned kFlags = 0x3F; // of the last operations, no setting

com::FloatWords Words() {
    com::FloatWords words{};
    asm volatile("fnstcw %0" : "=m"(words.x87));
    asm volatile("stmxcsr %0" : "=m"(words.sse));
    return words;
}

void Set(const com::FloatWords& words) {
    asm volatile("fnclex");
    asm volatile("fldcw %0" : : "m"(words.x87));
    asm volatile("ldmxcsr %0" : : "m"(words.sse));
}

/// As runtimes do that keep the last error of the thread, whatever became of it.
void LeaveAnError() {
    com::ComPtr<ICreateErrorInfo> made;
    com::ComPtr<IErrorInfo> info;
    if (SUCCEEDED(CreateErrorInfo(&made)) && SUCCEEDED(made->QueryInterface(IID_PPV_ARGS(&info)))) {
        made->SetDescription(const_cast<LPOLESTR>(L"Error de una llamada anterior"));
        SetErrorInfo(0, info.Get());
    }
}

/// "columna 3" is one of the kind "Column".
std::wstring KindOf(const std::wstring& object) {
    return object.starts_with(L"columna ") ? L"Column" : object;
}

/// The value by reference becomes another one; a Variant gets another type, and what is no Variant lets its
/// cell become one, as hosts do that work in their arguments' place.
void Change(VARIANT& argument) {
    switch (argument.vt ^ VT_BYREF) {
    case VT_I2:
        *argument.piVal = static_cast<short>(*argument.piVal + 77);
        break;
    case VT_BOOL:
        *argument.pboolVal = static_cast<VARIANT_BOOL>(~*argument.pboolVal);
        break;
    case VT_DATE:
        *argument.pdate += 1000;
        break;
    case VT_BSTR:
        SysReAllocString(argument.pbstrVal, L"cambiado");
        break;
    case VT_DISPATCH:
        if (*argument.ppdispVal) {
            (*argument.ppdispVal)->Release();
            *argument.ppdispVal = nullptr;
        }
        break;
    case VT_VARIANT: {
        com::Variant other = argument.pvarVal->vt == VT_BSTR ? com::Variant(77L) : com::Variant(L"cambiado");
        VariantClear(argument.pvarVal);
        *argument.pvarVal = other.Detach();
        return;
    }
    default:
        return;
    }
    argument.vt = VT_I4;
    argument.lVal = 77;
}

} // namespace

HostChecks::HostChecks(Traps traps) : m_before(Words()), m_host(m_before) {
    Fake::checks = this;
    if (traps == Traps::Set) {
        Set(kPascal);
        m_host = Words(); // the processor has a bit of its own
    }
}

HostChecks::~HostChecks() {
    Set(m_before);
    Fake::checks = nullptr;
}

void HostChecks::LookedFor(const std::wstring& object, const wchar_t* member) {
    if (!IsListed(KindOf(object), member)) {
        ADD_FAILURE() << "not in the contract: the name " << base::ToUtf8(object + L"." + member);
    }
}

void HostChecks::Called(const std::wstring& object, const wchar_t* member, WORD flags,
                        const DISPPARAMS& parameters) {
    const std::string call = base::ToUtf8(object + L"." + member);
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (!IsListed(KindOf(object), member, put, parameters)) {
        ADD_FAILURE() << "not in the contract: " << call << " with these arguments";
    }
    const com::FloatWords now = Words();
    if (GetCurrentThreadId() == m_thread &&
        (now.x87 != m_host.x87 || (now.sse | kFlags) != (m_host.sse | kFlags))) {
        ADD_FAILURE() << "not the host's floating-point words in " << call << ": " << std::hex << now.x87
                      << " " << now.sse;
    }
    com::ComPtr<IErrorInfo> left;
    if (GetErrorInfo(0, &left) == S_OK) {
        ADD_FAILURE() << "an error object from before in " << call;
    }
}

void HostChecks::Answered(DISPPARAMS& parameters) {
    for (UINT i = 0; changesReferences && i < parameters.cArgs; ++i) {
        if (parameters.rgvarg[i].vt & VT_BYREF) {
            Change(parameters.rgvarg[i]);
        }
    }
    LeaveAnError();
}

} // namespace tamvelo::testing
