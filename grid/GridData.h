#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/BlockCache.h"
#include "grid/RecordCursor.h"
#include "grid/RecordSource.h"
#include "grid/RowBlock.h"

namespace tamvelo::grid {

/// What the host was asked for since its record set was last looked at, in rising order.
enum class HostDid {
    Something, // a move, an answer: anything that is not among the next
    Strayed,   // what was read turned out to be another record than the host's
    Ordered,
    Requeried, // everything is taken to be new
};

/// What the grid knows of its record set: fields, number of rows, the current one and the blocks read so far.
/// What was read is never taken for what the host holds without a look: a clone may lag behind.
/// Any call into the host may come back to us; what comes back while a call is under way is refused and
/// remembered, but for a new binding, which makes the call under way forget what it read.
class GridData {
public:
    static constexpr long kRowsReadTogether = base::BlockCache<RowBlock>::kRowsPerBlock;

    struct Change {
        bool fields = false;
        bool rows = false; // some rows, their order or values
        bool current = false;
    };

    /// Throws what RecordSource throws; then there are no rows, and the fields stay.
    Change Bind(IUnknown* source);
    /// Finds out what the host changed. The rows are to be read again in any case.
    Change Sync(HostDid did);
    /// True once after a Sync or Load was refused because a host call was under way.
    bool TakeMissedSync() { return std::exchange(m_missedSync, false); }
    bool Busy() const { return m_busy > 0; }

    bool Bound() const { return m_cursor != nullptr; }
    long Count() const { return m_signs.count; }
    /// -1 when the host stands on no row.
    long Current() const { return m_current; }
    const std::vector<FieldInfo>& Fields() const { return m_fields; }
    CellKind Kind(short column) const { return KindOfField(m_fields[static_cast<size_t>(column)].type); }

    /// Reads those of these rows that are not there yet. Rows that failed are not tried again before the next
    /// change. True when it read any.
    bool Load(long first, long last);
    /// Null while the row is not loaded. Never calls the host.
    const RowBlock* Block(long row) { return m_blocks.Find(row); }
    const RowBlock::Cell* Cell(long row, short column);
    /// As loaded for the screen, cut to what a cell can show; "" while it is not loaded.
    std::wstring ShownText(long row, short column);
    /// Whether the column's cells are marks: by the field's type or, of a record set that gives none, by what
    /// the current row holds.
    bool IsMark(short column);
    /// First rows of the blocks of kRowsReadTogether that are loaded, in order. Never calls the host.
    std::vector<long> LoadedBlocks() const { return m_blocks.FirstRows(); }
    /// False when the host refused; the current row is then the host's.
    bool MoveTo(long row);
    /// Whether the host's current record is the one that the current row shows. What was read of it then is
    /// what Value answers, up to the next change.
    bool Confirm();
    /// Of the host's current record; Empty without one.
    com::Variant Value(short column);
    /// Into the host's current record. Throws what the host raises, and nothing is changed then.
    void Write(short column, const com::Variant& value);

private:
    using Blocks = base::BlockCache<RowBlock>;
    static constexpr size_t kBlocks = 8;

    /// The first columns tell records apart; a look at them after each reading is cheap.
    static constexpr short kTelling = 3;

    Change Refresh(HostDid did);
    void TakeCurrent(long row) { m_current = row < Count() ? row : -1; }
    Change Empty();
    /// False when the set must not be moved now, or its rows became others meanwhile.
    bool ReadRows(RecordCursor& cursor, long first, long last);
    /// By column, whether the current row shows something else than this.
    std::vector<bool> Differences(const Record& record);
    void SetCell(RowBlock& block, long row, short column, const VARIANT* value) const;

    RecordSource m_source;
    std::shared_ptr<RecordCursor> m_cursor;
    RowSigns m_signs;
    long m_current = -1;
    std::vector<FieldInfo> m_fields;
    Blocks m_blocks{kBlocks};
    bool m_looked = false;        // since the rows were read: whether they are the host's
    bool m_strayed = false;       // they have been others
    bool m_wrote = false;         // a clone that is a snapshot has what was there before
    bool m_ordered = false;       // the host was asked for an order
    Record m_record;              // the host's current one, if it is confirmed
    std::vector<bool> m_restless; // columns whose values changed by themselves
    int m_busy = 0;
    bool m_missedSync = false;
};

} // namespace tamvelo::grid
