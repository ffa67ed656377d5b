#include "grid/RecordCursor.h"

#include <algorithm>

#include "com/Error.h"

namespace tamvelo::grid {

namespace {

using com::ComPtr;
using com::LateObject;
using com::Variant;

constexpr long kOpen = 1;    // the bit of State
constexpr long kEditing = 1; // EditMode
constexpr long kAdding = 2;
constexpr short kReadOnlyLock = 1;
constexpr long kPositionUnknown = -1;

bool SameValue(const Variant& a, const Variant& b) {
    if (a.Type() != b.Type() || (a.Type() & VT_ARRAY) || a.IsObject()) {
        return false;
    }
    return a.IsEmpty() || a.IsNull() || VarCmp(a.In(), b.In(), LOCALE_USER_DEFAULT, 0) == VARCMP_EQ;
}

bool IsTrue(LateObject& set, const wchar_t* member) { return set.Call(member).ToBool(); }

bool IsEmptySet(LateObject& set) { return IsTrue(set, L"EOF") && IsTrue(set, L"BOF"); }

} // namespace

bool RecordCursor::Marks::SameRowsAs(const Marks& other) const {
    return count == other.count && SameValue(filter, other.filter) && SameValue(sort, other.sort) &&
           SameValue(version, other.version);
}

/// A member that some sets lack reads as Empty; one that failed is not asked for again.
Variant RecordCursor::Ask(LateObject& set, Optional& member) {
    if (!member.missing) {
        try {
            return set.Call(member.name);
        } catch (const com::Error&) {
            member.missing = true;
        }
    }
    return {};
}

bool RecordCursor::IsOpen() {
    const Variant state = Ask(m_host, m_state);
    return state.IsEmpty() || (state.ToLong() & kOpen) != 0;
}

std::vector<FieldInfo> RecordCursor::ReadFields() {
    LateObject fields(m_host.Call(L"Fields").ToObject().Get(), L"Fields");
    const long count = std::clamp(fields.Call(L"Count").ToLong(), 0L, 0x7FFFL);
    std::vector<FieldInfo> read(static_cast<size_t>(count));
    Optional caption{L"Caption"};
    Optional type{L"Type"};
    Optional size{L"DefinedSize"};
    for (long i = 0; i < count; ++i) {
        LateObject field(fields.Call(L"Item", {i}).ToObject().Get(), L"Field");
        FieldInfo& info = read[static_cast<size_t>(i)];
        info.name = field.Call(L"Name").ToText();
        info.caption = Ask(field, caption).ToText();
        const Variant number = Ask(field, type);
        info.type = number.IsEmpty() ? 0 : number.ToLong();
        const Variant length = Ask(field, size);
        info.definedSize = length.IsEmpty() ? 0 : length.ToLong();
    }
    return read;
}

RecordCursor::Marks RecordCursor::ReadMarks() {
    Marks marks;
    marks.count = m_host.Call(L"RecordCount").ToLong();
    marks.filter = Ask(m_host, m_filter);
    marks.sort = Ask(m_host, m_sort);
    marks.version = Ask(m_host, m_version);
    if (marks.count < 0) { // the set does not know
        Follow();
        Walk();
        marks.count = m_walkedRows;
    }
    return marks;
}

void RecordCursor::Follow() {
    m_walked = false;
    m_places.clear();
    if (m_clone && !AlignClone()) {
        m_clone.Reset();
        m_cloneFields.clear();
        m_cloneTried = false;
    }
}

LateObject& RecordCursor::Reader() {
    if (!m_cloneTried) {
        m_cloneTried = true;
        MakeClone();
    }
    return m_clone ? m_clone : m_host;
}

void RecordCursor::MakeClone() {
    ComPtr<IDispatch> made;
    try {
        made = m_host.Call(L"Clone", {kReadOnlyLock}).ToObject();
    } catch (const com::Error&) {
        try {
            made = m_host.Call(L"Clone").ToObject();
        } catch (const com::Error&) {
            return;
        }
    }
    m_cloneIsHost = com::SameObject(made.Get(), m_host.Get());
    if (made && !m_cloneIsHost) {
        m_clone = LateObject(made.Get(), L"Clone");
        if (!AlignClone()) {
            m_clone.Reset();
        }
    }
}

/// A clone need not have the host's filter and order. One that cannot be given them would show other rows.
bool RecordCursor::AlignClone() {
    try {
        for (Optional* member : {&m_filter, &m_sort}) {
            const Variant wanted = Ask(m_host, *member);
            if (!member->missing && !SameValue(wanted, m_clone.Call(member->name))) {
                m_clone.Put(member->name, wanted);
            }
        }
        return m_clone.Call(L"RecordCount").ToLong() == m_host.Call(L"RecordCount").ToLong();
    } catch (const com::Error&) {
        return false;
    }
}

bool RecordCursor::CountsPositions() {
    if (m_positions == Ability::Unknown) {
        try {
            if (m_host.Call(L"AbsolutePosition").ToLong() != kPositionUnknown) {
                m_positions = Ability::Yes;
            } else if (!IsEmptySet(m_host)) { // without rows the answer means nothing
                m_positions = Ability::No;
            }
        } catch (const com::Error&) {
            m_positions = Ability::No;
        }
    }
    return m_positions == Ability::Yes;
}

bool RecordCursor::HasBookmarks() {
    if (m_bookmarks == Ability::Unknown) {
        if (IsTrue(m_host, L"EOF") || IsTrue(m_host, L"BOF")) {
            return false; // on no record: asked again later
        }
        try {
            m_host.Call(L"Bookmark");
            m_bookmarks = Ability::Yes;
        } catch (const com::Error&) {
            m_bookmarks = Ability::No;
        }
    }
    return m_bookmarks == Ability::Yes;
}

RecordCursor::Place RecordCursor::Save() {
    Place place;
    if (IsTrue(m_host, L"EOF")) {
        place.where = Place::End;
    } else if (IsTrue(m_host, L"BOF")) {
        place.where = Place::Start;
    } else if (HasBookmarks()) {
        place.bookmark = m_host.Call(L"Bookmark");
    } else {
        place.position = m_host.Call(L"AbsolutePosition").ToLong();
    }
    return place;
}

void RecordCursor::Restore(const Place& place) {
    if (place.where == Place::End) {
        m_host.Call(L"MoveLast");
        m_host.Call(L"MoveNext");
    } else if (place.where == Place::Start) {
        m_host.Call(L"MoveFirst");
        m_host.Call(L"MovePrevious");
    } else if (!place.bookmark.IsEmpty()) {
        m_host.Put(L"Bookmark", place.bookmark);
    } else {
        m_host.Put(L"AbsolutePosition", place.position);
    }
}

/// Runs `body`, which moves the reader; the host's own set is put back afterwards, whatever happens.
template <class Body>
void RecordCursor::OnReader(Body&& body) {
    LateObject& reader = Reader();
    if (&reader != &m_host) {
        body(reader);
        return;
    }
    if (IsEmptySet(m_host)) {
        return;
    }
    const Place place = Save();
    try {
        body(reader);
    } catch (...) {
        Restore(place);
        throw;
    }
    Restore(place);
}

void RecordCursor::Walk() {
    if (m_walked) {
        return;
    }
    m_places.clear();
    m_walkedRows = 0;
    bool bookmarks = true;
    OnReader([&](LateObject& reader) {
        if (IsEmptySet(reader)) {
            return;
        }
        for (reader.Call(L"MoveFirst"); !IsTrue(reader, L"EOF"); reader.Call(L"MoveNext")) {
            if (bookmarks) {
                try {
                    m_places.push_back(reader.Call(L"Bookmark"));
                } catch (const com::Error&) {
                    bookmarks = false;
                }
            }
            ++m_walkedRows;
        }
    });
    m_walked = true;
}

void RecordCursor::Seek(LateObject& set, long row) {
    if (CountsPositions()) {
        set.Put(L"AbsolutePosition", row + 1);
        return;
    }
    Walk();
    if (static_cast<size_t>(row) >= m_places.size()) {
        throw com::Error(E_NOTIMPL, L"El conjunto de registros no tiene posiciones ni marcadores.");
    }
    set.Put(L"Bookmark", m_places[static_cast<size_t>(row)]);
}

long RecordCursor::HostRow() {
    if (CountsPositions()) {
        return std::max(m_host.Call(L"AbsolutePosition").ToLong() - 1, -1L);
    }
    if (IsTrue(m_host, L"EOF") || IsTrue(m_host, L"BOF") || !HasBookmarks()) {
        return -1;
    }
    const Variant here = m_host.Call(L"Bookmark");
    Walk();
    const auto found = std::find_if(m_places.begin(), m_places.end(),
                                    [&](const Variant& place) { return SameValue(place, here); });
    return found == m_places.end() ? -1 : static_cast<long>(found - m_places.begin());
}

bool RecordCursor::MoveHost(long row) {
    try {
        // By the identity of the record that the user sees, where there is one: the host's rows may have
        // moved on.
        if (m_clone && HasBookmarks()) {
            Seek(m_clone, row);
            m_host.Put(L"Bookmark", m_clone.Call(L"Bookmark"));
        } else {
            Seek(m_host, row);
        }
        return true;
    } catch (const com::Error&) {
        return false;
    }
}

LateObject RecordCursor::HostField(short column) {
    LateObject fields(m_host.Call(L"Fields").ToObject().Get(), L"Fields");
    return {fields.Call(L"Item", {static_cast<long>(column)}).ToObject().Get(), L"Field"};
}

Variant RecordCursor::Value(short column) { return HostField(column).Call(L"Value"); }

void RecordCursor::Write(short column, const Variant& value) {
    LateObject field = HostField(column);
    const Variant before = field.Call(L"Value");
    bool put = false;
    try {
        field.Put(L"Value", value);
        put = true;
        if (m_host.Answers(L"Update")) { // a set without it writes at once
            m_host.Call(L"Update");
        }
    } catch (const com::Error&) {
        try {
            if (m_host.Answers(L"CancelUpdate")) {
                m_host.Call(L"CancelUpdate");
            } else if (put) {
                field.Put(L"Value", before);
            }
        } catch (const com::Error&) { // the first refusal is the one to tell of
        }
        throw;
    }
}

bool RecordCursor::Read(long first, long rows, short columns, const CellSink& sink) {
    if (&Reader() == &m_host) {
        const Variant mode = Ask(m_host, m_editMode);
        const long editing = mode.IsEmpty() ? 0 : mode.ToLong();
        // Moving off a record being edited would save it. A set whose clone is itself says "adding" for ever.
        if (editing == kEditing || (editing == kAdding && !m_cloneIsHost)) {
            return false;
        }
    }
    OnReader([&](LateObject&) {
        if (!m_getRows || !ReadBlock(first, rows, columns, sink)) {
            m_getRows = false;
            ReadCells(first, rows, columns, sink);
        }
    });
    return true;
}

/// One call for the whole block. False when the set cannot.
bool RecordCursor::ReadBlock(long first, long rows, short columns, const CellSink& sink) {
    Variant block;
    LateObject& reader = Reader();
    Seek(reader, first);
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
            sink(first + row, static_cast<short>(column), cells[row * gotColumns + column], false);
        }
    }
    return true;
}

