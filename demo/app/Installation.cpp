// How the library lies on this computer: what somebody who helps from afar asks first.
#include <array>
#include <vector>

#include "ProductVersion.h"
#include "com/Error.h"
#include "demo/app/Describe.h"
#include "demo/app/Diagnosis.h"
#include "demo/app/Operations.h"
#include "demo/app/Server.h"

namespace tamvelo::demo {

namespace {

using Verdict = Findings::Verdict;

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
constexpr wchar_t kSettings[] = L"Software\\" TAMVELO_COMPANY;
constexpr wchar_t kEnvironment[] = L"Software\\" TAMVELO_COMPANY L"\\Global\\Configuracion\\Entorno";
constexpr int kOwnBits = 8 * static_cast<int>(sizeof(void*));

std::wstring Quoted(const std::wstring& text) { return L"«" + text + L"»"; }

/// A text of the registry as programs of so many bits see it; empty when there is none.
std::wstring Text(HKEY hive, int bits, const std::wstring& path, const wchar_t* name = nullptr) {
    std::array<wchar_t, 2048> text{};
    DWORD bytes = sizeof text;
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive, path.c_str(), 0,
                      KEY_QUERY_VALUE | (bits == 64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY),
                      &key) == ERROR_SUCCESS) {
        if (RegGetValueW(key, nullptr, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) != ERROR_SUCCESS) {
            text[0] = 0;
        }
        RegCloseKey(key);
    }
    return text.data();
}

bool Exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L'\\')); }

/// For programs of how many bits a library is; 0 for what is none.
int BitsOf(const std::wstring& path) {
    std::array<char, 4096> head{};
    DWORD read = 0;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return 0;
    }
    ReadFile(file, head.data(), head.size(), &read, nullptr);
    CloseHandle(file);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(head.data());
    const auto at = static_cast<std::size_t>(dos->e_lfanew);
    if (dos->e_magic != IMAGE_DOS_SIGNATURE || at > head.size() - sizeof(IMAGE_NT_HEADERS)) {
        return 0;
    }
    const WORD machine = reinterpret_cast<const IMAGE_NT_HEADERS*>(head.data() + at)->FileHeader.Machine;
    return machine == IMAGE_FILE_MACHINE_I386 ? 32 : machine == IMAGE_FILE_MACHINE_AMD64 ? 64 : 0;
}

std::wstring VersionOf(const std::wstring& path) {
    DWORD unused = 0;
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), &unused));
    void* found = nullptr;
    UINT size = 0;
    if (block.empty() ||
        !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
        !VerQueryValueW(block.data(), L"\\", &found, &size)) {
        return L"sin versión";
    }
    const auto* const info = static_cast<const VS_FIXEDFILEINFO*>(found);
    return std::to_wstring(HIWORD(info->dwFileVersionMS)) + L'.' +
           std::to_wstring(LOWORD(info->dwFileVersionMS)) + L'.' +
           std::to_wstring(HIWORD(info->dwFileVersionLS));
}

std::wstring Described(const std::wstring& library) {
    return Quoted(library) + L", versión " + VersionOf(library) + L", " + std::to_wstring(BitsOf(library)) +
           L" bits";
}

int SystemBits() {
    BOOL emulated = FALSE;
    IsWow64Process(GetCurrentProcess(), &emulated);
    return kOwnBits == 64 || emulated ? 64 : 32;
}

