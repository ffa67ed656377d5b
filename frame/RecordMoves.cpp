#include "frame/RecordMoves.h"

#include <algorithm>
#include <iterator>

#include "base/Commands.h"

namespace tamvelo::frame {

namespace {

struct Move {
    std::wstring_view command;
    void (contract::DataClass::*run)();
};

using contract::DataClass;
constexpr Move kMoves[] = {
    {base::kMoveFirst, &DataClass::MoveFirst},
    {base::kMovePre, &DataClass::MovePrevious},
    {base::kMoveNext, &DataClass::MoveNext},
    {base::kMoveLast, &DataClass::MoveLast},
};

} // namespace

std::span<const KeyRow> RecordMoves::Keys() const {
    static constexpr KeyRow kKeys[] = {
        {0, kCtrl | VK_HOME, base::kMoveFirst}, {0, kCtrl | VK_UP, base::kMovePre},
        {0, kCtrl | VK_DOWN, base::kMoveNext},  {0, kCtrl | VK_END, base::kMoveLast},
        {0, kCtrl | VK_RETURN, base::kAceptar},
    };
    return kKeys;
}

bool RecordMoves::OnCommand(std::wstring_view command) {
    const auto* move = std::ranges::find(kMoves, command, &Move::command);
    if (move == std::end(kMoves)) {
        return false;
    }
    (m_data.*move->run)();
    return true;
}

} // namespace tamvelo::frame
