#pragma once

#include "com/Automation.h"
#include "demo/data/Database.h"

namespace tamvelo::demo {

/// The numbers that record sets raise, the same as ADO's, so that a host's error handlers know them.
inline constexpr HRESULT kInvalidArgument = static_cast<HRESULT>(0x800A0BB9);
inline constexpr HRESULT kNoCurrentRecord = static_cast<HRESULT>(0x800A0BCD);
inline constexpr HRESULT kItemNotFound = static_cast<HRESULT>(0x800A0CC1);
/// Automation's own: an index outside its range.
inline constexpr HRESULT kBadIndex = static_cast<HRESULT>(0x800A0009);

/// Every error of ours, with the host as its source.
class HostError : public com::Error {
public:
    HostError(HRESULT code, std::wstring text) : Error(code, std::move(text), L"Pedidos") {}
};

/// com::Run for members that use the data layer: its errors reach the caller in its own words.
template <auto Function>
void RunData(com::Automation& self, com::Invocation& call) {
    try {
        com::Run<Function>(self, call);
    } catch (const DataError& error) {
        throw HostError(kInvalidArgument, error.Message());
    }
}

} // namespace tamvelo::demo
