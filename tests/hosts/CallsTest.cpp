#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "Server.h"
#include "com/Automation.h"
#include "com/Error.h"
#include "entry/InOut.h"

namespace tamvelo::hosts {
namespace {

using entry::IClsShowSerch;

constexpr HRESULT kTableLocked = static_cast<HRESULT>(0x800A04D2);

/// Every role of a host in one object: a data class and a collection that cannot be read, a sink and, if
/// asked, a control.
class Host final : public com::Automation {
public:
    explicit Host(bool control) : m_control(control) {}
    long References() {
        AddRef();
        return static_cast<long>(Release());
    }
    int Calls() const { return m_calls; }

private:
    void Locked(com::Invocation&) {
        ++m_calls;
        throw com::Error(kTableLocked, L"La tabla está bloqueada.", L"Gestión");
    }
    void Text(com::Invocation& call) { call.Return(com::Variant(L"A-1")); }
    std::span<const com::Member> Members() const override {
        static constexpr com::Member kMembers[] = {
            {L"sClassName", 1, com::Member::Get, 0, 0, com::Run<&Host::Locked>},
            {L"Requery", 2, com::Member::Method, 0, 1, com::Run<&Host::Locked>},
            {L"Count", 4, com::Member::Get, 0, 0, com::Run<&Host::Locked>},
            {L"Recordset", 5, com::Member::Get, 0, 0, com::Run<&Host::Locked>},
            {L"Text", 3, com::Member::Get, 0, 0, com::Run<&Host::Text>},
        };
        return std::span(kMembers).first(m_control ? 5 : 4);
    }

