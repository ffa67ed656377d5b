#pragma once

#include <string>

#include "bench/Floor.h"
#include "bench/MemoryHost.h"
#include "entry/Interfaces.h"

namespace tamvelo::bench {

/// The library as a host has it: loaded from beside this program, without registration.
class Library {
public:
    /// Throws com::Error when it is not there.
    Library();
    ~Library() { FreeLibrary(m_module); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    com::ComPtr<entry::IClsShowSerch> Create() const;
    /// Whether the library counts no living object of its own.
    bool Unused() const;
    std::wstring Path() const;

private:
    const HMODULE m_module;
};

/// Opens the selection panel and returns when it is closed. Throws com::Error when it cannot open.
void ShowPanel(const Library& library, const Host& host);

/// The panel's data grid; null for any other window.
HWND ListOf(HWND panel);
/// A floor in the shape of the open panel that the list belongs to.
Floor FloorOf(HWND list);

} // namespace tamvelo::bench
