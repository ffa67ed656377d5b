#pragma once

#include <span>
#include <string>
#include <vector>

#include "com/Error.h"
#include "com/Object.h"
#include "com/Variant.h"

namespace tamvelo::com {

/// One call into an automation object, unpacked: arguments in declared order with references taken off.
class Invocation {
public:
    Invocation(DISPPARAMS& parameters, WORD flags);

    /// True when a property is being written; the new value is then the last argument.
    bool IsPut() const { return m_put; }
    size_t Count() const { return m_arguments.size(); }
    /// An omitted argument reads as missing.
    const Variant& operator[](size_t index) const;
    const Variant& NewValue() const { return m_arguments.back(); }
    void Return(Variant value) { m_result = std::move(value); }
    /// Changes the caller's variable if it was passed by reference; does nothing otherwise.
    void WriteBack(size_t index, const Variant& value);

private:
    friend class Automation;
    DISPPARAMS& m_parameters;
    bool m_put;
    std::vector<Variant> m_arguments;
    Variant m_result;
};

class Automation;

/// One member of an automation object.
struct Member {
    enum Kind : unsigned char { Method = 1, Get = 2, Put = 4, GetPut = Get | Put };
    const wchar_t* name;
    DISPID id; // DISPID_VALUE makes it the default member
    Kind kind;
    unsigned char least; // arguments without the new value of a put
    unsigned char most;
    void (*run)(Automation& self, Invocation& call);
};

/// IDispatch written once over a table of members: names without regard to case, argument counts, puts,
/// errors as EXCEPINFO. A derived class lists its members and throws com::Error.
class Automation : public Object<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown,
                                     UINT* wrong) override;

protected:
    virtual std::span<const Member> Members() const = 0;
};

namespace detail {
template <class Class>
Class ClassOf(void (Class::*)(Invocation&));
}

/// Adapts a member function for a table row: `{L"Text", 1, Member::GetPut, 0, 0, Run<&Box::Text>}`.
template <auto Function>
void Run(Automation& self, Invocation& call) {
    using Class = decltype(detail::ClassOf(Function));
    (static_cast<Class&>(self).*Function)(call);
}

} // namespace tamvelo::com
