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

/// A dialog with a grid over the host's records.
struct GridDialog {
    const char* name;   // in the report, with its article
    const char* suffix; // of the report's identifiers
    HRESULT (*show)(entry::IClsShowSerch& object, Host& given);
};
extern const GridDialog kPanel;
extern const GridDialog kBrowser;

/// Opens the dialog and returns when it is closed. Throws com::Error when it cannot open.
void ShowDialog(const Library& library, const GridDialog& dialog, const Host& host);

/// The dialog's data grid; null for any other window.
HWND ListOf(HWND dialog);
/// A floor in the shape of the open dialog that the list belongs to.
Floor FloorOf(HWND list);

} // namespace tamvelo::bench
