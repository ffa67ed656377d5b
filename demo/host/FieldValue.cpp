#include "demo/host/FieldValue.h"

#include <algorithm>

#include "base/Text.h"
#include "com/Error.h"
#include "demo/data/Values.h"

namespace tamvelo::demo {

namespace {

using com::Variant;

constexpr std::int64_t kCurrencyPerCent = 100; // Currency counts in ten-thousandths

struct TypeInfo {
    long adoType;
    long size; // 0: that of the column
};

constexpr TypeInfo Info(Type type) {
    switch (type) {
    case Type::Integer:
        return {3, 4};
    case Type::Money:
        return {6, 8};
    case Type::Date:
        return {7, 8};
    case Type::Boolean:
        return {11, 2};
    default:
        return {202, 0};
    }
}

Variant Converted(const Variant& value, VARTYPE type) {
    Variant converted;
    com::Check(VariantChangeType(converted.Address(), value.In(), 0, type));
    return converted;
}

/// A day of the file, "2026-11-21". One that is none is shown as it is.
Variant DayToVariant(const std::wstring& text) {
    const auto part = [&](std::size_t start, std::size_t length) {
        return static_cast<WORD>(
            base::ParseLong(text.substr(std::min(start, text.size()), length)).value_or(0));
    };
    SYSTEMTIME day{};
    day.wYear = part(0, 4);
    day.wMonth = part(5, 2);
    day.wDay = part(8, 2);
    DATE date = 0;
    return SystemTimeToVariantTime(&day, &date) ? Variant::Date(date) : Variant(text);
}

Value DayFromVariant(const Column& column, DATE date) {
    SYSTEMTIME day;
    if (!VariantTimeToSystemTime(date, &day)) {
        throw DataError(L"El valor de " + std::wstring(column.caption) + L" no es una fecha.");
    }
    wchar_t text[16];
    wsprintfW(text, L"%04u-%02u-%02u", day.wYear, day.wMonth, day.wDay);
    return Value(text);
}

} // namespace

Variant ToVariant(const Column& column, const Value& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return column.type == Type::Date ? DayToVariant(*text) : Variant(*text);
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number == nullptr) {
        return Variant::Null();
    }
    if (column.type == Type::Boolean) {
        return Variant(*number != 0);
    }
    if (column.type != Type::Money) {
        return Variant(static_cast<long>(*number));
    }
    Variant money;
    money.Address()->vt = VT_CY;
    money.Address()->cyVal.int64 = *number * kCurrencyPerCent;
    return money;
}

Value FromVariant(const Column& column, const Variant& value) {
    if (value.IsEmpty() || value.IsNull() || value.IsMissing()) {
        return {};
    }
    if (value.Type() == VT_BSTR) {
        const std::optional<Value> typed = ParseTyped(column.type, value.ToText());
        if (!typed) {
            throw DataError(L"El valor de " + std::wstring(column.caption) + L" no es válido.");
        }
        return *typed;
    }
    switch (column.type) {
    case Type::Integer:
        return std::int64_t{value.ToLong()};
    case Type::Boolean:
        return std::int64_t{value.ToBool()};
    case Type::Money:
        return Converted(value, VT_CY).Get().cyVal.int64 / kCurrencyPerCent;
    case Type::Date:
        return DayFromVariant(column, value.ToDate());
    default:
        return value.ToText();
    }
}

long AdoType(const Column& column) { return Info(column.type).adoType; }

long DefinedSize(const Column& column) {
    const long size = Info(column.type).size;
    return size != 0 ? size : column.maxLength;
}

} // namespace tamvelo::demo
