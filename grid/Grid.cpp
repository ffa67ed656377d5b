#include "grid/Grid.h"

#include "grid/CellText.h"
#include "grid/ColumnsObject.h"
#include "grid/GridWindow.h"

namespace tamvelo::grid {

namespace {

/// While the view works: where the host is called, that may be the end of the grid.
std::shared_ptr<GridView> Held(const std::shared_ptr<GridView>& view) { return view; }

} // namespace

Grid::Grid(HWND parent, int controlId, GridEvents& events)
    : m_view(GridWindow::Open(parent, controlId, events)) {}

Grid::~Grid() { m_view->Close(); }

HWND Grid::Window() const { return m_view->Window(); }

void Grid::SetDataSource(IUnknown* source) { Held(m_view)->SetDataSource(source); }

void Grid::HostChanged() { Held(m_view)->Sync(HostDid::Something); }

void Grid::Reordered() { Held(m_view)->Sync(HostDid::Ordered); }

void Grid::Requeried() { Held(m_view)->Sync(HostDid::Requeried); }

bool Grid::Confirm() { return Held(m_view)->Confirm(); }

bool Grid::Bound() const { return m_view->Data().Bound(); }

long Grid::RowCount() { return m_view->Data().Count(); }

long Grid::CurrentRow() { return m_view->Data().Current(); }

short Grid::ColumnCount() { return m_view->Columns().Count(); }

short Grid::CurrentColumn() const { return m_view->Columns().Current(); }

void Grid::SetCurrentColumn(short column) { Held(m_view)->SetCurrentColumn(column); }

std::wstring Grid::Caption(short column) const { return m_view->Columns().At(column).caption; }

std::wstring Grid::Field(short column) const { return m_view->Columns().At(column).field; }

com::Variant Grid::Value(short column) { return Held(m_view)->Value(column); }

std::wstring Grid::Text(short column) { return Held(m_view)->Text(column); }

com::ComPtr<IDispatch> Grid::Columns() { return MakeColumnsObject(m_view); }

void Grid::MarkOrder(short column, bool descending) { Held(m_view)->SetArrow(SortArrow{column, descending}); }

void Grid::ClearOrderMark() { Held(m_view)->SetArrow({}); }

base::GridLayout Grid::Layout() const { return m_view->Layout(); }

void Grid::Apply(const base::GridLayout& layout) { Held(m_view)->Apply(layout); }

void Grid::DefaultLook() { Held(m_view)->SetFont({}); }

LOGFONTW Grid::Font() const { return ToLogFont(m_view->Measures().Choice(), m_view->Measures().Dpi()); }

void Grid::SetFont(const LOGFONTW& font) {
    Held(m_view)->SetFont(FromLogFont(font, m_view->Measures().Dpi()));
}

void Grid::CopyRow(bool withHeadings) { Held(m_view)->CopyRow(withHeadings); }

void Grid::CopyCell() { Held(m_view)->CopyCell(); }

void Grid::FitColumn(short column) { Held(m_view)->FitColumn(column); }

void Grid::OfferMarks() { m_view->OfferMarks(); }

std::vector<short> Grid::MarkColumns() {
    std::vector<short> columns = m_view->Columns().OnScreen();
    std::erase_if(columns, [&](short column) { return !m_view->Data().IsMark(column); });
    return columns;
}

void Grid::PutMarksFirst() {
    int place = 0;
    const auto view = Held(m_view);
    for (const short mark : MarkColumns()) {
        view->ChangeColumn(mark, [&](GridColumns& columns, GridColumn&) { columns.MoveTo(mark, place++); });
    }
}

bool Grid::ToggleMark(short column) { return Held(m_view)->ToggleMark(column); }

MarkCount Grid::CountMarks(short column) {
    GridData& data = m_view->Data();
    MarkCount count;
    const RowBlock* const only = data.Count() <= GridData::kRowsReadTogether ? data.Block(0) : nullptr;
    count.all = data.Count() == 0 || (only && only->IsAllRead());
    const long last = count.all ? data.Count() - 1 : m_view->Viewport().LastRow();
    for (long row = count.all ? 0 : m_view->Viewport().Top(); row <= last; ++row) {
        const RowBlock::Cell* const cell = data.Cell(row, column);
        count.marked += cell && cell->checked ? 1 : 0;
    }
    return count;
}

void Grid::NameField(std::wstring_view field, std::wstring_view caption) {
    m_view->NameField(field, caption);
}

void Grid::SetEmptyText(std::wstring_view text) { m_view->SetEmptyText(text); }

std::wstring Grid::CounterText() {
    const long rows = m_view->Data().Count();
    const long current = m_view->Data().Current();
    if (rows == 0) {
        return L"Sin registros";
    }
    if (current < 0) {
        return Grouped(rows) + (rows == 1 ? L" registro" : L" registros");
    }
    return L"Registro " + Grouped(current + 1) + L" de " + Grouped(rows);
}

void Grid::SetAccessibleName(std::wstring_view name) { m_view->SetName(name); }

} // namespace tamvelo::grid
