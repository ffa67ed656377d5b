#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace tamvelo::base {

/// The least recently used blocks of rows give way to new ones. `Block` is whatever holds the cells of
/// kRowsPerBlock rows. An epoch is a state of the record set: what was read in an earlier one is never found,
/// and a block whose reading began before the epoch changed (the host may do anything while it is read) is
/// not taken in. A few blocks are meant: look-ups walk the slots and never allocate.
template <class Block>
class BlockCache {
public:
    static constexpr long kRowsPerBlock = 64;

    explicit BlockCache(std::size_t capacity) { m_slots.resize(capacity); }

    static constexpr long BlockOf(long row) { return row / kRowsPerBlock; }
    static constexpr long FirstRow(long block) { return block * kRowsPerBlock; }

    std::uint32_t Epoch() const { return m_epoch; }

    /// Forgets every block and begins a new epoch.
    void BumpEpoch() {
        ++m_epoch;
        for (Slot& slot : m_slots) {
            slot = Slot{};
        }
    }

    /// First rows of the blocks that are kept, in order.
    std::vector<long> FirstRows() const {
        std::vector<long> rows;
        for (const Slot& slot : m_slots) {
            if (slot.lastUse != 0) {
                rows.push_back(FirstRow(slot.number));
            }
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    /// The block that holds the row, or null. Good until the next Insert or BumpEpoch.
    Block* Find(long row) {
        Slot* slot = SlotOf(BlockOf(row));
        return slot != nullptr ? Touch(*slot) : nullptr;
    }

    /// Keeps the block that holds the row, in place of an older reading of it or of the block unused for
    /// longest. Null, and the block is dropped, when `epoch` (the one in which its reading began) is over.
    Block* Insert(std::uint32_t epoch, long row, Block block) {
        if (epoch != m_epoch || m_slots.empty()) {
            return nullptr;
        }
        Slot* slot = SlotOf(BlockOf(row));
        if (slot == nullptr) {
            slot = &Oldest();
        }
        slot->number = BlockOf(row);
        slot->block = std::move(block);
        return Touch(*slot);
    }

private:
    struct Slot {
        long number = -1;
        std::uint64_t lastUse = 0;
        Block block{};
    };

    Slot* SlotOf(long number) {
        for (Slot& slot : m_slots) {
            if (slot.number == number && slot.lastUse != 0) {
                return &slot;
            }
        }
        return nullptr;
    }

    Slot& Oldest() {
        Slot* oldest = &m_slots.front();
        for (Slot& slot : m_slots) {
            if (slot.lastUse < oldest->lastUse) {
                oldest = &slot;
            }
        }
        return *oldest;
    }

    Block* Touch(Slot& slot) {
        slot.lastUse = ++m_clock;
        return &slot.block;
    }

    std::vector<Slot> m_slots;
    std::uint64_t m_clock = 0;
    std::uint32_t m_epoch = 1;
};

} // namespace tamvelo::base
