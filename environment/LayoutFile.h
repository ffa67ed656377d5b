#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/LayoutText.h"
#include "com/Error.h"

namespace tamvelo::environment {

/// The text of a layout file. Throws com::Error with the reason and the file's name: missing, locked, too
/// large.
std::string ReadLayoutFile(const std::wstring& path);

/// Puts a file that is no layout aside, under its name with ".bad" behind it: saving must not destroy what
/// somebody may want to mend. What the user is to know.
std::wstring SetAside(const std::wstring& path, const base::LayoutError& wrong);

/// What `parse` makes of a layout file; nothing, and a note, when it cannot be used.
template <class Layout>
std::optional<Layout> LoadLayout(const std::wstring& path,
                                 std::variant<Layout, base::LayoutError> (*parse)(std::string_view utf8),
                                 std::wstring& note) {
    try {
        auto parsed = parse(ReadLayoutFile(path));
        if (auto* layout = std::get_if<Layout>(&parsed)) {
            return std::move(*layout);
        }
        note = SetAside(path, std::get<base::LayoutError>(parsed));
    } catch (const com::Error& error) {
        note = error.description;
    }
    return {};
}

/// Writes a layout file whole or not at all: to a temporary name beside it, then renamed. Makes the folder if
/// need be. Throws com::Error with the reason and the file's name.
void WriteLayoutFile(const std::wstring& path, const std::string& text);

} // namespace tamvelo::environment
