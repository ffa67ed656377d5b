#include "base/MessageText.h"

#include "base/Text.h"

namespace tamvelo::base {

namespace {

constexpr std::size_t kLines = 12;
constexpr std::size_t kLetters = 80; // in a line

} // namespace

std::wstring Shortened(std::wstring_view text, std::size_t most) {
    if (text.size() <= most) {
        return std::wstring(text);
    }
    return std::wstring(text.substr(0, most - 1)) + L"…";
}

std::wstring Named(std::wstring_view text) {
    constexpr std::size_t kMost = 100;
    return Shortened(WithLineEnds(text.substr(0, 2 * kMost), L" "), kMost);
}

std::wstring MessageText(std::wstring_view text) {
    // More than all lines hold is never needed.
    const std::wstring all = WithLineEnds(text.substr(0, 2 * kLines * kLetters), L"\n");
    std::wstring shown;
    std::size_t lines = 1;
    std::size_t line = 0;  // letters in it
    std::size_t solid = 0; // of which the last so many have no blank between them
    std::size_t at = 0;
    for (; at < all.size(); ++at) {
        const bool ends = all[at] == L'\n';
        if (ends || line == kLetters) {
            if (++lines > kLines) {
                break;
            }
            if (!ends && solid >= kLetters) {
                shown += L'\n';
                solid = 0;
            }
            line = 0;
        }
        shown += all[at];
        line += ends ? 0 : 1;
        solid = ends || all[at] == L' ' ? 0 : solid + 1;
    }
    if (at < all.size() || all.size() < text.size()) {
        shown += L"…\n\n(El texto completo, de " + std::to_wstring(text.size()) +
                 L" caracteres, queda en la traza si está activada.)";
    }
    return shown;
}

} // namespace tamvelo::base
