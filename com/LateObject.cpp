#include "com/LateObject.h"

#include <dispex.h>

#include <array>
#include <optional>

#include "com/CallOut.h"
#include "com/CallTimer.h"
#include "com/Error.h"
#include "com/Trace.h"

namespace tamvelo::com {

namespace {

constexpr size_t kMostArguments = 16;
constexpr HRESULT kObjectNotSet = static_cast<HRESULT>(0x800A005B); // automation's number 91

/// How a script engine refuses to call a member that is a plain value: it wants to be asked for it instead.
constexpr HRESULT kFunctionExpected = static_cast<HRESULT>(0x800A138A);

std::wstring CallName(const wchar_t* role, const wchar_t* member) {
    return std::wstring(L"«") + role + L"»." + member;
}

Error UnknownMember(const wchar_t* role, const wchar_t* member) {
    Error error(DISP_E_UNKNOWNNAME,
                std::wstring(L"El objeto «") + role + L"» no tiene el miembro «" + member + L"».");
    error.call = CallName(role, member);
    return error;
}

} // namespace

template <class T>
T Answer::Read(T (Variant::*as)() const) const {
    try {
        return (this->*as)();
    } catch (Error& error) {
        error.description = CallName(m_role, m_member) + L": " + error.description;
        throw;
    }
}
template std::wstring Answer::Read(std::wstring (Variant::*)() const) const;
template bool Answer::Read(bool (Variant::*)() const) const;
template long Answer::Read(long (Variant::*)() const) const;
template short Answer::Read(short (Variant::*)() const) const;
template double Answer::Read(double (Variant::*)() const) const; // a DATE is one
template ComPtr<IDispatch> Answer::Read(ComPtr<IDispatch> (Variant::*)() const) const;

DISPID FindMember(IDispatch* object, const wchar_t* member, const wchar_t* role) {
    const ComPtr<IDispatch> alive = object;
    if (Trace::Enabled()) {
        Trace::Line(std::wstring(role) + L" ? " + member);
    }
    DISPID id = DISPID_UNKNOWN;
    auto* name = const_cast<LPOLESTR>(member);
    const HRESULT result =
        CallOut([&] { return alive->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id); });
    if (SUCCEEDED(result)) {
        return id;
    }
    // Script engines exist whose classes know their names only through the extended interface.
    const ComPtr<IDispatchEx> extended = result == E_NOTIMPL ? Query<IDispatchEx>(object) : nullptr;
    if (!extended) {
        return DISPID_UNKNOWN;
    }
    const Bstr text(member);
    return FAILED(CallOut([&] { return extended->GetDispID(text.Get(), fdexNameCaseInsensitive, &id); }))
               ? DISPID_UNKNOWN
               : id;
}

Variant InvokeMember(IDispatch* object, const wchar_t* role, const wchar_t* member, DISPID id, WORD flags,
                     DISPPARAMS& parameters) {
    // The caller holds the object: the host may make us let go of it while it runs.
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const bool traced = Trace::Enabled();
    if (traced) {
        std::wstring line = std::wstring(role) + L"." + member + (put ? L" = " : L"(");
        for (UINT i = 0; i < parameters.cArgs; ++i) {
            line += (i ? L", " : L"") + Trace::Describe(parameters.rgvarg[parameters.cArgs - 1 - i]);
        }
        Trace::Line(line + (put ? L"" : L")"));
    }
    Variant result;
    EXCEPINFO thrown{};
    const Standing before;
    SetErrorInfo(0, nullptr); // what is left there from before is not this call's error
    const auto invoke = [&] {
        return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                              put ? nullptr : result.Address(), &thrown, nullptr);
    };
    const HRESULT code = [&] {
        const CallTimer timer(member);
        return WithHostFloats(invoke);
    }();
    const std::optional<Error> error =
        FAILED(code) ? std::optional(ErrorOfInvoke(code, thrown, CallName(role, member))) : std::nullopt;
    if (error && error->number == kFunctionExpected && parameters.cArgs == 0 &&
        flags != DISPATCH_PROPERTYGET) {
        before.Check();
        return InvokeMember(object, role, member, id, DISPATCH_PROPERTYGET, parameters);
    }
    if (traced && error) {
        wchar_t number[16];
        wsprintfW(number, L"%08lX", static_cast<unsigned long>(error->number));
        Trace::Line(L"  " + std::wstring(member) + L" ! " + number + L" " + error->source + L": " +
                    error->description);
    } else if (traced) {
        std::wstring answer = L"  " + std::wstring(member) + L" = " + Trace::Describe(result.Get());
        for (UINT i = 0; i < parameters.cArgs; ++i) {
            const VARIANT& argument = parameters.rgvarg[parameters.cArgs - 1 - i];
            if (argument.vt & VT_BYREF) {
                answer += L", " + Trace::Describe(argument);
            }
        }
        Trace::Line(answer);
    }
    before.Check();
    if (error) {
        throw Error(*error);
    }
    return result;
}