    bool m_control;
    int m_calls = 0;
};

template <class Value>
struct Held {
    Value value{};
    explicit Held(IDispatch*) {}
    Value* Address() { return &value; }
};
template <>
struct Held<IDispatch*> {
    com::ComPtr<IDispatch> value;
    explicit Held(IDispatch* host) : value(host) {}
    IDispatch** Address() { return value.GetAddressOf(); }
};
template <>
struct Held<BSTR> {
    com::Bstr value{L"pantalla"};
    explicit Held(IDispatch*) {}
    BSTR* Address() { return value.Address(); }
};

template <class>
IDispatch* For(IDispatch* host) {
    return host;
}

/// Which arguments an early-bound caller passes as null pointers: one bit each.
using Nulls = unsigned;

template <auto Method>
struct Early;
template <class... Values, HRESULT (STDMETHODCALLTYPE IClsShowSerch::*Method)(Values*...)>
struct Early<Method> {
    static HRESULT Call(IClsShowSerch& object, IDispatch* host, Nulls nulls) {
        std::tuple<Held<Values>...> held(For<Values>(host)...);
        return std::apply(
            [&](auto&... each) {
                Nulls bit = 1;
                const auto address = [&](auto& one) {
                    const bool null = nulls & std::exchange(bit, bit << 1);
                    return null ? nullptr : one.Address();
                };
                const std::tuple<Values*...> arguments{address(each)...};
                return std::apply([&](auto*... argument) { return (object.*Method)(argument...); },
                                  arguments);
            },
            held);
    }
};

struct Operation {
    const wchar_t* name;
    const wchar_t* form;
    HRESULT (*early)(IClsShowSerch& object, IDispatch* host, Nulls nulls);
};

constexpr Operation kOperations[] = {
    {L"ShowSelecDate", L"frmSeleccionFecha", Early<&IClsShowSerch::ShowSelecDate>::Call},
    {L"ShowBuscar", L"frmBuscar", Early<&IClsShowSerch::ShowBuscar>::Call},
    {L"ShowColums", L"frmColumnas", Early<&IClsShowSerch::ShowColums>::Call},
    {L"ShowSelec", L"frmSeleccion", Early<&IClsShowSerch::ShowSelec>::Call},
    {L"ShowSelecNoVerif", L"frmSeleccion", Early<&IClsShowSerch::ShowSelecNoVerif>::Call},
    {L"ShowSelecVerif", L"frmSeleccion", Early<&IClsShowSerch::ShowSelecVerif>::Call},
    {L"ShowSelecControlVerif", L"frmSeleccion", Early<&IClsShowSerch::ShowSelecControlVerif>::Call},
    {L"ShowSelecTrueFalse", L"frmSeleccionTrueFalse", Early<&IClsShowSerch::ShowSelecTrueFalse>::Call},
    {L"ShowSelecAdd", L"frmSelecAdd", Early<&IClsShowSerch::ShowSelecAdd>::Call},
    {L"ShowRegistros", L"frmRegistros", Early<&IClsShowSerch::ShowRegistros>::Call},
    {L"ShowSelecDirecta", L"frmSeleccion", Early<&IClsShowSerch::ShowSelecDirecta>::Call},
    {L"ShowSelecInDirecta", L"frmSeleccion", Early<&IClsShowSerch::ShowSelecInDirecta>::Call},
    {L"ShowOrder", L"frmOrden", Early<&IClsShowSerch::ShowOrder>::Call},
    {L"ShowRpt", L"frmRpts", Early<&IClsShowSerch::ShowRpt>::Call},
    {L"ShowSql", L"frmsql", Early<&IClsShowSerch::ShowSql>::Call},
    {L"ShowEtiq", L"frmSelecEti", Early<&IClsShowSerch::ShowEtiq>::Call},
    {L"PrintEtiq", L"frmSelecEti", Early<&IClsShowSerch::PrintEtiq>::Call},
    {L"ShowRptCond", L"frmRptsCond", Early<&IClsShowSerch::ShowRptCond>::Call},
    {L"ShowRptMailCond", L"frmRptsMailCond", Early<&IClsShowSerch::ShowRptMailCond>::Call},
    {L"ShowRptBorrador", L"frmRptsMailCond", Early<&IClsShowSerch::ShowRptBorrador>::Call},
    {L"ShowRptListas", L"frmRptsListas", Early<&IClsShowSerch::ShowRptListas>::Call},
    {L"ShowRptInfCond", L"frmRptsInfCond", Early<&IClsShowSerch::ShowRptInfCond>::Call},
    {L"ShowRptCondHr", L"frmRptsCondHr", Early<&IClsShowSerch::ShowRptCondHr>::Call},
    {L"ShowRptFchAuto", L"frmRptsFchAuto", Early<&IClsShowSerch::ShowRptFchAuto>::Call},
    {L"ShowRptFchAutoInf", L"frmRptsFchAutoInf", Early<&IClsShowSerch::ShowRptFchAutoInf>::Call},
    {L"ShowRptInfOrdenes", L"frmRptsInfOrdenes", Early<&IClsShowSerch::ShowRptInfOrdenes>::Call},
    {L"ShowRptFchCliDirec", L"frmRptsFchCliDirec", Early<&IClsShowSerch::ShowRptFchCliDirec>::Call},
    {L"ShowRptsInfFch", L"frmRptsInfFch", Early<&IClsShowSerch::ShowRptsInfFch>::Call},
    {L"ShowRptNumAut", L"frmRptNumAut", Early<&IClsShowSerch::ShowRptNumAut>::Call},
    {L"PrintRptNumAut", L"frmRptNumAut", Early<&IClsShowSerch::PrintRptNumAut>::Call},
    {L"ShowSeleccionar", L"frmSelecVenta", Early<&IClsShowSerch::ShowSeleccionar>::Call},
    {L"ShowSelecLab", L"frmSelecLab", Early<&IClsShowSerch::ShowSelecLab>::Call},
    {L"ShowNuevaCita", L"frmCita", Early<&IClsShowSerch::ShowNuevaCita>::Call},
    {L"ShowSelecMinim", L"frmSelecMinim", Early<&IClsShowSerch::ShowSelecMinim>::Call},
    {L"ShowSeleccionarComp", L"frmSeleccionar", Early<&IClsShowSerch::ShowSeleccionarComp>::Call},
    {L"ShowSeleccionarRecibo", L"frmSelecRecibo", Early<&IClsShowSerch::ShowSeleccionarRecibo>::Call},
};

constexpr wchar_t kNone[] = L"no error";

/// What became of a call.
struct Outcome {
    HRESULT code;
    UINT wrong;
    com::Error error;
};

void ExpectRefusal(const Operation& operation, const com::Error& error) {
    if (std::wstring_view(operation.form) == L"frmSeleccionFecha") {
        EXPECT_EQ(error.description, kNone);
        return;
    }
    EXPECT_EQ(error.number, kTableLocked);
    EXPECT_EQ(error.source, L"Gestión");
    EXPECT_EQ(error.description, L"La tabla está bloqueada.");
}

class CallsTest : public testing::Test {
protected:
    void SetUp() override {
        com::ComPtr<ITypeInfo> info;
        ASSERT_EQ(m_object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
        m_functions = Functions(info.Get());
        ASSERT_EQ(m_functions.size(), std::size(kOperations));
        PostQuitMessage(0); // dialogs that ask the host nothing do open, and close at once
    }
    void TearDown() override {
        MSG quit;
        EXPECT_TRUE(PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE))
            << "a dialog kept it to itself";
        EXPECT_EQ(m_host->References(), 1);
        m_object.Reset();
        EXPECT_TRUE(m_server.MayUnload());
    }

