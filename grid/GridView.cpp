#include "grid/GridView.h"

#include <algorithm>

#include "base/ColumnText.h"
#include "base/Placement.h"
#include "base/Text.h"
#include "win/Clipboard.h"

namespace tamvelo::grid {

namespace {

constexpr HRESULT kSubscript = static_cast<HRESULT>(0x800A0009); // automation's number 9
constexpr int kLeastWidth = 30;                                  // pixels at 96 dpi, as the next
constexpr int kMostWidth = 320;
constexpr int kPadding = 4;
constexpr int kArrowMargins = 24; // beside a caption and the order mark

/// What a value of the kind usually takes, in digits; 0 when its length is the field's own.
int UsualLength(CellKind kind) {
    switch (kind) {
    case CellKind::Number:
    case CellKind::Time:
        return 8;
    case CellKind::Money:
        return 12;
    case CellKind::Date:
        return 10;
    case CellKind::Check:
        return 4;
    case CellKind::Binary:
        return 8;
    default:
        return 0;
    }
}

} // namespace

void GridView::CheckColumn(short column) const {
    if (column < 0 || column >= m_columns.Count()) {
        throw com::Error(kSubscript, L"Subíndice fuera del intervalo: no hay una columna " +
                                         std::to_wstring(column) + L".");
    }
}

void GridView::SetDataSource(IUnknown* source) {
    GridData::Change change;
    try {
        change = m_data.Bind(source);
    } catch (...) {
        // Not `change`: the compiler has been seen to leave it half written when the call throws.
        Show({.rows = true, .current = true});
        throw;
    }
    m_geometry.top = 0;
    Show(change);
}

void GridView::Sync(HostDid did) { Show(m_data.Sync(did)); }

bool GridView::Confirm() {
    if (m_data.Current() < 0 || m_data.Busy()) {
        return false;
    }
    if (m_data.Confirm() || !m_window) {
        return m_window != nullptr;
    }
    Sync(HostDid::Strayed);
    Raise([](GridEvents& events) { events.ShownWasAnother(); });
    return false;
}

void GridView::Show(const GridData::Change& change) {
    if (!m_window) {
        return;
    }
    if (change.fields) {
        TakeFields();
    }
    if (!change.rows && !change.current) {
        if (Load(m_geometry.top)) {
            InvalidateBody();
        }
        return;
    }
    m_geometry.top = std::clamp(m_geometry.top, 0L, MostTop());
    ShowCurrent(true);
    Load(m_geometry.top);
    if (!m_window) {
        return;
    }
    UpdateScrollBars();
    InvalidateBody();
    if (change.current) {
        AnnounceCurrent();
        Raise([](GridEvents& events) { events.CurrentRowChanged(); });
    }
}

void GridView::TakeFields() {
    std::vector<FieldInfo> fields(m_data.Fields().begin(), m_data.Fields().end());
    for (FieldInfo& field : fields) {
        if (const auto named = m_captions.find(base::Lower(field.name)); named != m_captions.end()) {
            field.caption = named->second;
        }
    }
    m_columns.SetFields(fields, m_dpi);
    for (short column = 0; column < m_columns.Count(); ++column) {
        m_columns[column].numeric = IsRightAligned(m_data.Kind(column));
        if (m_columns[column].width == 0) {
            m_columns[column].width = DefaultWidth(column);
            const FieldInfo& field = m_data.Fields()[static_cast<size_t>(column)];
            m_columns[column].guessed = UsualLength(m_data.Kind(column)) == 0 && field.definedSize <= 0;
        }
    }
    m_mark.reset();
    ShowColumns();
}

void GridView::NameField(std::wstring_view field, std::wstring_view caption) {
    m_captions.insert_or_assign(base::Lower(field), std::wstring(caption));
}

/// With room for the order mark beside it.
int GridView::CaptionWidth(short column) const {
    const int arrow = m_font->Height() * 5 / 8; // at most, in any system's looks
    return m_font->Width(m_columns[column].caption) + arrow + base::Scale(kArrowMargins, 96, m_dpi);
}

int GridView::DefaultWidth(short column) const {
    const FieldInfo& field = m_data.Fields()[static_cast<size_t>(column)];
    const int usual = UsualLength(m_data.Kind(column));
    const int characters = usual > 0 ? usual : static_cast<int>(std::clamp(field.definedSize, 0L, 1000L));
    const int cells = characters * m_font->Digit() + 2 * m_geometry.padding + 1;
    return std::clamp(std::max(CaptionWidth(column), cells), base::Scale(kLeastWidth, 96, m_dpi),
                      base::Scale(kMostWidth, 96, m_dpi));
}

int GridView::FittingWidth(short column) {
    int widest = CaptionWidth(column);
    const long last = std::min(m_geometry.LastShown(), m_data.Count() - 1);
    for (long row = m_geometry.top; row <= last; ++row) {
        widest = std::max(widest, m_font->Width(LoadedText(row, column)) + 2 * m_geometry.padding + 1);
    }
    return std::max(widest, base::Scale(kLeastWidth, 96, m_dpi));
}

void GridView::WidenGuessed() {
    bool widened = false;
    for (short column = 0; column < m_columns.Count(); ++column) {
        if (std::exchange(m_columns[column].guessed, false)) {
            m_columns[column].width = std::min(FittingWidth(column), base::Scale(kMostWidth, 96, m_dpi));
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

std::wstring GridView::LoadedText(long row, short column) {
    const RowBlock* block = m_data.Block(row);
    const RowBlock::Cell* cell = block ? block->At(row, column) : nullptr;
    return cell ? std::wstring(block->Text(*cell)) : std::wstring();
}

void GridView::ShowColumns() {
    if (!m_window) {
        return;
    }
    m_headings.Fill(m_columns, m_mark);
    m_column = std::max(m_columns.Nearest(m_column), short{0});
    m_geometry.scrolled =
        std::clamp(m_geometry.scrolled, 0,
                   std::max(0, m_columns.TotalWidth() - static_cast<int>(m_geometry.client.right)));
    UpdateScrollBars();
    m_headings.Place(m_geometry.client, m_geometry.headHeight, m_geometry.scrolled);
    InvalidateBody();
    Raise([](GridEvents& events) { events.CurrentColumnChanged(); });
}

void GridView::SetMark(const std::optional<OrderMark>& mark) {
    if (mark) {
        CheckColumn(mark->column);
        int& width = m_columns[mark->column].width;
        width = std::max(width, CaptionWidth(mark->column));
    }
    m_mark = mark;
    ShowColumns();
}

void GridView::Apply(const base::GridLayout& layout) {
    m_columns.Apply(layout, m_dpi);
    m_fontChoice = layout.font;
    RemakeFont();
    ShowColumns();
}

void GridView::SetFont(const base::GridLayout::Font& font) {
    const int before = m_font ? m_font->Breadth() : 1;
    m_fontChoice = font;
    RemakeFont();
    const int after = m_font ? m_font->Breadth() : 1;
    for (short column = 0; column < m_columns.Count(); ++column) {
        m_columns[column].width = base::Scale(m_columns[column].width, before, after);
    }
    SetMark(m_mark);
}

void GridView::RemakeFont() {
    if (!m_window) {
        return;
    }
    auto font = std::make_unique<GridFont>(ToLogFont(m_fontChoice, m_dpi));
    m_headings.SetFont(font->Get()); // before the old one goes
    m_font = std::move(font);
    m_geometry.padding = base::Scale(kPadding, 96, m_dpi);
    m_geometry.rowHeight = m_font->Height() + base::Scale(kPadding, 96, m_dpi) + 1;
    // A control that could not measure its font has been seen to ask for any height.
    m_geometry.headHeight = std::clamp(m_headings.Height(), m_geometry.rowHeight, 3 * m_geometry.rowHeight);
    Resize();
}

void GridView::ChangeDpi(int dpi) {
    for (short column = 0; column < m_columns.Count(); ++column) {
        m_columns[column].width = base::Scale(m_columns[column].width, m_dpi, dpi);
    }
    m_dpi = dpi;
    RemakeFont();
    ShowColumns();
}

com::Variant GridView::Value(short column) {
    CheckColumn(column);
    return m_data.Value(column);
}

std::wstring GridView::Text(short column) {
    const com::Variant value = Value(column);
    return Format(value.Get(), m_data.Kind(column));
}

const GridColumn& GridView::Column(short column) const {
    CheckColumn(column);
    return m_columns[column];
}

void GridView::SetEmptyText(std::wstring_view text) {
    m_emptyText = text;
    InvalidateBody();
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
        win::CopyText(m_window, Text(m_column));
    }
}

} // namespace tamvelo::grid
