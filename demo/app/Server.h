#pragma once

#include <string>

#include "com/LateObject.h"

namespace tamvelo::demo {

inline constexpr wchar_t kProgId[] = L"Tamvelo.ClsShowSerch";
inline constexpr CLSID kClsShowSerch = {
    0x043d9058, 0x66c9, 0x47c8, {0xb6, 0xb5, 0x86, 0xe7, 0x43, 0xaf, 0x17, 0x3d}};

/// A new Tamvelo.ClsShowSerch: of the registered library, else of Tamvelo.dll beside this program. Throws
/// com::Error.
com::LateObject MakeShowSerch();

/// The folder of this program, without a backslash at the end.
std::wstring ProgramFolder();

} // namespace tamvelo::demo
