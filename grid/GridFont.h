#pragma once

#include "com/WinHeaders.h"

#include <array>
#include <map>
#include <string_view>

#include "base/GridLayout.h"
#include "win/Handles.h"

namespace tamvelo::grid {

/// The grid's font with the widths of its letters: measuring a cell is a sum, not a call.
class GridFont {
public:
    explicit GridFont(const LOGFONTW& wanted);
    HFONT Get() const { return m_font.get(); }
    int Height() const { return m_height; }
    int Digit() const { return m_widths[L'0']; }
    /// Of all letters and digits together: by this lengths grow when the font does.
    int Breadth() const;
    int Width(std::wstring_view text) const;
    /// How many of the text's first characters fit.
    size_t Fitting(std::wstring_view text, int width) const;

private:
    int WidthOf(wchar_t c) const { return c < m_widths.size() ? m_widths[c] : MeasureOther(c); }
    int MeasureOther(wchar_t c) const;

    win::UniqueFont m_font;
    int m_height = 0;
    std::array<int, 0x100> m_widths{};       // the letters of Spanish
    mutable std::map<wchar_t, int> m_others; // asked for as they come
};

/// The layout's font at a resolution, and back. The size comes back as the whole points that give the same
/// pixels.
LOGFONTW ToLogFont(const base::GridLayout::Font& font, int dpi);
base::GridLayout::Font FromLogFont(const LOGFONTW& font, int dpi);

} // namespace tamvelo::grid
