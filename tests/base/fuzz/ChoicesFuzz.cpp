#include "base/ListChoices.h"
#include "base/SearchModes.h"
#include "tests/base/fuzz/Check.h"

/// The first line is what the settings hold, the others are the titles of today's reports.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamvelo::base;
    std::vector<std::wstring> titles = Split(AnyText(data, size), L"\n");
    const std::wstring stored = titles.front();
    titles.erase(titles.begin());

    const std::vector<bool> ticks = RestoreTicks(titles, stored);
    Check(ticks.size() == titles.size());
    Check(RestoreTicks(titles, RememberTicks(titles, ticks)) == ticks);
    std::vector<bool> others = ticks;
    others.flip();
    Check(RestoreTicks(titles, RememberTicks(titles, others)) == others);

    const int index = StoredIndex(stored, static_cast<int>(titles.size()), -1);
    Check(index >= -1 && index < static_cast<int>(titles.size()));
    return 0;
}
