#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "com/CallOut.h"
#include "com/Variant.h"

namespace tamvelo::com {

/// One argument of a late-bound call. Literals travel by value; `Ref` passes one of our own variables by
/// reference, typed, so that the callee may change it: the variable has the new value when the call returns.
class Argument {
public:
    Argument(short value) : m_value(value) {}
    Argument(long value) : m_value(value) {}
    Argument(bool value) : m_value(value) {}
    Argument(const wchar_t* text) : m_value(text) {}
    Argument(std::wstring_view text) : m_value(text) {}
    Argument(const std::wstring& text) : m_value(std::wstring_view(text)) {}
    Argument(IDispatch* object) : m_value(object) {}
    Argument(Variant value) : m_value(std::move(value)) {}

    static Argument Ref(short& variable) { return Reference(VT_I2, &variable); }
    static Argument Ref(DATE& variable) { return Reference(VT_DATE, &variable); }
    static Argument Ref(bool& variable) { return Reference(VT_BOOL, &variable); }
    static Argument Ref(std::wstring& variable) { return Reference(VT_BSTR, &variable); }
    static Argument Ref(ComPtr<IDispatch>& variable) {
        return Reference(VT_DISPATCH, std::addressof(variable));
    }
    static Argument Ref(Variant& variable) { return Reference(VT_VARIANT, &variable); }

private:
    friend class LateObject;
    Argument() = default;
    static Argument Reference(VARTYPE type, void* variable);
    /// Fills `cell` with the by-reference or by-value argument; `m_value` holds what it points at meanwhile.
    void Load(VARIANT& cell);
    /// Copies a string or a boolean that the callee changed back into our variable.
    void Store();

    Variant m_value;
    VARTYPE m_type = VT_EMPTY; // VT_EMPTY: by value
    void* m_variable = nullptr;
};

using Arguments = std::initializer_list<Argument>;

/// What a call answered. Reading it as something that it is not is an error that names the call.
class Answer final : public Variant {
public:
    Answer(Variant value, const wchar_t* role, const wchar_t* member)
        : Variant(std::move(value)), m_role(role), m_member(member) {}

    std::wstring ToText() const { return Read(&Variant::ToText); }
    bool ToBool() const { return Read(&Variant::ToBool); }
    long ToLong() const { return Read(&Variant::ToLong); }
    short ToShort() const { return Read(&Variant::ToShort); }
    double ToDouble() const { return Read(&Variant::ToDouble); }
    DATE ToDate() const { return Read(&Variant::ToDate); }
    ComPtr<IDispatch> ToObject() const { return Read(&Variant::ToObject); }

private:
    template <class T>
    T Read(T (Variant::*as)() const) const;

    const wchar_t* m_role;
    const wchar_t* m_member;
};

/// An object of the host, reached by member name. Looks each name up once. Errors come out as com::Error with
/// the host's own number, source and text; an unknown member names itself and the object's role. Any call may
/// also throw Gone (CallOut.h), and may make the owner let go of this object: it is held meanwhile.
class LateObject {
public:
    LateObject() = default;
    /// `role` is what the object is called in messages and in the trace ("MyClase", "objClsEvents"); a
    /// literal.
    LateObject(IDispatch* object, const wchar_t* role) : m_object(object), m_role(role) {}

    explicit operator bool() const { return m_object != nullptr; }
    IDispatch* Get() const { return m_object.Get(); }
    const wchar_t* Role() const { return m_role; }
    void Reset();

    /// Calls a method or reads a property; arguments in declared order.
    Answer Call(const wchar_t* member, Arguments arguments = {});
    void Put(const wchar_t* member, const Argument& value);
    /// Whether the object knows the name. For shapes only (is it a record set, is it a control): whether a
    /// host implements a member of its contract is never asked beforehand.
    bool Answers(const wchar_t* member);

private:
    struct Known {
        const wchar_t* name;
        DISPID id;
    };
    DISPID IdOf(const wchar_t* member);

    ComPtr<IDispatch> m_object;
    const wchar_t* m_role = L"Objeto";
    std::vector<Known> m_known;
};

/// The one name look-up; DISPID_UNKNOWN when the object does not know the name. Objects that answer only
/// through IDispatchEx (script classes) are asked that way.
DISPID FindMember(IDispatch* object, const wchar_t* member, const wchar_t* role = L"Objeto");

/// The one Invoke: with trace, the host's floating-point words and its error. `role` and `member`, both
/// literals, are for people. The caller holds the object: the host may make its owner let go of it.
Variant InvokeMember(IDispatch* object, const wchar_t* role, const wchar_t* member, DISPID id, WORD flags,
                     DISPPARAMS& parameters);

} // namespace tamvelo::com
