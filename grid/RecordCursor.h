#pragma once

#include <functional>
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
    explicit RecordCursor(IDispatch* set) : m_host(set, L"Recordset") {}

    IDispatch* Set() const { return m_host.Get(); }
    bool IsOpen();
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
    /// A set that counts its own changes needs no other watching.
    bool CountsChanges() const { return !m_version.missing; }
    /// Whether the rows can be read again at little cost and without touching the host.
    bool ReadsCheaply() const { return m_clone && m_getRows; }
    /// After the marks changed: a clone follows the host's filter and order, remembered places are forgotten.
    void Follow();

    /// The row that the host stands on, or -1.
    long HostRow();
    /// Makes the row the host's current one; false when the host refuses.
    bool MoveHost(long row);
    /// Of the host's current record.
    com::Variant Value(short column);

    /// Into the host's current record, for good: a set that keeps changes back is told to update. A write
    /// that the host refuses is taken back.
    void Write(short column, const com::Variant& value);

    /// `error` marks a cell whose value could not be read.
    using CellSink = std::function<void(long row, short column, const VARIANT& value, bool error)>;
    /// Hands over `rows` rows from `first` on, or fewer. False when the host's set must not be moved just
    /// now, because a record is being edited.
    bool Read(long first, long rows, short columns, const CellSink& sink);

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

    com::Variant Ask(com::LateObject& set, Optional& member);
    com::LateObject HostField(short column);
    com::LateObject& Reader();
    void MakeClone();
    bool AlignClone();
    bool CountsPositions();
    bool HasBookmarks();
    Place Save();
    void Restore(const Place& place);
    template <class Body>
    void OnReader(Body&& body);
    void Walk();
    void Seek(com::LateObject& set, long row);
    bool ReadBlock(long first, long rows, short columns, const CellSink& sink);
    void ReadCells(long first, long rows, short columns, const CellSink& sink);
    std::vector<com::LateObject> FieldObjects(com::LateObject& set, short columns);

    com::LateObject m_host;
    com::LateObject m_clone;
    bool m_cloneTried = false;
    bool m_cloneIsHost = false;
    bool m_getRows = true;
    Ability m_positions = Ability::Unknown;
    Ability m_bookmarks = Ability::Unknown;
    bool m_walked = false;
    std::vector<com::Variant> m_places; // every row's bookmark, for sets that do not count positions
    long m_walkedRows = 0;
    std::vector<com::LateObject> m_cloneFields;
    Optional m_state{L"State"};
    Optional m_editMode{L"EditMode"};
    Optional m_filter{L"Filter"};
    Optional m_sort{L"Sort"};
    Optional m_version{L"DataVersion"};
};

} // namespace tamvelo::grid
