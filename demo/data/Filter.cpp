#include "demo/data/Filter.h"

#include <algorithm>

#include "base/FilterText.h"
#include "base/Text.h"
#include "demo/data/SpanishSql.h"
#include "demo/data/Values.h"

namespace tamvelo::demo {

namespace {

constexpr wchar_t kAnyChar = base::kAnyText[0];

std::wstring Quoted(std::wstring_view text) {
    std::wstring quoted = L"'";
    for (const wchar_t c : text) {
        quoted.append(c == L'\'' ? 2 : 1, c);
    }
    return quoted + L'\'';
}

/// The condition that the text is the field's, or stands anywhere in it. SQL's own wildcards in it lose their
/// meaning, stars get theirs.
std::wstring Matches(std::wstring_view field, std::wstring_view text, bool anywhere) {
    const std::wstring folded = L"sin_acentos(" + std::wstring(field) + L')';
    if (!anywhere && text.find(kAnyChar) == std::wstring_view::npos) {
        return folded + L" = " + Quoted(Fold(text));
    }
    std::wstring pattern;
    bool escaped = false;
    for (const wchar_t c : Fold(text)) {
        const bool wildcard = c == L'%' || c == L'_' || c == L'\\';
        escaped = escaped || wildcard;
        pattern += wildcard ? L"\\" : L"";
        pattern += c == kAnyChar ? L'%' : c;
    }
    return folded + L" Like " + Quoted(anywhere ? L'%' + pattern + L'%' : pattern) +
           (escaped ? L" Escape '\\'" : L"");
}

std::wstring_view WithoutStars(std::wstring_view text) {
    text = base::Trim(text);
    const std::size_t first = std::min(text.find_first_not_of(kAnyChar), text.size());
    text.remove_prefix(first);
    text = text.substr(0, text.find_last_not_of(kAnyChar) + 1);
    return base::Trim(text);
}

/// How SQL writes the value. Money goes through importe, so that the condition reads as it was typed.
std::wstring Literal(Type type, const Value& value, std::wstring_view typed) {
    if (type == Type::Money) {
        return L"importe(" + Quoted(typed) + L')';
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr ? std::to_wstring(*number) : Quoted(std::get<std::wstring>(value));
}

} // namespace

std::wstring BuildFilter(const Column& column, std::wstring_view typed, Bound bound) {
    constexpr const wchar_t* kComparisons[] = {L" = ", L" >= ", L" <= "};
    const std::wstring_view text = WithoutStars(typed);
    const bool everyRow = column.type == Type::Boolean && text.starts_with(L'2'); // the list's " 2 - Todos"
    if (text.empty() || everyRow) {
        return {};
    }
    if (column.type == Type::Text && bound <= Bound::Equal) {
        const bool anywhere = bound == Bound::Anywhere;
        return Matches(column.field, anywhere ? text : base::Trim(typed), anywhere);
    }
    const std::optional<Value> value = ParseTyped(column.type, text);
    if (!value) {
        throw DataError(L"«" + std::wstring(text) + L"» no es un valor válido para " +
                        std::wstring(column.caption) + L'.');
    }
    return std::wstring(column.field) + kComparisons[std::max(static_cast<int>(bound), 0)] +
           Literal(column.type, *value, text);
}

std::wstring BuildFilterAny(const Column& column, std::span<const std::wstring> typed) {
    std::wstring any;
    for (const std::wstring& text : typed) {
        const std::wstring fragment = BuildFilter(column, text, Bound::Equal);
        if (!fragment.empty()) {
            any += (any.empty() ? L"" : L" Or ") + fragment;
        }
    }
    return any.empty() ? any : L'(' + any + L')';
}

} // namespace tamvelo::demo
