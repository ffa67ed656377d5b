// Reading rows of a record set: many in one call where it can, else value by value.
#include <algorithm>
#include <utility>

#include "com/Error.h"
#include "grid/RecordCursor.h"

namespace tamvelo::grid {

namespace {

using com::LateObject;
using com::Variant;
using Record = RecordCursor::Record;

constexpr long kEditing = 1; // EditMode
constexpr long kAdding = 2;

std::vector<LateObject> FieldObjects(LateObject& set, short columns) {
    LateObject fields(set.Call(L"Fields").ToObject().Get(), L"Fields");
    std::vector<LateObject> objects;
    for (long i = 0; i < columns; ++i) {
        objects.emplace_back(fields.Call(L"Item", {i}).ToObject().Get(), L"Field");
    }
    return objects;
}

Record ValuesOf(std::vector<LateObject>& fields) {
    Record values;
    for (LateObject& field : fields) {
        std::optional<Variant>& value = values.emplace_back();
        try {
            value = field.Call(L"Value");
        } catch (const com::Error&) { // shown as what it is, in its cell only
        }
    }
    return values;
}

/// Whether some column holds two values that are really different: not one that is missing from either.
bool AreOthers(const Record& a, const Record& b) {
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (a[i] && b[i]) {
            const HRESULT order = VarCmp(a[i]->In(), b[i]->In(), LOCALE_USER_DEFAULT, 0);
            if (order == static_cast<HRESULT>(VARCMP_LT) || order == static_cast<HRESULT>(VARCMP_GT)) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

Record RecordCursor::HostRecord(short columns) {
    std::vector<LateObject> fields = FieldObjects(m_host, columns);
    return ValuesOf(fields);
}

std::optional<RecordCursor::Rows> RecordCursor::Read(const Rows& needed, const Rows& together, short columns,
                                                     const CellSink& sink) {
    if (needed.last < needed.first) {
        return needed;
    }
    if (&Reader() == &m_host) {
        const Variant mode = Ask(m_host, m_editMode);
        const long editing = mode.IsEmpty() ? 0 : mode.ToLong();
        // Moving off a record being edited would save it. A set whose clone is itself says "adding" for ever.
        if (editing == kEditing || (editing == kAdding && !m_cloneIsHost)) {
            return {};
        }
    }
    Rows read = together;
    OnReader([&](LateObject&) {
        if (!m_getRows || !ReadBlock(together, columns, sink)) {
            m_getRows = false;
            read = needed;
            ReadCells(needed, columns, sink);
        }
    });
    return read;
}

/// One call for all of them. False when the set cannot.
bool RecordCursor::ReadBlock(const Rows& wanted, short columns, const CellSink& sink) {
    Variant block;
    const long rows = wanted.last - wanted.first + 1;
    LateObject& reader = Reader();
    Seek(reader, wanted.first);
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

void RecordCursor::ReadCells(const Rows& wanted, short columns, const CellSink& sink) {
    LateObject& reader = Reader();
    // On the host's set they are asked for anew: what the host does to its set may leave old ones dangling.
    const bool keeps = &reader != &m_host;
    std::vector<LateObject> fields = keeps ? std::exchange(m_cloneFields, {}) : std::vector<LateObject>();
    Seek(reader, wanted.first);
    Record record;
    for (long row = wanted.first; row <= wanted.last; ++row) {
        if (row > wanted.first) {
            reader.Call(L"MoveNext");
        }
        if (reader.Call(L"EOF").ToBool()) {
            break;
        }
        record = ReadRecord(reader, fields, record, columns);
        for (short column = 0; column < columns; ++column) {
            const std::optional<Variant>& value = record[static_cast<size_t>(column)];
            sink(row, column, value ? value->Get() : Variant().Get(), !value);
        }
    }
    if (keeps && m_fieldsFollow == Ability::Yes) {
        m_cloneFields = std::move(fields);
    }
}

} // namespace tamvelo::grid