std::vector<LateObject> RecordCursor::FieldObjects(LateObject& set, short columns) {
    LateObject fields(set.Call(L"Fields").ToObject().Get(), L"Fields");
    std::vector<LateObject> objects;
    for (long i = 0; i < columns; ++i) {
        objects.emplace_back(fields.Call(L"Item", {i}).ToObject().Get(), L"Field");
    }
    return objects;
}

void RecordCursor::ReadCells(long first, long rows, short columns, const CellSink& sink) {
    LateObject& reader = Reader();
    const bool own = &reader != &m_host;
    // On the host's set they are asked for anew: what the host does to its set may leave old ones dangling.
    std::vector<LateObject> fields = own ? std::move(m_cloneFields) : std::vector<LateObject>();
    m_cloneFields.clear();
    if (fields.size() != static_cast<size_t>(columns)) {
        fields = FieldObjects(reader, columns);
    }
    Seek(reader, first);
    for (long row = 0; row < rows && !IsTrue(reader, L"EOF"); ++row) {
        for (short column = 0; column < columns; ++column) {
            Variant value;
            bool failed = false;
            try {
                value = fields[static_cast<size_t>(column)].Call(L"Value");
            } catch (const com::Error&) {
                failed = true;
            }
            sink(first + row, column, value.Get(), failed);
        }
        reader.Call(L"MoveNext");
    }
    if (own) {
        m_cloneFields = std::move(fields);
    }
}

} // namespace tamvelo::grid
