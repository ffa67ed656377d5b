#include "frame/RecordMoves.h"

#include <algorithm>
#include <iterator>

#include "base/Commands.h"

namespace tamvelo::frame {

namespace {

struct Move {
    UINT key;
    std::wstring_view command;
    void (contract::DataClass::*run)();
};

using contract::DataClass;
constexpr Move kMoves[] = {
    {VK_HOME, base::kMoveFirst, &DataClass::MoveFirst},
    {VK_UP, base::kMovePre, &DataClass::MovePrevious},
    {VK_DOWN, base::kMoveNext, &DataClass::MoveNext},
    {VK_END, base::kMoveLast, &DataClass::MoveLast},
    {VK_RETURN, base::kAceptar, nullptr},
};

} // namespace

std::wstring_view RecordMoves::CommandOf(UINT key, bool control, bool shift) const {
    const auto* move = std::ranges::find(kMoves, key, &Move::key);
    return control && !shift && move != std::end(kMoves) ? move->command : std::wstring_view();
}

bool RecordMoves::OnCommand(std::wstring_view command) {
    const auto* move = std::ranges::find(kMoves, command, &Move::command);
    if (move == std::end(kMoves) || !move->run) {
        return false;
    }
    (m_data.*move->run)();
    return true;
}

} // namespace tamvelo::frame
