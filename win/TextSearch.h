#pragma once

#include <string_view>

namespace tamvelo::win {

// As a Spanish reader looks for it: without regard to case, in every script, and to accents; the ñ is a
// letter of its own. An empty part is everywhere.
bool Contains(std::wstring_view text, std::wstring_view part);
bool StartsWith(std::wstring_view text, std::wstring_view part);

} // namespace tamvelo::win
