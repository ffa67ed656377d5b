#include "grid/RecordPlaces.h"

#include <algorithm>

#include "com/Error.h"

namespace tamvelo::grid {

using com::LateObject;
using com::Variant;

namespace {

constexpr long kPositionUnknown = -1;
constexpr long kMostWalked = 100000; // rows of a set that knows neither their number nor its end

} // namespace

void RecordPlaces::Forget() {
    m_walked = false;
    m_places.clear();
}

long RecordPlaces::CountRows() {
    Walk();
    return m_walkedRows;
}

bool RecordPlaces::CountsPositions() {
    if (m_positions == Ability::Unknown) {
        try {
            if (m_host.Call(L"AbsolutePosition").ToLong() != kPositionUnknown) {
                m_positions = Ability::Yes;
            } else if (!HasNoRows(m_host)) { // without rows the answer means nothing
                m_positions = Ability::No;
            }
        } catch (const com::Error&) {
            m_positions = Ability::No;
        }
    }
    return m_positions == Ability::Yes;
}

bool RecordPlaces::HasBookmarks() {
    if (m_bookmarks == Ability::Unknown) {
        if (StandsOnNone(m_host)) {
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

std::function<void()> RecordPlaces::WayBack() {
    if (IsTrue(m_host, L"EOF")) {
        return [this] {
            m_host.Call(L"MoveLast");
            m_host.Call(L"MoveNext");
        };
    }
    if (IsTrue(m_host, L"BOF")) {
        return [this] {
            m_host.Call(L"MoveFirst");
            m_host.Call(L"MovePrevious");
        };
    }
    if (HasBookmarks()) {
        return [this, here = m_host.Call(L"Bookmark")] { m_host.Put(L"Bookmark", here); };
    }
    return
        [this, here = m_host.Call(L"AbsolutePosition").ToLong()] { m_host.Put(L"AbsolutePosition", here); };
}

void RecordPlaces::OnReader(const std::function<void(LateObject&)>& body) {
    LateObject& reader = m_clone.Reader();
    if (!m_clone.ReadsHost()) {
        body(reader);
        return;
    }
    if (HasNoRows(m_host)) {
        return;
    }
    const std::function<void()> goBack = WayBack();
    try {
        body(reader);
    } catch (...) {
        goBack();
        throw;
    }
    goBack();
}

/// Of a set that does not say how many rows it has, by the last one's position.
bool RecordPlaces::CountFromTheEnd() {
    if (m_host.Said() >= 0 || !CountsPositions()) {
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

void RecordPlaces::Walk() {
    if (m_walked) {
        return;
    }
    m_places.clear();
    m_walkedRows = 0;
    if (CountFromTheEnd()) {
        m_walked = true;
        return;
    }
    const long most = m_host.Said() >= 0 ? m_host.Said() : kMostWalked;
    bool bookmarks = true;
    OnReader([&](LateObject& reader) {
        if (HasNoRows(reader)) {
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
    if (m_host.Said() < 0 && m_walkedRows >= kMostWalked) {
        throw com::Error(E_FAIL, L"El conjunto de registros no dice cuántos tiene ni dónde acaba.");
    }
    m_walked = true;
}

void RecordPlaces::Seek(LateObject& set, long row) {
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

long RecordPlaces::HostRow() {
    if (CountsPositions()) {
        return std::max(m_host.Call(L"AbsolutePosition").ToLong() - 1, -1L);
    }
    if (StandsOnNone(m_host) || !HasBookmarks()) {
        return -1;
    }
    const Variant here = m_host.Call(L"Bookmark");
    Walk();
    const auto found = std::find_if(m_places.begin(), m_places.end(),
                                    [&](const Variant& place) { return SameValue(place, here); });
    return found == m_places.end() ? -1 : static_cast<long>(found - m_places.begin());
}

bool RecordPlaces::MoveHost(long row) {
    try {
        // By the identity of the record that the user sees, where there is one: the host's rows may have
        // moved on.
        if (m_clone && HasBookmarks()) {
            Seek(m_clone.Reader(), row);
            m_host.Put(L"Bookmark", m_clone.Reader().Call(L"Bookmark"));
        } else {
            Seek(m_host, row);
        }
        return true;
    } catch (const com::Error&) {
        return false;
    }
}

} // namespace tamvelo::grid
