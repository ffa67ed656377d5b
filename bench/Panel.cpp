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

Library::Library() : m_module(LoadLibraryW(BesideThisProgram(TAMVELO_LIBRARY).c_str())) {
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

std::wstring Library::Path() const { return BesideThisProgram(TAMVELO_LIBRARY); }

const GridDialog kPanel{"el panel", "", [](entry::IClsShowSerch& object, Host& given) {
                            return object.ShowSelec(given.sink.GetAddressOf(), given.data.GetAddressOf(),
                                                    given.control.GetAddressOf(), nullptr, nullptr, nullptr,
                                                    nullptr);
                        }};
const GridDialog kBrowser{"los registros", "-registros", [](entry::IClsShowSerch& object, Host& given) {
                              return object.ShowRegistros(
                                  given.sink.GetAddressOf(), given.data.GetAddressOf(),
                                  given.control.GetAddressOf(), nullptr, nullptr, nullptr);
                          }};

void ShowDialog(const Library& library, const GridDialog& dialog, const Host& host) {
    Host given = host; // the dialog may put others in their place
    com::Check(dialog.show(*library.Create().Get(), given));
}

HWND ListOf(HWND dialog) { return FindWindowExW(dialog, nullptr, kGridClass, nullptr); }

Floor FloorOf(HWND list) {
    const HWND owner = GetParent(list);
    RECT dialog;
    RECT rows;
    RECT headings;
    GetWindowRect(owner, &dialog);
    GetClientRect(list, &rows);
    GetWindowRect(FindWindowExW(list, nullptr, WC_HEADERW, nullptr), &headings);
    rows.top += headings.bottom - headings.top;
    MapWindowPoints(list, owner, reinterpret_cast<POINT*>(&rows), 2);
    return {{dialog.right - dialog.left, dialog.bottom - dialog.top}, rows};
}

} // namespace tamvelo::bench
