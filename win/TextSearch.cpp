#include "win/TextSearch.h"

#include "com/WinHeaders.h"

namespace tamvelo::win {

namespace {

/// Where it is, -1 when it is nowhere.
int Find(DWORD where, std::wstring_view text, std::wstring_view part) {
    return FindNLSStringEx(L"es-ES", where | NORM_IGNORECASE | NORM_IGNORENONSPACE, text.data(),
                           static_cast<int>(text.size()), part.data(), static_cast<int>(part.size()), nullptr,
                           nullptr, nullptr, 0);
}

} // namespace

bool Contains(std::wstring_view text, std::wstring_view part) {
    return part.empty() || Find(FIND_FROMSTART, text, part) >= 0;
}

bool StartsWith(std::wstring_view text, std::wstring_view part) {
    return part.empty() || Find(FIND_STARTSWITH, text, part) >= 0;
}

} // namespace tamvelo::win
