#include "demo/app/CommandLine.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <variant>
#include <vector>

#include "base/Text.h"

namespace tamvelo::demo {

bool IsWanted(const std::wstring& only, std::wstring_view name) {
    const std::wstring listed = L',' + only + L',';
    return only.empty() || listed.find(L',' + std::wstring(name) + L',') != listed.npos;
}

std::optional<CommandLine> ReadCommandLine() {
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::vector<std::wstring> given(words + 1, words + count);
    LocalFree(words);

    CommandLine wanted;
    struct Option {
        std::wstring_view name;
        std::variant<std::wstring*, long*, bool*> target; // bool: stands alone
    };
    const Option options[] = {{L"tour", &wanted.tour},
                              {L"comprobar", &wanted.check},
                              {L"--escribir", &wanted.write},
                              {L"soak", &wanted.soak},
                              {L"--seed", &wanted.seed},
                              {L"--from", &wanted.from},
                              {L"--only", &wanted.only},
                              {L"--dpi", &wanted.dpi},
                              {L"--db", &wanted.database},
                              {L"--rows", &wanted.rows},
                              {L"diagnostico", &wanted.diagnosis}};
    for (std::size_t i = 0; i < given.size(); i += 2) {
        const auto option = std::ranges::find(options, given[i], &Option::name);
        if (option != std::end(options) && std::holds_alternative<bool*>(option->target)) {
            *std::get<bool*>(option->target) = true;
            --i;
            continue;
        }
        if (option == std::end(options) || i + 1 == given.size() || given[i + 1].empty()) {
            return std::nullopt;
        }
        if (auto* const text = std::get_if<std::wstring*>(&option->target)) {
            **text = given[i + 1];
        } else if (const auto number = base::ParseLong(given[i + 1]); number && *number > 0) {
            *std::get<long*>(option->target) = *number;
        } else {
            return std::nullopt;
        }
    }
    return wanted;
}

} // namespace tamvelo::demo
