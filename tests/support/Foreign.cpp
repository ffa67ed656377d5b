#include "tests/support/Foreign.h"

#include <cmath>
#include <limits>
#include <unordered_map>
#include <vector>

namespace tamvelo::testing {

const FaultName kFaults[20] = {
    {Fault::Missing, L"missing", true, false, false},
    {Fault::Raises, L"raises", true, false, false},
    {Fault::Null, L"Null", true, true, false},
    {Fault::WrongType, L"wrong type", true, true, false},
    {Fault::ClosesWindow, L"closes the window", true, false, true},
    {Fault::PumpsKey, L"pumps a key", true, false, true},
    {Fault::RaisesWithoutText, L"raises without text", false, false, false},
    {Fault::RaisesMegabyte, L"raises a megabyte", false, false, false},
    {Fault::BareFailure, L"fails without words", false, false, false},
    {Fault::NotANumber, L"NaN", false, true, false},
    {Fault::Infinite, L"infinity", false, true, false},
    {Fault::Huge, L"huge number", false, true, false},
    {Fault::Negative, L"negative number", false, true, false},
    {Fault::Empty, L"Empty", false, true, false},
    {Fault::Array, L"array", false, true, false},
    {Fault::Megabyte, L"a megabyte of text", false, true, false},
    {Fault::EmbeddedZero, L"embedded zero", false, true, false},
    {Fault::RetypesArgument, L"retypes an argument", false, false, true},
    {Fault::CallsAgain, L"calls again", false, false, true},
    {Fault::TakesTwoSeconds, L"takes two seconds", false, false, true},
};

namespace {

constexpr UINT kMegabyte = 1 << 20;

BSTR Long(wchar_t letter) {
    const BSTR text = SysAllocStringLen(nullptr, kMegabyte);
    std::fill_n(text, kMegabyte, letter);
    return text;
}

class Proxy;
std::unordered_map<IUnknown*, Proxy*> g_proxies; // by the object behind
std::unordered_map<IDispatch*, IDispatch*> g_behind;

com::ComPtr<IUnknown> Identity(IUnknown* object) {
    com::ComPtr<IUnknown> identity;
    object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identity.GetAddressOf()));
    return identity;
}

void Replace(VARIANT& value, const std::wstring& name);

/// True once for each call of the member at fault.
bool Strikes(const std::wstring& path) {
    if (Foreign::fault == Fault::None || path != Foreign::member) {
        return false;
    }
    ++Foreign::struck;
    return true;
}

/// What the fault does besides answering, at its first call.
void Act(Fault fault) {
    const bool acts = fault == Fault::ClosesWindow || fault == Fault::PumpsKey ||
                      fault == Fault::CallsAgain || fault == Fault::TakesTwoSeconds;
    if (acts && Foreign::struck == 1 && Foreign::act) {
        Foreign::act();
        SetErrorInfo(0, nullptr); // what the library left in there is not of this call
    }
}

HRESULT Raise(Fault fault, EXCEPINFO* thrown) {
    if (fault == Fault::BareFailure) {
        return E_FAIL;
    }
    if (thrown) {
        *thrown = {};
        thrown->scode = Foreign::kError;
        if (fault != Fault::RaisesWithoutText) {
            thrown->bstrSource = SysAllocString(L"Almacén");
            thrown->bstrDescription =
                fault == Fault::RaisesMegabyte ? Long(L'e') : SysAllocString(Foreign::kText);
        }
    }
    return DISP_E_EXCEPTION;
}

