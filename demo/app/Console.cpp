#include "demo/app/Console.h"

#include "com/WinHeaders.h"

#include <string>

#include "base/Text.h"

namespace tamvelo::demo {

namespace {

/// Where lines go: what the output was redirected to, else the console that the program was started from.
HANDLE Output() {
    const HANDLE given = GetStdHandle(STD_OUTPUT_HANDLE);
    if ((given == nullptr || given == INVALID_HANDLE_VALUE) && AttachConsole(ATTACH_PARENT_PROCESS)) {
        return CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                           nullptr, OPEN_EXISTING, 0, nullptr);
    }
    return given;
}

} // namespace

bool Say(std::wstring_view line) {
    static const HANDLE output = Output();
    const std::wstring text = std::wstring(line) + L"\r\n";
    DWORD written = 0;
    DWORD mode = 0;
    if (GetConsoleMode(output, &mode)) {
        return WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
               FALSE;
    }
    const std::string bytes = base::ToUtf8(text);
    return WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != FALSE;
}

} // namespace tamvelo::demo
