#include "demo/app/Server.h"

#include "com/Error.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;

ComPtr<IDispatch> Registered() {
    CLSID id;
    ComPtr<IDispatch> made;
    if (SUCCEEDED(CLSIDFromProgID(kProgId, &id))) {
        com::Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                    reinterpret_cast<void**>(&made)),
                   L"La biblioteca Tamvelo está registrada, pero no se puede usar.");
    }
    return made;
}

/// What COM does with a registered library, done by hand. The library stays loaded.
ComPtr<IDispatch> BesideUs() {
    const std::wstring path = ProgramFolder() + L"\\" TAMVELO_LIBRARY;
    const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == nullptr) {
        com::ThrowLastError(L"La biblioteca Tamvelo no está registrada y no se puede cargar «" + path +
                            L"».");
    }
    const auto getClassObject = reinterpret_cast<LPFNGETCLASSOBJECT>(
        reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
    if (getClassObject == nullptr) {
        com::ThrowLastError(L"«" + path + L"» no es la biblioteca Tamvelo.");
    }
    ComPtr<IClassFactory> factory;
    com::Check(getClassObject(kClsShowSerch, IID_IClassFactory, reinterpret_cast<void**>(&factory)));
    ComPtr<IDispatch> made;
    com::Check(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&made)));
    return made;
}

} // namespace

com::LateObject MakeShowSerch() {
    ComPtr<IDispatch> made = Registered();
    if (!made) {
        made = BesideUs();
    }
    return {made.Get(), kProgId};
}

std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH];
    const std::wstring_view file(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
    return std::wstring(file.substr(0, file.find_last_of(L'\\')));
}

} // namespace tamvelo::demo