/// The answer that the fault puts in place of the member's own.
void Answer(Fault fault, VARIANT& value) {
    const bool object = value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
    VARIANT other{};
    const auto number = [&](double wanted) {
        other.vt = VT_R8;
        other.dblVal = wanted;
    };
    const auto text = [&](BSTR wanted) {
        other.vt = VT_BSTR;
        other.bstrVal = wanted;
    };
    switch (fault) {
    case Fault::Null:
        other.vt = VT_NULL;
        break;
    case Fault::WrongType:
        if (object) {
            text(SysAllocString(L"ningún objeto"));
        } else {
            other.vt = VT_DISPATCH;
            other.pdispVal = Foreign::Wrap(nullptr, L"objeto").Detach();
        }
        break;
    case Fault::NotANumber:
        number(std::nan(""));
        break;
    case Fault::Infinite:
        number(std::numeric_limits<double>::infinity());
        break;
    case Fault::Huge:
        number(1e300);
        break;
    case Fault::Negative:
        number(-7);
        break;
    case Fault::Empty:
        break;
    case Fault::Array: {
        other.vt = VT_ARRAY | VT_VARIANT;
        other.parray = SafeArrayCreateVector(VT_VARIANT, 0, 3);
        break;
    }
    case Fault::Megabyte:
        text(Long(L'm'));
        break;
    case Fault::EmbeddedZero:
        text(SysAllocStringLen(L"a\0b", 3));
        break;
    default:
        return;
    }
    VariantClear(&value);
    value = other;
}

/// Counts its references, and answers to the one interface.
template <typename Interface>
class Counted : public Interface {
public:
    Counted() = default;
    virtual ~Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        const bool known = id == IID_IUnknown || id == __uuidof(Interface);
        *out = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }

private:
    ULONG m_references = 0;
};

class Proxy final : public Counted<IDispatch> {
public:
    Proxy(IDispatch* object, std::wstring name) : m_object(object), m_name(std::move(name)) {
        if (object) {
            m_identity = Identity(object);
            g_proxies[m_identity.Get()] = this;
        }
        g_behind[this] = object;
    }
    ~Proxy() override {
        g_behind.erase(this);
        if (m_identity) {
            g_proxies.erase(m_identity.Get());
        }
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID none, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        const std::wstring path = m_name + L"." + names[0];
        const HRESULT code = m_object && !(Foreign::fault == Fault::Missing && Strikes(path))
                                 ? m_object->GetIDsOfNames(none, names, count, locale, ids)
                                 : DISP_E_UNKNOWNNAME;
        if (SUCCEEDED(code)) {
            m_members[ids[0]] = names[0];
        }
        return code;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID none, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* thrown, UINT* wrong) override {
        const com::ComPtr<Proxy> held(this);
        const auto known = m_members.find(id);
        const std::wstring name = m_name + L"." +
                                  (known != m_members.end() ? known->second
                                   : id == DISPID_VALUE     ? L"(default)"
                                                            : L"_NewEnum");

        const Fault fault = Strikes(name) ? Foreign::fault : Fault::None;
        switch (fault) {
        case Fault::Missing:
            return DISP_E_MEMBERNOTFOUND;
        case Fault::Raises:
        case Fault::RaisesWithoutText:
        case Fault::RaisesMegabyte:
        case Fault::BareFailure:
            return Raise(fault, thrown);
        default:
            Act(fault);
        }
        if (!m_object) {
            return DISP_E_MEMBERNOTFOUND;
        }
        VARIANT answer{};
        const HRESULT code = Forward(id, none, locale, flags, *parameters, answer, thrown, wrong);
        VARTYPE& answers = Foreign::called[name];
        answers = answer.vt != VT_EMPTY ? answer.vt : answers;
        if (SUCCEEDED(code)) {
            Answer(fault, answer);
            Replace(answer, name);
            for (UINT i = 0; fault == Fault::RetypesArgument && i < parameters->cArgs; ++i) {
                Retype(parameters->rgvarg[i]);
            }
        }
        if (result) {
            *result = answer;
        } else {
            VariantClear(&answer);
        }
        return code;
    }

private:
    /// To the object behind, with what is behind the arguments.
    HRESULT Forward(DISPID id, REFIID none, LCID locale, WORD flags, const DISPPARAMS& parameters,
                    VARIANT& answer, EXCEPINFO* thrown, UINT* wrong) {
        const com::ComPtr<IDispatch> object = m_object;
        std::vector<VARIANT> arguments(parameters.rgvarg, parameters.rgvarg + parameters.cArgs);
        std::vector<IDispatch*> objects(parameters.cArgs);
        for (UINT i = 0; i < parameters.cArgs; ++i) {
            VARIANT& argument = arguments[i];
            const bool plain = argument.vt == VT_DISPATCH;
            const bool variable = argument.vt == (VT_DISPATCH | VT_BYREF);
            IDispatch* given = plain ? argument.pdispVal : variable ? *argument.ppdispVal : nullptr;
            const auto behind = g_behind.find(given);
            if (behind != g_behind.end() && behind->second) {
                objects[i] = behind->second;
                (plain ? argument.pdispVal : *(argument.ppdispVal = &objects[i])) = objects[i];
            }
        }
        DISPPARAMS inner = parameters;
        inner.rgvarg = arguments.data();
        return object->Invoke(id, none, locale, flags, &inner, &answer, thrown, wrong);
    }
    /// A variable of the caller's gets a value of its own type that it did not have.
    static void Retype(VARIANT& argument) {
        switch (argument.vt) {
        case VT_BYREF | VT_VARIANT:
            VariantClear(argument.pvarVal);
            argument.pvarVal->vt = VT_NULL;
            break;
        case VT_BYREF | VT_BSTR:
            SysFreeString(*argument.pbstrVal);
            *argument.pbstrVal = nullptr;
            break;
        case VT_BYREF | VT_I2:
            *argument.piVal = -32768;
            break;
        case VT_BYREF | VT_BOOL:
            *argument.pboolVal = 7;
            break;
        case VT_BYREF | VT_DISPATCH:
            if (*argument.ppdispVal) {
                (*argument.ppdispVal)->Release();
                *argument.ppdispVal = nullptr;
            }
            break;
        default:
            break;
        }
    }

