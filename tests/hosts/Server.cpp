#include "Server.h"

#include <gtest/gtest.h>

#include "com/Error.h"
#include "com/Variant.h"

namespace tamvelo::hosts {

namespace {

class Apartment final : public testing::Environment {
    void SetUp() override { ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr))); }
    void TearDown() override { CoUninitialize(); }
};

[[maybe_unused]] const testing::Environment* const g_apartment =
    testing::AddGlobalTestEnvironment(new Apartment);

Parameter Describe(const ELEMDESC& element, BSTR name) {
    const bool pointer = element.tdesc.vt == VT_PTR;
    const TYPEDESC& type = pointer ? *element.tdesc.lptdesc : element.tdesc;
    Parameter parameter{name, element.paramdesc.wParamFlags, type.vt, pointer, {}};
    if (type.vt == VT_PTR) {
        parameter.type = VT_DISPATCH;
    }
    if (parameter.flags & PARAMFLAG_FHASDEFAULT) {
        com::Variant standIn;
        com::Check(
            VariantChangeType(standIn.Address(), &element.paramdesc.pparamdescex->varDefaultValue, 0, VT_I4));
        parameter.standIn = std::to_wstring(standIn.ToLong());
    }
    return parameter;
}

} // namespace

std::wstring Folder() {
    wchar_t path[MAX_PATH];
    const std::wstring file(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
    return file.substr(0, file.rfind(L'\\'));
}

Server::Server() : m_module(LoadLibraryW((Folder() + L"\\Tamvelo.dll").c_str())) {
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
    return GetModuleHandleW(L"Tamvelo.dll") == nullptr;
}

std::vector<Function> Functions(ITypeInfo* info) {
    std::vector<Function> functions;
    FUNCDESC* description = nullptr;
    for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &description)); ++i) {
        const bool inherited = description->wFuncFlags & FUNCFLAG_FRESTRICTED; // of IUnknown and IDispatch
        if (!inherited) {
            std::vector<BSTR> names(static_cast<size_t>(description->cParams) + 1);
            UINT count = 0;
            com::Check(
                info->GetNames(description->memid, names.data(), static_cast<UINT>(names.size()), &count));
            Function function{description->memid, names[0], {}};
            for (size_t p = 1; p < names.size(); ++p) {
                function.parameters.push_back(Describe(description->lprgelemdescParam[p - 1], names[p]));
            }
            for (const BSTR name : names) {
                SysFreeString(name);
            }
            functions.push_back(std::move(function));
        }
        info->ReleaseFuncDesc(description);
    }
    return functions;
}

} // namespace tamvelo::hosts