    /// Runs `check` for every operation with what the library says of it.
    template <class Check>
    void ForEach(const Check& check) {
        for (size_t i = 0; i < m_functions.size(); ++i) {
            SCOPED_TRACE(testing::PrintToString(m_functions[i].name));
            EXPECT_EQ(m_functions[i].name, kOperations[i].name);
            check(m_functions[i], kOperations[i]);
        }
    }

    com::Variant Sample(VARTYPE type) {
        switch (type) {
        case VT_DISPATCH:
            return com::Variant(static_cast<IDispatch*>(m_host.Get()));
        case VT_BSTR:
            return com::Variant(L"pantalla");
        case VT_BOOL:
            return com::Variant(true);
        case VT_DATE:
            return com::Variant::Date(45000);
        case VT_I4:
            return com::Variant(0L);
        default:
            return com::Variant(short{0});
        }
    }
    std::vector<com::Variant> Samples(const Function& function) {
        std::vector<com::Variant> samples;
        for (const Parameter& parameter : function.parameters) {
            samples.push_back(Sample(parameter.type));
        }
        return samples;
    }

    /// A late-bound call; `arguments` in declared order, or as `named`.
    Outcome Invoke(DISPID id, std::vector<VARIANT> arguments, std::vector<DISPID> named = {}) {
        std::reverse(arguments.begin(), arguments.end());
        std::reverse(named.begin(), named.end());
        DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                              static_cast<UINT>(named.size())};
        EXCEPINFO thrown{};
        UINT wrong = 99;
        const HRESULT code = m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                              nullptr, &thrown, &wrong);
        return {code, wrong,
                FAILED(code) ? com::ErrorOfInvoke(code, thrown, L"ClsShowSerch") : com::Error(E_FAIL, kNone)};
    }
    Outcome Invoke(const Function& function, const std::vector<com::Variant>& values) {
        std::vector<VARIANT> arguments;
        for (const com::Variant& value : values) {
            arguments.push_back(value.Get());
        }
        return Invoke(function.id, arguments);
    }

    const Server m_server;
    com::ComPtr<Host> m_host = com::Make<Host>(true);
    com::ComPtr<IClsShowSerch> m_object = m_server.Create();
    std::vector<Function> m_functions;
};

size_t Required(const Function& function) {
    return static_cast<size_t>(
        std::count_if(function.parameters.begin(), function.parameters.end(),
                      [](const Parameter& parameter) { return !parameter.Optional(); }));
}

com::Error ThreadError(HRESULT code) {
    EXCEPINFO none{};
    return FAILED(code) ? com::ErrorOfInvoke(code, none, L"ClsShowSerch") : com::Error(E_FAIL, kNone);
}

TEST_F(CallsTest, EarlyBoundFailureBringsItsOwnErrorObject) {
    ForEach([&](const Function&, const Operation& operation) {
        SetErrorInfo(0, nullptr);
        ExpectRefusal(operation, ThreadError(operation.early(*m_object.Get(), m_host.Get(), 0)));
    });
}

