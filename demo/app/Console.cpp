#include "demo/app/Console.h"

#include "com/WinHeaders.h"

#include <string>

#include "base/Text.h"

namespace tamvelo::demo {

bool Say(std::wstring_view line) {
    const std::string bytes = base::ToUtf8(line) + "\r\n";
    DWORD written = 0;
    return WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()),
                     &written, nullptr) != FALSE;
}

} // namespace tamvelo::demo
