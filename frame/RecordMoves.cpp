#include "frame/RecordMoves.h"

#include "base/Commands.h"

namespace tamvelo::frame {

std::span<const KeyRow> RecordMoves::Keys() const {
    static constexpr KeyRow kKeys[] = {
        {0, kCtrl | VK_HOME, base::kMoveFirst}, {0, kCtrl | VK_UP, base::kMovePre},
        {0, kCtrl | VK_DOWN, base::kMoveNext},  {0, kCtrl | VK_END, base::kMoveLast},
        {0, kCtrl | VK_RETURN, base::kAceptar},
    };
    return kKeys;
}

std::span<const CommandRow> RecordMoves::Commands() const {
    using M = RecordMoves;
    static constexpr CommandRow kCommands[] = {
        {base::kMoveFirst, Do<&M::MoveFirst>},
        {base::kMovePre, Do<&M::MovePrevious>},
        {base::kMoveNext, Do<&M::MoveNext>},
        {base::kMoveLast, Do<&M::MoveLast>},
    };
    return kCommands;
}

} // namespace tamvelo::frame
