#pragma once

#include "com/WinHeaders.h"

#include <optional>
#include <string>

namespace tamvelo::environment {

/// The user's text values in the registry. Reading never fails: what cannot be read is absent.
std::optional<std::wstring> ReadRegistryText(const std::wstring& key, const std::wstring& name);
/// Creates the key. Throws com::Error when the registry refuses.
void WriteRegistryText(const std::wstring& key, const std::wstring& name, const std::wstring& value);

} // namespace tamvelo::environment
