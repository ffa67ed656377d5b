#include "demo/app/Manual.h"

#include <shellapi.h>

#include "com/Error.h"
#include "com/Module.h"

namespace tamvelo::demo {

namespace {

constexpr int kFoldersUp = 2; // a package keeps the program in a folder of its own, a build does so twice

} // namespace

std::filesystem::path FindManual(const std::filesystem::path& folder) {
    std::filesystem::path at = folder;
    for (int i = 0; i <= kFoldersUp; ++i, at = at.parent_path()) {
        for (const wchar_t* page : {L"docs\\manual\\index.html", L"manual\\index.html"}) {
            std::error_code ignored; // a folder that cannot be read has none
            if (std::filesystem::is_regular_file(at / page, ignored)) {
                return at / page;
            }
        }
    }
    return {};
}

void OpenManual(HWND owner) {
    const std::wstring folder = com::Module::Folder();
    const std::filesystem::path page = FindManual(folder);
    if (page.empty()) {
        throw com::Error(E_FAIL,
                         L"No se encuentra el manual: falta «docs\\manual\\index.html» en «" + folder + L"».",
                         L"Pedidos");
    }
    constexpr INT_PTR kWorst = 32; // what is greater is no error
    if (reinterpret_cast<INT_PTR>(
            ShellExecuteW(owner, L"open", page.c_str(), nullptr, nullptr, SW_SHOWNORMAL)) <= kWorst) {
        throw com::Error(E_FAIL, L"No se puede abrir «" + page.wstring() + L"»: ábralo con un navegador.",
                         L"Pedidos");
    }
}

} // namespace tamvelo::demo
