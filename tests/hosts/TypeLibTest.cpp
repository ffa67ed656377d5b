#include <gtest/gtest.h>

#include <fstream>
#include <map>
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

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()}; // names are ASCII
}

const std::map<VARTYPE, std::string> kTypes = {
    {VT_DISPATCH, "object"}, {VT_I2, "short"},  {VT_I4, "long"},        {VT_BOOL, "bool"},
    {VT_BSTR, "string"},     {VT_DATE, "date"}, {VT_VARIANT, "variant"}};

std::string Written(const Parameter& parameter) {
    const auto type = kTypes.find(parameter.type);
    return std::string(parameter.Optional() ? "optional " : "") +
           (parameter.flags & PARAMFLAG_FIN && parameter.flags & PARAMFLAG_FOUT ? "" : "not in and out ") +
           (type == kTypes.end() ? std::to_string(parameter.type) : type->second) +
           (parameter.byReference ? "& " : " ") + Narrow(parameter.name) +
           (parameter.standIn.empty() ? "" : " = " + Narrow(parameter.standIn));
}

const std::pair<WORD, const char*> kFlags[] = {
    {TYPEFLAG_FHIDDEN, " hidden"},
    {TYPEFLAG_FDUAL, " dual"},
    {TYPEFLAG_FNONEXTENSIBLE, " nonextensible"},
    {TYPEFLAG_FOLEAUTOMATION, " oleautomation"},
    {TYPEFLAG_FCANCREATE, " creatable"},
};

/// The flags of a type; "automation-compatible" shows on the half of a dual interface that early-bound
/// callers see.
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

void Write(std::ostream& out, ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    com::Check(info->GetTypeAttr(&attributes));
    com::Bstr name;
    com::Check(info->GetDocumentation(MEMBERID_NIL, name.Address(), nullptr, nullptr, nullptr));
    out << (attributes->typekind == TKIND_COCLASS ? "class " : "interface ")
        << Narrow(std::wstring(name.View()));
    for (const auto& [flag, text] : kFlags) {
        out << (Flags(info, *attributes) & flag ? text : "");
    }
    out << '\n';
    if (attributes->typekind == TKIND_COCLASS) {
        for (UINT i = 0; i < attributes->cImplTypes; ++i) {
            HREFTYPE reference = 0;
            INT kind = 0;
            com::ComPtr<ITypeInfo> implemented;
            com::Check(info->GetRefTypeOfImplType(i, &reference));
            com::Check(info->GetImplTypeFlags(i, &kind));
            com::Check(info->GetRefTypeInfo(reference, &implemented));
            com::Bstr its;
            com::Check(implemented->GetDocumentation(MEMBERID_NIL, its.Address(), nullptr, nullptr, nullptr));
            out << "  " << (kind == IMPLTYPEFLAG_FDEFAULT ? "default " : "other ")
                << Narrow(std::wstring(its.View())) << '\n';
        }
    }
    info->ReleaseTypeAttr(attributes);
    for (const Operation& function : Functions(info)) {
        out << "  " << std::hex << function.id << std::dec << ' ' << Narrow(function.name) << '(';
        const char* separator = "";
        for (const Parameter& parameter : function.parameters) {
            out << separator << Written(parameter);
            separator = ", ";
        }
        out << ")\n";
    }
}

// The file is the promise to hosts that are compiled already: a difference breaks them.
TEST(TypeLibTest, DescribesTheContractExactly) {
    com::ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx((Folder() + L"\\Tamvelo.dll").c_str(), REGKIND_NONE, &library), S_OK);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == entry::kLibraryId);
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    library->ReleaseTLibAttr(attributes);
    com::Bstr name;
    com::Bstr help;
    ASSERT_EQ(library->GetDocumentation(-1, name.Address(), help.Address(), nullptr, nullptr), S_OK);
    EXPECT_EQ(name.View(), L"Tamvelo");
    EXPECT_EQ(help.View(), L"Tamvelo: diálogos de búsqueda, selección e informes");

    std::ostringstream written;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        com::ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfo(i, &info), S_OK);
        Write(written, info.Get());
    }
    std::ifstream file(TAMVELO_HOSTS "/tamvelo.tlb.txt");
    ASSERT_TRUE(file);
    std::istringstream lines(written.str());
    for (std::string expected, line; std::getline(file, expected);) {
        std::getline(lines, line);
        EXPECT_EQ(line, expected);
        line.clear();
    }
    EXPECT_EQ(lines.peek(), std::istringstream::traits_type::eof());
}

// What a host compiled against the header calls must be what the library describes.
TEST(TypeLibTest, ObjectsReportTheirClassAndInterface) {
    const Server server;
    const auto object = server.Create();
    com::ComPtr<IProvideClassInfo> provider;
    com::ComPtr<ITypeInfo> info;
    ASSERT_EQ(object.As(&provider), S_OK);
    ASSERT_EQ(provider->GetClassInfo(&info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == entry::kClsShowSerchId);
    info->ReleaseTypeAttr(attributes);

    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == __uuidof(entry::IClsShowSerch));
    info->ReleaseTypeAttr(attributes);
    EXPECT_EQ(Functions(info.Get()).size(), 36U);
}

} // namespace
} // namespace tamvelo::hosts
