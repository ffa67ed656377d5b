#pragma once

#include <string>

#include "com/ComPtr.h"
#include "entry/Interfaces.h"

namespace tamvelo::hosts {

/// The folder of the test program; the library lies in it.
std::wstring Folder();

struct Finished {
    DWORD code;
    std::string output; // standard output and errors
};
/// Runs a program of the system in that folder to its end.
Finished RunProgram(const std::wstring& command);
/// regsvr32 on the library; `how` is the switches. The exit code.
DWORD RunRegsvr32(const std::wstring& how);

/// The library, loaded as it is without any registration.
class Server {
public:
    explicit Server(const std::wstring& folder = Folder());
    com::ComPtr<entry::IClsShowSerch> Create() const;
    bool MayUnload() const;
    /// Lets go of the library; whether it has left the process.
    bool Unload();
    template <class Function>
    Function* Export(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }

private:
    HMODULE m_module; // stays loaded until the program ends, unless it is told to go
};

} // namespace tamvelo::hosts
