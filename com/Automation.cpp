#include "com/Automation.h"

#include "com/CallOut.h"
#include "com/References.h"

namespace tamvelo::com {

namespace {

bool SameName(const wchar_t* a, const wchar_t* b) {
    return CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL;
}

} // namespace

Invocation::Invocation(DISPPARAMS& parameters, WORD flags)
    : m_parameters(parameters), m_put((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
    m_arguments.reserve(parameters.cArgs);
    for (UINT i = parameters.cArgs; i-- > 0;) {
        m_arguments.push_back(Variant::CopyOf(parameters.rgvarg[i]));
    }
}

const Variant& Invocation::operator[](size_t index) const {
    static const Variant missing = Variant::Missing();
    return index < m_arguments.size() ? m_arguments[index] : missing;
}

void Invocation::WriteBack(size_t index, const Variant& value) {
    if (index < m_arguments.size()) {
        StoreReference(m_parameters.rgvarg[m_parameters.cArgs - 1 - index], value.Get());
    }
}

HRESULT Automation::GetTypeInfoCount(UINT* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

HRESULT Automation::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) {
    if (info) {
        *info = nullptr;
    }
    return DISP_E_BADINDEX;
}

HRESULT Automation::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                  DISPID* ids) {
    if (!names || !ids || count == 0) {
        return E_INVALIDARG;
    }
    std::fill_n(ids, count, DISPID_UNKNOWN);
    for (const Member& member : Members()) {
        if (SameName(member.name, names[0])) {
            ids[0] = member.id;
            break;
        }
    }
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK; // arguments have no names here
}

HRESULT Automation::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                           DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown, UINT* /*wrong*/) {
    const FloatGuard floats;
    const Watch outermost; // the caller's window is the caller's concern
    if (!parameters) {
        return E_INVALIDARG;
    }
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const bool named = parameters->cNamedArgs > 0;
    if (named &&
        !(put && parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT)) {
        return DISP_E_NONAMEDARGS;
    }
    for (const Member& member : Members()) {
        if (member.id != id || (put && !(member.kind & Member::Put)) ||
            (!put && member.kind == Member::Put)) {
            continue;
        }
        const UINT given = parameters->cArgs - (put ? 1U : 0U);
        if (parameters->cArgs < (put ? 1U : 0U) || given < member.least || given > member.most) {
            return DISP_E_BADPARAMCOUNT;
        }
        const ComPtr<IDispatch> alive(this); // the member may drop the last outside reference
        try {
            Invocation call(*parameters, flags);
            member.run(*this, call);
            if (result) {
                *result = call.m_result.Detach();
            }
            return S_OK;
        } catch (...) {
            return FillExcepInfo(CurrentError(), thrown);
        }
    }
    return DISP_E_MEMBERNOTFOUND;
}

} // namespace tamvelo::com
