#include "grid/RecordCursor.h"

#include <algorithm>

#include "base/MessageText.h"
#include "com/Error.h"

namespace tamvelo::grid {

namespace {

using com::ComPtr;
using com::LateObject;
using com::Variant;

constexpr long kOpen = 1; // the bit of State
constexpr short kReadOnlyLock = 1;
constexpr long kPositionUnknown = -1;
constexpr long kMostWalked = 100000; // rows of a set that knows neither their number nor its end

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

/// The same as the type that it should have; one that answers something else is as good as not there.
template <class T>
T RecordCursor::Ask(LateObject& set, Optional& member, T none, T (Variant::*as)() const) {
    const Variant answer = Ask(set, member);
    try {
        return answer.IsEmpty() || answer.IsNull() ? none : (answer.*as)();
    } catch (const com::Error&) {
        member.missing = true;
        return none;
    }
}

bool RecordCursor::IsOpen() { return (Ask(m_host, m_state, kOpen, &Variant::ToLong) & kOpen) != 0; }

std::vector<FieldInfo> RecordCursor::ReadFields() {
    try {
        return FieldsOf(m_host);
    } catch (const com::Error&) {
        if (!IsTrue(m_host, L"EOF") && !IsTrue(m_host, L"BOF")) {
            throw;
        }
    }
    // Fields that belong to a record are not there without one.
    std::vector<FieldInfo> read;
    OnReader([&](LateObject& reader) {
        reader.Call(L"MoveFirst");
        if (!IsTrue(reader, L"EOF")) {
            read = FieldsOf(reader);
        }
    });
    return read;
}

std::vector<FieldInfo> RecordCursor::FieldsOf(LateObject& set) {
    LateObject fields(set.Call(L"Fields").ToObject().Get(), L"Fields");
    const long count = std::clamp(fields.Call(L"Count").ToLong(), 0L, 0x7FFFL);
    std::vector<FieldInfo> read(static_cast<size_t>(count));
    Optional caption{L"Caption"};
    Optional type{L"Type"};
    Optional size{L"DefinedSize"};
    for (long i = 0; i < count; ++i) {
        LateObject field(fields.Call(L"Item", {i}).ToObject().Get(), L"Field");
        FieldInfo& info = read[static_cast<size_t>(i)];
        info.name = field.Call(L"Name").ToText();
        const std::wstring shown = Ask(field, caption, std::wstring(), &Variant::ToText);
        info.caption = base::Shortened(shown.empty() ? info.name : shown, base::kLongestLabel);
        info.type = Ask(field, type, 0L, &Variant::ToLong);
        info.definedSize = Ask(field, size, 0L, &Variant::ToLong);
    }
    return read;
}

RecordCursor::Marks RecordCursor::ReadMarks() {
    Marks marks;
    marks.count = m_said = m_host.Call(L"RecordCount").ToLong();
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
        DropClone();
    }
}

void RecordCursor::Reordered() {
    m_walked = false;
    m_places.clear();
    m_ordered = true;
    m_cloneIsFresh = false;
    DropClone();
}

bool RecordCursor::ReadSurer() {
    if (m_plain) {
        return false;
    }
    m_walked = false;
    m_places.clear();
    m_plain = !m_clone || m_cloneIsFresh;
    m_getRows = m_getRows && !m_plain;
    m_cloneIsFresh = true;
    DropClone();
    return true;
}

void RecordCursor::DropClone() {
    m_clone.Reset();
    m_cloneFields.clear();
    m_cloneTried = m_plain;
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
        // One that cannot be told the host's filter and order has others as soon as these cannot be seen to
        // be the same.
        const bool sameRows = AlignClone() && !(m_said < 0 && m_filter.missing);
        if (!sameRows || (m_ordered && m_sort.missing)) {
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
        return m_clone.Call(L"RecordCount").ToLong() == m_said;
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

void RecordCursor::OnReader(const std::function<void(LateObject&)>& body) {
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

/// Of a set that does not say how many rows it has, by the last one's position.
bool RecordCursor::CountFromTheEnd() {
    if (m_said >= 0 || !CountsPositions()) {
        return false;
    }
    try {
        OnReader([&](LateObject& reader) {
            reader.Call(L"MoveLast");
            m_walkedRows = std::max(reader.Call(L"AbsolutePosition").ToLong(), 0L);
        });
        return true;
    } catch (const com::Error&) {
        return false;
    }
}

void RecordCursor::Walk() {
    if (m_walked) {
        return;
    }
    m_places.clear();
    m_walkedRows = 0;
    m_walked = CountFromTheEnd();
    if (m_walked) {
        return;
    }
    const long most = m_said >= 0 ? m_said : kMostWalked;
    bool bookmarks = true;
    OnReader([&](LateObject& reader) {
        if (IsEmptySet(reader)) {
            return;
        }
        for (reader.Call(L"MoveFirst"); m_walkedRows < most && !IsTrue(reader, L"EOF");
             reader.Call(L"MoveNext")) {
            if (bookmarks) {
                try {
                    m_places.push_back(reader.Call(L"Bookmark"));
                } catch (const com::Error&) {
                    bookmarks = false;
                }
            }
            // A set that never says that it ends stays on its last row.
            if (const size_t seen = m_places.size();
                bookmarks && seen > 1 && SameValue(m_places[seen - 1], m_places[seen - 2])) {
                m_places.pop_back();
                return;
            }
            ++m_walkedRows;
        }
    });
    if (m_said < 0 && m_walkedRows >= kMostWalked) {
        throw com::Error(E_FAIL, L"El conjunto de registros no dice cuántos tiene ni dónde acaba.");
    }
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

} // namespace tamvelo::grid
