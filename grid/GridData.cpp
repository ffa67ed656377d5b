#include "grid/GridData.h"

#include <algorithm>
#include <utility>

#include "com/Error.h"

namespace tamvelo::grid {

namespace {

struct UnderWay {
    int& depth;
    explicit UnderWay(int& counted) : depth(counted) { ++depth; }
    ~UnderWay() { --depth; }
};

} // namespace

/// No record set: no rows. The fields stay, so that the heads do.
GridData::Change GridData::Empty() {
    Change change;
    change.rows = m_cursor || m_signs.count > 0;
    change.current = m_current >= 0;
    m_cursor.reset();
    m_signs = {};
    m_current = -1;
    m_record.clear();
    m_blocks.BumpEpoch();
    return change;
}

GridData::Change GridData::Bind(IUnknown* source) {
    Empty();
    m_source = {};
    m_ordered = false;
    const UnderWay busy(m_busy);
    m_source = RecordSource(source);
    Change change = Refresh(HostDid::Requeried);
    change.rows = true;
    return change;
}

GridData::Change GridData::Sync(HostDid did) {
    if (m_busy > 0) {
        m_missedSync = true;
        return {};
    }
    if (!m_source) {
        return {};
    }
    const UnderWay busy(m_busy);
    m_strayed |= did == HostDid::Strayed;
    if (did != HostDid::Requeried && m_strayed) {
        did = HostDid::Ordered; // for all that is known
    }
    m_ordered |= did == HostDid::Ordered;
    return Refresh(m_source.Renew() ? HostDid::Requeried : did);
}

GridData::Change GridData::Refresh(HostDid did) {
    IDispatch* const set = m_source.Set();
    if (!set) {
        return Empty();
    }
    m_record.clear();
    m_looked = false;
    std::shared_ptr<RecordCursor> cursor = m_cursor;
    const bool everything = did == HostDid::Requeried || !cursor;
    if (everything) {
        cursor = std::make_shared<RecordCursor>(set, m_ordered);
        m_restless.clear();
    } else if (did == HostDid::Ordered) {
        cursor->Reordered();
    }
    m_cursor = cursor;
    if (!cursor->IsOpen()) {
        return m_cursor == cursor ? Empty() : Change{};
    }
    Change change;
    RowSigns signs = cursor->ReadSigns();
    change.rows = everything || did != HostDid::Something || !signs.SameRowsAs(m_signs);
    if (change.rows && !everything && did != HostDid::Ordered) {
        cursor->Follow();
    }
    std::vector<FieldInfo> fields = everything ? cursor->ReadFields() : m_fields;
    if (fields.empty() && signs.count == 0) {
        fields = m_fields; // no record to tell them
    }
    const long current = cursor->HostRow();
    if (m_cursor != cursor) {
        return {}; // bound to something else meanwhile, and that was shown already
    }
    change.fields = fields != m_fields;
    m_fields = std::move(fields);
    m_signs = std::move(signs);
    change.current = change.rows || current != m_current;
    TakeCurrent(current);
    m_blocks.BumpEpoch(); // rows may change without a trace
    return change;
}

void GridData::SetCell(RowBlock& block, long row, short column, const VARIANT* value) const {
    if (value) {
        block.Set(row, column, *value, Kind(column));
    } else {
        block.Set(row, column, kErrorText, CellKind::Text, false);
    }
}

bool GridData::ReadRows(RecordCursor& cursor, long first, long last) {
    const auto isThere = [&](long row) {
        const RowBlock* block = m_blocks.Find(row);
        return block && block->IsRead(row);
    };
    RecordCursor::Rows needed{std::max(first, 0L), std::min(last, m_signs.count - 1)};
    while (needed.first <= needed.last && isThere(needed.first)) {
        ++needed.first;
    }
    while (needed.first <= needed.last && isThere(needed.last)) {
        --needed.last;
    }
    if (needed.first > needed.last) {
        return false;
    }
    const long firstBlock = Blocks::BlockOf(needed.first);
    const RecordCursor::Rows together{
        Blocks::FirstRow(firstBlock),
        std::min(Blocks::FirstRow(Blocks::BlockOf(needed.last) + 1), m_signs.count) - 1};
    const auto columns = static_cast<short>(m_fields.size());
    const std::uint32_t epoch = m_blocks.Epoch();
    std::vector<RowBlock> read;
    for (long row = together.first; row <= together.last; row += Blocks::kRowsPerBlock) {
        read.emplace_back(row, std::min(Blocks::kRowsPerBlock, m_signs.count - row), columns);
    }
    const auto keep = [&](const RecordCursor::Rows& rows) {
        for (long row = rows.first; row <= rows.last; ++row) {
            read[static_cast<size_t>(Blocks::BlockOf(row) - firstBlock)].SetRead(row);
        }
        for (size_t i = 0; i < read.size() && epoch == m_blocks.Epoch(); ++i) {
            const long row = together.first + static_cast<long>(i) * Blocks::kRowsPerBlock;
            if (RowBlock* const there = m_blocks.Find(row)) {
                there->Merge(read[i]);
            } else {
                m_blocks.Insert(epoch, row, std::move(read[i]));
            }
        }
    };
    std::optional<RecordCursor::Rows> rows;
    try {
        rows = cursor.Read(needed, together, columns,
                           [&](long row, short column, const VARIANT& value, bool error) {
                               if (epoch == m_blocks.Epoch()) {
                                   SetCell(read[static_cast<size_t>(Blocks::BlockOf(row) - firstBlock)], row,
                                           column, error ? nullptr : &value);
                               }
                           });
    } catch (...) {
        keep(together);
        throw;
    }
    if (rows) {
        keep(*rows);
    }
    return rows && epoch == m_blocks.Epoch();
}

bool GridData::Load(long first, long last) {
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (m_busy > 0) {
        m_missedSync = true;
        return false;
    }
    if (!cursor || m_fields.empty()) {
        return false;
    }
    const UnderWay busy(m_busy);
    bool read = false;
    while (ReadRows(*cursor, first, last)) {
        read = true;
        if (m_looked || m_current < first || m_current > last ||
            !(m_strayed || m_wrote || cursor->MayStray())) {
            break;
        }
        m_looked = true;
        const bool closely = std::exchange(m_wrote, false) || m_strayed;
        const std::uint32_t epoch = m_blocks.Epoch();
        const auto all = static_cast<short>(m_fields.size());
        const std::vector<bool> differ =
            Differences(cursor->Host().Values(closely ? all : std::min(all, kTelling)));
        if (epoch != m_blocks.Epoch()) {
            break; // the rows are others now; whoever changed them loads those
        }
        m_strayed = std::ranges::find(differ, true) != differ.end();
        if (!m_strayed || !cursor->ReadSurer()) {
            break;
        }
        m_looked = false;
        m_blocks.BumpEpoch();
        const long current = cursor->HostRow();
        if (m_cursor == cursor && current != m_current) {
            TakeCurrent(current);
            m_missedSync = true; // to be shown
        }
    }
    return read;
}

const RowBlock::Cell* GridData::Cell(long row, short column) {
    const RowBlock* const block = Block(row);
    return block ? block->At(row, column) : nullptr;
}

std::wstring GridData::ShownText(long row, short column) {
    const RowBlock::Cell* const cell = Cell(row, column);
    return cell ? std::wstring(Block(row)->Text(*cell)) : std::wstring();
}

bool GridData::IsMark(short column) {
    if (column < 0 || static_cast<size_t>(column) >= m_fields.size()) {
        return false;
    }
    const RowBlock::Cell* const cell = Cell(m_current, column);
    const CellKind kind = Kind(column) == CellKind::Any && cell ? cell->kind : Kind(column);
    return kind == CellKind::Check;
}

bool GridData::MoveTo(long row) {
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (!cursor || m_busy > 0 || row < 0 || row >= m_signs.count) {
        return false;
    }
    const UnderWay busy(m_busy);
    m_record.clear();
    const bool moved = cursor->MoveHost(row);
    const long current = cursor->HostRow();
    if (m_cursor == cursor) {
        TakeCurrent(current);
        if (moved && current != row) { // the record that was shown there is the host's in another place
            m_strayed = true;
            m_missedSync = true;
        }
    }
    return moved;
}

std::vector<bool> GridData::Differences(const Record& record) {
    const auto columns = static_cast<short>(std::min(record.size(), m_fields.size()));
    RowBlock host(m_current, 1, columns);
    host.SetRead(m_current);
    const RowBlock* const shown = m_blocks.Find(m_current);
    std::vector<bool> differ;
    for (short column = 0; column < columns; ++column) {
        const std::optional<com::Variant>& value = record[static_cast<size_t>(column)];
        SetCell(host, m_current, column, value ? &value->Get() : nullptr);
        const RowBlock::Cell* const is = shown ? shown->At(m_current, column) : nullptr;
        differ.push_back(!is || shown->Text(*is) != host.Text(*host.At(m_current, column)));
    }
    return differ;
}

bool GridData::Confirm() {
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (!cursor || m_busy > 0 || m_current < 0) {
        return false;
    }
    m_record.clear();
    Load(m_current, m_current);
    const std::uint32_t epoch = m_blocks.Epoch();
    const UnderWay busy(m_busy);
    Record record = cursor->Host().Values(static_cast<short>(m_fields.size()));
    if (m_cursor != cursor || epoch != m_blocks.Epoch() || m_current < 0 || m_missedSync) {
        return false;
    }
    const std::vector<bool> differ = Differences(record);
    const auto others = static_cast<size_t>(std::ranges::count(differ, true));
    // A value that changes by itself, as a clock does, must not hold the user for ever: in what is by its
    // first column and most of the rest the same record it is told once.
    const bool restless = others > 0 && !differ.front() && 2 * others <= differ.size();
    const bool confirmed = others == 0 || (restless && differ == m_restless);
    m_restless = restless ? differ : std::vector<bool>();
    if (confirmed) {
        m_record = std::move(record);
    }
    return confirmed;
}

com::Variant GridData::Value(short column) {
    const auto index = static_cast<size_t>(column);
    if (index < m_record.size() && m_record[index]) {
        return *m_record[index];
    }
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    return cursor && m_current >= 0 ? cursor->Host().Value(column) : com::Variant();
}

void GridData::Write(short column, const com::Variant& value) {
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (!cursor || m_busy > 0 || m_current < 0) {
        return;
    }
    const UnderWay busy(m_busy);
    m_record.clear();
    cursor->Host().Write(column, value);
    m_wrote = true;
    m_blocks.BumpEpoch(); // also in a set that does not count its changes
}

} // namespace tamvelo::grid