TEST_F(CallsTest, NullPointersAreOmittedOptionalArgumentsAndRefusedForOthers) {
    ForEach([&](const Function& function, const Operation& operation) {
        const auto required = static_cast<unsigned>(Required(function));
        ExpectRefusal(operation,
                      ThreadError(operation.early(*m_object.Get(), m_host.Get(), ~0U << required)));
        const int before = m_host->Calls();
        for (unsigned i = 0; i < required; ++i) {
            EXPECT_EQ(operation.early(*m_object.Get(), m_host.Get(), 1U << i), E_POINTER);
        }
        EXPECT_EQ(m_host->Calls(), before);
        SetErrorInfo(0, nullptr);
    });
}

TEST_F(CallsTest, LateBoundArgumentsMayComeInEveryWay) {
    ForEach([&](const Function& function, const Operation& operation) {
        std::vector<com::Variant> values = Samples(function);
        ExpectRefusal(operation, Invoke(function, values).error);

        std::vector<VARIANT> variables(values.size()); // of a script
        std::vector<VARIANT> typed(values.size());     // of a compiled program
        for (size_t i = 0; i < values.size(); ++i) {
            variables[i].vt = VT_VARIANT | VT_BYREF;
            variables[i].pvarVal = values[i].Address();
            typed[i].vt = static_cast<VARTYPE>(values[i].Type() | VT_BYREF);
            typed[i].byref = &values[i].Address()->lVal;
        }
        ExpectRefusal(operation, Invoke(function.id, variables).error);
        ExpectRefusal(operation, Invoke(function.id, typed).error);

        const size_t required = Required(function);
        for (size_t count = required; count < values.size(); ++count) {
            variables.resize(count);
            ExpectRefusal(operation, Invoke(function.id, variables).error);
        }
        for (const com::Variant& absent : {com::Variant::Missing(), com::Variant()}) {
            std::fill(values.begin() + static_cast<std::ptrdiff_t>(required), values.end(), absent);
            ExpectRefusal(operation, Invoke(function, values).error);
        }
    });
}

TEST_F(CallsTest, ArgumentsMayBeNamedInAnyOrder) {
    ForEach([&](const Function& function, const Operation& operation) {
        std::vector<const wchar_t*> names{function.name.c_str()};
        for (const Parameter& parameter : function.parameters) {
            names.push_back(parameter.name.c_str());
        }
        std::vector<DISPID> ids(names.size());
        ASSERT_EQ(m_object->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(names.data()),
                                          static_cast<UINT>(names.size()), LOCALE_USER_DEFAULT, ids.data()),
                  S_OK);
        const std::vector<com::Variant> values = Samples(function);
        std::vector<VARIANT> reversed;
        std::vector<DISPID> named;
        for (size_t i = values.size(); i-- > 0;) {
            reversed.push_back(values[i].Get());
            named.push_back(ids[i + 1]);
        }
        ExpectRefusal(operation, Invoke(ids[0], reversed, named).error);
    });
}

TEST_F(CallsTest, NumbersOfOtherSizesServeAsShorts) {
    ForEach([&](const Function& function, const Operation& operation) {
        for (size_t i = 0; i < function.parameters.size(); ++i) {
            if (function.parameters[i].type != VT_I2) {
                continue;
            }
            std::vector<com::Variant> values = Samples(function);
            BYTE small = 1;
            long large = 1;
            VARIANT& cell = *values[i].Address();
            cell.vt = VT_UI1;
            cell.bVal = small;
            ExpectRefusal(operation, Invoke(function, values).error);
            cell.vt = VT_UI1 | VT_BYREF;
            cell.pbVal = &small;
            ExpectRefusal(operation, Invoke(function, values).error);
            cell.vt = VT_I4 | VT_BYREF;
            cell.plVal = &large;
            ExpectRefusal(operation, Invoke(function, values).error);
            large = 70000;
            const Outcome tooLarge = Invoke(function, values);
            EXPECT_EQ(tooLarge.code, DISP_E_OVERFLOW);
            EXPECT_EQ(tooLarge.wrong, values.size() - 1 - i);
        }
    });
}

