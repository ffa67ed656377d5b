#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/Fake.h"

/// Record sets for tests: what a host may bring, and what it may leave out.
namespace tamvelo::testing {

/// What a record set can do. All of them answer RecordCount, BOF, EOF, the four moves, Fields, State.
struct RecordSetOptions {
    long rows = 1000;
    bool clone = true;
    bool getRows = true;
    bool bookmarks = true;
    bool absolutePosition = true;
    bool fieldTypes = true;
    bool dataVersion = true;
    bool knowsCount = true;
    bool updates = false; // Update and CancelUpdate
    bool filterAndSort = true;
    bool snapshots = false;    // a clone keeps the rows, order and values of the moment when it was made
    bool recordFields = false; // Fields belongs to the record that it was asked of, and is not there without
    bool ends = true;          // EOF is told; else the last row is never left
};

/// What a set and its clones share: the records, and the notes that the tests take.
struct RecordTable {
    explicit RecordTable(const RecordSetOptions& wanted) : options(wanted), records(wanted.rows) {}

    RecordSetOptions options;
    long records;
    short columns = 8; // more repeat the first eight
    long version = 1;
    bool open = true;
    long editMode = 0;
    /// Calls by member, of the set, its clones, their fields.
    std::map<std::wstring, int> calls;
    /// Runs at each call, before it: to come back in, or to throw.
    std::function<void(const std::wstring& member)> onCall;
    /// In place of a cell's value, and of a field's name.
    std::function<com::Variant(long record, short column)> value;
    std::map<short, const wchar_t*> names;
    /// What was written into cells.
    std::map<std::pair<long, short>, com::Variant> written;
    /// Classes whose codes a column holds: fields then answer `Relacion`.
    std::map<short, std::wstring> related;

    int Calls() const;
    int Calls(const std::wstring& member) const;
    void Note(const std::wstring& member);
    com::Variant ValueOf(long record, short column) const;
    /// What a cell holds where nothing else was said.
    static com::Variant TypedValue(long record, short column);
};

/// Records computed on demand, so that a million cost nothing. Codigo, Nombre, Precio, Alta, Activo,
/// Cantidad, Notas (Null in every third), Grupo. The filter "pares" leaves every second record; the sort
/// "Codigo DESC" turns them round. As in ADO, a clone has a filter and a sort of its own.
class MemoryRecordSet : public Fake {
public:
    static constexpr short kColumns = 8;

    explicit MemoryRecordSet(const RecordSetOptions& options = {});
    explicit MemoryRecordSet(std::shared_ptr<RecordTable> table);

    RecordTable& Table() { return *m_table; }
    long Count() const;
    /// From 0; -1 before the first row, Count() after the last.
    long Position() const { return m_position; }
    void SetPosition(long position) { m_position = position; }
    void SetFilter(const std::wstring& filter);
    void SetSort(const std::wstring& sort);
    /// As a host adds a record: everyone sees it.
    void Grow(long records);
    com::Variant ValueAt(short column) const;
    void Write(short column, com::Variant value);

protected:
    std::span<const com::Member> Members() const override { return m_members; }

private:
    friend class MemoryFields;
    friend class MemoryField;
    struct Row;
    static const Row kRows[19];
    static void Run(com::Automation& self, com::Invocation& call);
    bool Standing() const { return m_position >= 0 && m_position < Count(); }
    /// The record that it stands on.
    long Current() const;
    void Move(long position);
    long RecordAt(long position) const;
    long PositionOf(long record) const;

    std::shared_ptr<RecordTable> m_table;
    std::vector<com::Member> m_members;
    std::wstring m_filter;
    std::wstring m_sort;
    long m_position = 0;
};

/// The object as script engines make them: names only through IDispatchEx, and so with every object it
/// returns.
com::ComPtr<IDispatch> AsScript(IDispatch* object);

/// A data source with one member, "Primary"; `set` may change.
com::ComPtr<IUnknown> MakeDataSource(std::function<com::ComPtr<IDispatch>()> set);

} // namespace tamvelo::testing
