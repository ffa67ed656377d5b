#include "base/FilterText.h"

namespace tamvelo::base {

std::wstring JoinAnd(std::span<const std::wstring> fragments) {
    std::wstring filter;
    for (const std::wstring& fragment : fragments) {
        if (!fragment.empty()) {
            filter += filter.empty() ? L"" : L" And ";
            filter += fragment;
        }
    }
    return filter;
}

} // namespace tamvelo::base
