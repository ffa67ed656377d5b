#pragma once

#include <string_view>

namespace tamvelo::base {

/// Whether text that came from the host may stand as ONE component of a file name: not empty, at most 120
/// characters, nothing that Windows reads as a separator, drive, stream, wildcard, device or relative folder,
/// and nothing it would silently drop (a trailing dot or space).
bool IsPlainPathComponent(std::wstring_view text);

} // namespace tamvelo::base
