#include "grid/CellText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <initializer_list>

#include "com/Error.h"

namespace tamvelo::grid {

namespace {

using com::Variant;

constexpr DATE kFirstDay = -657434; // 1 January 100
constexpr DATE kLastDay = 2958466;  // after 31 December 9999
constexpr double kHalfSecond = 0.5 / 86400;

template <auto System>
std::wstring Written(const SYSTEMTIME& time, DWORD how) {
    wchar_t text[64];
    return System(LOCALE_USER_DEFAULT, how, &time, nullptr, text, ARRAYSIZE(text)) > 0 ? text : L"";
}

/// Day 0 stands for "no day": such a value is a time.
std::wstring FormatDate(DATE value, CellKind kind) {
    SYSTEMTIME time{};
    if (!(value > kFirstDay && value < kLastDay) || !VariantTimeToSystemTime(value, &time)) {
        return L"#Fecha";
    }
    const bool hasTime = std::fabs(value - std::trunc(value)) >= kHalfSecond;
    if (kind == CellKind::Time || (hasTime && std::trunc(value) == 0)) {
        return Written<GetTimeFormatW>(time, 0);
    }
    const std::wstring date = Written<GetDateFormatW>(time, DATE_SHORTDATE);
    return hasTime ? date + L' ' + Written<GetTimeFormatW>(time, 0) : date;
}

std::wstring FormatMoney(const VARIANT& value) {
    Variant plain;
    // The number formatter reads a plain number with a decimal point, whatever the locale.
    if (FAILED(VariantChangeTypeEx(plain.Address(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0,
                                   VT_BSTR))) {
        return Variant::CopyOf(value).ToText();
    }
    wchar_t text[128];
    const int length =
        GetNumberFormatW(LOCALE_USER_DEFAULT, 0, plain.Get().bstrVal, nullptr, text, ARRAYSIZE(text));
    return length > 0 ? std::wstring(text) : plain.ToText();
}

/// Fifteen digits with the user's decimal sign, as the system's own conversion writes them, which takes ten
/// times as long; it still writes the very large and the very small.
std::wstring FormatDouble(double value) {
    std::array<char, 32> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value + 0.0, // no minus for zero
                      std::chars_format::general, 15);
    std::wstring text(digits.data(), end.ptr);
    if (text.find_first_not_of(L"-.0123456789") != std::wstring::npos) {
        return Variant(value).ToText();
    }
    const size_t point = text.find(L'.');
    if (point != std::wstring::npos) {
        wchar_t sign[8];
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sign, ARRAYSIZE(sign));
        text.replace(point, 1, sign);
    }
    return text;
}

/// By ADO's number for a type; up to 31 these are the system's for a value.
constexpr auto kKinds = [] {
    std::array<CellKind, 256> kinds{};
    const auto are = [&](CellKind kind, std::initializer_list<size_t> types) {
        for (const size_t type : types) {
            kinds[type] = kind;
        }
    };
    are(CellKind::Number, {2, 3, 4, 5, 14, 16, 17, 18, 19, 20, 21, 131, 139});
    are(CellKind::Money, {6});
    are(CellKind::Date, {7, 133, 135});
    are(CellKind::Time, {134});
    are(CellKind::Check, {11});
    are(CellKind::Text, {8, 72, 129, 130, 200, 201, 202, 203}); // 72 is a unique identifier
    are(CellKind::Binary, {128, 204, 205});
    return kinds;
}();

} // namespace

CellKind KindOfField(long type) {
    return type >= 0 && static_cast<size_t>(type) < kKinds.size() ? kKinds[static_cast<size_t>(type)]
                                                                  : CellKind::Any;
}

CellKind KindOfValue(const VARIANT& value, CellKind kind) {
    if (value.vt & (VT_ARRAY | VT_BYREF)) {
        return CellKind::Binary;
    }
    const CellKind own = value.vt == VT_INT || value.vt == VT_UINT ? CellKind::Number : KindOfField(value.vt);
    const bool money = kind == CellKind::Money;
    switch (own) {
    case CellKind::Check:
    case CellKind::Money:
        return own;
    case CellKind::Date:
        return kind == CellKind::Time ? kind : own;
    case CellKind::Number: // databases without booleans and money keep them as numbers
        return kind == CellKind::Check || money ? kind : own;
    default:
        return kind == CellKind::Number || money ? kind : CellKind::Text;
    }
}

std::wstring Format(const VARIANT& value, CellKind kind) {
    try {
        const bool plain = kind != CellKind::Check && kind != CellKind::Money;
        switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return {};
        case VT_BSTR:
            return value.bstrVal ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal)) : std::wstring();
        case VT_I4:
            if (plain) {
                return std::to_wstring(value.lVal);
            }
            break;
        case VT_R8:
            if (plain) {
                return FormatDouble(value.dblVal);
            }
            break;
        case VT_ERROR:
            return value.scode == DISP_E_PARAMNOTFOUND ? L"" : kErrorText;
        case VT_DATE:
            return FormatDate(value.date, kind);
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return L"#Objeto";
        default:
            break;
        }
        switch (KindOfValue(value, kind)) {
        case CellKind::Binary:
            return L"#Binario";
        case CellKind::Check:
            return Variant::CopyOf(value).ToBool() ? L"Sí" : L"No";
        case CellKind::Money:
            return FormatMoney(value);
        default:
            return Variant::CopyOf(value).ToText();
        }
    } catch (const com::Error&) {
        return kErrorText;
    }
}

std::wstring Grouped(long number) {
    std::wstring digits = std::to_wstring(number);
    if (digits.size() > 4) {
        wchar_t mark[8] = L"";
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, mark, ARRAYSIZE(mark));
        for (size_t at = digits.size(); at > 3;) {
            at -= 3;
            digits.insert(at, mark);
        }
    }
    return digits;
}

} // namespace tamvelo::grid
