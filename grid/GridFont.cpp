#include "grid/GridFont.h"

#include <algorithm>
#include <cstdlib>

#include "base/Placement.h"

namespace tamvelo::grid {

namespace {

constexpr int kTenthsPerInch = 720;

template <class Measure>
void OnScreen(HFONT font, Measure&& measure) {
    if (const HDC screen = GetDC(nullptr)) {
        const HGDIOBJ before = SelectObject(screen, font);
        measure(screen);
        SelectObject(screen, before);
        ReleaseDC(nullptr, screen);
    }
}

} // namespace

GridFont::GridFont(const LOGFONTW& wanted) : m_font(CreateFontIndirectW(&wanted)) {
    // Lengths that will do when the system has no object left to measure with; without a font of its own the
    // grid is drawn in the system's.
    m_height = std::max(1, std::abs(static_cast<int>(wanted.lfHeight)));
    m_widths.fill((m_height + 1) / 2);
    OnScreen(Get(), [this](HDC screen) {
        TEXTMETRICW metrics{};
        if (GetTextMetricsW(screen, &metrics)) {
            m_height = metrics.tmHeight;
        }
        GetCharWidth32W(screen, 0, static_cast<UINT>(m_widths.size()) - 1, m_widths.data());
    });
}

int GridFont::MeasureOther(wchar_t c) const {
    const auto [known, added] = m_others.try_emplace(c, (m_height + 1) / 2);
    if (added) {
        OnScreen(Get(), [&, width = &known->second](HDC screen) {
            SIZE size{};
            if (GetTextExtentPoint32W(screen, &c, 1, &size)) {
                *width = size.cx;
            }
        });
    }
    return known->second;
}

int GridFont::Width(std::wstring_view text) const {
    int width = 0;
    for (const wchar_t c : text) {
        width += WidthOf(c);
    }
    return width;
}

int GridFont::Breadth() const {
    return Width(L"0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
}

size_t GridFont::Fitting(std::wstring_view text, int width) const {
    size_t count = 0;
    while (count < text.size() && (width -= WidthOf(text[count])) >= 0) {
        ++count;
    }
    return count;
}

LOGFONTW ToLogFont(const base::GridLayout::Font& font, int dpi) {
    LOGFONTW made{};
    made.lfHeight = -base::Scale(font.tenthsOfPoint, kTenthsPerInch, dpi);
    made.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
    made.lfItalic = font.italic;
    made.lfUnderline = font.underline;
    made.lfCharSet = DEFAULT_CHARSET;
    made.lfQuality = DEFAULT_QUALITY;
    font.face.copy(made.lfFaceName, LF_FACESIZE - 1);
    return made;
}

base::GridLayout::Font FromLogFont(const LOGFONTW& font, int dpi) {
    base::GridLayout::Font made;
    made.face = font.lfFaceName;
    const int height = std::abs(static_cast<int>(font.lfHeight));
    made.tenthsOfPoint = std::clamp(base::Scale(height, dpi, kTenthsPerInch), 40, 960);
    const int whole = (made.tenthsOfPoint + 5) / 10 * 10;
    if (base::Scale(whole, kTenthsPerInch, dpi) == height) {
        made.tenthsOfPoint = whole;
    }
    made.bold = font.lfWeight >= FW_SEMIBOLD;
    made.italic = font.lfItalic != 0;
    made.underline = font.lfUnderline != 0;
    return made;
}

} // namespace tamvelo::grid
