#include "base/CursorFiles.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"

namespace tamvelo::base {

namespace {

struct CursorKind {
    std::wstring_view kind, file;
};

constexpr CursorKind kKinds[] = {
    {L"open", L"KvCur.ani"},      {L"save", L"Save.ani"}, {L"wait", L"KvCur1.ani"},
    {L"working", L"working.ani"}, {L"sort", L"sort.ani"},
};

} // namespace

std::wstring_view CursorFile(std::wstring_view kind) {
    const auto* const entry = std::ranges::find(kKinds, Lower(kind), &CursorKind::kind);
    return entry != std::end(kKinds) ? entry->file : kKinds[0].file;
}

} // namespace tamvelo::base
