#include "com/References.h"

#include <cstring>

#include "com/Variant.h"

namespace tamvelo::com {

namespace {

/// Bytes of a plain automation type that is stored by copying its content.
size_t SizeOf(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    default:
        return 0;
    }
}

} // namespace

bool StoreReference(VARIANT& reference, const VARIANT& value) noexcept {
    if (!(reference.vt & VT_BYREF) || !reference.byref) {
        return false;
    }
    auto* source = const_cast<VARIANT*>(&value); // read only: the system's declarations lack the const
    const VARTYPE type = reference.vt & static_cast<VARTYPE>(~VT_BYREF);
    if (type == VT_VARIANT) {
        return SUCCEEDED(VariantCopyInd(reference.pvarVal, source));
    }
    Variant converted;
    if (FAILED(VariantChangeType(converted.Address(), source, 0, type))) {
        return false;
    }
    if (const size_t size = SizeOf(type)) {
        std::memcpy(reference.byref, &converted.Get().lVal, size);
        return true;
    }
    if (type == VT_BSTR) {
        SysFreeString(*reference.pbstrVal);
        *reference.pbstrVal = converted.Detach().bstrVal;
        return true;
    }
    if (type == VT_DISPATCH || type == VT_UNKNOWN) {
        IUnknown* old = *reference.ppunkVal;
        *reference.ppunkVal = converted.Detach().punkVal;
        if (old) {
            old->Release();
        }
        return true;
    }
    return false;
}

} // namespace tamvelo::com
