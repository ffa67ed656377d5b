// Every operation, as the type library describes it, in all the ways in which hosts call.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <sstream>

#include "Server.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Operations.h"

namespace tamvelo::hosts {
namespace {

using tamvelo::testing::Functions;
using tamvelo::testing::HostObject;
using tamvelo::testing::Operation;
using tamvelo::testing::Operations;
using tamvelo::testing::Parameter;

/// What became of a call: its code, the argument that is said to be wrong, and what the caller is told.
struct Outcome {
    HRESULT code;
    UINT wrong;
    com::Error error;
};

com::Variant Reference(VARTYPE type, void* variable) {
    com::Variant reference;
    reference.Address()->vt = static_cast<VARTYPE>(type | VT_BYREF);
    reference.Address()->byref = variable;
    return reference;
}

class CallsTest : public ::testing::Test {
protected:
    CallsTest() {
        for (const wchar_t* member : {L"sClassName", L"Requery", L"Count", L"Recordset"}) {
            m_host->Raises(member);
        }
        m_host->Returns(L"Text", com::Variant(L"A-1"), true);
        PostQuitMessage(0); // dialogs that ask the host nothing do open, and close at once
    }
    ~CallsTest() override {
        MSG quit;
        EXPECT_TRUE(PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE))
            << "a dialog kept it to itself";
        EXPECT_EQ(m_host->References(), 1);
        m_object.Reset();
        EXPECT_TRUE(m_server.MayUnload());
        SetErrorInfo(0, nullptr);
    }

    using Values = std::vector<com::Variant>;

    /// For every operation, with an argument of the right kind for each of its parameters.
    void ForEach(const std::function<void(const Operation&, Values&)>& check) {
        for (const Operation& operation : Operations()) {
            SCOPED_TRACE(::testing::PrintToString(operation.name));
            Values values;
            for (const Parameter& parameter : operation.parameters) {
                values.push_back(Sample(parameter.type));
            }
            check(operation, values);
        }
    }
    com::Variant Sample(VARTYPE type) {
        com::Variant sample(static_cast<IDispatch*>(m_host.Get()));
        if (type != VT_DISPATCH) {
            com::Check(VariantChangeType(sample.Address(), com::Variant(1L).In(), 0, type));
        }
        return sample;
    }

    Outcome Told(HRESULT code, EXCEPINFO thrown = {}, UINT wrong = 99) {
        return {code, wrong,
                FAILED(code) ? com::ErrorOfInvoke(code, thrown, L"ClsShowSerch") : com::Error(S_OK, L"")};
    }
    /// A late-bound call; arguments in declared order, or as `named`.
    Outcome Late(DISPID id, const Values& values, std::vector<DISPID> named = {}) {
        std::vector<VARIANT> arguments(values.size());
        std::transform(values.rbegin(), values.rend(), arguments.begin(), std::mem_fn(&com::Variant::Get));
        std::ranges::reverse(named);
        DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                              static_cast<UINT>(named.size())};
        EXCEPINFO thrown{};
        UINT wrong = 99;
        const HRESULT code = m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                              nullptr, &thrown, &wrong);
        return Told(code, thrown, wrong);
    }
    /// An early-bound call; those of the bits in `nulls` are null pointers.
    Outcome Early(const Operation& operation, Values& values, unsigned nulls = 0) {
        Values pointers(values.size());
        std::vector<VARTYPE> types(values.size(), VT_BYREF | VT_I4);
        std::vector<VARIANT*> arguments;
        for (size_t i = 0; i < values.size(); ++i) {
            void* const null = nullptr;
            pointers[i] = Reference(values[i].Type(), nulls & (1U << i) ? null : &values[i].Address()->lVal);
            arguments.push_back(pointers[i].Address());
        }
        com::Variant code;
        com::Check(DispCallFunc(m_object.Get(), operation.slot, CC_STDCALL, VT_ERROR,
                                static_cast<UINT>(arguments.size()), types.data(), arguments.data(),
                                code.Address()));
        return Told(code.Get().scode);
    }

    /// The call reached the form, and the caller is told what the host said.
    void ExpectHostsError(const Operation& operation, const Outcome& outcome) {
        if (operation.name == L"ShowSelecDate") { // asks nothing before it is answered
            EXPECT_EQ(outcome.code, S_OK);
            return;
        }
        EXPECT_EQ(outcome.error.number, tamvelo::testing::kHostErrorNumber);
        EXPECT_EQ(outcome.error.source + L": " + outcome.error.description,
                  L"Gestión: La tabla está bloqueada.");
    }

    const Server m_server;
    tamvelo::testing::Log m_log;
    /// Every role of a host in one object: a data class and a collection that cannot be read, a sink and a
    /// control.
    const com::ComPtr<HostObject> m_host = com::Make<HostObject>(L"todo", m_log);
    com::ComPtr<entry::IClsShowSerch> m_object = m_server.Create();
};

