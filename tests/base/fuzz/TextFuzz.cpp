#include <algorithm>

#include "base/ColumnText.h"
#include "base/FilterText.h"
#include "base/ListChoices.h"
#include "base/SearchModes.h"
#include "base/TraceText.h"
#include "tests/base/fuzz/Check.h"

/// What is pasted, copied, traced, remembered and made into a filter.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamvelo::base;
    const std::wstring text = AnyText(data, size);

    if (const auto values = PastedValues(text)) {
        std::wstring list = L";";
        for (const std::wstring& value : *values) {
            Check(!value.empty() && Trim(value) == value && !PastedValues(value));
            list += value + L"\r\n";
        }
        Check(PastedValues(list) == values);
    }

    // A host's text stays on its line of the trace, and the line stays short.
    const std::wstring shown = TraceText(text);
    Check(std::ranges::none_of(shown, [](wchar_t letter) { return letter < L' '; }));
    Check(shown.size() <= text.size() || shown.size() < kLongestTraceText + 20);
    Check(FromUtf8(ToUtf8(shown)).has_value());

    const std::vector<std::wstring> pieces = Split(text, L"\n");
    Check(Split(TabLine(pieces), L"\t\r\n").size() == pieces.size());
    std::size_t length = 0;
    std::size_t count = 0;
    const std::wstring filter = JoinAnd(pieces);
    for (const std::wstring& piece : pieces) {
        length += piece.size();
        count += piece.empty() ? 0U : 1U;
        Check(filter.find(piece) != std::wstring::npos);
    }
    Check(filter.size() == length + (count > 1 ? (count - 1) * 5 : 0)); // " And " between them
    Check(TrimmedTo(text, 5).size() <= 5 && Fold(Fold(text)) == Fold(text) &&
          Lower(Lower(text)) == Lower(text));

    // The first line is what the settings hold, the others are the titles of today's reports.
    const std::vector<std::wstring> titles(pieces.begin() + 1, pieces.end());
    std::vector<bool> ticks = RestoreTicks(titles, pieces[0]);
    Check(ticks.size() == titles.size());
    for (int turn = 0; turn < 2; ++turn, ticks.flip()) {
        Check(RestoreTicks(titles, RememberTicks(titles, ticks)) == ticks);
    }
    const int index = StoredIndex(pieces[0], static_cast<int>(titles.size()), -1);
    Check(index >= -1 && index < static_cast<int>(titles.size()));
    return 0;
}
