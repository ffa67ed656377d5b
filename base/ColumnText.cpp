#include "base/ColumnText.h"

namespace tamvelo::base {

std::wstring TabLine(std::span<const std::wstring> cells) {
    std::wstring line;
    for (const std::wstring& cell : cells) {
        if (&cell != cells.data()) {
            line += L'\t';
        }
        for (const wchar_t c : cell) {
            line += c == L'\t' || c == L'\r' || c == L'\n' ? L' ' : c;
        }
    }
    return line;
}

} // namespace tamvelo::base
