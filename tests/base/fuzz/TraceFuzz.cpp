#include <algorithm>

#include "base/TraceText.h"
#include "tests/base/fuzz/Check.h"

/// A host's text stays on its line of the trace, and the line stays short.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamvelo::base;
    const std::wstring text = AnyText(data, size);
    const std::wstring shown = TraceText(text);
    Check(std::ranges::none_of(shown, [](wchar_t letter) { return letter < L' '; }));
    Check(shown.size() <= text.size() || shown.size() < kLongestTraceText + 20);
    Check(FromUtf8(ToUtf8(shown)).has_value());
    return 0;
}
