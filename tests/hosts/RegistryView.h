#pragma once

#include "com/WinHeaders.h"

#include <map>
#include <string>

namespace tamvelo::hosts {

/// Keys and values, by their path.
using Snapshot = std::map<std::wstring, std::wstring>;

/// A key and what is below it, so many levels down.
inline void Read(HKEY hive, const std::wstring& path, Snapshot& found, int levels = 99) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return;
    }
    found[path] = L"key";
    wchar_t name[256];
    wchar_t text[1024];
    DWORD length = ARRAYSIZE(name);
    for (DWORD i = 0, size = sizeof text;
         RegEnumValueW(key, i, name, &length, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size) ==
         ERROR_SUCCESS;
         ++i) {
        found[path + L"\\\\" + name] = std::wstring(text, size / sizeof(wchar_t));
        length = ARRAYSIZE(name);
        size = sizeof text;
    }
    for (DWORD i = 0; levels > 0 && RegEnumKeyW(key, i, name, ARRAYSIZE(name)) == ERROR_SUCCESS; ++i) {
        Read(hive, path + L"\\" + name, found, levels - 1);
    }
    RegCloseKey(key);
}

} // namespace tamvelo::hosts
