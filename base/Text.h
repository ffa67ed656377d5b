#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamvelo::base {

/// Lower case of the ASCII and Latin-1 letters (so Ñ and Á too), the same under every locale.
std::wstring Lower(std::wstring_view text);

/// The text as it is compared when something is looked for: in lower case and without accents, so that
/// "informacion" finds "Información". The ñ is a letter of its own and stays.
std::wstring Fold(std::wstring_view text);

/// The text without the ASCII white space at its ends. Views into `text`.
std::wstring_view Trim(std::wstring_view text);

/// The text with `end` in place of each line end (CR LF, CR or LF), and a space in place of each zero, at
/// which the system's controls would stop.
std::wstring WithLineEnds(std::wstring_view text, std::wstring_view end);

/// The pieces between any of the separator characters, empty ones included; an empty text is one empty piece.
std::vector<std::wstring> Split(std::wstring_view text, std::wstring_view separators);

/// Strict: nothing for overlong forms, surrogates, code points above U+10FFFF and cut sequences.
std::optional<std::wstring> FromUtf8(std::string_view utf8);

/// Never fails: a surrogate without its partner, or a unit that is no code point, becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

/// The whole text as a decimal number with an optional sign; nothing when it holds anything else or does not
/// fit in 32 bits (the range of `long` on the shipping platform).
std::optional<long> ParseLong(std::wstring_view text);

} // namespace tamvelo::base
