#include <gtest/gtest.h>

#include <sstream>

#include "Server.h"
#include "com/Error.h"
#include "com/Variant.h"
#include "tests/support/Operations.h"

namespace tamvelo::hosts {
namespace {

using tamvelo::testing::Functions;
using tamvelo::testing::Operation;
using tamvelo::testing::Parameter;

/// "automation-compatible" shows on the half of a dual interface that early-bound callers see.
WORD Flags(ITypeInfo* info, const TYPEATTR& attributes) {
    HREFTYPE reference = 0;
    com::ComPtr<ITypeInfo> early;
    TYPEATTR* more = nullptr;
    WORD flags = attributes.wTypeFlags;
    if (flags & TYPEFLAG_FDUAL && SUCCEEDED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
        SUCCEEDED(info->GetRefTypeInfo(reference, &early)) && SUCCEEDED(early->GetTypeAttr(&more))) {
        flags |= more->wTypeFlags;
        early->ReleaseTypeAttr(more);
    }
    return flags;
}

IID IdOf(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    com::Check(info->GetTypeAttr(&attributes));
    const IID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return id;
}

/// A class or interface with all that a compiled host relies on.
void Write(std::wostream& out, ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    com::Check(info->GetTypeAttr(&attributes));
    com::Bstr name;
    com::Check(info->GetDocumentation(MEMBERID_NIL, name.Address(), nullptr, nullptr, nullptr));
    wchar_t id[39];
    StringFromGUID2(attributes->guid, id, ARRAYSIZE(id));
    out << attributes->typekind << L' ' << name.View() << L' ' << id << L' ' << Flags(info, *attributes)
        << L'\n';
    for (UINT i = 0; attributes->typekind == TKIND_COCLASS && i < attributes->cImplTypes; ++i) {
        HREFTYPE reference = 0;
        INT kind = 0;
        com::ComPtr<ITypeInfo> implemented;
        com::Check(info->GetRefTypeOfImplType(i, &reference));
        com::Check(info->GetRefTypeInfo(reference, &implemented));
        com::Check(info->GetImplTypeFlags(i, &kind));
        StringFromGUID2(IdOf(implemented.Get()), id, ARRAYSIZE(id));
        out << L"  " << kind << L' ' << id << L'\n';
    }
    info->ReleaseTypeAttr(attributes);
    for (const Operation& function : Functions(info)) {
        out << L"  " << function.id << L' ' << function.name << L' ' << function.slot;
        for (const Parameter& parameter : function.parameters) {
            out << L", " << parameter.flags << L' ' << parameter.type
                << (parameter.byReference ? L"& " : L" ") << parameter.name << L" = " << parameter.standIn;
        }
        out << L'\n';
    }
}

// The digest is the promise to hosts that are compiled already: another one breaks them.
TEST(TypeLibTest, DescribesTheContractThatHostsWereCompiledWith) {
    com::ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx((Folder() + L"\\Tamvelo.dll").c_str(), REGKIND_NONE, &library), S_OK);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == entry::kLibraryId);
    com::Bstr name;
    com::Bstr help;
    ASSERT_EQ(library->GetDocumentation(-1, name.Address(), help.Address(), nullptr, nullptr), S_OK);
    std::wostringstream written;
    written << name.View() << help.View() << attributes->wMajorVerNum << attributes->wMinorVerNum;
    library->ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        com::ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfo(i, &info), S_OK);
        Write(written, info.Get());
    }
    std::uint64_t digest = 14695981039346656037U;
    for (const wchar_t c : written.str()) {
        digest = (digest ^ c) * 1099511628211U;
    }
    EXPECT_EQ(digest, 12264435666484149712U) << ::testing::PrintToString(written.str());
}

// What a host compiled against the header calls must be what the library describes.
TEST(TypeLibTest, ObjectsReportTheirClassAndInterface) {
    const Server server;
    const auto object = server.Create();
    com::ComPtr<IProvideClassInfo> provider;
    com::ComPtr<ITypeInfo> info;
    ASSERT_EQ(object.As(&provider), S_OK);
    ASSERT_EQ(provider->GetClassInfo(&info), S_OK);
    EXPECT_TRUE(IdOf(info.Get()) == entry::kClsShowSerchId);
    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
    EXPECT_TRUE(IdOf(info.Get()) == __uuidof(entry::IClsShowSerch));
}

} // namespace
} // namespace tamvelo::hosts
