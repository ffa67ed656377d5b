#include "bench/Panel.h"

#include <commctrl.h>

#include "com/Error.h"

namespace tamvelo::bench {

namespace {

constexpr wchar_t kGridClass[] = L"TamveloGrid";

std::wstring BesideThisProgram(const wchar_t* file) {
    wchar_t path[MAX_PATH];
    const std::wstring program(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
    return program.substr(0, program.rfind(L'\\') + 1) + file;
}

template <class Function>
Function* Export(HMODULE module, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace

Library::Library() : m_module(LoadLibraryW(BesideThisProgram(L"Tamvelo.dll").c_str())) {
    if (!m_module) {
        com::ThrowLastError(L"No se puede cargar Tamvelo.dll.");
    }
}

com::ComPtr<entry::IClsShowSerch> Library::Create() const {
    com::ComPtr<IClassFactory> factory;
    com::ComPtr<entry::IClsShowSerch> made;
    const auto getClass =
        Export<HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**)>(m_module, "DllGetClassObject");
    com::Check(getClass(entry::kClsShowSerchId, IID_PPV_ARGS(&factory)));
    com::Check(factory->CreateInstance(nullptr, IID_PPV_ARGS(&made)));
    return made;
}

bool Library::Unused() const {
    return Export<HRESULT STDAPICALLTYPE()>(m_module, "DllCanUnloadNow")() == S_OK;
}

std::wstring Library::Path() const { return BesideThisProgram(L"Tamvelo.dll"); }

void ShowPanel(const Library& library, const Host& host) {
    Host given = host; // the panel may put others in their place
    short column = 0;
    short indx = 0;
    VARIANT_BOOL find = VARIANT_TRUE;
    VARIANT_BOOL stock = VARIANT_FALSE;
    com::Check(library.Create()->ShowSelec(given.sink.GetAddressOf(), given.data.GetAddressOf(),
                                           given.control.GetAddressOf(), &column, &indx, &find, &stock));
}

HWND ListOf(HWND panel) { return FindWindowExW(panel, nullptr, kGridClass, nullptr); }

Floor FloorOf(HWND list) {
    const HWND panel = GetParent(list);
    RECT dialog;
    RECT rows;
    RECT headings;
    GetWindowRect(panel, &dialog);
    GetClientRect(list, &rows);
    GetWindowRect(FindWindowExW(list, nullptr, WC_HEADERW, nullptr), &headings);
    rows.top += headings.bottom - headings.top;
    MapWindowPoints(list, panel, reinterpret_cast<POINT*>(&rows), 2);
    return {{dialog.right - dialog.left, dialog.bottom - dialog.top}, rows};
}

} // namespace tamvelo::bench
