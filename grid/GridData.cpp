#include "grid/GridData.h"

#include <algorithm>
#include <utility>

#include "com/Error.h"

namespace tamvelo::grid {

namespace {

class UnderWay {
public:
    explicit UnderWay(int& depth) : m_depth(depth) { ++m_depth; }
    ~UnderWay() { --m_depth; }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

private:
    int& m_depth;
};

} // namespace

/// No record set: no rows. The fields stay, so that the heads do.
GridData::Change GridData::Empty() {
    Change change;
    change.rows = m_cursor || m_marks.count > 0;
    change.current = m_current >= 0;
    m_cursor.reset();
    m_marks = {};
    m_current = -1;
    m_blocks.BumpEpoch();
    return change;
}

GridData::Change GridData::Bind(IUnknown* source) {
    Empty();
    m_source = {};
    const UnderWay busy(m_busy);
    m_source = RecordSource(source);
    Change change = Refresh(true);
    change.rows = true;
    return change;
}

GridData::Change GridData::Sync(bool requeried) {
    if (m_busy > 0) {
        m_missedSync = true;
        return {};
    }
    if (!m_source) {
        return {};
    }
    const UnderWay busy(m_busy);
    const bool another = m_source.Renew();
    return Refresh(requeried || another);
}

GridData::Change GridData::Refresh(bool everything) {
    IDispatch* const set = m_source.Set();
    if (!set) {
        return Empty();
    }
    std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (everything || !cursor) {
        cursor = std::make_shared<RecordCursor>(set);
        everything = true;
    }
    m_cursor = cursor;
    if (!cursor->IsOpen()) {
        return m_cursor == cursor ? Empty() : Change{};
    }
    Change change;
    RecordCursor::Marks marks = cursor->ReadMarks();
    change.rows = everything || !marks.SameRowsAs(m_marks);
    if (change.rows && !everything) {
        cursor->Follow();
    }
    std::vector<FieldInfo> fields = everything ? cursor->ReadFields() : m_fields;
    const long current = cursor->HostRow();
    if (m_cursor != cursor) {
        return {}; // bound to something else meanwhile, and that was shown already
    }
    Adopt(std::move(fields), change);
    m_marks = std::move(marks);
    change.current = change.rows || current != m_current;
    m_current = current < m_marks.count ? current : -1;
    // Values may change without a trace in a set that does not count its changes: what is cheap to read is
    // read anew.
    if (change.rows || (!cursor->CountsChanges() && cursor->ReadsCheaply())) {
        m_blocks.BumpEpoch();
    }
    return change;
}

void GridData::Adopt(std::vector<FieldInfo> fields, Change& change) {
    if (fields == m_fields) {
        return;
    }
    change.fields = true;
    m_fields = std::move(fields);
    m_kinds.clear();
    for (const FieldInfo& field : m_fields) {
        m_kinds.push_back(KindOfField(field.type));
    }
}

std::optional<RowBlock> GridData::ReadBlock(RecordCursor& cursor, long first) {
    const std::vector<CellKind> kinds = m_kinds;
    const auto columns = static_cast<short>(kinds.size());
    const long rows = std::min(Blocks::kRowsPerBlock, m_marks.count - first);
    RowBlock block(first, rows, columns);
    const bool read =
        cursor.Read(first, rows, columns, [&](long row, short column, const VARIANT& value, bool error) {
            const CellKind kind = kinds[static_cast<size_t>(column)];
            if (error) {
                block.Set(row, column, L"#Error", CellKind::Text, false);
                return;
            }
            const CellKind shown = KindOfValue(value, kind);
            const std::wstring text = Format(value, kind);
            block.Set(row, column, text, shown, shown == CellKind::Check && text != L"No");
        });
    return read ? std::optional(std::move(block)) : std::nullopt;
}

bool GridData::Load(long first, long last) {
    bool read = false;
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (m_busy > 0) {
        m_missedSync = true;
        return read;
    }
    if (!cursor || m_fields.empty()) {
        return read;
    }
    const UnderWay busy(m_busy);
    last = std::min(last, m_marks.count - 1);
    for (long block = Blocks::BlockOf(std::max(first, 0L)); block <= Blocks::BlockOf(std::max(last, 0L));
         ++block) {
        const long row = Blocks::FirstRow(block);
        if (row > last || m_blocks.Find(row)) {
            continue;
        }
        const std::uint32_t epoch = m_blocks.Epoch();
        std::optional<RowBlock> cells;
        try {
            cells = ReadBlock(*cursor, row);
        } catch (...) {
            m_blocks.Insert(epoch, row, {});
            throw;
        }
        if (!cells) {
            break;
        }
        if (!m_blocks.Insert(epoch, row, std::move(*cells))) {
            return true; // the rows are others now; whoever changed them loads those
        }
        read = true;
    }
    return read;
}

bool GridData::MoveTo(long row) {
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (!cursor || m_busy > 0 || row < 0 || row >= m_marks.count) {
        return false;
    }
    const UnderWay busy(m_busy);
    const bool moved = cursor->MoveHost(row);
    const long current = cursor->HostRow();
    if (m_cursor == cursor) {
        m_current = current < m_marks.count ? current : -1;
    }
    return moved;
}

com::Variant GridData::Value(short column) {
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (!cursor || m_current < 0) {
        return {};
    }
    return cursor->Value(column);
}

void GridData::Write(short column, const com::Variant& value) {
    const std::shared_ptr<RecordCursor> cursor = m_cursor;
    if (!cursor || m_busy > 0 || m_current < 0) {
        return;
    }
    const UnderWay busy(m_busy);
    cursor->Write(column, value);
    m_blocks.BumpEpoch(); // also in a set that does not count its changes
}

} // namespace tamvelo::grid
