#include "base/ColumnText.h"
#include "base/FilterText.h"
#include "base/SearchModes.h"
#include "tests/base/fuzz/Check.h"

/// What is pasted, copied and made into a filter.
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
    return 0;
}