TEST_F(CallsTest, EarlyBoundFailureBringsItsOwnErrorObjectAndTouchesNoVariable) {
    ForEach([&](const Operation& operation, Values& values) {
        for (com::Variant& value : values) {
            if (value.Type() == VT_BOOL) {
                value.Address()->boolVal = 1; // not quite True, but the host's own
            }
        }
        const Values before = values;
        for (const size_t given : std::set{operation.Required(), values.size()}) {
            SetErrorInfo(0, nullptr);
            ExpectHostsError(operation, Early(operation, values, ~0U << given));
        }
        for (size_t i = 0; i < values.size(); ++i) {
            EXPECT_TRUE(before[i].Type() == VT_BSTR
                            ? values[i].ToText() == L"1"
                            : values[i].Get().cyVal.int64 == before[i].Get().cyVal.int64);
        }
        m_log.clear();
        for (size_t i = 0; i < operation.Required(); ++i) {
            EXPECT_EQ(Early(operation, values, 1U << i).code, E_POINTER);
        }
        EXPECT_TRUE(m_log.empty());
    });
}

TEST_F(CallsTest, LateBoundArgumentsMayComeInEveryWay) {
    std::set<std::vector<VARTYPE>> seen;
    ForEach([&](const Operation& operation, Values& values) {
        ExpectHostsError(operation, Late(operation.id, values));
        std::vector<VARTYPE> types;
        std::ranges::transform(operation.parameters, std::back_inserter(types), &Parameter::type);
        if (!seen.insert(types).second) {
            return; // dialogs take their time, and no other argument comes
        }
        Values typed; // of a compiled program; scripts have tests of their own
        std::vector<const wchar_t*> names{operation.name.c_str()};
        for (size_t i = 0; i < values.size(); ++i) {
            typed.push_back(Reference(values[i].Type(), &values[i].Address()->lVal));
            names.push_back(operation.parameters[i].name.c_str());
        }
        ExpectHostsError(operation, Late(operation.id, typed));
        for (size_t i = 0; i < values.size(); ++i) { // numbers of other sizes serve as shorts
            if (types[i] != VT_I2) {
                continue;
            }
            Values with = typed;
            BYTE small = 1;
            long large = 1;
            com::Variant byte;
            byte.Address()->vt = VT_UI1;
            for (const com::Variant& number : {byte, Reference(VT_UI1, &small), Reference(VT_I4, &large)}) {
                with[i] = number;
                ExpectHostsError(operation, Late(operation.id, with));
            }
            large = 70000;
            const Outcome tooLarge = Late(operation.id, with);
            EXPECT_EQ(tooLarge.code, DISP_E_OVERFLOW);
            EXPECT_EQ(tooLarge.wrong, with.size() - 1 - i);
        }
        std::vector<DISPID> ids(names.size());
        ASSERT_EQ(m_object->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(names.data()),
                                          static_cast<UINT>(names.size()), LOCALE_USER_DEFAULT, ids.data()),
                  S_OK);
        EXPECT_EQ(ids[0], operation.id);
        std::ranges::reverse(typed);
        ExpectHostsError(operation, Late(ids[0], typed, {ids.rbegin(), ids.rend() - 1}));
        for (size_t count = operation.Required(); count < values.size(); ++count) {
            for (const com::Variant& absent : {com::Variant::Missing(), com::Variant()}) {
                values[count] = absent;
                ExpectHostsError(operation, Late(operation.id, values));
            }
        }
    });
}

