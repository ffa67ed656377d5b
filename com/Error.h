#pragma once

#include "com/WinHeaders.h"

#include <exception>
#include <string>
#include <string_view>

namespace tamvelo::com {

/// The one error type thrown inside the library: number, source and description as a user or a host sees
/// them. `number` is always a failure HRESULT; a host's own 16-bit error number n is carried as 0x800A0000 |
/// n, which automation clients read back as n.
struct Error : std::exception {
    HRESULT number;
    std::wstring source;
    std::wstring description;
    std::wstring call;     // "«MyClase».Requery" when it came out of a call to the host
    std::wstring helpFile; // as the host gave them
    DWORD helpContext = 0;

    Error(HRESULT number, std::wstring description, std::wstring source = kOwnSource);
    const char* what() const noexcept override { return "tamvelo::com::Error"; }

    static constexpr wchar_t kOwnSource[] = L"Tamvelo";
};

/// Throws unless `result` succeeded; an empty description becomes the system's text for the code.
void Check(HRESULT result, std::wstring_view description = {});

/// Throws the calling thread's last Win32 error.
[[noreturn]] void ThrowLastError(std::wstring_view description);

/// The system's text for a code, without the line end; never empty.
std::wstring SystemText(HRESULT number);

/// The error that is being handled: call inside a catch block only.
Error CurrentError() noexcept;

/// The error that a failed Invoke left behind, taken from `info` (released), else from the thread's error
/// object. `call` names object and member: it is the source of an error that came without one, and stands
/// before the system's text for one that came without a description.
Error ErrorOfInvoke(HRESULT result, EXCEPINFO& info, const std::wstring& call);

/// The description with the call that failed, where it does not name it itself: what a user is told.
std::wstring DescriptionWithCall(const Error& error);

/// Hands an error to an early-bound caller (the thread's error object) and returns its number.
HRESULT PublishError(const Error& error, REFIID interfaceId) noexcept;

/// Hands an error to a late-bound caller and returns DISP_E_EXCEPTION; `info` may be null.
HRESULT FillExcepInfo(const Error& error, EXCEPINFO* info) noexcept;

} // namespace tamvelo::com
