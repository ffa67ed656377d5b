#pragma once

#include <utility>

#include "grid/HostSet.h"

namespace tamvelo::grid {

/// What rows are read from: a clone of the host's set that shows the same rows, so that the host is not
/// moved, or where none can be had the host's set.
class RecordClone {
public:
    /// `ordered`: the host has put the rows in an order of its own.
    RecordClone(HostSet& host, bool ordered) : m_host(host), m_ordered(ordered) {}

    com::LateObject& Reader();
    bool ReadsHost() { return &Reader() == &m_host; }
    /// Whether one is in use already.
    explicit operator bool() const { return static_cast<bool>(m_clone); }
    /// A set that answers itself.
    bool IsHost() const { return m_isHost; }
    /// Neither clones nor rows in blocks are to be trusted.
    bool IsGivenUp() const { return m_givenUp; }

    /// The host's filter, order or rows have changed.
    void Follow();
    /// The host put its rows in an order, which no clone has where the set has no `Sort` to give it.
    void Reordered();
    /// It lagged behind: a new one, and after that none. False when there was none.
    bool LeaveIt();

    /// The clone's field objects, as far as they were kept: they go with it.
    std::vector<com::LateObject> TakeFields() { return std::exchange(m_fields, {}); }
    void KeepFields(std::vector<com::LateObject> fields) { m_fields = std::move(fields); }

private:
    void Make();
    void Drop();

    HostSet& m_host;
    com::LateObject m_clone;
    std::vector<com::LateObject> m_fields;
    bool m_tried = false;
    bool m_isHost = false;
    bool m_isFresh = false; // made after the last one had lagged behind
    bool m_ordered;
    bool m_givenUp = false;
};

} // namespace tamvelo::grid
