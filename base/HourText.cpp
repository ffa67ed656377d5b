#include "base/HourText.h"

#include "base/Text.h"

namespace tamvelo::base {

namespace {

/// A number of that many digits, below `limit`.
std::optional<int> Number(std::wstring_view digits, size_t least, size_t most, int limit) {
    if (digits.size() < least || digits.size() > most) {
        return std::nullopt;
    }
    int number = 0;
    for (const wchar_t c : digits) {
        if (c < L'0' || c > L'9') {
            return std::nullopt;
        }
        number = number * 10 + (c - L'0');
    }
    return number < limit ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<int> ParseHour(std::wstring_view text) {
    text = Trim(text);
    const size_t mark = text.find_first_of(L":.");
    const bool marked = mark != std::wstring_view::npos;
    const size_t hourEnd = marked ? mark : text.size() > 2 ? text.size() - 2 : text.size();
    const bool hasMinutes = marked || hourEnd < text.size();
    const auto hour = Number(text.substr(0, hourEnd), 1, 2, 24);
    const auto minute =
        hasMinutes ? Number(text.substr(hourEnd + (marked ? 1 : 0)), 2, 2, 60) : std::optional(0);
    return hour && minute ? std::optional(*hour * 60 + *minute) : std::nullopt;
}

} // namespace tamvelo::base
