#include "grid/GridMeasures.h"

#include <algorithm>
#include <utility>

namespace tamvelo::grid {

namespace {

constexpr int kArrowMargins = 24; // at 96 dpi, beside a caption and the arrow

/// What values of each kind usually take, in digits; 0 when their length is the field's own.
constexpr int kUsualLengths[] = {0, 0, 8, 12, 10, 8, 4, 8};
static_assert(std::size(kUsualLengths) == static_cast<size_t>(CellKind::Binary) + 1);

} // namespace

std::unique_ptr<GridFont> GridMeasures::RemakeFont() {
    return std::exchange(m_font, std::make_unique<GridFont>(ToLogFont(m_choice, m_dpi)));
}

int GridMeasures::CaptionWidth(const GridColumn& column) const {
    const int arrow = m_font->Height() * 5 / 8; // at most, in any system's looks
    return m_font->Width(column.caption) + arrow + Scaled(kArrowMargins);
}

void GridMeasures::GuessWidth(GridColumn& column, const FieldInfo& field) const {
    const int usual = kUsualLengths[static_cast<size_t>(KindOfField(field.type))];
    const int characters = usual > 0 ? usual : static_cast<int>(std::clamp(field.definedSize, 0L, 1000L));
    const int cells = characters * m_font->Digit() + 2 * Padding() + 1;
    column.width = std::clamp(std::max(CaptionWidth(column), cells), LeastWidth(), MostWidth());
    column.guessed = usual == 0 && field.definedSize <= 0;
}

} // namespace tamvelo::grid
