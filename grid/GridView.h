#pragma once

#include <memory>
#include <string>
#include <vector>

#include "grid/Grid.h"
#include "grid/GridColumns.h"
#include "grid/GridData.h"
#include "grid/GridHeadings.h"
#include "grid/GridMeasures.h"
#include "grid/GridViewport.h"

namespace tamvelo::grid {

/// What is on screen of rows and columns: reads what comes into view, follows the host and the user, and
/// tells the owner. Calls to the host may end the window: each function looks for it again afterwards, and
/// who calls one holds the view.
class GridView {
public:
    /// `window` is null once there is none.
    GridView(const HWND& window, GridEvents& events) : m_window(window), m_events(&events) {}
    GridView(const GridView&) = delete;
    GridView& operator=(const GridView&) = delete;
    /// The window is there.
    void Open();
    /// The owner goes: no window, no more events.
    void Close() noexcept;
    HWND Window() const { return m_window; }

    GridData& Data() { return m_data; }
    const GridData& Data() const { return m_data; }
    const GridColumns& Columns() const { return m_columns; }
    const GridViewport& Viewport() const { return m_viewport; }
    const GridMeasures& Measures() const { return m_measures; }
    const GridHeadings& Headings() const { return m_headings; }
    template <class... Arguments>
    void Tell(void (GridEvents::*event)(Arguments...), Arguments... arguments) {
        if (m_events) {
            (m_events->*event)(arguments...);
        }
    }
    void Report(const com::Error& error) noexcept;

    /// For readers of the screen.
    const std::wstring& Name() const { return m_name; }
    void SetName(std::wstring_view name) { m_name = name; }
    /// In place of rows.
    const std::wstring& EmptyText() const { return m_emptyText; }
    void SetEmptyText(std::wstring_view text);

    // The host's rows.
    void SetDataSource(IUnknown* source);
    void Sync(HostDid did) { Show(m_data.Sync(did)); }
    /// Whether the host's current record is the one that is highlighted. If it is another the rows are read
    /// again and the owner is told; also false without a current row.
    bool Confirm();
    com::Variant Value(short column);
    std::wstring Text(short column);
    /// Makes the row the host's current one and shows it.
    void MoveTo(long row);
    /// The same, and the row was chosen.
    void Activate(long row);
    void OfferMarks() { m_offersMarks = true; }
    bool TakesMarks(short column) { return m_offersMarks && m_window && m_data.IsMark(column); }
    bool ToggleMark(short column);
    void CopyRow(bool withHeadings);
    void CopyCell();

    // The columns.
    /// Lets `change` alter one column and shows the result.
    template <class Change>
    void ChangeColumn(short column, Change&& change) {
        change(m_columns, m_columns.At(column));
        ShowColumns();
    }
    void NameField(std::wstring_view field, std::wstring_view caption) {
        m_columns.NameField(field, caption);
    }
    /// Scrolls it into view.
    void SetCurrentColumn(short column);
    /// Makes it the current one, wherever it stands.
    void TakeColumn(short column);
    void SetArrow(const std::optional<SortArrow>& arrow);
    void FitColumn(short column);
    /// As the heading has it already.
    void WidenColumn(short column, int width);
    /// Not shown before ShowColumns.
    void DragColumn(short column, int place) { m_columns.MoveOnScreen(column, place); }
    void ShowColumns();
    base::GridLayout Layout() const { return m_columns.ToLayout(m_measures.Dpi(), m_measures.Choice()); }
    void Apply(const base::GridLayout& layout);
    void SetFont(const base::GridLayout::Font& font);
    void ChangeDpi(int dpi);

    // The part that is on screen.
    void Resize();
    void ScrollTo(long top);
    void ScrollAcross(int scrolled);

private:
    void Show(const GridData::Change& change);
    bool Load(long top);
    void CatchUp();
    void TakeFields();
    int FittingWidth(short column);
    void WidenGuessed();
    void RemakeFont();
    void PlaceHeadings();

    const HWND& m_window;
    GridEvents* m_events;
    GridData m_data;
    GridColumns m_columns;
    GridMeasures m_measures;
    GridHeadings m_headings;
    GridViewport m_viewport{m_window, m_data, m_columns};
    std::wstring m_name;
    std::wstring m_emptyText = L"No hay registros";
    bool m_offersMarks = false;
    bool m_catchingUp = false;
};

} // namespace tamvelo::grid
