#pragma once

#include "grid/SetMembers.h"

namespace tamvelo::grid {

/// What gives a change of the rows away. Reading it costs a few calls.
struct RowSigns {
    long count = 0;
    com::Variant filter;
    com::Variant sort;
    com::Variant version;
    bool SameRowsAs(const RowSigns& other) const;
};

/// The host's record set itself: what it tells of its rows, and its current record.
class HostSet : public com::LateObject {
public:
    explicit HostSet(IDispatch* set) : LateObject(set, L"Recordset") {}

    bool IsOpen();
    /// The count is what the set says: negative when it does not know.
    RowSigns ReadSigns();
    long Said() const { return m_said; }
    /// Moving off a record being edited would save it. A set whose clone is itself (`always`) says "adding"
    /// for ever.
    bool IsEditing(bool always);

    /// A clone need not have the host's filter and order. False when it cannot be given them: it would show
    /// other rows.
    bool Align(com::LateObject& clone);
    /// Whether a clone can be seen to have other rows, or another order.
    bool TellsRows() const { return Said() >= 0 || !m_filter.IsMissing(); }
    bool TellsOrder() const { return !m_sort.IsMissing(); }

    // The current record.
    com::Variant Value(short column);
    Record Values(short columns);
    /// For good: a set that keeps changes back is told to update. A write that the host refuses is taken
    /// back.
    void Write(short column, const com::Variant& value);

private:
    long m_said = -1; // RecordCount
    OptionalMember m_state{L"State"};
    OptionalMember m_editMode{L"EditMode"};
    OptionalMember m_filter{L"Filter"};
    OptionalMember m_sort{L"Sort"};
    OptionalMember m_version{L"DataVersion"};
};

} // namespace tamvelo::grid
