#include "base/Text.h"

#include <array>
#include <cstdint>
#include <limits>

namespace tamvelo::base {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr std::wstring_view kSpaces = L" \t\r\n\v\f";

constexpr bool IsLeadSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsTrailSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void AppendWide(std::wstring& text, char32_t codePoint) {
    if (sizeof(wchar_t) == 2 && codePoint > 0xFFFF) {
        const char32_t offset = codePoint - 0x10000;
        text += static_cast<wchar_t>(0xD800 + (offset >> 10));
        text += static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
    } else {
        text += static_cast<wchar_t>(codePoint);
    }
}

void AppendUtf8(std::string& utf8, char32_t codePoint) {
    const auto continuation = [&](int shift) {
        utf8 += static_cast<char>(0x80 | ((codePoint >> shift) & 0x3F));
    };
    if (codePoint < 0x80) {
        utf8 += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        utf8 += static_cast<char>(0xC0 | (codePoint >> 6));
        continuation(0);
    } else if (codePoint < 0x10000) {
        utf8 += static_cast<char>(0xE0 | (codePoint >> 12));
        continuation(6);
        continuation(0);
    } else {
        utf8 += static_cast<char>(0xF0 | (codePoint >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

/// What the first byte of a sequence promises; `least` is what the length is needed for (less is overlong).
struct Utf8Form {
    unsigned char mask, lead;
    int length;
    char32_t least;
};
constexpr std::array<Utf8Form, 4> kUtf8Forms = {{
    {0x80, 0x00, 1, 0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
}};

/// Takes one code point off the front of `utf8`.
std::optional<char32_t> TakeCodePoint(std::string_view& utf8) {
    const auto first = static_cast<unsigned char>(utf8[0]);
    for (const Utf8Form& form : kUtf8Forms) {
        if ((first & form.mask) != form.lead) {
            continue;
        }
        if (utf8.size() < static_cast<std::size_t>(form.length)) {
            return std::nullopt;
        }
        auto codePoint = static_cast<char32_t>(first & ~form.mask & 0xFF);
        for (int i = 1; i < form.length; ++i) {
            const auto next = static_cast<unsigned char>(utf8[static_cast<std::size_t>(i)]);
            if ((next & 0xC0) != 0x80) {
                return std::nullopt;
            }
            codePoint = (codePoint << 6) | (next & 0x3F);
        }
        if (codePoint < form.least || codePoint > kLastCodePoint || IsLeadSurrogate(codePoint) ||
            IsTrailSurrogate(codePoint)) {
            return std::nullopt;
        }
        utf8.remove_prefix(static_cast<std::size_t>(form.length));
        return codePoint;
    }
    return std::nullopt;
}

} // namespace

std::wstring Lower(std::wstring_view text) {
    std::wstring lower(text);
    for (wchar_t& c : lower) {
        const bool ascii = c >= L'A' && c <= L'Z';
        const bool latin = c >= 0xC0 && c <= 0xDE && c != 0xD7; // 0xD7 is the multiplication sign
        if (ascii || latin) {
            c = static_cast<wchar_t>(c + 0x20);
        }
    }
    return lower;
}

std::wstring Fold(std::wstring_view text) {
    // What remains of U+00E0 to U+00FF; a dot is a letter that stays as it is.
    constexpr std::wstring_view kBare = L"aaaaaa.ceeeeiiii..ooooo..uuuuy.y";
    std::wstring folded = Lower(text);
    for (wchar_t& c : folded) {
        if (c >= 0xE0 && c <= 0xFF && kBare[c - 0xE0u] != L'.') {
            c = kBare[c - 0xE0u];
        }
    }
    return folded;
}

std::wstring_view Trim(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(kSpaces);
    if (first == std::wstring_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

std::wstring WithLineEnds(std::wstring_view text, std::wstring_view end) {
    std::wstring made;
    made.reserve(text.size());
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == L'\n' && at > 0 && text[at - 1] == L'\r') {
            continue; // the second half
        }
        if (text[at] == L'\r' || text[at] == L'\n') {
            made += end;
        } else {
            made += text[at] == L'\0' ? L' ' : text[at];
        }
    }
    return made;
}

std::vector<std::wstring> Split(std::wstring_view text, std::wstring_view separators) {
    std::vector<std::wstring> pieces;
    for (;;) {
        const std::size_t end = text.find_first_of(separators);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::wstring_view::npos) {
            return pieces;
        }
        text.remove_prefix(end + 1);
    }
}

std::optional<std::wstring> FromUtf8(std::string_view utf8) {
    std::wstring text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::optional<char32_t> codePoint = TakeCodePoint(utf8);
        if (!codePoint) {
            return std::nullopt;
        }
        AppendWide(text, *codePoint);
    }
    return text;
}

std::string ToUtf8(std::wstring_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto codePoint = static_cast<char32_t>(text[i]);
        const char32_t next = i + 1 < text.size() ? static_cast<char32_t>(text[i + 1]) : 0;
        if (sizeof(wchar_t) == 2 && IsLeadSurrogate(codePoint) && IsTrailSurrogate(next)) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        } else if (IsLeadSurrogate(codePoint) || IsTrailSurrogate(codePoint) || codePoint > kLastCodePoint) {
            codePoint = kReplacement;
        }
        AppendUtf8(utf8, codePoint);
    }
    return utf8;
}

std::optional<long> ParseLong(std::wstring_view text) {
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+')) {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    const std::int64_t most = std::numeric_limits<std::int32_t>::max() + (negative ? std::int64_t{1} : 0);
    std::int64_t number = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9') {
            return std::nullopt;
        }
        number = number * 10 + (c - L'0');
        if (number > most) {
            return std::nullopt;
        }
    }
    return static_cast<long>(negative ? -number : number);
}

} // namespace tamvelo::base