Argument Argument::Reference(VARTYPE type, void* variable) {
    Argument made;
    made.m_type = type;
    made.m_variable = variable;
    return made;
}

void Argument::Load(VARIANT& cell) {
    if (m_type == VT_EMPTY) {
        cell = m_value.Get(); // borrowed: the argument outlives the call
        return;
    }
    cell.vt = static_cast<VARTYPE>(m_type | VT_BYREF);
    switch (m_type) {
    case VT_BOOL:
        m_value = Variant(*static_cast<bool*>(m_variable));
        cell.pboolVal = &m_value.Address()->boolVal;
        break;
    case VT_BSTR:
        m_value = Variant(std::wstring_view(*static_cast<std::wstring*>(m_variable)));
        cell.pbstrVal = &m_value.Address()->bstrVal;
        break;
    case VT_DISPATCH:
        cell.ppdispVal = static_cast<ComPtr<IDispatch>*>(m_variable)->GetAddressOf();
        break;
    case VT_VARIANT:
        cell.pvarVal = static_cast<Variant*>(m_variable)->Address();
        break;
    default:
        cell.byref = m_variable;
    }
}

void Argument::Store() {
    if (m_type == VT_BOOL) {
        *static_cast<bool*>(m_variable) = m_value.ToBool();
    } else if (m_type == VT_BSTR) {
        std::wstring& variable = *static_cast<std::wstring*>(m_variable);
        const BSTR text = m_value.Get().bstrVal;
        const std::wstring_view view =
            text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
        if (view != variable) {
            variable = view;
        }
    }
}

void LateObject::Reset() {
    m_known.clear();
    // Released last: the release may run host code that comes back to our owner.
    const ComPtr<IDispatch> leaving = std::move(m_object);
}

DISPID LateObject::IdOf(const wchar_t* member) {
    for (const Known& known : m_known) {
        if (known.name == member || std::wstring_view(known.name) == member) {
            return known.id;
        }
    }
    if (!m_object) {
        Error error(kObjectNotSet, std::wstring(L"El objeto «") + m_role + L"» no está establecido.");
        error.call = CallName(m_role, member);
        throw error;
    }
    const ComPtr<IDispatch> asked = m_object;
    const DISPID id = FindMember(asked.Get(), member, m_role);
    if (id == DISPID_UNKNOWN) {
        throw UnknownMember(m_role, member);
    }
    if (m_object == asked) {
        m_known.push_back({member, id});
    }
    return id;
}

bool LateObject::Answers(const wchar_t* member) {
    return m_object && FindMember(m_object.Get(), member, m_role) != DISPID_UNKNOWN;
}

Answer LateObject::Call(const wchar_t* member, Arguments arguments) {
    const ComPtr<IDispatch> object = m_object;
    const DISPID id = IdOf(member);
    std::array<VARIANT, kMostArguments> cells;
    const size_t count = arguments.size();
    // The list's elements are const, but it is ours alone: loading keeps what a reference points at inside
    // them.
    auto* list = const_cast<Argument*>(arguments.begin());
    for (size_t i = 0; i < count; ++i) {
        list[i].Load(cells[count - 1 - i]);
    }
    DISPPARAMS parameters{cells.data(), nullptr, static_cast<UINT>(count), 0};
    Variant result =
        InvokeMember(object.Get(), m_role, member, id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters);
    for (size_t i = 0; i < count; ++i) {
        list[i].Store();
    }
    return {std::move(result), m_role, member};
}

void LateObject::Put(const wchar_t* member, const Argument& value) {
    const ComPtr<IDispatch> object = m_object;
    const DISPID id = IdOf(member);
    VARIANT cell = value.m_value.Get();
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&cell, &put, 1, 1};
    InvokeMember(object.Get(), m_role, member, id,
                 value.m_value.IsObject() ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, parameters);
}

} // namespace tamvelo::com
