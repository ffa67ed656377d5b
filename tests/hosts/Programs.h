#pragma once

#include "com/WinHeaders.h"

#include <map>
#include <string>

namespace tamvelo::hosts {

struct Finished {
    DWORD code;
    std::string output; // standard output and errors
};

/// Runs a program of the system in the tests' folder to its end.
Finished RunProgram(const std::wstring& command);

/// regsvr32 on the library; `how` is the switches. The exit code.
DWORD RunRegsvr32(const std::wstring& how);

/// What is in Software\Classes, in small letters: all of the user, and whatever is ours of the machine.
std::map<std::wstring, std::wstring> ClassesSnapshot();

} // namespace tamvelo::hosts
