#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tamvelo::demo {

inline constexpr wchar_t kUsage[] =
    L"TamveloDemo [tour CARPETA [--only PARADA,…] | soak N [--seed N] [--from N] | diagnostico [--only "
    L"OPERACIÓN] | comprobar PROGID|GUION.vbs|GUION.js [--only OPERACIÓN,…] [--escribir]] [--dpi N] "
    L"[--db ARCHIVO] [--rows N]";

struct CommandLine {
    std::wstring tour;      // folder of the pictures; empty for the window
    std::wstring check;     // the host to look over; empty for the window
    bool write = false;     // with all that changes something there
    std::wstring only;      // the stops to make or operations to try, with commas; empty for all
    long soak = 0;          // operations used at random; 0 for the window
    long seed = 1;          // what they are made from
    long from = 1;          // the first of them, to see a later one alone
    bool diagnosis = false; // of the installation and all operations
    long dpi = 0;           // that the windows shall have; 0 for the screen's
    std::wstring database;  // empty for the usual place
    long rows = 0;          // articles of the sample; 0 for the usual number
};

/// Whether the list (names between commas, all when it is empty) has that name.
bool IsWanted(const std::wstring& only, std::wstring_view name);

/// What the user asked for; nothing when it is not as kUsage says.
std::optional<CommandLine> ReadCommandLine();

} // namespace tamvelo::demo
