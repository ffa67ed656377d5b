#pragma once

#include "com/WinHeaders.h"

#include <string>

namespace tamvelo::demo {

/// What screen readers call a control whose own text does not say it.
void SetAccessibleName(HWND control, const std::wstring& name);

} // namespace tamvelo::demo
