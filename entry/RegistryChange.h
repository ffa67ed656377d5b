#pragma once

#include "com/WinHeaders.h"

#include <optional>
#include <string>
#include <vector>

namespace tamvelo::entry {

/// A series of text values written below one predefined key that is taken back whole, keys and earlier
/// values, unless it is committed.
class RegistryChange {
public:
    explicit RegistryChange(HKEY root) : m_root(root) {}
    ~RegistryChange();
    RegistryChange(const RegistryChange&) = delete;
    RegistryChange& operator=(const RegistryChange&) = delete;

    /// Makes the key with all its parents and sets a value in it ("" is the key's own). Throws com::Error.
    void Set(const std::wstring& path, const std::wstring& name, const std::wstring& text);
    void Commit() noexcept { m_steps.clear(); }

private:
    struct Step {
        std::wstring path;
        bool keyMade; // otherwise a value was set
        std::wstring name;
        std::optional<std::vector<BYTE>> before; // of text; absent if there was none
        DWORD type;
    };
    void MakeKey(const std::wstring& path);

    HKEY m_root;
    std::vector<Step> m_steps;
};

} // namespace tamvelo::entry
