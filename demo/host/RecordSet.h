#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "com/Automation.h"
#include "demo/data/View.h"

namespace tamvelo::demo {

/// The rows that a record set and its clones show, and the database that they live in.
struct SharedView {
    SharedView(std::shared_ptr<Database> in, const TableInfo& table)
        : database(std::move(in)), view(*database, table) {}

    const std::shared_ptr<Database> database;
    View view;
};

/// A record set with the members of ADO's that a grid asks for. It is always open. A clone shows the same
/// rows, with their filter and order, and has a position of its own. What is written into a field is in the
/// database at once, so that no row is ever "being edited".
class RecordSet final : public com::Automation {
public:
    explicit RecordSet(std::shared_ptr<SharedView> rows) : m_rows(std::move(rows)) {}

    View& Rows() { return m_rows->view; }
    const View& Rows() const { return m_rows->view; }
    const TableInfo& Table() const { return Rows().Table(); }

    bool AtStart() const { return m_row < 0 || Rows().Count() == 0; }
    bool AtEnd() const { return m_row >= Rows().Count() || Rows().Count() == 0; }
    /// -1 stands before the first row, Rows().Count() after the last; what lies beyond is brought there.
    void MoveTo(long row);
    /// A clone may stand beyond the last row, when there were more.
    void MoveBy(long rows) { MoveTo(std::min(m_row, Rows().Count()) + rows); }

    /// Changes the rows; the current record stays current while it is among them, else the first one is.
    /// When the change fails nothing moves.
    template <class Change>
    void KeepingRecord(Change&& change) {
        const std::optional<std::int64_t> id = CurrentId();
        change(Rows());
        MoveTo(id ? Rows().RowOf(*id).value_or(0) : 0);
    }

    com::Variant ValueOf(std::size_t column);
    void SetValueOf(std::size_t column, const com::Variant& value);

protected:
    std::span<const com::Member> Members() const override;

private:
    void RecordCount(com::Invocation& call);
    void Bof(com::Invocation& call);
    void Eof(com::Invocation& call);
    void MoveFirst(com::Invocation& call);
    void MoveLast(com::Invocation& call);
    void MoveNext(com::Invocation& call);
    void MovePrevious(com::Invocation& call);
    void Bookmark(com::Invocation& call);
    void AbsolutePosition(com::Invocation& call);
    void Fields(com::Invocation& call);
    void Clone(com::Invocation& call);
    void GetRows(com::Invocation& call);
    void State(com::Invocation& call);
    void EditMode(com::Invocation& call);
    void Filter(com::Invocation& call);
    void Sort(com::Invocation& call);
    void DataVersion(com::Invocation& call);

    bool OnRecord() const { return !AtStart() && !AtEnd(); }
    void CheckOnRecord() const;
    std::optional<std::int64_t> CurrentId() const;
    void MoveToBookmark(const com::Variant& bookmark);
    void MoveToStart(const com::Variant& start);
    std::vector<std::size_t> ColumnsOf(const com::Variant& fields) const;

    const std::shared_ptr<SharedView> m_rows;
    long m_row = 0;
};

} // namespace tamvelo::demo
