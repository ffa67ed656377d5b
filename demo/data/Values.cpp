#include "demo/data/Values.h"

#include <chrono>

#include "base/Text.h"
#include "demo/data/SpanishSql.h"

namespace tamvelo::demo {

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// Up to `most` digits, at least one; nothing for any other text.
std::optional<std::int64_t> Digits(std::wstring_view text, std::size_t most) {
    if (text.empty() || text.size() > most) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    for (const wchar_t c : text) {
        if (!IsDigit(c)) {
            return std::nullopt;
        }
        number = number * 10 + (c - L'0');
    }
    return number;
}

std::optional<std::int64_t> ParseBoolean(std::wstring_view text) {
    if (text.starts_with(L"-1")) { // automation's True, as the lists of yes/no fields have it: "-1 - Sí"
        text.remove_prefix(1);
    }
    if (text == L"0" || text == L"1" || text.starts_with(L"0 ") || text.starts_with(L"1 ")) {
        return text[0] - L'0';
    }
    const std::wstring folded = Fold(text);
    if (folded == L"si" || folded == L"no") {
        return folded == L"si" ? 1 : 0;
    }
    return std::nullopt;
}

std::optional<Value> AsValue(std::optional<std::int64_t> number) {
    return number ? std::make_optional<Value>(*number) : std::nullopt;
}

} // namespace

std::optional<std::int64_t> ParseMoney(std::wstring_view text) {
    constexpr std::size_t kMostDigits = 15;
    text = base::Trim(text);
    const bool negative = text.starts_with(L'-');
    text.remove_prefix(negative ? 1 : 0);

    // The decimal mark is the comma; a lone dot with one or two figures after it is the keypad's.
    std::size_t mark = text.find(L',');
    const std::size_t dot = text.rfind(L'.');
    if (mark == std::wstring_view::npos && dot != std::wstring_view::npos && text.find(L'.') == dot &&
        text.size() - dot <= 3) {
        mark = dot;
    }
    std::wstring whole;
    const auto groups = base::Split(text.substr(0, mark), L".");
    for (const std::wstring& group : groups) {
        const bool first = whole.empty();
        if (group.empty() || (groups.size() > 1 && (first ? group.size() > 3 : group.size() != 3))) {
            return std::nullopt;
        }
        whole += group;
    }
    std::wstring cents = mark == std::wstring_view::npos ? L"0" : std::wstring(text.substr(mark + 1));
    cents.resize(cents.size() == 1 ? 2 : cents.size(), L'0');
    const auto euros = Digits(whole, kMostDigits);
    const auto rest = Digits(cents, 2);
    if (!euros || !rest) {
        return std::nullopt;
    }
    const std::int64_t amount = *euros * 100 + *rest;
    return negative ? -amount : amount;
}

std::optional<std::wstring> ParseDate(std::wstring_view text) {
    const auto parts = base::Split(base::Trim(text), L"/-");
    if (parts.size() != 3 || (parts[2].size() != 2 && parts[2].size() != 4)) {
        return std::nullopt;
    }
    const auto day = Digits(parts[0], 2);
    const auto month = Digits(parts[1], 2);
    const auto year = Digits(parts[2], 4);
    if (!day || !month || !year) {
        return std::nullopt;
    }
    const auto fullYear = static_cast<int>(parts[2].size() == 2 ? *year + 2000 : *year);
    const std::chrono::year_month_day date{std::chrono::year{fullYear},
                                           std::chrono::month{static_cast<unsigned>(*month)},
                                           std::chrono::day{static_cast<unsigned>(*day)}};
    if (!date.ok()) {
        return std::nullopt;
    }
    const auto padded = [](std::int64_t number, int width) {
        return std::to_wstring(number + width).substr(1);
    };
    return padded(fullYear, 10000) + L'-' + padded(*month, 100) + L'-' + padded(*day, 100);
}

std::optional<Value> ParseTyped(Type type, std::wstring_view text) {
    const std::wstring_view trimmed = base::Trim(text);
    if (trimmed.empty()) {
        return std::make_optional<Value>();
    }
    switch (type) {
    case Type::Text:
        return std::make_optional<Value>(std::wstring(trimmed));
    case Type::Integer:
        return AsValue(base::ParseLong(trimmed));
    case Type::Money:
        return AsValue(ParseMoney(trimmed));
    case Type::Date:
        if (auto date = ParseDate(trimmed)) {
            return std::make_optional<Value>(std::move(*date));
        }
        return std::nullopt;
    case Type::Boolean:
        return AsValue(ParseBoolean(trimmed));
    }
    return std::nullopt;
}

std::wstring ShowCount(std::int64_t number) {
    std::wstring figures = std::to_wstring(number);
    const std::size_t first = number < 0 ? 1 : 0;
    for (std::size_t at = figures.size(); at > first + 3;) {
        figures.insert(at -= 3, 1, L'.');
    }
    return figures;
}

std::wstring ShowValue(Type type, const Value& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return type == Type::Date && text->size() == 10 // from 2024-02-29
                   ? text->substr(8) + L'/' + text->substr(5, 2) + L'/' + text->substr(0, 4)
                   : *text;
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number == nullptr) {
        return {};
    }
    if (type == Type::Money) {
        const std::int64_t cents = *number < 0 ? -*number : *number;
        const std::wstring rest = std::to_wstring(100 + cents % 100).substr(1);
        return (*number < 0 ? L"-" : L"") + ShowCount(cents / 100) + L',' + rest;
    }
    return type == Type::Boolean ? (*number != 0 ? L"Sí" : L"No") : std::to_wstring(*number);
}

bool Fits(const Column& column, const Value& value) {
    if (std::holds_alternative<std::monostate>(value)) {
        return true;
    }
    const bool isText = column.type == Type::Text || column.type == Type::Date;
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return isText && text->size() <= static_cast<std::size_t>(column.maxLength);
    }
    const auto number = std::get<std::int64_t>(value);
    return !isText && (column.type != Type::Boolean || number == 0 || number == 1);
}

bool ValidaKey(const Column& column, wchar_t key) {
    constexpr wchar_t kFirstPrintable = L' ';
    if (key < kFirstPrintable || column.type == Type::Text || IsDigit(key)) {
        return true;
    }
    switch (column.type) {
    case Type::Integer:
        return key == L'-';
    case Type::Money:
        return key == L'-' || key == L',' || key == L'.';
    case Type::Date:
        return key == L'-' || key == L'/';
    default:
        return std::wstring_view(L"sSíÍiInNoO").find(key) != std::wstring_view::npos;
    }
}

bool ValidaValue(const Column& column, std::wstring_view text) {
    return ParseTyped(column.type, text).has_value();
}

int ValidaDefinedSize(const Column& column) { return column.maxLength; }

} // namespace tamvelo::demo
