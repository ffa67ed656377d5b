#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "com/LateObject.h"

namespace tamvelo::grid {

struct FieldInfo {
    std::wstring name;
    std::wstring caption;
    long type = 0; // ADO's number; 0 when the field does not say
    long definedSize = 0;
    bool operator==(const FieldInfo&) const = default;
};

/// Reads one record set by row number without moving the host: on a clone, or where none can be had on the
/// host's own set, which is put back where it was. What a set can do is found out by trying, once. Rows count
/// from 0. Functions throw the host's com::Error unless said otherwise.
class RecordCursor {
public:
    /// `ordered`: the host has put the rows in an order of its own.
    explicit RecordCursor(IDispatch* set, bool ordered = false)
        : m_host(set, L"Recordset"), m_ordered(ordered) {}

    IDispatch* Set() const { return m_host.Get(); }
    bool IsOpen();
    /// Empty where the set has no record to take them from.
    std::vector<FieldInfo> ReadFields();

    /// What gives a change of the rows away. Reading them costs a few calls.
    struct Marks {
        long count = 0;
        com::Variant filter;
        com::Variant sort;
        com::Variant version;
        bool SameRowsAs(const Marks& other) const;
    };
    Marks ReadMarks();
    /// After the marks changed: a clone follows the host's filter and order, remembered places are forgotten.
    void Follow();
    /// After the host put the rows in another order: clones are made anew, and none serves where the set has
    /// no `Sort` to give them.
    void Reordered();
    /// Whether what is read may be another record than the host has in its place: a clone may lag behind,
    /// remembered places may be old.
    bool MayStray() const { return m_clone || m_positions != Ability::Yes; }
    /// After it was: from now on the rows are read in a surer way, at last one value after the other on the
    /// host's own set. False when there is none surer.
    bool ReadSurer();

    /// The row that the host stands on, or -1.
    long HostRow();
    /// Makes the row the host's current one; false when the host refuses.
    bool MoveHost(long row);
    /// Of the host's current record.
    com::Variant Value(short column);
    /// Its first values; nothing in place of one that could not be read.
    using Record = std::vector<std::optional<com::Variant>>;
    Record HostRecord(short columns);

    /// Into the host's current record, for good: a set that keeps changes back is told to update. A write
    /// that the host refuses is taken back.
    void Write(short column, const com::Variant& value);

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
    struct Optional {
        const wchar_t* name;
        bool missing = false;
    };
    struct Place {
        enum { Start, Row, End } where = Row;
        com::Variant bookmark;
        long position = 0;
    };
    enum class Ability { Unknown, Yes, No };

    std::vector<FieldInfo> FieldsOf(com::LateObject& set);
    com::Variant Ask(com::LateObject& set, Optional& member);
    template <class T>
    T Ask(com::LateObject& set, Optional& member, T none, T (com::Variant::*as)() const);
    com::LateObject HostField(short column);
    com::LateObject& Reader();
    void MakeClone();
    void DropClone();
    bool AlignClone();
    bool CountsPositions();
    bool HasBookmarks();
    Place Save();
    void Restore(const Place& place);
    /// Runs `body`, which moves the reader; the host's own set is put back afterwards, whatever happens.
    void OnReader(const std::function<void(com::LateObject&)>& body);
    void Walk();
    bool CountFromTheEnd();
    void Seek(com::LateObject& set, long row);
    bool ReadBlock(const Rows& wanted, short columns, const CellSink& sink);
    void ReadCells(const Rows& wanted, short columns, const CellSink& sink);
    /// The current row's, by the field objects of `fields`, which are asked for anew where they may belong
    /// to another record.
    Record ReadRecord(com::LateObject& set, std::vector<com::LateObject>& fields, const Record& before,
                      short columns);

    com::LateObject m_host;
    com::LateObject m_clone;
    bool m_cloneTried = false;
    bool m_cloneIsHost = false;
    bool m_cloneIsFresh = false; // made after the last one had lagged behind
    bool m_ordered;
    bool m_plain = false; // neither clones nor rows in blocks
    bool m_getRows = true;
    Ability m_fieldsFollow = Ability::Unknown; // field objects belong to the set, not to one record
    Ability m_positions = Ability::Unknown;
    Ability m_bookmarks = Ability::Unknown;
    bool m_walked = false;
    std::vector<com::Variant> m_places; // every row's bookmark, for sets that do not count positions
    long m_walkedRows = 0;
    long m_said = -1; // RecordCount
    std::vector<com::LateObject> m_cloneFields;
    Optional m_state{L"State"};
    Optional m_editMode{L"EditMode"};
    Optional m_filter{L"Filter"};
    Optional m_sort{L"Sort"};
    Optional m_version{L"DataVersion"};
};

} // namespace tamvelo::grid
