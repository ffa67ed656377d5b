#include "environment/LayoutFile.h"

#include <atomic>

#include "com/Error.h"
#include "win/Handles.h"

namespace tamvelo::environment {

namespace {

constexpr LONGLONG kLargestFile = 1 << 20;

win::UniqueFile Open(const std::wstring& path, DWORD access, DWORD disposition) {
    const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const wchar_t* what = disposition == OPEN_EXISTING ? L"No se puede leer el fichero «"
                                                           : L"No se puede escribir el fichero «";
        com::ThrowLastError(what + path + L"».");
    }
    return win::UniqueFile(file);
}

// A save takes milliseconds. What is older than an hour, or of a process that is no more, was left behind by
// a host that was ended in it.
constexpr wchar_t kTemporary[] = L"Tamvelo-";
constexpr wchar_t kTemporaryEnd[] = L".tmp";
constexpr ULONGLONG kHour = 36'000'000'000; // of file times
constexpr int kTries = 50;
constexpr DWORD kPause = 10; // milliseconds

/// How all names of this machine begin; the folder may be shared with others.
std::wstring OwnPrefix() {
    wchar_t machine[MAX_COMPUTERNAME_LENGTH + 1] = L"";
    DWORD length = ARRAYSIZE(machine);
    GetComputerNameW(machine, &length);
    return std::wstring(kTemporary) + machine + L"-";
}

/// A name that no other save has, of this process or another.
std::wstring TemporaryIn(const std::wstring& folder) {
    static std::atomic<unsigned> saves{0};
    return folder + L"\\" + OwnPrefix() + std::to_wstring(GetCurrentProcessId()) + L"-" +
           std::to_wstring(++saves) + kTemporaryEnd;
}

ULONGLONG Number(const FILETIME& time) {
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

/// Whether the process that made it, on this machine, has ended.
bool IsOrphan(const wchar_t* name) {
    const std::wstring own = OwnPrefix();
    if (!std::wstring_view(name).starts_with(own)) {
        return false;
    }
    const DWORD process = wcstoul(name + own.size(), nullptr, 10);
    const win::UniqueFile maker(OpenProcess(SYNCHRONIZE, FALSE, process));
    return maker ? WaitForSingleObject(maker.get(), 0) == WAIT_OBJECT_0
                 : GetLastError() == ERROR_INVALID_PARAMETER;
}

/// Age is by the clock of the disk, which may be another machine's: that of the file just made.
void DeleteLeftovers(const std::wstring& folder, HANDLE made) {
    FILETIME now{};
    GetFileTime(made, nullptr, nullptr, &now);
    WIN32_FIND_DATAW found;
    const HANDLE search =
        FindFirstFileW((folder + L"\\" + kTemporary + L"*" + kTemporaryEnd).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        if (Number(found.ftLastWriteTime) + kHour < Number(now) || IsOrphan(found.cFileName)) {
            DeleteFileW((folder + L"\\" + found.cFileName).c_str());
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

} // namespace

std::string ReadLayoutFile(const std::wstring& path) {
    const win::UniqueFile file = Open(path, GENERIC_READ, OPEN_EXISTING);
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
    const std::wstring temporary = TemporaryIn(folder);
    DWORD reason = ERROR_SUCCESS;
    {
        const win::UniqueFile file = Open(temporary, GENERIC_WRITE, CREATE_ALWAYS);
        DeleteLeftovers(folder, file.get());
        DWORD written = 0;
        if (!WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr)) {
            reason = GetLastError();
        } else if (written != text.size()) {
            reason = ERROR_DISK_FULL;
        }
    }
    for (int tries = 0; reason == ERROR_SUCCESS && tries < kTries; ++tries) {
        if (MoveFileExW(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
            return;
        }
        const DWORD refused = GetLastError();
        const bool busy = refused == ERROR_SHARING_VIOLATION || refused == ERROR_ACCESS_DENIED;
        reason = busy && tries + 1 < kTries ? ERROR_SUCCESS : refused;
        Sleep(busy ? kPause : 0); // another host reads it, or saves the same class
    }
    DeleteFileW(temporary.c_str());
    SetLastError(reason);
    com::ThrowLastError(L"No se puede escribir el fichero «" + path + L"».");
}

} // namespace tamvelo::environment
