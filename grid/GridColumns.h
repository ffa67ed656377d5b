#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/GridLayout.h"
#include "grid/SetMembers.h"

namespace tamvelo::grid {

/// Of a column's cells. General goes by the values: numbers to the right.
enum class Alignment : unsigned char { Left, Right, Center, General };

struct GridColumn {
    std::wstring field;
    std::wstring caption;
    int width = 0;        // pixels
    bool guessed = false; // the width, from nothing but the caption: the first cells may say better
    bool visible = true;
    Alignment alignment = Alignment::General;
    bool numeric = false; // by its field's type: the caption stands over the numbers
};

/// The arrow in a heading.
struct SortArrow {
    short column;
    bool descending;
};

/// The columns as the user sees them: in record-set order here, with their own order on screen, and which of
/// them is the current one. Knows no window.
class GridColumns {
public:
    /// One column per field, all visible, in order, without a width. Columns that were there before, by field
    /// name and occurrence, keep what the user made of them.
    void SetFields(const std::vector<FieldInfo>& fields, int dpi);
    /// A caption in place of the record set's, for columns of that field in any case, from the next fields
    /// on.
    void NameField(std::wstring_view field, std::wstring_view caption);

    short Count() const { return static_cast<short>(m_columns.size()); }
    GridColumn& operator[](short column) { return m_columns[static_cast<size_t>(column)]; }
    const GridColumn& operator[](short column) const { return m_columns[static_cast<size_t>(column)]; }

    // Throw a subscript error for what is not there.
    GridColumn& At(short column);
    const GridColumn& At(short column) const { return const_cast<GridColumns&>(*this).At(column); }
    short Named(const std::wstring& field) const;

    /// -1 without columns.
    short Current() const { return m_columns.empty() ? short{-1} : m_current; }
    /// False when it is the current one already, or none.
    bool SetCurrent(short column);
    /// Where it was hidden another one is.
    void SettleCurrent() { m_current = std::max(Nearest(m_current), short{0}); }
    const std::optional<SortArrow>& Arrow() const { return m_arrow; }
    void SetArrow(const std::optional<SortArrow>& arrow) { m_arrow = arrow; }

    /// Column numbers from left to right, hidden ones left out.
    std::vector<short> OnScreen() const;
    /// Place among all columns, hidden ones included.
    int OrderOf(short column) const;
    void MoveTo(short column, int order);
    /// To a place among the visible columns.
    void MoveOnScreen(short column, int place);
    /// The pixels that the visible columns take.
    int TotalWidth() const;
    void ScaleWidths(int from, int to);

    /// Of the visible columns the next to the right (`step` 1) or left (-1); `column` itself at the end.
    short Neighbour(short column, int step) const;
    /// The column itself when it is visible, else one that is; -1 when none is.
    short Nearest(short column) const;

    base::GridLayout ToLayout(int dpi, const base::GridLayout::Font& font) const;
    void Apply(const base::GridLayout& layout, int dpi);

private:
    std::vector<GridColumn> m_columns;
    std::vector<short> m_order;
    short m_current = 0;
    std::optional<SortArrow> m_arrow;
    std::map<std::wstring, std::wstring> m_captions; // by the field's name in small letters
    base::GridLayout m_waiting;                      // for columns that are not there yet
};

} // namespace tamvelo::grid