void LookAtComputer(Findings& findings) {
    findings.Part(L"El equipo");
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    const auto ask = reinterpret_cast<LONG(WINAPI*)(OSVERSIONINFOW*)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion")));
    ask(&version); // what GetVersionEx says depends on the program's manifest
    constexpr wchar_t kKey[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    findings.Add(Verdict::Told, L"Windows",
                 std::to_wstring(version.dwMajorVersion) + L'.' + std::to_wstring(version.dwMinorVersion) +
                     L'.' + std::to_wstring(version.dwBuildNumber) + L", " + std::to_wstring(SystemBits()) +
                     L" bits (" + Text(HKEY_LOCAL_MACHINE, SystemBits(), kKey, L"ProductName") + L' ' +
                     Text(HKEY_LOCAL_MACHINE, SystemBits(), kKey, L"DisplayVersion") + L')');
    wchar_t language[LOCALE_NAME_MAX_LENGTH] = L"";
    GetUserDefaultLocaleName(language, ARRAYSIZE(language));
    findings.Add(Verdict::Told, L"Idioma", language);
    const HDC screen = GetDC(nullptr);
    findings.Add(Verdict::Told, L"Pantalla",
                 std::to_wstring(GetSystemMetrics(SM_CXSCREEN)) + L" x " +
                     std::to_wstring(GetSystemMetrics(SM_CYSCREEN)) + L", " +
                     std::to_wstring(GetDeviceCaps(screen, LOGPIXELSX)) + L" ppp, monitores " +
                     std::to_wstring(GetSystemMetrics(SM_CMONITORS)));
    ReleaseDC(nullptr, screen);
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, ARRAYSIZE(program));
    findings.Add(Verdict::Told, L"Este programa", Described(program));
}

/// One registration: for the user or for all, as programs of so many bits see it.
void LookAtRegistration(Findings& findings, HKEY hive, int bits) {
    wchar_t id[40];
    StringFromGUID2(kClsShowSerch, id, ARRAYSIZE(id));
    const std::wstring key = std::wstring(kClasses) + L"CLSID\\" + id;
    const std::wstring whose =
        (hive == HKEY_CURRENT_USER ? L"Para el usuario, programas de " : L"Para todos, programas de ") +
        std::to_wstring(bits) + L" bits";
    const std::wstring library = Text(hive, bits, key + L"\\InprocServer32");
    if (library.empty()) {
        findings.Add(Verdict::Told, whose, L"no registrada");
        return;
    }
    const auto bad = [&](const std::wstring& text) { findings.Add(Verdict::Bad, whose, text); };
    if (!Exists(library)) {
        bad(L"está registrada en " + Quoted(library) + L", que no existe");
        return;
    }
    if (BitsOf(library) != bits) {
        bad(L"está registrada en " + Quoted(library) + L", que es de " + std::to_wstring(BitsOf(library)) +
            L" bits");
        return;
    }
    if (const std::wstring named = Text(hive, bits, std::wstring(kClasses) + kProgId + L"\\CLSID");
        lstrcmpiW(named.c_str(), id) != 0) {
        bad(std::wstring(L"el nombre ") + kProgId + L" no lleva a ella, sino a " + Quoted(named));
    }
    const std::wstring types = std::wstring(kClasses) + L"TypeLib\\" + Text(hive, bits, key + L"\\TypeLib") +
                               L'\\' + Text(hive, bits, key + L"\\Version") + L"\\0\\win" +
                               std::to_wstring(bits);
    if (const std::wstring described = Text(hive, bits, types); !Exists(described)) {
        bad(L"la biblioteca de tipos está registrada en " + Quoted(described) + L", que no existe");
    }
    findings.Add(Verdict::Good, whose, Described(library));
}

/// What this program gets when it asks for the library.
bool LookAtLibrary(Findings& findings) {
    try {
        com::LateObject made = MakeShowSerch();
        wchar_t path[MAX_PATH] = L"";
        GetModuleFileNameW(GetModuleHandleW(TAMVELO_LIBRARY), path, ARRAYSIZE(path));
        findings.Add(Verdict::Good, L"La que usa este programa", Described(path));
        if (VersionOf(path) != L"" TAMVELO_VERSION) {
            findings.Add(Verdict::Warning, L"Versiones", L"este programa es de la " TAMVELO_VERSION);
        }
        for (const wchar_t* companion : {L"\\KvSearchTool.atb", L"\\Image\\KvCur.ani"}) {
            if (const std::wstring file = FolderOf(path) + companion; !Exists(file)) {
                findings.Add(Verdict::Warning, L"Junto a la biblioteca", L"falta " + Quoted(file));
            }
        }
        for (const Operation& operation : Operations()) {
            if (!made.Answers(operation.name)) {
                findings.Add(Verdict::Bad, operation.name, L"la biblioteca no la tiene");
            }
        }
        return true;
    } catch (...) {
        findings.Add(Verdict::Bad, L"La que usa este programa", Describe(AnyCurrentError()));
        return false;
    }
}

