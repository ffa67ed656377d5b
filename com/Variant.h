#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "com/ComPtr.h"

namespace tamvelo::com {

/// An owned automation string; exists so that no raw BSTR is owned anywhere else.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text);
    ~Bstr() { SysFreeString(m_text); }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;

    BSTR Get() const { return m_text; }
    /// The address for a callee that fills or replaces the string.
    BSTR* Address() { return &m_text; }
    BSTR Detach() { return std::exchange(m_text, nullptr); }
    std::wstring_view View() const { return m_text ? std::wstring_view(m_text, SysStringLen(m_text)) : L""; }

private:
    BSTR m_text = nullptr;
};

/// An owned automation value. Conversions throw com::Error (type mismatch, overflow) and follow the user's
/// locale.
class Variant {
public:
    Variant() noexcept { VariantInit(&m_value); }
    explicit Variant(short value) noexcept;
    explicit Variant(long value) noexcept;
    explicit Variant(double value) noexcept;
    explicit Variant(bool value) noexcept;
    explicit Variant(std::wstring_view value);
    explicit Variant(const wchar_t* value) : Variant(std::wstring_view(value)) {}
    explicit Variant(IDispatch* value) noexcept;
    ~Variant() { Clear(m_value); }
    Variant(const Variant& other);
    Variant& operator=(const Variant& other);
    Variant(Variant&& other) noexcept : m_value(other.m_value) { VariantInit(&other.m_value); }
    Variant& operator=(Variant&& other) noexcept;

    /// An automation date: days since 30 December 1899.
    static Variant Date(DATE value) noexcept;
    static Variant Null() noexcept;
    /// What stands for an omitted optional argument.
    static Variant Missing() noexcept;
    /// A copy with every level of reference taken off.
    static Variant CopyOf(const VARIANT& value);
    /// Takes over what a callee allocated.
    static Variant Attach(VARIANT& value) noexcept;

    const VARIANT& Get() const { return m_value; }
    /// For the many system functions that read a value but do not say const.
    VARIANT* In() const { return const_cast<VARIANT*>(&m_value); }
    VARTYPE Type() const { return m_value.vt; }
    /// The address for a callee that reads, fills or replaces the value.
    VARIANT* Address() { return &m_value; }
    VARIANT Detach() noexcept;

    bool IsEmpty() const { return m_value.vt == VT_EMPTY; }
    bool IsNull() const { return m_value.vt == VT_NULL; }
    bool IsMissing() const { return m_value.vt == VT_ERROR && m_value.scode == DISP_E_PARAMNOTFOUND; }
    bool IsObject() const { return m_value.vt == VT_DISPATCH || m_value.vt == VT_UNKNOWN; }

    /// Null, Empty and a missing value read as "".
    std::wstring ToText() const;
    /// Null, Empty and a missing value read as False.
    bool ToBool() const;
    long ToLong() const;
    short ToShort() const;
    double ToDouble() const;
    DATE ToDate() const;
    /// The automation object, or null for Nothing, Null, Empty and a missing value.
    ComPtr<IDispatch> ToObject() const;

private:
    /// The last release of an object runs the host's code, with the host's floating-point words.
    static void Clear(VARIANT& value) noexcept;
    bool Absent() const { return IsEmpty() || IsNull() || IsMissing(); }
    Variant As(VARTYPE type) const;

    VARIANT m_value;
};

} // namespace tamvelo::com
