#pragma once

#include "com/WinHeaders.h"

#include "Tamvelo.h" // from idl/Tamvelo.idl

namespace tamvelo::entry {

/// The public class as an early-bound host sees it: the operations in the order of the type library. Objects
/// and strings belong to the caller; a null pointer stands for an optional argument that was left out.
using IClsShowSerch = ::_ClsShowSerch;

/// The DISPID of the first operation; the others follow in order.
inline constexpr DISPID kFirstOperation = 0x60030000;

inline constexpr GUID kLibraryId{
    0x283a5031, 0xa929, 0x41d5, {0x87, 0xcb, 0x3a, 0x29, 0x5c, 0xa1, 0x3e, 0x47}};
inline constexpr CLSID kClsShowSerchId{
    0x043d9058, 0x66c9, 0x47c8, {0xb6, 0xb5, 0x86, 0xe7, 0x43, 0xaf, 0x17, 0x3d}};

} // namespace tamvelo::entry
