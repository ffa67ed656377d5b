#include "grid/GridColumns.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/Placement.h"
#include "base/Text.h"
#include "com/Error.h"
#include "grid/CellText.h"

namespace tamvelo::grid {

namespace {

constexpr HRESULT kSubscript = static_cast<HRESULT>(0x800A0009); // automation's number 9
size_t OccurrenceOf(const std::vector<GridColumn>& columns, size_t index) {
    return 1 + static_cast<size_t>(std::count_if(
                   columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(index),
                   [&](const GridColumn& other) { return other.field == columns[index].field; }));
}

} // namespace

GridColumn& GridColumns::At(short column) {
    if (column < 0 || column >= Count()) {
        throw com::Error(kSubscript, L"Subíndice fuera del intervalo: no hay una columna " +
                                         std::to_wstring(column) + L".");
    }
    return (*this)[column];
}

short GridColumns::Named(const std::wstring& field) const {
    for (short column = 0; column < Count(); ++column) {
        if (base::Lower((*this)[column].field) == base::Lower(field)) {
            return column;
        }
    }
    throw com::Error(kSubscript, L"No hay una columna «" + field + L"».");
}

void GridColumns::NameField(std::wstring_view field, std::wstring_view caption) {
    m_captions.insert_or_assign(base::Lower(field), std::wstring(caption));
}

bool GridColumns::SetCurrent(short column) {
    return column >= 0 && std::exchange(m_current, column) != column;
}

void GridColumns::ScaleWidths(int from, int to) {
    for (GridColumn& column : m_columns) {
        column.width = base::Scale(column.width, from, to);
    }
}

void GridColumns::SetFields(const std::vector<FieldInfo>& fields, int dpi) {
    const base::GridLayout kept = m_columns.empty() ? m_waiting : ToLayout(dpi, {});
    m_columns.clear();
    for (const FieldInfo& field : fields) {
        GridColumn& column = m_columns.emplace_back();
        column.field = field.name;
        const auto named = m_captions.find(base::Lower(field.name));
        column.caption = named == m_captions.end() ? field.caption : named->second;
        column.numeric = IsRightAligned(KindOfField(field.type));
    }
    m_arrow.reset();
    m_order.resize(m_columns.size());
    std::iota(m_order.begin(), m_order.end(), short{0});
    Apply(kept, dpi);
}

std::vector<short> GridColumns::OnScreen() const {
    std::vector<short> shown;
    std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(shown),
                 [&](short column) { return (*this)[column].visible; });
    return shown;
}

int GridColumns::OrderOf(short column) const {
    return static_cast<int>(std::find(m_order.begin(), m_order.end(), column) - m_order.begin());
}

void GridColumns::MoveTo(short column, int order) {
    m_order.erase(m_order.begin() + OrderOf(column));
    m_order.insert(m_order.begin() + std::clamp(order, 0, static_cast<int>(m_order.size())), column);
}

void GridColumns::MoveOnScreen(short column, int place) {
    std::vector<short> others = OnScreen();
    others.erase(std::remove(others.begin(), others.end(), column), others.end());
    if (place < 0 || static_cast<size_t>(place) >= others.size()) {
        MoveTo(column, Count());
        return;
    }
    const short next = others[static_cast<size_t>(place)];
    MoveTo(column, OrderOf(next) - (OrderOf(column) < OrderOf(next) ? 1 : 0));
}

int GridColumns::TotalWidth() const {
    return std::accumulate(m_columns.begin(), m_columns.end(), 0, [](int sum, const GridColumn& column) {
        return sum + (column.visible ? column.width : 0);
    });
}

short GridColumns::Neighbour(short column, int step) const {
    for (int order = OrderOf(column) + step; order >= 0 && order < static_cast<int>(m_order.size());
         order += step) {
        const short next = m_order[static_cast<size_t>(order)];
        if ((*this)[next].visible) {
            return next;
        }
    }
    return column;
}

short GridColumns::Nearest(short column) const {
    if (m_columns.empty()) {
        return -1;
    }
    column = std::clamp(column, short{0}, static_cast<short>(Count() - 1));
    for (const short candidate : {column, Neighbour(column, 1), Neighbour(column, -1)}) {
        if ((*this)[candidate].visible) {
            return candidate;
        }
    }
    return -1;
}

base::GridLayout GridColumns::ToLayout(int dpi, const base::GridLayout::Font& font) const {
    base::GridLayout layout = m_columns.empty() ? m_waiting : base::GridLayout();
    if (!m_columns.empty()) {
        layout.dpi = dpi;
    }
    layout.font = font;
    for (short i = 0; i < Count(); ++i) {
        const GridColumn& column = (*this)[i];
        layout.columns.push_back({column.field, column.width, column.visible, OrderOf(i)});
    }
    return layout;
}

void GridColumns::Apply(const base::GridLayout& layout, int dpi) {
    if (m_columns.empty()) {
        m_waiting = layout;
        return;
    }
    std::vector<int> orders(m_columns.size());
    for (size_t i = 0; i < m_columns.size(); ++i) {
        GridColumn& column = m_columns[i];
        const auto* saved = base::FindColumn(layout, column.field, OccurrenceOf(m_columns, i));
        // Unknown ones come after every known one, among themselves as the fields stand.
        orders[i] = saved ? saved->order : static_cast<int>(base::kMaxLayoutItems);
        if (!saved) {
            column.visible = true;
            continue;
        }
        column.visible = saved->visible;
        if (saved->width != 0) { // it was never measured
            column.width = base::Scale(saved->width, layout.dpi, dpi);
            column.guessed = false;
        }
    }
    std::iota(m_order.begin(), m_order.end(), short{0});
    std::stable_sort(m_order.begin(), m_order.end(), [&](short a, short b) {
        return orders[static_cast<size_t>(a)] < orders[static_cast<size_t>(b)];
    });
}

} // namespace tamvelo::grid