    const com::ComPtr<IDispatch> m_object;
    com::ComPtr<IUnknown> m_identity;
    const std::wstring m_name;
    std::map<DISPID, std::wstring> m_members;
};

/// A step of For Each is a member like any other.
class Steps final : public Counted<IEnumVARIANT> {
public:
    Steps(IEnumVARIANT* behind, std::wstring name) : m_behind(behind), m_name(std::move(name)) {}
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override {
        const com::ComPtr<Steps> held(this);
        Foreign::called[m_name] = VT_VARIANT;
        const Fault fault = Strikes(m_name) ? Foreign::fault : Fault::None;
        if (fault == Fault::Raises || fault == Fault::BareFailure || fault == Fault::Missing) {
            return E_FAIL;
        }
        Act(fault);
        ULONG got = 0;
        const HRESULT code = m_behind->Next(count, values, &got);
        for (ULONG i = 0; i < got; ++i) {
            Answer(fault, values[i]);
            Replace(values[i], m_name);
        }
        if (fetched) {
            *fetched = got;
        }
        return code;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override { return m_behind->Skip(count); }
    HRESULT STDMETHODCALLTYPE Reset() override { return m_behind->Reset(); }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override {
        *out = nullptr;
        return E_NOTIMPL;
    }

private:
    const com::ComPtr<IEnumVARIANT> m_behind;
    const std::wstring m_name;
};

void Replace(VARIANT& value, const std::wstring& name) {
    if (value.vt == VT_DISPATCH && value.pdispVal && !g_behind.contains(value.pdispVal)) {
        IDispatch* wrapped = Foreign::Wrap(value.pdispVal, name).Detach();
        value.pdispVal->Release();
        value.pdispVal = wrapped;
    } else if (value.vt == VT_UNKNOWN && value.punkVal) {
        com::ComPtr<IEnumVARIANT> list;
        value.punkVal->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(list.GetAddressOf()));
        if (list) {
            value.punkVal->Release();
            value.punkVal = com::ComPtr<IEnumVARIANT>(new Steps(list.Get(), name + L".Next")).Detach();
        }
    }
}

} // namespace

com::ComPtr<IDispatch> Foreign::Wrap(IDispatch* object, const std::wstring& name) {
    if (object) {
        const auto known = g_proxies.find(Identity(object).Get());
        if (known != g_proxies.end()) {
            return com::ComPtr<IDispatch>(known->second);
        }
    }
    return com::ComPtr<IDispatch>(new Proxy(object, name));
}

long Foreign::Alive() { return static_cast<long>(g_behind.size()); }

} // namespace tamvelo::testing
