#include "entry/Registration.h"

#include <string>
#include <vector>

#include "com/Error.h"
#include "com/Module.h"
#include "entry/Interfaces.h"
#include "entry/RegistryChange.h"
#include "entry/ServerClass.h"
#include "objects/RelayInterfaces.h"

namespace tamvelo::entry {

namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
constexpr wchar_t kVersion[] = L"1.0";

// Marshalling between threads is the system's: one helper for dual interfaces, one for pure dispatch.
constexpr wchar_t kDualMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t kDispatchMarshaler[] = L"{00020420-0000-0000-C000-000000000046}";

struct Interface {
    IID id;
    const wchar_t* name;
    const wchar_t* marshaler;
};

const Interface kInterfaces[] = {
    {__uuidof(IClsShowSerch), L"_ClsShowSerch", kDualMarshaler},
    {__uuidof(objects::IClsEventos), L"_ClsEventos", kDualMarshaler},
    {objects::kRelayEventsId, L"__ClsEventos", kDispatchMarshaler},
};

std::wstring Braced(const GUID& id) {
    wchar_t text[39];
    StringFromGUID2(id, text, ARRAYSIZE(text));
    return text;
}

std::wstring LibraryPath() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(com::Module::Instance(), path, ARRAYSIZE(path));
    if (length == 0 || length == ARRAYSIZE(path)) {
        throw com::Error(HRESULT_FROM_WIN32(ERROR_FILENAME_EXCED_RANGE), {});
    }
    return {path, length};
}

std::wstring ClassKey(const ServerClass& served) { return L"CLSID\\" + Braced(served.id); }

std::wstring LibraryKey() { return L"TypeLib\\" + Braced(kLibraryId) + L"\\" + kVersion; }

/// Where the type library of this kind of process stands: the key has a child for each kind.
constexpr const wchar_t* kPlatform = sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32";
constexpr const wchar_t* kOtherPlatform = sizeof(void*) == 8 ? L"\\0\\win32" : L"\\0\\win64";

std::wstring InterfaceKey(const Interface& described) { return L"Interface\\" + Braced(described.id); }

HKEY Hive(Scope scope) { return scope == Scope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }

/// Whether the library for the other kind of process is registered there as well.
bool OtherStands(HKEY hive) {
    HKEY key = nullptr;
    const std::wstring path = kClasses + LibraryKey() + kOtherPlatform;
    const bool stands = RegOpenKeyExW(hive, path.c_str(), 0, KEY_QUERY_VALUE, &key) == ERROR_SUCCESS;
    if (stands) {
        RegCloseKey(key);
    }
    return stands;
}

/// The keys that are ours with all that is in them. Windows keeps classes and interfaces apart for programs
/// of 32 and of 64 bits, names and type libraries it does not.
std::vector<std::wstring> OwnKeys(HKEY hive) {
    const bool shared = OtherStands(hive);
    std::vector<std::wstring> keys{LibraryKey() + (shared ? kPlatform : L"")};
    for (const ServerClass& served : ServerClasses()) {
        keys.push_back(ClassKey(served));
        if (!shared) {
            keys.emplace_back(served.progId);
        }
    }
    for (const Interface& described : kInterfaces) {
        keys.push_back(InterfaceKey(described));
    }
    return keys;
}

/// Deletes the parents of a key of ours among the classes, from the innermost outwards, that hold nothing.
void DeleteEmptyParents(HKEY hive, std::wstring path) {
    for (size_t end = path.rfind(L'\\'); end >= std::size(kClasses); end = path.rfind(L'\\')) {
        path.resize(end);
        HKEY key = nullptr;
        DWORD keys = 0;
        DWORD values = 0;
        if (RegOpenKeyExW(hive, path.c_str(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
            return;
        }
        const LSTATUS status = RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                                                &values, nullptr, nullptr, nullptr, nullptr);
        RegCloseKey(key);
        if (status != ERROR_SUCCESS || keys > 0 || values > 0 ||
            RegDeleteKeyW(hive, path.c_str()) != ERROR_SUCCESS) {
            return;
        }
    }
}

} // namespace

void Register(Scope scope) {
    RegistryChange change(Hive(scope));
    const auto set = [&](const std::wstring& key, const wchar_t* name, const std::wstring& text) {
        change.Set(kClasses + key, name, text);
    };
    const std::wstring path = LibraryPath();
    const std::wstring library = Braced(kLibraryId);
    for (const ServerClass& served : ServerClasses()) {
        const std::wstring key = ClassKey(served);
        set(key, L"", served.description);
        set(key + L"\\InprocServer32", L"", path);
        set(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
        set(key + L"\\ProgID", L"", served.progId);
        set(key + L"\\TypeLib", L"", library);
        set(key + L"\\Version", L"", kVersion);
        set(served.progId, L"", served.description);
        set(std::wstring(served.progId) + L"\\CLSID", L"", Braced(served.id));
    }
    set(LibraryKey(), L"", L"Tamvelo");
    set(LibraryKey() + kPlatform, L"", path);
    set(LibraryKey() + L"\\FLAGS", L"", L"0");
    set(LibraryKey() + L"\\HELPDIR", L"", path.substr(0, path.rfind(L'\\')));
    for (const Interface& described : kInterfaces) {
        const std::wstring key = InterfaceKey(described);
        set(key, L"", described.name);
        set(key + L"\\ProxyStubClsid32", L"", described.marshaler);
        set(key + L"\\TypeLib", L"", library);
        set(key + L"\\TypeLib", L"Version", kVersion);
    }
    change.Commit();
}

void Unregister(Scope scope) {
    LSTATUS refused = ERROR_SUCCESS;
    for (const std::wstring& key : OwnKeys(Hive(scope))) {
        const std::wstring path = kClasses + key;
        const LSTATUS status = RegDeleteTreeW(Hive(scope), path.c_str());
        if (status == ERROR_SUCCESS) {
            DeleteEmptyParents(Hive(scope), path);
        } else if (status != ERROR_FILE_NOT_FOUND) {
            refused = status; // the others go all the same
        }
    }
    com::Check(HRESULT_FROM_WIN32(static_cast<DWORD>(refused)));
}

} // namespace tamvelo::entry
