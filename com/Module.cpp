#include "com/Module.h"

#include <string_view>

namespace tamvelo::com {

std::wstring Module::Folder() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(Instance(), path, ARRAYSIZE(path));
    const std::wstring_view file(path, length);
    return std::wstring(file.substr(0, file.find_last_of(L'\\')));
}

} // namespace tamvelo::com
