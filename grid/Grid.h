#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/GridLayout.h"
#include "com/ComPtr.h"
#include "com/Error.h"
#include "com/Variant.h"

namespace tamvelo::grid {

/// What the form that owns a grid hears from it. Called inside the grid's message handling: whatever these
/// throw comes back through Failed.
struct GridEvents {
    /// A double click on a row.
    virtual void RowActivated() = 0;
    /// A click on a heading; `column` counts in the record set.
    virtual void HeadingClicked(short column) = 0;
    /// A right click, Shift+F10 or the menu key.
    virtual void ContextMenuAsked(POINT screen) = 0;
    /// After the current row became another one, by the user or by the host.
    virtual void CurrentRowChanged() = 0;
    /// After the current column became another one, or has another caption.
    virtual void CurrentColumnChanged() {}
    /// After the user dragged, resized or fitted a column.
    virtual void LayoutChanged() = 0;
    /// A click on the cell of a mark, in a grid that offers them; its row and column are the current ones by
    /// now.
    virtual void MarkClicked() {}
    /// What was highlighted turned out to be another record than the host's current one, before anything was
    /// done with it. The rows have been read again.
    virtual void ShownWasAnother() {}
    /// Other rows may be on screen than before.
    virtual void RowsShown() {}
    /// Something that the grid did by itself failed: a key, a scroll, an event above.
    virtual void Failed(const com::Error& error) noexcept = 0;

protected:
    ~GridEvents() = default;
};

/// Rows that carry a mark, as far as they are counted.
struct MarkCount {
    long marked = 0;
    bool all = false; // every row was counted, not only those on screen
};

class GridView;

/// The data grid: a window of its own over the host's record set. It reads the rows that are on screen, never
/// while it paints, and leaves the host's current record where it is; the user's moves in the grid do move
/// it. Columns count in record-set order everywhere, rows from 0. Every host call may do anything, destroy
/// the window included: all functions are safe on a grid without a window, and then do nothing or answer as
/// an empty one does.
class Grid {
public:
    /// A visible child window in the tab order, empty of columns; the form gives it a place. `events`
    /// outlives this.
    Grid(HWND parent, int controlId, GridEvents& events);
    ~Grid();
    Grid(const Grid&) = delete;
    Grid& operator=(const Grid&) = delete;

    /// Null once the window is gone.
    HWND Window() const;

    /// Binds to an ADO record set, a data source, an object with a `Recordset`, or one that looks like a
    /// record set. Null unbinds. Throws com::Error for anything else and leaves an empty grid with the heads
    /// it had.
    void SetDataSource(IUnknown* source);
    /// After any call of the owner into the host: finds out what changed, and reads the rows on screen again.
    void HostChanged();
    /// After the host put its records in another order.
    void Reordered();
    /// After the host's Requery: its record set, rows and bookmarks may all be others.
    void Requeried();

    /// Before anything is done with the current record: whether it is the one that is highlighted. If it is
    /// another one, the rows are read again and the owner hears ShownWasAnother; the user has to look again.
    bool Confirm();

    bool Bound() const;
    long RowCount();
    /// -1 when the record set stands on no row.
    long CurrentRow();
    /// Columns of the record set.
    short ColumnCount();
    /// -1 without columns.
    short CurrentColumn() const;
    /// The heading, and the record set's name of a column. Throw a subscript error for a column out of range.
    std::wstring Caption(short column) const;
    std::wstring Field(short column) const;
    /// Scrolls it into view; a column out of range is brought into it.
    void SetCurrentColumn(short column);

    /// The current row's value, after Confirm the one that it saw; Empty without a row. Throws a subscript
    /// error for a column out of range.
    com::Variant Value(short column);
    /// The same as it is displayed, uncut; "" for Null.
    std::wstring Text(short column);

    /// The automation object `Columns`: Count, Item(i) with Caption, DataField, Visible, Width (pixels),
    /// Order, Alignment, Text, Value. It may outlive the grid; its members then fail.
    com::ComPtr<IDispatch> Columns();

    /// The arrow in a heading; sorting is the host's.
    void MarkOrder(short column, bool descending);
    void ClearOrderMark();

    /// Font and columns as they stand, lengths at the window's dpi.
    base::GridLayout Layout() const;
    /// Columns that the layout does not know stay visible, after those that it knows. Before the grid is
    /// bound the layout waits for its columns.
    void Apply(const base::GridLayout& layout);
    /// Tahoma 10 and the light yellow style of the selected row.
    void DefaultLook();
    /// Height in pixels of the window's dpi.
    LOGFONTW Font() const;
    void SetFont(const LOGFONTW& font);

    /// The current row's visible columns in display order, parted by tabs, to the clipboard, if Confirm.
    void CopyRow(bool withHeadings);
    void CopyCell();
    /// As wide as its caption and its cells on screen need.
    void FitColumn(short column);

    // Marks: the cells of Boolean columns, which the user may tick in a grid that offers it.
    /// From now on a click on a mark is one of its own: MarkClicked, and no activation of the row.
    void OfferMarks();
    /// The visible columns of marks, from left to right.
    std::vector<short> MarkColumns();
    /// Puts them before all other columns on screen.
    void PutMarksFirst();
    /// Turns the current row's mark round in the host's record, if Confirm: whether it did. When the host
    /// refuses, its error goes on and the mark is as it was.
    bool ToggleMark(short column);
    /// Of rows that are loaded: all when they are few, else those on screen. Calls no one.
    MarkCount CountMarks(short column);

    /// A caption in place of the record set's, for columns of that field (in any case); before the grid is
    /// bound.
    void NameField(std::wstring_view field, std::wstring_view caption);
    /// What stands in a grid without rows; "No hay registros" until set.
    void SetEmptyText(std::wstring_view text);
    /// "Registro 12 de 340".
    std::wstring CounterText();
    void SetAccessibleName(std::wstring_view name);

private:
    const std::shared_ptr<GridView> m_view;
};

} // namespace tamvelo::grid