TEST_F(CallsTest, WrongTypesAndCountsAreRefusedBeforeAnythingHappens) {
    ForEach([&](const Function& function, const Operation&) {
        for (size_t i = 0; i < function.parameters.size(); ++i) {
            std::vector<com::Variant> values = Samples(function);
            values[i] =
                function.parameters[i].type == VT_DISPATCH ? com::Variant(L"texto") : Sample(VT_DISPATCH);
            const Outcome mismatch = Invoke(function, values);
            EXPECT_EQ(mismatch.code, DISP_E_TYPEMISMATCH) << i;
            EXPECT_EQ(mismatch.wrong, values.size() - 1 - i);
        }
        std::vector<com::Variant> values = Samples(function);
        values.emplace_back(short{1});
        EXPECT_EQ(Invoke(function, values).code, DISP_E_BADPARAMCOUNT);
        values.resize(Required(function) - 1);
        EXPECT_EQ(Invoke(function, values).code, DISP_E_BADPARAMCOUNT);
    });
    EXPECT_EQ(m_host->Calls(), 0);

    LPOLESTR unknown = const_cast<LPOLESTR>(L"ShowColumns");
    DISPID id = 0;
    EXPECT_EQ(m_object->GetIDsOfNames(IID_NULL, &unknown, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(Invoke(entry::kFirstOperation + 36, {}).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(CallsTest, WhatIsNoControlIsRefusedBeforeTheFormIsAsked) {
    const auto other = com::Make<Host>(false);
    ForEach([&](const Function& function, const Operation& operation) {
        std::vector<com::Variant> values = Samples(function);
        for (size_t i = 0; i < values.size(); ++i) {
            if (function.parameters[i].name == L"ctl") {
                values[i] = com::Variant(static_cast<IDispatch*>(other.Get()));
                const com::Error error = Invoke(function, values).error;
                EXPECT_EQ(error.number, DISP_E_TYPEMISMATCH);
                EXPECT_NE(error.description.find(L"«ctl»"), std::wstring::npos);
                EXPECT_EQ(operation.early(*m_object.Get(), other.Get(), 0), DISP_E_TYPEMISMATCH);
            }
        }
        SetErrorInfo(0, nullptr);
    });
    EXPECT_EQ(m_host->Calls() + other->Calls(), 0);
    EXPECT_EQ(other->References(), 1);
}

TEST(InOutTest, HostsSeeChangesAndNothingElse) {
    short column = 3;
    VARIANT_BOOL find = 1; // not quite True, but the host's own
    com::Bstr text(L"antes");
    const BSTR same = text.Get();
    {
        entry::ShortInOut ownColumn(&column, 0);
        const entry::BoolInOut ownFind(&find, false);
        const entry::TextInOut ownText(text.Address(), {});
        static_cast<short&>(ownColumn) += 4;
    }
    EXPECT_EQ(column, 7);
    EXPECT_EQ(find, 1);
    EXPECT_EQ(text.Get(), same);
    BSTR none = nullptr;
    {
        entry::BoolInOut ownFind(&find, false);
        entry::TextInOut ownText(text.Address(), {});
        entry::TextInOut ownNone(&none, {});
        entry::BoolInOut omitted(nullptr, true);
        EXPECT_TRUE(std::exchange(static_cast<bool&>(ownFind), false));
        EXPECT_TRUE(std::exchange(static_cast<bool&>(omitted), false));
        static_cast<std::wstring&>(ownText) = L"después";
        static_cast<std::wstring&>(ownNone) = L"algo";
    }
    EXPECT_EQ(find, VARIANT_FALSE);
    EXPECT_EQ(text.View(), L"después");
    EXPECT_STREQ(none, L"algo");
    SysFreeString(none);
}

TEST_F(CallsTest, TheFactoryServesOneClassAndNoAggregation) {
    const auto getClass =
        m_server.Export<HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject");
    com::ComPtr<IClassFactory> factory;
    void* out = this;
    EXPECT_EQ(getClass(__uuidof(IClsShowSerch), IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
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

} // namespace
} // namespace tamvelo::hosts
