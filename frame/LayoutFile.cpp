#include "frame/LayoutFile.h"

#include "com/Error.h"
#include "frame/Handles.h"

namespace tamvelo::frame {

namespace {

constexpr LONGLONG kLargestFile = 1 << 20;

UniqueFile Open(const std::wstring& path, DWORD access, DWORD disposition) {
    const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const wchar_t* what = disposition == OPEN_EXISTING ? L"No se puede leer el fichero «"
                                                           : L"No se puede escribir el fichero «";
        com::ThrowLastError(what + path + L"».");
    }
    return UniqueFile(file);
}

} // namespace

std::string ReadLayoutFile(const std::wstring& path) {
    const UniqueFile file = Open(path, GENERIC_READ, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.get(), &size) || size.QuadPart > kLargestFile) {
        throw com::Error(E_INVALIDARG,
                         L"El fichero «" + path + L"» no es un fichero de diseño: es demasiado grande.");
    }
    std::string text(static_cast<size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &read, nullptr)) {
        com::ThrowLastError(L"No se puede leer el fichero «" + path + L"».");
    }
    text.resize(read);
    return text;
}

std::wstring SetAside(const std::wstring& path, const base::LayoutError& wrong) {
    const std::wstring name = path.substr(path.find_last_of(L'\\') + 1);
    const std::wstring note = L"El fichero «" + name + L"» no es válido (línea " +
                              std::to_wstring(wrong.line) + L"): " + wrong.reason;
    const bool moved =
        MoveFileExW(path.c_str(), (path + L".bad").c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
    return moved ? note + L" Se ha apartado como «" + name + L".bad»." : note;
}

void WriteLayoutFile(const std::wstring& path, const std::string& text) {
    const std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
    CreateDirectoryW(folder.c_str(), nullptr); // if this fails, opening the file tells why
    const std::wstring temporary = path + L".tmp";
    {
        const UniqueFile file = Open(temporary, GENERIC_WRITE, CREATE_ALWAYS);
        DWORD written = 0;
        if (!WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ||
            written != text.size()) {
            com::ThrowLastError(L"No se puede escribir el fichero «" + path + L"».");
        }
    }
    if (!MoveFileExW(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        const DWORD reason = GetLastError();
        DeleteFileW(temporary.c_str());
        SetLastError(reason);
        com::ThrowLastError(L"No se puede escribir el fichero «" + path + L"».");
    }
}

} // namespace tamvelo::frame