/// Whether a file could be made in the folder, or in the one where the folder itself would be.
bool Writable(std::wstring folder) {
    while (!Exists(folder) && folder.find(L'\\') != std::wstring::npos) {
        folder = FolderOf(folder);
    }
    const HANDLE file =
        CreateFileW((folder + L"\\Tamvelo-diagnostico.tmp").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

bool SettingsWritable() {
    constexpr wchar_t kProbe[] = L"diagnostico";
    HKEY key = nullptr;
    DWORD made = 0;
    LSTATUS status =
        RegCreateKeyExW(HKEY_CURRENT_USER, kSettings, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, &made);
    if (status == ERROR_SUCCESS) {
        status = RegSetValueExW(key, kProbe, 0, REG_SZ, reinterpret_cast<const BYTE*>(L""), sizeof(wchar_t));
        RegDeleteValueW(key, kProbe);
        RegCloseKey(key);
        if (made == REG_CREATED_NEW_KEY) {
            RegDeleteKeyW(HKEY_CURRENT_USER, kSettings);
        }
    }
    return status == ERROR_SUCCESS;
}

void LookAtPlaces(Findings& findings) {
    findings.Part(L"Dónde se escribe");
    std::wstring layouts = Text(HKEY_CURRENT_USER, kOwnBits, kEnvironment, L"Carpeta");
    layouts = (layouts.empty() ? ProgramFolder() : layouts) + L"\\AtbGrx";
    findings.Add(Writable(layouts) ? Verdict::Good : Verdict::Warning, L"Disposiciones",
                 Quoted(layouts) + (Writable(layouts) ? L"" : L": no se puede escribir; no se guardan"));
    wchar_t temporary[MAX_PATH] = L"";
    GetTempPathW(ARRAYSIZE(temporary), temporary);
    const std::wstring folder = FolderOf(temporary);
    findings.Add(Writable(folder) ? Verdict::Good : Verdict::Bad, L"Ficheros temporales",
                 Quoted(folder) + (Writable(folder) ? L"" : L": no se puede escribir"));
    const bool settings = SettingsWritable();
    findings.Add(settings ? Verdict::Good : Verdict::Bad, L"Ajustes",
                 std::wstring(L"HKCU\\") + kSettings + (settings ? L"" : L": no se puede escribir"));
    constexpr const wchar_t* kValues[] = {L"Traza",   L"Carpeta", L"Configuracion", L"Archivos",
                                          L"Errores", L"Clases",  L"Citas",         L"Foco"};
    for (const wchar_t* name : kValues) {
        if (const std::wstring value = Text(HKEY_CURRENT_USER, kOwnBits, kEnvironment, name);
            !value.empty()) {
            findings.Add(Verdict::Told, std::wstring(L"Entorno, ") + name, value);
        }
    }
}

} // namespace

bool LookAtInstallation(Findings& findings) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t when[32];
    wsprintfW(when, L"%02d/%02d/%d %02d:%02d", now.wDay, now.wMonth, now.wYear, now.wHour, now.wMinute);
    findings.Add(Verdict::Told, L"Diagnóstico de " TAMVELO_PRODUCT L" " TAMVELO_VERSION, when);
    LookAtComputer(findings);
    findings.Part(L"La biblioteca");
    for (const HKEY hive : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        for (int bits = 32; bits <= SystemBits(); bits += 32) {
            LookAtRegistration(findings, hive, bits);
        }
    }
    const bool usable = LookAtLibrary(findings);
    LookAtPlaces(findings);
    return usable;
}

} // namespace tamvelo::demo
