#pragma once

#include <optional>
#include <string>

#include "base/GridLayout.h"

namespace tamvelo::environment {

/// The layout file of one grid form and host class. A class name that is no file name has none: nothing is
/// kept for it. Writing throws com::Error with a message that names the file.
class GridLayoutStore {
public:
    GridLayoutStore() = default;
    /// `name` is the file's name without folder and extension.
    explicit GridLayoutStore(std::wstring name) : m_name(std::move(name)) {}

    /// Nothing when the class has no saved layout, or one that cannot be used, of which the note tells.
    std::optional<base::GridLayout> Load(std::wstring& note) const;
    void Save(const base::GridLayout& layout) const;

private:
    bool IsKept() const;

    std::wstring m_name;
};

} // namespace tamvelo::environment
