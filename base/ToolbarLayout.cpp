#include "base/ToolbarLayout.h"

#include <algorithm>
#include <array>
#include <set>

#include "base/Text.h"

namespace tamvelo::base {

namespace {

using Band = ToolbarLayout::Band;
using Tool = ToolbarLayout::Tool;

constexpr std::wstring_view kTitle = L"Tamvelo barra 1";
constexpr std::wstring_view kBandSection = L"banda";
constexpr std::wstring_view kToolSection = L"herramienta";
constexpr int kMaxNameLength = 255;

std::wstring& KeyOf(Band& band) { return band.name; }
std::wstring& KeyOf(Tool& tool) { return tool.id; }

std::array<LayoutField, 1> FieldsOf(Band& band) { return {{{L"visible", &band.visible}}}; }
std::array<LayoutField, 2> FieldsOf(Tool& tool) {
    return {{{L"banda", &tool.band, 0, kMaxNameLength}, {L"visible", &tool.visible}}};
}

template <class Item>
std::wstring Write(std::wstring_view kind, std::vector<Item> items) {
    std::wstring text;
    std::set<std::wstring> seen;
    for (Item& item : items) {
        if (seen.size() < kMaxLayoutItems && !KeyOf(item).empty() && seen.insert(KeyOf(item)).second) {
            text += WriteLayoutSection(kind, EscapeLayoutText(KeyOf(item)), FieldsOf(item));
        }
    }
    return text;
}

template <class Item>
class Reader {
public:
    explicit Reader(std::vector<Item>& items) : m_items(items) {}

    std::optional<LayoutError> Add(const LayoutSection& section) {
        const std::optional<std::wstring> key = UnescapeLayoutText(section.name);
        if (!key || key->empty()) {
            return LayoutError{section.line, L"El nombre de la sección no está bien escrito."};
        }
        if (m_items.size() == kMaxLayoutItems) {
            return LayoutError{section.line, L"Hay demasiadas secciones de la misma clase."};
        }
        if (!m_seen.insert(*key).second) {
            return LayoutError{section.line, L"La sección está repetida."};
        }
        Item& item = m_items.emplace_back();
        KeyOf(item) = *key;
        return ReadLayoutFields(section, FieldsOf(item));
    }

private:
    std::vector<Item>& m_items;
    std::set<std::wstring> m_seen;
};

template <class Items, class Member>
auto FindBy(Items& items, Member member, const std::wstring& value) {
    return std::ranges::find(items, value, member);
}

/// Where a tool that the user's arrangement does not have belongs in it: after the design's tool before it in
/// its band, or else before the first tool of its band.
std::vector<Tool>::iterator PlaceFor(const ToolbarLayout& design, std::size_t index,
                                     std::vector<Tool>& arranged) {
    const std::wstring& band = design.tools[index].band;
    for (std::size_t before = index; before-- > 0;) {
        if (design.tools[before].band == band) {
            return std::next(FindBy(arranged, &Tool::id, design.tools[before].id));
        }
    }
    return FindBy(arranged, &Tool::band, band);
}

} // namespace

std::string FormatToolbarLayout(const ToolbarLayout& layout) {
    std::wstring text(kTitle);
    text += L'\n';
    text += Write(kBandSection, layout.bands);
    text += Write(kToolSection, layout.tools);
    return ToUtf8(text);
}

std::variant<ToolbarLayout, LayoutError> ParseToolbarLayout(std::string_view utf8) {
    const auto parsed = ParseLayoutText(utf8, kTitle);
    if (const auto* error = std::get_if<LayoutError>(&parsed)) {
        return *error;
    }
    ToolbarLayout layout;
    Reader<Band> bands(layout.bands);
    Reader<Tool> tools(layout.tools);
    for (const LayoutSection& section : std::get<0>(parsed)) {
        std::optional<LayoutError> error;
        if (section.kind == kBandSection) {
            error = bands.Add(section);
        } else if (section.kind == kToolSection) {
            error = tools.Add(section);
        }
        if (error) {
            return *error;
        }
    }
    return layout;
}

ToolbarLayout Merge(const ToolbarLayout& design, const ToolbarLayout& saved) {
    ToolbarLayout merged{design.bands, {}};
    for (Band& band : merged.bands) {
        const auto kept = FindBy(saved.bands, &Band::name, band.name);
        if (kept != saved.bands.end()) {
            band.visible = kept->visible;
        }
    }
    const auto missing = [&](const std::wstring& id) {
        return FindBy(merged.tools, &Tool::id, id) == merged.tools.end();
    };
    for (const Tool& tool : saved.tools) {
        const auto designed = FindBy(design.tools, &Tool::id, tool.id);
        if (designed != design.tools.end() && missing(tool.id)) {
            const bool bandExists = FindBy(design.bands, &Band::name, tool.band) != design.bands.end();
            merged.tools.push_back({tool.id, bandExists ? tool.band : designed->band, tool.visible});
        }
    }
    for (std::size_t i = 0; i < design.tools.size(); ++i) {
        if (missing(design.tools[i].id)) {
            merged.tools.insert(PlaceFor(design, i, merged.tools), design.tools[i]);
        }
    }
    return merged;
}

} // namespace tamvelo::base
