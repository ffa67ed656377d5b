#include "grid/CellText.h"

#include <array>
#include <charconv>
#include <cmath>

#include "com/Error.h"

namespace tamvelo::grid {

namespace {

using com::Variant;

constexpr DATE kFirstDay = -657434; // 1 January 100
constexpr DATE kLastDay = 2958466;  // after 31 December 9999
constexpr double kHalfSecond = 0.5 / 86400;

std::wstring FromDate(const SYSTEMTIME& time) {
    wchar_t text[64];
    return GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, text, ARRAYSIZE(text)) > 0
               ? text
               : L"";
}

std::wstring FromTime(const SYSTEMTIME& time) {
    wchar_t text[64];
    return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, text, ARRAYSIZE(text)) > 0 ? text : L"";
}

/// Day 0 stands for "no day": such a value is a time.
std::wstring FormatDate(DATE value, CellKind kind) {
    SYSTEMTIME time{};
    if (!(value > kFirstDay && value < kLastDay) || !VariantTimeToSystemTime(value, &time)) {
        return L"#Fecha";
    }
    const bool hasTime = std::fabs(value - std::trunc(value)) >= kHalfSecond;
    if (kind == CellKind::Time || (hasTime && std::trunc(value) == 0)) {
        return FromTime(time);
    }
    return hasTime ? FromDate(time) + L' ' + FromTime(time) : FromDate(time);
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

} // namespace

CellKind KindOfField(long type) {
    switch (type) {
    case 2:  // small integer
    case 3:  // integer
    case 4:  // single
    case 5:  // double
    case 14: // decimal
    case 16: // signed and unsigned integers of 1 to 8 bytes
    case 17:
    case 18:
    case 19:
    case 20:
    case 21:
    case 131: // numeric
    case 139:
        return CellKind::Number;
    case 6:
        return CellKind::Money;
    case 7:
    case 133:
    case 135:
        return CellKind::Date;
    case 134:
        return CellKind::Time;
    case 11:
        return CellKind::Check;
    case 8:  // strings, fixed, variable and long
    case 72: // unique identifier
    case 129:
    case 130:
    case 200:
    case 201:
    case 202:
    case 203:
        return CellKind::Text;
    case 128:
    case 204:
    case 205:
        return CellKind::Binary;
    default:
        return CellKind::Any;
    }
}

CellKind KindOfValue(const VARIANT& value, CellKind kind) {
    if (value.vt & (VT_ARRAY | VT_BYREF)) {
        return CellKind::Binary;
    }
    switch (value.vt) {
    case VT_BOOL:
        return CellKind::Check;
    case VT_DATE:
        return kind == CellKind::Time ? kind : CellKind::Date;
    case VT_CY:
        return CellKind::Money;
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UI8:
    case VT_UINT:
    case VT_R4:
    case VT_R8:
    case VT_DECIMAL:
        // Databases without booleans and money keep them as numbers.
        return kind == CellKind::Check || kind == CellKind::Money ? kind : CellKind::Number;
    default:
        return kind == CellKind::Number || kind == CellKind::Money ? kind : CellKind::Text;
    }
}

std::wstring Format(const VARIANT& value, CellKind kind) {
    try {
        switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return {};
        case VT_BSTR:
            return value.bstrVal ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal)) : std::wstring();
        case VT_I4:
            if (kind != CellKind::Check && kind != CellKind::Money) {
                return std::to_wstring(value.lVal);
            }
            break;
        case VT_R8:
            if (kind != CellKind::Check && kind != CellKind::Money) {
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
