#pragma once

#include "com/WinHeaders.h"

#include <filesystem>

namespace tamvelo::demo {

/// The manual's first page: in the folder, or one or two above it, as `docs\manual` or `manual`. Empty when
/// there is none.
std::filesystem::path FindManual(const std::filesystem::path& folder);

/// Shows it in whatever the user reads pages with. Throws com::Error when that fails.
void OpenManual(HWND owner);

} // namespace tamvelo::demo
