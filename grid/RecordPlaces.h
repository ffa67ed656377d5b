#pragma once

#include <functional>

#include "grid/RecordClone.h"

namespace tamvelo::grid {

/// What a set can do, found out by trying.
enum class Ability : unsigned char { Unknown, Yes, No };

/// Where rows stand, from 0: by the positions that a set counts, or by the bookmarks of a walk through it.
class RecordPlaces {
public:
    RecordPlaces(HostSet& host, RecordClone& clone) : m_host(host), m_clone(clone) {}

    /// The rows may be others.
    void Forget();
    /// Of a set that does not say how many rows it has.
    long CountRows();
    /// Whether places may be old: those that are remembered.
    bool MayStray() const { return m_positions != Ability::Yes; }

    /// The row that the host stands on, or -1.
    long HostRow();
    /// Makes the row the host's current one; false when the host refuses.
    bool MoveHost(long row);
    /// Moves the host's set or its clone there.
    void Seek(com::LateObject& set, long row);
    /// Runs `body`, which moves the reader; the host's own set is put back afterwards, whatever happens.
    void OnReader(const std::function<void(com::LateObject&)>& body);

private:
    bool CountsPositions();
    bool HasBookmarks();
    /// What puts the host's set back where it stands now.
    std::function<void()> WayBack();
    void Walk();
    bool CountFromTheEnd();

    HostSet& m_host;
    RecordClone& m_clone;
    Ability m_positions = Ability::Unknown;
    Ability m_bookmarks = Ability::Unknown;
    bool m_walked = false;
    std::vector<com::Variant> m_places; // every row's bookmark, for sets that do not count positions
    long m_walkedRows = 0;
};

} // namespace tamvelo::grid
