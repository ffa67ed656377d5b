#include "Programs.h"

#include <direct.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "Server.h"
#include "com/Error.h"

namespace tamvelo::hosts {

namespace {

/// The machine's classes are thousands, and others may add some at any time.
bool Counts(const std::wstring& path) {
    constexpr const wchar_t* kOurs[] = {L"hkcu",      L"tamvelo",   L"{043d9058", L"{283a5031",
                                        L"{dc1603ac", L"{18e14ba8", L"{013a48d8"};
    return std::any_of(std::begin(kOurs), std::end(kOurs),
                       [&](const wchar_t* name) { return path.find(name) != std::wstring::npos; });
}

void Read(HKEY parent, const std::wstring& name, const std::wstring& path,
          std::map<std::wstring, std::wstring>& found) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return;
    }
    wchar_t child[256];
    wchar_t text[1024];
    for (DWORD i = 0; Counts(path); ++i) {
        DWORD length = ARRAYSIZE(child);
        DWORD size = sizeof(text);
        if (RegEnumValueW(key, i, child, &length, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size) !=
            ERROR_SUCCESS) {
            break;
        }
        found[path + L"\\\\" + child] = std::wstring(text, size / sizeof(wchar_t));
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, child, ARRAYSIZE(child)) == ERROR_SUCCESS; ++i) {
        CharLowerW(child); // the system may write a parent's name another way
        const std::wstring below = path + L"\\" + child;
        const bool counts = Counts(below);
        if (counts) {
            found[below] = L"key";
        }
        if (counts || below == L"hklm\\clsid" || below == L"hklm\\typelib" || below == L"hklm\\interface") {
            Read(key, child, below, found);
        }
    }
    RegCloseKey(key);
}

} // namespace

Finished RunProgram(const std::wstring& command) {
    _wchdir(Folder().c_str());
    FILE* const output = _wpopen((command + L" 2>&1").c_str(), L"rb");
    if (!output) {
        com::ThrowLastError(command);
    }
    Finished finished{};
    for (int got = fgetc(output); got != EOF; got = fgetc(output)) {
        finished.output += static_cast<char>(got);
    }
    finished.code = static_cast<DWORD>(_pclose(output));
    return finished;
}

DWORD RunRegsvr32(const std::wstring& how) {
    return RunProgram(L"regsvr32.exe /s " + how + L" \"" + Folder() + L"\\Tamvelo.dll\"").code;
}

std::map<std::wstring, std::wstring> ClassesSnapshot() {
    std::map<std::wstring, std::wstring> found;
    Read(HKEY_LOCAL_MACHINE, L"Software\\Classes", L"hklm", found);
    Read(HKEY_CURRENT_USER, L"Software\\Classes", L"hkcu", found);
    return found;
}

} // namespace tamvelo::hosts
