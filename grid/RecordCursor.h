#pragma once

#include "grid/RecordPlaces.h"

namespace tamvelo::grid {

/// Reads one record set by row number, from 0, without moving the host: on a clone, or where none can be had
/// on the host's own set, which is put back where it was. Functions throw the host's com::Error unless said
/// otherwise.
class RecordCursor {
public:
    /// `ordered`: the host has put the rows in an order of its own.
    explicit RecordCursor(IDispatch* set, bool ordered = false) : m_host(set), m_clone(m_host, ordered) {}
    RecordCursor(const RecordCursor&) = delete;
    RecordCursor& operator=(const RecordCursor&) = delete;

    HostSet& Host() { return m_host; }
    bool IsOpen() { return m_host.IsOpen(); }
    /// Empty where the set has no record to take them from.
    std::vector<FieldInfo> ReadFields();
    /// Counts the rows where the set does not.
    RowSigns ReadSigns();

    /// After the signs changed: a clone follows the host's filter and order, remembered places are forgotten.
    void Follow();
    /// After the host put the rows in another order: clones are made anew.
    void Reordered();
    /// Whether what is read may be another record than the host has in its place: a clone may lag behind,
    /// remembered places may be old.
    bool MayStray() const { return m_clone || m_places.MayStray(); }
    /// After it was: from now on the rows are read in a surer way, at last one value after the other on the
    /// host's own set. False when there is none surer.
    bool ReadSurer();

    /// The row that the host stands on, or -1.
    long HostRow() { return m_places.HostRow(); }
    /// Makes the row the host's current one; false when the host refuses.
    bool MoveHost(long row) { return m_places.MoveHost(row); }

    /// `error` marks a cell whose value could not be read.
    using CellSink = std::function<void(long row, short column, const VARIANT& value, bool error)>;
    struct Rows {
        long first = 0;
        long last = -1;
    };
    /// Hands over the rows that are `needed`, or those `together` with them from a set that delivers many in
    /// one call; fewer where the set ends. Which of the two; nothing when the host's set must not be moved
    /// just now, because a record is being edited.
    std::optional<Rows> Read(const Rows& needed, const Rows& together, short columns, const CellSink& sink);

private:
    bool ReadBlock(com::LateObject& reader, const Rows& wanted, short columns, const CellSink& sink);
    void ReadCells(com::LateObject& reader, const Rows& wanted, short columns, const CellSink& sink);
    /// The current row's, by the field objects of `fields`, which are asked for anew where they may belong
    /// to another record.
    Record ReadRecord(com::LateObject& set, std::vector<com::LateObject>& fields, const Record& before,
                      short columns);

    HostSet m_host;
    RecordClone m_clone;
    RecordPlaces m_places{m_host, m_clone};
    bool m_getRows = true;
    Ability m_fieldsFollow = Ability::Unknown; // field objects belong to the set, not to one record
};

} // namespace tamvelo::grid
