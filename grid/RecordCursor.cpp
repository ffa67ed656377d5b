#include "grid/RecordCursor.h"

#include <algorithm>

#include "com/Error.h"

namespace tamvelo::grid {

using com::LateObject;
using com::Variant;

std::vector<FieldInfo> RecordCursor::ReadFields() {
    try {
        return FieldsOf(m_host);
    } catch (const com::Error&) {
        if (!StandsOnNone(m_host)) {
            throw;
        }
    }
    // Fields that belong to a record are not there without one.
    std::vector<FieldInfo> read;
    m_places.OnReader([&](LateObject& reader) {
        reader.Call(L"MoveFirst");
        if (!IsTrue(reader, L"EOF")) {
            read = FieldsOf(reader);
        }
    });
    return read;
}

RowSigns RecordCursor::ReadSigns() {
    RowSigns signs = m_host.ReadSigns();
    if (signs.count < 0) { // the set does not know
        Follow();
        signs.count = m_places.CountRows();
    }
    return signs;
}

void RecordCursor::Follow() {
    m_places.Forget();
    m_clone.Follow();
}

void RecordCursor::Reordered() {
    m_places.Forget();
    m_clone.Reordered();
}

bool RecordCursor::ReadSurer() {
    const bool surer = m_clone.LeaveIt();
    if (surer) {
        m_places.Forget();
    }
    return surer;
}

std::optional<RecordCursor::Rows> RecordCursor::Read(const Rows& needed, const Rows& together, short columns,
                                                     const CellSink& sink) {
    if (needed.last < needed.first) {
        return needed;
    }
    if (m_clone.ReadsHost() && m_host.IsEditing(m_clone.IsHost())) {
        return {};
    }
    Rows read = together;
    m_places.OnReader([&](LateObject& reader) {
        if (m_clone.IsGivenUp() || !m_getRows || !ReadBlock(reader, together, columns, sink)) {
            m_getRows = false;
            read = needed;
            ReadCells(reader, needed, columns, sink);
        }
    });
    return read;
}

/// One call for all of them. False when the set cannot.
bool RecordCursor::ReadBlock(LateObject& reader, const Rows& wanted, short columns, const CellSink& sink) {
    Variant block;
    const long rows = wanted.last - wanted.first + 1;
    m_places.Seek(reader, wanted.first);
    try {
        block = reader.Call(L"GetRows", {rows});
    } catch (const com::Error&) {
        return false;
    }
    SAFEARRAY* array = block.Type() == (VT_ARRAY | VT_VARIANT) ? block.Get().parray : nullptr;
    if (!array || SafeArrayGetDim(array) != 2) {
        return false;
    }
    // Bounds stand last dimension first; the first, the fields, varies fastest in memory.
    const long gotRows = static_cast<long>(array->rgsabound[0].cElements);
    const long gotColumns = static_cast<long>(array->rgsabound[1].cElements);
    VARIANT* cells = nullptr;
    com::Check(SafeArrayAccessData(array, reinterpret_cast<void**>(&cells)));
    const struct Unlock {
        SAFEARRAY* locked;
        ~Unlock() { SafeArrayUnaccessData(locked); }
    } unlock{array};
    for (long row = 0; row < std::min(rows, gotRows); ++row) {
        for (long column = 0; column < std::min<long>(columns, gotColumns); ++column) {
            sink(wanted.first + row, static_cast<short>(column), cells[row * gotColumns + column], false);
        }
    }
    return true;
}

/// Field objects belong to the set, and follow it from row to row, or to the record that they were taken
/// from. They are kept where they have been seen to follow: the same object gave another value in another
/// row.
Record RecordCursor::ReadRecord(LateObject& set, std::vector<LateObject>& fields, const Record& before,
                                short columns) {
    Record kept;
    if (m_fieldsFollow != Ability::No && fields.size() == static_cast<size_t>(columns)) {
        kept = ValuesOf(fields);
        if (m_fieldsFollow == Ability::Yes || AreOthers(kept, before)) {
            m_fieldsFollow = Ability::Yes;
            return kept;
        }
    }
    fields = FieldObjects(set, columns);
    Record values = ValuesOf(fields);
    if (AreOthers(kept, values)) {
        m_fieldsFollow = Ability::No;
    }
    return values;
}

void RecordCursor::ReadCells(LateObject& reader, const Rows& wanted, short columns, const CellSink& sink) {
    // On the host's set they are asked for anew: what the host does to its set may leave old ones dangling.
    const bool keeps = &reader != &m_host;
    std::vector<LateObject> fields = keeps ? m_clone.TakeFields() : std::vector<LateObject>();
    m_places.Seek(reader, wanted.first);
    Record record;
    for (long row = wanted.first; row <= wanted.last; ++row) {
        if (row > wanted.first) {
            reader.Call(L"MoveNext");
        }
        if (IsTrue(reader, L"EOF")) {
            break;
        }
        record = ReadRecord(reader, fields, record, columns);
        for (short column = 0; column < columns; ++column) {
            const std::optional<Variant>& value = record[static_cast<size_t>(column)];
            sink(row, column, value ? value->Get() : Variant().Get(), !value);
        }
    }
    if (keeps && m_fieldsFollow == Ability::Yes) {
        m_clone.KeepFields(std::move(fields));
    }
}

} // namespace tamvelo::grid
