#include "base/TraceText.h"

namespace tamvelo::base {

std::wstring TraceText(std::wstring_view text) {
    std::wstring shown(text.substr(0, kLongestTraceText));
    for (wchar_t& letter : shown) {
        letter = letter < L' ' ? L' ' : letter;
    }
    if (text.size() > kLongestTraceText) {
        shown += L"…(" + std::to_wstring(text.size()) + L")";
    }
    return shown;
}

} // namespace tamvelo::base
