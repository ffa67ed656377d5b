#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::com {

/// Stores `value` into what a by-reference argument points at, converted to its type; what it held is
/// released. An argument by value, or a value that does not convert, is left alone and answered with false.
bool StoreReference(VARIANT& reference, const VARIANT& value) noexcept;

} // namespace tamvelo::com