TEST_F(CallsTest, WrongArgumentsAreRefusedBeforeAnythingHappens) {
    ForEach([&](const Operation& operation, Values& values) {
        const auto refused = [&](const Values& given, HRESULT code, UINT wrong) {
            const Outcome outcome = Late(operation.id, given);
            EXPECT_EQ(outcome.error.number, code);
            EXPECT_EQ(outcome.wrong, wrong);
            return outcome.error.description;
        };
        for (size_t i = 0; i < values.size(); ++i) {
            const Parameter& parameter = operation.parameters[i];
            const UINT place = static_cast<UINT>(values.size() - 1 - i);
            Values with = values;
            with[i] = parameter.type == VT_DISPATCH ? com::Variant(L"texto") : Sample(VT_DISPATCH);
            refused(with, DISP_E_TYPEMISMATCH, place);
            if (parameter.name == L"ctl") {
                with[i] = com::Variant(static_cast<IDispatch*>(m_object.Get())); // has nothing of a control
                EXPECT_NE(refused(with, DISP_E_TYPEMISMATCH, 99).find(L"«ctl»"), std::wstring::npos);
                EXPECT_EQ(Early(operation, with).code, DISP_E_TYPEMISMATCH);
            }
        }
        values.emplace_back(short{1});
        refused(values, DISP_E_BADPARAMCOUNT, 99);
        values.resize(operation.Required() - 1);
        refused(values, DISP_E_BADPARAMCOUNT, 99);
    });
    EXPECT_TRUE(m_log.empty());
    LPOLESTR unknown = const_cast<LPOLESTR>(L"ShowColumns");
    DISPID id = 0;
    EXPECT_EQ(m_object->GetIDsOfNames(IID_NULL, &unknown, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(Late(Operations().back().id + 1, Values()).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(CallsTest, TheFactoryServesOneClassAndNoAggregation) {
    const auto getClass =
        m_server.Export<HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject");
    com::ComPtr<IClassFactory> factory;
    void* out = this;
    EXPECT_EQ(getClass(__uuidof(entry::IClsShowSerch), IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(out, nullptr);
    ASSERT_EQ(getClass(entry::kClsShowSerchId, IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_EQ(factory->CreateInstance(m_host.Get(), IID_IUnknown, &out), CLASS_E_NOAGGREGATION);
    m_object.Reset();
    EXPECT_FALSE(m_server.MayUnload());
    factory->LockServer(TRUE);
    factory.Reset();
    EXPECT_FALSE(m_server.MayUnload());
    ASSERT_EQ(getClass(entry::kClsShowSerchId, IID_PPV_ARGS(&factory)), S_OK);
    factory->LockServer(FALSE);
}

TYPEATTR AttributesOf(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    com::Check(info->GetTypeAttr(&attributes));
    const TYPEATTR copy = *attributes;
    info->ReleaseTypeAttr(attributes);
    return copy;
}

/// "automation-compatible" shows on the half of a dual interface that early-bound callers see.
WORD Flags(ITypeInfo* info) {
    HREFTYPE reference = 0;
    com::ComPtr<ITypeInfo> early;
    const WORD flags = AttributesOf(info).wTypeFlags;
    if (flags & TYPEFLAG_FDUAL && SUCCEEDED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
        SUCCEEDED(info->GetRefTypeInfo(reference, &early))) {
        return flags | AttributesOf(early.Get()).wTypeFlags;
    }
    return flags;
}

/// A class or interface with all that a compiled host relies on.
void Write(std::wostream& out, ITypeInfo* info) {
    const TYPEATTR attributes = AttributesOf(info);
    com::Bstr name;
    com::Check(info->GetDocumentation(MEMBERID_NIL, name.Address(), nullptr, nullptr, nullptr));
    wchar_t id[39];
    StringFromGUID2(attributes.guid, id, ARRAYSIZE(id));
    out << attributes.typekind << L' ' << name.View() << L' ' << id << L' ' << Flags(info) << L'\n';
    for (UINT i = 0; attributes.typekind == TKIND_COCLASS && i < attributes.cImplTypes; ++i) {
        HREFTYPE reference = 0;
        INT kind = 0;
        com::ComPtr<ITypeInfo> implemented;
        com::Check(info->GetRefTypeOfImplType(i, &reference));
        com::Check(info->GetRefTypeInfo(reference, &implemented));
        com::Check(info->GetImplTypeFlags(i, &kind));
        StringFromGUID2(AttributesOf(implemented.Get()).guid, id, ARRAYSIZE(id));
        out << L"  " << kind << L' ' << id << L'\n';
    }
    for (const Operation& function : Functions(info)) {
        out << L"  " << function.id << L' ' << function.name << L' ' << function.slot / sizeof(void*);
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
    ASSERT_EQ(LoadTypeLibEx((Folder() + L"\\" TAMVELO_LIBRARY).c_str(), REGKIND_NONE, &library), S_OK);
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
    EXPECT_EQ(digest, 4259059122754206478U) << ::testing::PrintToString(written.str());
}

// What a host compiled against the header calls must be what the library describes.
TEST(TypeLibTest, ObjectsReportTheirClassAndInterface) {
    const Server server;
    const auto object = server.Create();
    com::ComPtr<IProvideClassInfo> provider;
    com::ComPtr<ITypeInfo> info;
    ASSERT_EQ(object.As(&provider), S_OK);
    ASSERT_EQ(provider->GetClassInfo(&info), S_OK);
    EXPECT_TRUE(AttributesOf(info.Get()).guid == entry::kClsShowSerchId);
    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
    EXPECT_TRUE(AttributesOf(info.Get()).guid == __uuidof(entry::IClsShowSerch));
}

} // namespace
} // namespace tamvelo::hosts
