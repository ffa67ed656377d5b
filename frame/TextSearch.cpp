#include "frame/TextSearch.h"

#include "com/WinHeaders.h"

namespace tamvelo::frame {

bool Contains(std::wstring_view text, std::wstring_view part) {
    constexpr DWORD kHow = FIND_FROMSTART | NORM_IGNORECASE | NORM_IGNORENONSPACE;
    return part.empty() ||
           FindNLSStringEx(L"es-ES", kHow, text.data(), static_cast<int>(text.size()), part.data(),
                           static_cast<int>(part.size()), nullptr, nullptr, nullptr, 0) >= 0;
}

} // namespace tamvelo::frame
