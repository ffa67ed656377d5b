#include "Server.h"

#include <direct.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "com/Error.h"

namespace tamvelo::hosts {

namespace {

class Apartment final : public testing::Environment {
    void SetUp() override { ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr))); }
    void TearDown() override { CoUninitialize(); }
};

[[maybe_unused]] const testing::Environment* const g_apartment =
    testing::AddGlobalTestEnvironment(new Apartment);

} // namespace

std::wstring Folder() {
    wchar_t path[MAX_PATH];
    const std::wstring file(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
    return file.substr(0, file.rfind(L'\\'));
}

Finished RunProgram(const std::wstring& command) {
    _wchdir(Folder().c_str());
    FILE* const output = _wpopen((command + L" 2>&1").c_str(), L"rb");
    if (!output) {
        com::ThrowLastError(command);
    }
    Finished finished{};
    for (int got = fgetc(output); got != EOF; got = fgetc(output)) {
        finished.output += static_cast<char>(got);
    }
    finished.code = static_cast<DWORD>(_pclose(output));
    return finished;
}

DWORD RunRegsvr32(const std::wstring& how) {
    return RunProgram(L"regsvr32.exe /s " + how + L" \"" + Folder() + L"\\" TAMVELO_LIBRARY L"\"").code;
}

Server::Server(const std::wstring& folder)
    : m_module(LoadLibraryW((folder + L"\\" TAMVELO_LIBRARY).c_str())) {
    EXPECT_NE(m_module, nullptr) << GetLastError();
}

com::ComPtr<entry::IClsShowSerch> Server::Create() const {
    com::ComPtr<IClassFactory> factory;
    com::ComPtr<entry::IClsShowSerch> made;
    const auto getClass = Export<HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject");
    com::Check(getClass(entry::kClsShowSerchId, IID_PPV_ARGS(&factory)));
    com::Check(factory->CreateInstance(nullptr, IID_PPV_ARGS(&made)));
    return made;
}

bool Server::MayUnload() const { return Export<HRESULT STDAPICALLTYPE()>("DllCanUnloadNow")() == S_OK; }

bool Server::Unload() {
    FreeLibrary(m_module);
    return GetModuleHandleW(TAMVELO_LIBRARY) == nullptr;
}

} // namespace tamvelo::hosts
