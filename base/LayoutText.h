#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The text family of the layout files (grid and toolbar). UTF-8, one property per line:
///
///     Tamvelo barra 1              title: format and version
///     ppp=96                       properties before any section
///     [banda Registros]            section: kind and name
///     visible=1
///
/// White space at the ends of a line and around "=" does not count, nor do empty lines. In names and values a
/// backslash and four hexadecimal digits stand for one character; it is written for whatever the line could
/// not carry (control characters, \ ] = #, surrogates, a space at an end). Sections and properties that the
/// reader does not know are ignored, so that a later version may add some.
namespace tamvelo::base {

inline constexpr std::size_t kMaxLayoutBytes = 1 << 20;
inline constexpr std::size_t kMaxLayoutItems = 1000;
inline constexpr std::size_t kMaxLayoutName = 1000; // characters of a section's name, before it is escaped

struct LayoutError {
    int line = 0;        // from 1; 0 when the file as a whole is refused
    std::wstring reason; // Spanish, for the user
};

struct LayoutProperty {
    int line = 0;
    std::wstring name;
    std::wstring value; // as written, still escaped
};

struct LayoutSection {
    int line = 0;
    std::wstring kind; // empty for the properties before the first section
    std::wstring name; // as written, still escaped
    std::vector<LayoutProperty> properties;
};

/// The sections of a file in file order; the first is always the one without a kind. Accepts a byte order
/// mark and both line ends.
std::variant<std::vector<LayoutSection>, LayoutError> ParseLayoutText(std::string_view utf8,
                                                                      std::wstring_view title);

std::wstring EscapeLayoutText(std::wstring_view text);

/// Nothing when a backslash does not begin a well-formed escape.
std::optional<std::wstring> UnescapeLayoutText(std::wstring_view text);

/// One property of a section: what it is called, where its value lives, and the values that are let in (for a
/// text the limits count characters; a bool is 0 or 1). The same list reads and writes a section.
struct LayoutField {
    std::wstring_view name;
    std::variant<int*, bool*, std::wstring*> target;
    int least = 0;
    int most = 1;
};

/// Fills the targets from the section; a property that is absent leaves its target alone.
std::optional<LayoutError> ReadLayoutFields(const LayoutSection& section,
                                            std::span<const LayoutField> fields);

/// The lines of one section, fields in their order; without a kind only the properties. `name` is already
/// escaped. Values out of range are brought into it: what is written can be read.
std::wstring WriteLayoutSection(std::wstring_view kind, std::wstring_view name,
                                std::span<const LayoutField> fields);

} // namespace tamvelo::base
