#pragma once

#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "entry/Interfaces.h"

namespace tamvelo::hosts {

/// The folder of the test program; the library lies in it.
std::wstring Folder();

/// The library, loaded as it is without any registration.
class Server {
public:
    Server();
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

struct Parameter {
    std::wstring name;
    WORD flags;
    VARTYPE type;
    bool byReference;
    std::wstring standIn; // the declared default, "" without one
    bool Optional() const { return flags & PARAMFLAG_FOPT; }
};

struct Function {
    DISPID id;
    std::wstring name;
    std::vector<Parameter> parameters;
};

/// The functions of an interface; of a dual one, as a late-bound caller sees them.
std::vector<Function> Functions(ITypeInfo* info);

} // namespace tamvelo::hosts
