#include "base/ListChoices.h"

#include <map>
#include <set>
#include <utility>

namespace tamvelo::base {

namespace {

constexpr std::wstring_view kMarks = L"\\|#";

std::wstring Escaped(std::wstring_view title) {
    std::wstring text;
    for (const wchar_t letter : title) {
        if (kMarks.find(letter) != std::wstring_view::npos) {
            text += L'\\';
        }
        text += letter;
    }
    return text;
}

/// What each title is called in the text.
std::vector<std::wstring> NamesOf(std::span<const std::wstring> titles) {
    std::map<std::wstring, int> seen;
    std::vector<std::wstring> names;
    for (const std::wstring& title : titles) {
        std::wstring name = Escaped(title);
        if (const int number = ++seen[title]; number > 1) {
            name += L"#" + std::to_wstring(number);
        }
        names.push_back(std::move(name));
    }
    return names;
}

} // namespace

std::wstring RememberTicks(std::span<const std::wstring> titles, const std::vector<bool>& ticks) {
    const std::vector<std::wstring> names = NamesOf(titles);
    std::wstring text;
    for (size_t i = 0; i < names.size(); ++i) {
        if (i < ticks.size() && ticks[i]) {
            text += names[i] + L"|";
        }
    }
    return text;
}

std::vector<bool> RestoreTicks(std::span<const std::wstring> titles, std::wstring_view remembered) {
    std::set<std::wstring> ticked;
    std::wstring name;
    for (size_t i = 0; i < remembered.size(); ++i) {
        if (remembered[i] == L'|') {
            ticked.insert(std::exchange(name, {}));
        } else {
            name += remembered[i];
            if (remembered[i] == L'\\' && i + 1 < remembered.size()) {
                name += remembered[++i];
            }
        }
    }
    if (!name.empty()) {
        ticked.insert(name); // a text that was cut
    }
    std::vector<bool> ticks;
    for (const std::wstring& own : NamesOf(titles)) {
        ticks.push_back(ticked.contains(own));
    }
    return ticks;
}

} // namespace tamvelo::base
