#include "grid/GridView.h"

#include <windows.h>

#include <algorithm>

#include "base/ColumnText.h"
#include "grid/GridAccessible.h"
#include "win/Clipboard.h"
#include "win/Dpi.h"

namespace tamvelo::grid {

void GridView::Open() {
    m_measures.SetDpi(win::DpiOf(m_window));
    m_headings.Create(m_window);
    RemakeFont();
    ShowColumns();
}

void GridView::Close() noexcept {
    m_events = nullptr;
    if (m_window) {
        DestroyWindow(m_window);
    }
}

void GridView::Report(const com::Error& error) noexcept {
    if (m_events) {
        m_events->Failed(error);
    }
}

void GridView::SetEmptyText(std::wstring_view text) {
    m_emptyText = text;
    m_viewport.InvalidateBody();
}

// The host's rows.

void GridView::SetDataSource(IUnknown* source) {
    GridData::Change change;
    try {
        change = m_data.Bind(source);
    } catch (...) {
        // Not `change`: the compiler has been seen to leave it half written when the call throws.
        Show({.rows = true, .current = true});
        throw;
    }
    m_viewport.SetTop(0);
    Show(change);
}

void GridView::Show(const GridData::Change& change) {
    if (!m_window) {
        return;
    }
    if (change.fields) {
        TakeFields();
    }
    if (!change.rows && !change.current) {
        if (Load(m_viewport.Top())) {
            m_viewport.InvalidateBody();
        }
        return;
    }
    m_viewport.SetTop(m_viewport.Top());
    m_viewport.Reveal(m_data.Current(), true);
    Load(m_viewport.Top());
    if (!m_window) {
        return;
    }
    m_viewport.UpdateBars();
    m_viewport.InvalidateBody();
    if (change.current) {
        AnnounceRow(*this);
        Tell(&GridEvents::CurrentRowChanged);
    }
}

/// Reads what a screen that begins at row `top` shows; true when there was anything to read. A host that
/// fails to deliver leaves cells blank.
bool GridView::Load(long top) {
    bool read = false;
    if (m_viewport.BodyHeight() == 0) {
        return read;
    }
    const com::Standing before;
    try {
        read = m_data.Load(top, top + m_viewport.Bottom() - m_viewport.Top());
    } catch (const com::Error& error) {
        Report(error);
        before.Check();
    }
    if (read && m_window) {
        WidenGuessed();
    }
    CatchUp();
    return read;
}

/// Looks for what the host said while we were in the middle of calling it. Once: a host that says so at every
/// call must not keep us here.
void GridView::CatchUp() {
    if (m_catchingUp || m_data.Busy() || !m_data.TakeMissedSync()) {
        return;
    }
    m_catchingUp = true;
    try {
        Sync(HostDid::Something);
    } catch (const com::Error& error) {
        Report(error);
    } catch (...) {
        m_catchingUp = false;
        throw;
    }
    m_catchingUp = false;
}

bool GridView::Confirm() {
    if (m_data.Current() < 0 || m_data.Busy()) {
        return false;
    }
    if (m_data.Confirm() || !m_window) {
        return m_window != nullptr;
    }
    Sync(HostDid::Strayed);
    Tell(&GridEvents::ShownWasAnother);
    return false;
}

com::Variant GridView::Value(short column) {
    m_columns.At(column);
    return m_data.Value(column);
}

std::wstring GridView::Text(short column) {
    const com::Variant value = Value(column);
    return Format(value.Get(), m_data.Kind(column));
}

void GridView::MoveTo(long row) {
    row = std::clamp(row, 0L, std::max(0L, m_data.Count() - 1));
    const long before = m_data.Current();
    if (row == before || m_data.Busy()) {
        return;
    }
    m_data.MoveTo(row); // where the host stands afterwards is what counts, also when it refused
    if (!m_window || m_data.Current() == before) {
        CatchUp();
        return;
    }
    m_viewport.InvalidateRow(before);
    const long current = m_data.Current();
    if (current >= 0) {
        ScrollTo(std::clamp(m_viewport.Top(), current - m_viewport.WholeRows() + 1, current));
    }
    if (!m_window) {
        return;
    }
    m_viewport.InvalidateRow(current);
    AnnounceRow(*this);
    Tell(&GridEvents::CurrentRowChanged);
    CatchUp();
}

void GridView::Activate(long row) {
    MoveTo(row);
    if (m_window && m_data.Current() == row) {
        Tell(&GridEvents::RowActivated);
    }
}

bool GridView::ToggleMark(short column) {
    m_columns.At(column);
    if (!Confirm()) {
        return false;
    }
    m_data.Write(column, com::Variant(!m_data.Value(column).ToBool()));
    Sync(HostDid::Something);
    AnnounceCell(*this);
    return true;
}

void GridView::CopyRow(bool withHeadings) {
    if (!Confirm()) {
        return;
    }
    std::vector<std::wstring> headings;
    std::vector<std::wstring> cells;
    for (const short column : m_columns.OnScreen()) {
        headings.push_back(m_columns[column].caption);
        cells.push_back(Text(column));
    }
    const std::wstring row = base::TabLine(cells);
    win::CopyText(m_window, withHeadings ? base::TabLine(headings) + L"\r\n" + row : row);
}

void GridView::CopyCell() {
    if (m_columns.Count() > 0 && Confirm()) {
        win::CopyText(m_window, Text(m_columns.Current()));
    }
}

// The columns.

void GridView::TakeFields() {
    m_columns.SetFields(m_data.Fields(), m_measures.Dpi());
    for (short column = 0; column < m_columns.Count(); ++column) {
        if (m_columns[column].width == 0) {
            m_measures.GuessWidth(m_columns[column], m_data.Fields()[static_cast<size_t>(column)]);
        }
    }
    ShowColumns();
}

void GridView::ShowColumns() {
    if (!m_window) {
        return;
    }
    m_headings.Fill(m_columns);
    m_columns.SettleCurrent();
    m_viewport.ScrollAcross(m_viewport.Scrolled());
    m_viewport.UpdateBars();
    PlaceHeadings();
    m_viewport.InvalidateBody();
    Tell(&GridEvents::CurrentColumnChanged);
}

int GridView::FittingWidth(short column) {
    int widest = std::max(m_measures.CaptionWidth(m_columns[column]), m_measures.LeastWidth());
    for (long row = m_viewport.Top(); row <= m_viewport.LastRow(); ++row) {
        widest = std::max(widest, m_measures.CellWidth(m_data.ShownText(row, column)));
    }
    return widest;
}

void GridView::WidenGuessed() {
    bool widened = false;
    for (short column = 0; column < m_columns.Count(); ++column) {
        if (std::exchange(m_columns[column].guessed, false)) {
            m_columns[column].width = std::min(FittingWidth(column), m_measures.MostWidth());
            widened = true;
        }
    }
    if (widened) {
        ShowColumns();
    }
}

void GridView::FitColumn(short column) {
    ChangeColumn(column, [&](GridColumns&, GridColumn& fitted) {
        fitted.width = FittingWidth(column);
        fitted.guessed = false;
    });
}

void GridView::WidenColumn(short column, int width) {
    m_columns[column].width = std::max(0, width);
    m_columns[column].guessed = false;
    m_viewport.UpdateBars();
    m_viewport.InvalidateBody();
}

void GridView::SetCurrentColumn(short column) {
    column = m_columns.Nearest(column);
    if (column < 0) {
        return;
    }
    const RECT cell = m_viewport.CellRect(m_viewport.Top(), column);
    const int beyond = std::max(0, static_cast<int>(cell.right - m_viewport.Client().right));
    ScrollAcross(m_viewport.Scrolled() + std::min(beyond, static_cast<int>(cell.left)));
    TakeColumn(column);
}

void GridView::TakeColumn(short column) {
    if (m_columns.SetCurrent(column) && m_window) {
        m_viewport.InvalidateRow(m_data.Current());
        AnnounceCell(*this);
        Tell(&GridEvents::CurrentColumnChanged);
    }
}

void GridView::SetArrow(const std::optional<SortArrow>& arrow) {
    if (arrow) {
        GridColumn& column = m_columns.At(arrow->column);
        column.width = std::max(column.width, m_measures.CaptionWidth(column));
    }
    m_columns.SetArrow(arrow);
    ShowColumns();
}

void GridView::Apply(const base::GridLayout& layout) {
    m_columns.Apply(layout, m_measures.Dpi());
    m_measures.Choose(layout.font);
    RemakeFont();
    ShowColumns();
}

void GridView::SetFont(const base::GridLayout::Font& font) {
    const int before = m_measures.Font().Breadth();
    m_measures.Choose(font);
    RemakeFont();
    m_columns.ScaleWidths(before, m_measures.Font().Breadth());
    SetArrow(m_columns.Arrow());
}

void GridView::ChangeDpi(int dpi) {
    m_columns.ScaleWidths(m_measures.Dpi(), dpi);
    m_measures.SetDpi(dpi);
    RemakeFont();
    ShowColumns();
}

void GridView::RemakeFont() {
    if (!m_window) {
        return;
    }
    const std::unique_ptr<GridFont> former = m_measures.RemakeFont();
    m_headings.SetFont(m_measures.Font().Get());
    const int row = m_measures.RowHeight();
    // A control that could not measure its font has been seen to ask for any height.
    m_viewport.SetHeights(std::clamp(m_headings.Height(), row, 3 * row), row);
    Resize();
}

// The part that is on screen.

void GridView::Resize() {
    if (!m_measures.Ready()) {
        return; // still being created
    }
    const bool first = m_viewport.BodyHeight() == 0;
    const long current = m_data.Current();
    const bool wasShown = m_viewport.ShowsWhole(current);
    m_viewport.TakeClient();
    PlaceHeadings();
    if (first || wasShown) {
        m_viewport.Reveal(current, first);
    }
    Load(m_viewport.Top());
    m_viewport.UpdateBars();
    m_viewport.InvalidateBody();
    Tell(&GridEvents::RowsShown);
}

void GridView::ScrollTo(long top) {
    top = m_viewport.NearestTop(top);
    if (top == m_viewport.Top()) {
        return;
    }
    Load(top); // before anything moves on screen: the host may let windows paint meanwhile
    if (!m_window) {
        return;
    }
    m_viewport.ScrollTo(m_viewport.NearestTop(top));
    Tell(&GridEvents::RowsShown);
}

void GridView::ScrollAcross(int scrolled) {
    if (m_window && m_viewport.ScrollAcross(scrolled)) {
        PlaceHeadings();
        m_viewport.UpdateBars();
        m_viewport.InvalidateBody();
    }
}

void GridView::PlaceHeadings() {
    m_headings.Place(m_viewport.Client(), m_viewport.HeadHeight(), m_viewport.Scrolled());
}

} // namespace tamvelo::grid
