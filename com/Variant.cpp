#include "com/Variant.h"

#include <cmath>
#include <new>
#include <utility>

#include "com/CallOut.h"
#include "com/Error.h"

namespace tamvelo::com {

namespace {

Error Overflow() { return {DISP_E_OVERFLOW, L"Desbordamiento: el valor no cabe en el tipo pedido."}; }

} // namespace

Bstr::Bstr(std::wstring_view text) : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (!m_text) {
        throw std::bad_alloc();
    }
}

Variant::Variant(short value) noexcept : Variant() {
    m_value.vt = VT_I2;
    m_value.iVal = value;
}

Variant::Variant(long value) noexcept : Variant() {
    m_value.vt = VT_I4;
    m_value.lVal = value;
}

Variant::Variant(double value) noexcept : Variant() {
    m_value.vt = VT_R8;
    m_value.dblVal = value;
}

Variant::Variant(bool value) noexcept : Variant() {
    m_value.vt = VT_BOOL;
    m_value.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(std::wstring_view value) : Variant() {
    m_value.bstrVal = Bstr(value).Detach();
    m_value.vt = VT_BSTR;
}

Variant::Variant(IDispatch* value) noexcept : Variant() {
    m_value.vt = VT_DISPATCH;
    m_value.pdispVal = value;
    if (value) {
        value->AddRef();
    }
}

Variant::Variant(const Variant& other) : Variant() { Check(VariantCopy(&m_value, other.In())); }

Variant& Variant::operator=(const Variant& other) {
    if (this != &other) {
        Check(VariantCopy(&m_value, other.In()));
    }
    return *this;
}

Variant& Variant::operator=(Variant&& other) noexcept {
    if (this != &other) {
        Clear(m_value);
        m_value = other.Detach();
    }
    return *this;
}

void Variant::Clear(VARIANT& value) noexcept {
    if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN || (value.vt & VT_ARRAY)) {
        const HostFloats floats;
        VariantClear(&value);
    } else {
        VariantClear(&value);
    }
}

Variant Variant::Date(DATE value) noexcept {
    Variant made;
    made.m_value.vt = VT_DATE;
    made.m_value.date = value;
    return made;
}

Variant Variant::Null() noexcept {
    Variant made;
    made.m_value.vt = VT_NULL;
    return made;
}

Variant Variant::Missing() noexcept {
    Variant made;
    made.m_value.vt = VT_ERROR;
    made.m_value.scode = DISP_E_PARAMNOTFOUND;
    return made;
}

Variant Variant::CopyOf(const VARIANT& value) {
    Variant made;
    Check(VariantCopyInd(&made.m_value, const_cast<VARIANT*>(&value)));
    return made;
}

Variant Variant::Attach(VARIANT& value) noexcept {
    Variant made;
    made.m_value = value;
    VariantInit(&value);
    return made;
}

VARIANT Variant::Detach() noexcept {
    const VARIANT given = m_value;
    VariantInit(&m_value);
    return given;
}

Variant Variant::As(VARTYPE type) const {
    const bool integer = type == VT_I2 || type == VT_I4;
    if (integer && (IsObject() || m_value.vt == VT_R4 || m_value.vt == VT_DATE)) {
        return As(VT_R8).As(type);
    }
    if (integer && m_value.vt == VT_R8 && std::isnan(m_value.dblVal)) {
        throw Overflow(); // the system takes it for some integer
    }
    Variant made;
    const auto convert = [&] { return VariantChangeType(&made.m_value, In(), VARIANT_LOCALBOOL, type); };
    if (IsObject()) {
        SetErrorInfo(0, nullptr); // asked for its value: what is left there from before is not that call's
    }
    const HRESULT result = IsObject() ? CallOut(convert) : convert();
    if (result == DISP_E_OVERFLOW) {
        throw Overflow();
    }
    if (FAILED(result)) {
        throw Error(result, L"No coinciden los tipos.");
    }
    return made;
}

std::wstring Variant::ToText() const {
    if (Absent()) {
        return {};
    }
    const Variant text = m_value.vt == VT_BSTR ? *this : As(VT_BSTR);
    const BSTR raw = text.m_value.bstrVal;
    return raw ? std::wstring(raw, SysStringLen(raw)) : std::wstring();
}

bool Variant::ToBool() const {
    return !Absent() &&
           (m_value.vt == VT_BOOL ? m_value.boolVal : As(VT_BOOL).m_value.boolVal) != VARIANT_FALSE;
}

long Variant::ToLong() const { return m_value.vt == VT_I4 ? m_value.lVal : As(VT_I4).m_value.lVal; }

short Variant::ToShort() const { return m_value.vt == VT_I2 ? m_value.iVal : As(VT_I2).m_value.iVal; }

double Variant::ToDouble() const { return m_value.vt == VT_R8 ? m_value.dblVal : As(VT_R8).m_value.dblVal; }

DATE Variant::ToDate() const { return m_value.vt == VT_DATE ? m_value.date : As(VT_DATE).m_value.date; }

ComPtr<IDispatch> Variant::ToObject() const {
    ComPtr<IDispatch> object;
    if (Absent()) {
        return object;
    }
    if (!IsObject()) {
        throw Error(DISP_E_TYPEMISMATCH, L"Se esperaba un objeto.");
    }
    if (m_value.vt == VT_DISPATCH) {
        return m_value.pdispVal;
    }
    if (m_value.punkVal) {
        object = Query<IDispatch>(m_value.punkVal);
        Check(object ? S_OK : E_NOINTERFACE, L"El objeto no es de automatización.");
    }
    return object;
}

} // namespace tamvelo::com
