#pragma once

#include <optional>
#include <string>

#include "base/GridLayout.h"

namespace tamvelo::frame {

/// The layout file of one grid form and host class. Reading and writing throw com::Error with a message that
/// names the file; a class name that could leave the folder is refused.
class GridLayoutStore {
public:
    GridLayoutStore() = default;
    /// `name` is the file's name without folder and extension.
    explicit GridLayoutStore(std::wstring name) : m_name(std::move(name)) {}

    /// Nothing when the class has no saved layout.
    std::optional<base::GridLayout> Load() const;
    void Save(const base::GridLayout& layout) const;

private:
    std::wstring FileName() const;

    std::wstring m_name;
};

} // namespace tamvelo::frame
