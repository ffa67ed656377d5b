#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/LayoutText.h"

namespace tamvelo::base {

/// A toolbar's bands and tools, as designed or as a user left them. Kept in a text file ("Tamvelo barra 1").
struct ToolbarLayout {
    struct Band {
        std::wstring name;
        bool visible = true;
        bool operator==(const Band&) const = default;
    };

    struct Tool {
        std::wstring id;
        std::wstring band;
        bool visible = true;
        bool operator==(const Tool&) const = default;
    };

    std::vector<Band> bands;
    std::vector<Tool> tools; // in display order
    bool operator==(const ToolbarLayout&) const = default;
};

/// The file's text. Of repeated names the first is written; what exceeds 1000 bands or tools is left out.
std::string FormatToolbarLayout(const ToolbarLayout& layout);

/// Refuses what is malformed, repeated or out of range, with the line and the reason.
std::variant<ToolbarLayout, LayoutError> ParseToolbarLayout(std::string_view utf8);

/// The design as the user arranged it. Tools that both know stand in saved order with their saved visibility
/// (the first of a repeated one counts) and saved band, if the design has that band. Tools that only the
/// design knows keep their place after their neighbour of the same band. Unknown tools and bands are dropped.
/// Bands stand in design order with their saved visibility.
ToolbarLayout Merge(const ToolbarLayout& design, const ToolbarLayout& saved);

} // namespace tamvelo::base
