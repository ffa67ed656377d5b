#include "grid/Grid.h"

#include "grid/CellText.h"
#include "grid/ColumnsObject.h"
#include "grid/GridView.h"

namespace tamvelo::grid {

Grid::Grid(HWND parent, int controlId, GridEvents& events) : m_view(std::make_shared<GridView>(events)) {
    try {
        m_view->Create(parent, controlId);
    } catch (...) {
        m_view->Close();
        throw;
    }
}

Grid::~Grid() { m_view->Close(); }

HWND Grid::Window() const { return m_view->Window(); }

// Where the host is called the view is held: the call may be the end of this object.

void Grid::SetDataSource(IUnknown* source) {
    const auto view = m_view;
    view->SetDataSource(source);
}

void Grid::HostChanged() {
    const auto view = m_view;
    view->Sync(HostDid::Something);
}

void Grid::Reordered() {
    const auto view = m_view;
    view->Sync(HostDid::Ordered);
}

void Grid::Requeried() {
    const auto view = m_view;
    view->Sync(HostDid::Requeried);
}

bool Grid::Confirm() {
    const auto view = m_view;
    return view->Confirm();
}

bool Grid::Bound() const { return m_view->Data().Bound(); }

long Grid::RowCount() { return m_view->Data().Count(); }

long Grid::CurrentRow() { return m_view->Data().Current(); }

short Grid::ColumnCount() { return m_view->Columns().Count(); }

short Grid::CurrentColumn() const { return m_view->CurrentColumn(); }

void Grid::SetCurrentColumn(short column) { m_view->SetCurrentColumn(column); }

std::wstring Grid::Caption(short column) const { return m_view->Column(column).caption; }

std::wstring Grid::Field(short column) const { return m_view->Column(column).field; }

com::Variant Grid::Value(short column) {
    const auto view = m_view;
    return view->Value(column);
}

std::wstring Grid::Text(short column) {
    const auto view = m_view;
    return view->Text(column);
}

com::ComPtr<IDispatch> Grid::Columns() { return MakeColumnsObject(m_view); }

void Grid::MarkOrder(short column, bool descending) { m_view->SetMark(OrderMark{column, descending}); }

void Grid::ClearOrderMark() { m_view->SetMark({}); }

base::GridLayout Grid::Layout() const { return m_view->Layout(); }

void Grid::Apply(const base::GridLayout& layout) { m_view->Apply(layout); }

void Grid::DefaultLook() { m_view->SetFont({}); }

LOGFONTW Grid::Font() const { return m_view->Font(); }

void Grid::SetFont(const LOGFONTW& font) { m_view->SetFont(FromLogFont(font, m_view->Dpi())); }

void Grid::CopyRow(bool withHeadings) {
    const auto view = m_view;
    view->CopyRow(withHeadings);
}

void Grid::CopyCell() {
    const auto view = m_view;
    view->CopyCell();
}

void Grid::FitColumn(short column) { m_view->FitColumn(column); }

void Grid::OfferMarks() { m_view->OfferMarks(); }

std::vector<short> Grid::MarkColumns() { return m_view->MarkColumns(); }

void Grid::PutMarksFirst() { m_view->PutMarksFirst(); }

bool Grid::ToggleMark(short column) {
    const auto view = m_view;
    return view->ToggleMark(column);
}

MarkCount Grid::CountMarks(short column) { return m_view->CountMarks(column); }

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
