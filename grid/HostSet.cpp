#include "grid/HostSet.h"

#include "com/Error.h"

namespace tamvelo::grid {

using com::LateObject;
using com::Variant;

namespace {

constexpr long kOpen = 1;    // the bit of State
constexpr long kEditing = 1; // EditMode
constexpr long kAdding = 2;

} // namespace

bool RowSigns::SameRowsAs(const RowSigns& other) const {
    return count == other.count && SameValue(filter, other.filter) && SameValue(sort, other.sort) &&
           SameValue(version, other.version);
}

bool HostSet::IsOpen() { return (m_state.Ask(*this, kOpen, &Variant::ToLong) & kOpen) != 0; }

RowSigns HostSet::ReadSigns() {
    RowSigns signs;
    signs.count = m_said = Call(L"RecordCount").ToLong();
    signs.filter = m_filter.Ask(*this);
    signs.sort = m_sort.Ask(*this);
    signs.version = m_version.Ask(*this);
    return signs;
}

bool HostSet::IsEditing(bool always) {
    const Variant mode = m_editMode.Ask(*this);
    const long editing = mode.IsEmpty() ? 0 : mode.ToLong();
    return editing == kEditing || (editing == kAdding && !always);
}

bool HostSet::Align(LateObject& clone) {
    try {
        for (OptionalMember* member : {&m_filter, &m_sort}) {
            const Variant wanted = member->Ask(*this);
            if (!member->IsMissing() && !SameValue(wanted, clone.Call(member->Name()))) {
                clone.Put(member->Name(), wanted);
            }
        }
        return clone.Call(L"RecordCount").ToLong() == m_said;
    } catch (const com::Error&) {
        return false;
    }
}

Variant HostSet::Value(short column) { return FieldOf(*this, column).Call(L"Value"); }

Record HostSet::Values(short columns) {
    std::vector<LateObject> fields = FieldObjects(*this, columns);
    return ValuesOf(fields);
}

void HostSet::Write(short column, const Variant& value) {
    LateObject field = FieldOf(*this, column);
    const Variant before = field.Call(L"Value");
    bool put = false;
    try {
        field.Put(L"Value", value);
        put = true;
        if (Answers(L"Update")) { // a set without it writes at once
            Call(L"Update");
        }
    } catch (const com::Error&) {
        try {
            if (Answers(L"CancelUpdate")) {
                Call(L"CancelUpdate");
            } else if (put) {
                field.Put(L"Value", before);
            }
        } catch (const com::Error&) { // the first refusal is the one to tell of
        }
        throw;
    }
}

} // namespace tamvelo::grid
