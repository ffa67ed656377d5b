#include "base/LayoutText.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/Text.h"

namespace tamvelo::base {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::wstring_view kHexDigits = L"0123456789ABCDEF";
constexpr std::wstring_view kStructural = L"\\]=#";

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

bool NeedsEscape(std::wstring_view text, std::size_t at) {
    const wchar_t c = text[at];
    const bool atEnd = at == 0 || at + 1 == text.size();
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF; // alone it would not survive UTF-8
    return c < 0x20 || c == 0x7F || surrogate || kStructural.find(c) != std::wstring_view::npos ||
           (c == L' ' && atEnd);
}

/// "[kind]" or "[kind name]", already trimmed and known to begin with the bracket.
std::optional<LayoutSection> ReadHeader(std::wstring_view line, int number) {
    if (line.find(L']') != line.size() - 1) {
        return std::nullopt;
    }
    const std::wstring_view inside = Trim(line.substr(1, line.size() - 2));
    const std::size_t space = inside.find(L' ');
    if (inside.empty()) {
        return std::nullopt;
    }
    LayoutSection section{
        .line = number, .kind = std::wstring(inside.substr(0, space)), .name = {}, .properties = {}};
    if (space != std::wstring_view::npos) {
        section.name = Trim(inside.substr(space));
    }
    return section;
}

std::optional<LayoutError> ReadLine(std::wstring_view line, int number,
                                    std::vector<LayoutSection>& sections) {
    if (line.empty()) {
        return std::nullopt;
    }
    if (line.starts_with(L'[')) {
        std::optional<LayoutSection> section = ReadHeader(line, number);
        if (!section) {
            return LayoutError{number, L"El encabezado de la sección no está bien formado."};
        }
        sections.push_back(std::move(*section));
        return std::nullopt;
    }
    const std::size_t equals = line.find(L'=');
    if (equals == 0 || equals == std::wstring_view::npos) {
        return LayoutError{number, L"Se esperaba una propiedad «nombre=valor»."};
    }
    sections.back().properties.push_back(
        {number, std::wstring(Trim(line.substr(0, equals))), std::wstring(Trim(line.substr(equals + 1)))});
    return std::nullopt;
}

LayoutError OutOfRange(const LayoutProperty& property, const LayoutField& field, std::wstring_view what) {
    return {property.line, L"«" + property.name + L"» debe " + std::wstring(what) + L" entre " +
                               std::to_wstring(field.least) + L" y " + std::to_wstring(field.most) + L"."};
}

std::optional<LayoutError> ReadField(const LayoutProperty& property, const LayoutField& field) {
    if (std::wstring* const* text = std::get_if<std::wstring*>(&field.target)) {
        std::optional<std::wstring> value = UnescapeLayoutText(property.value);
        if (!value) {
            return LayoutError{property.line, L"El valor de «" + property.name + L"» no está bien escrito."};
        }
        if (std::cmp_less(value->size(), field.least) || std::cmp_greater(value->size(), field.most)) {
            return OutOfRange(property, field, L"tener un número de caracteres");
        }
        **text = std::move(*value);
        return std::nullopt;
    }
    const std::optional<long> number = ParseLong(property.value);
    if (!number || *number < field.least || *number > field.most) {
        return OutOfRange(property, field, L"ser un número");
    }
    std::visit(Overloaded{[&](int* target) { *target = static_cast<int>(*number); },
                          [&](bool* target) { *target = *number != 0; }, [](std::wstring*) {}},
               field.target);
    return std::nullopt;
}

} // namespace

std::variant<std::vector<LayoutSection>, LayoutError> ParseLayoutText(std::string_view utf8,
                                                                      std::wstring_view title) {
    if (utf8.size() > kMaxLayoutBytes) {
        return LayoutError{0, L"El archivo es demasiado grande."};
    }
    if (utf8.starts_with(kByteOrderMark)) {
        utf8.remove_prefix(kByteOrderMark.size());
    }
    std::vector<LayoutSection> sections(1);
    for (int number = 1; number == 1 || !utf8.empty(); ++number) {
        const std::size_t end = std::min(utf8.find('\n'), utf8.size());
        const std::optional<std::wstring> line = FromUtf8(utf8.substr(0, end));
        utf8.remove_prefix(std::min(end + 1, utf8.size()));
        if (!line) {
            return LayoutError{number, L"El texto no es UTF-8 válido."};
        }
        const std::wstring_view trimmed = Trim(*line);
        if (number == 1) {
            if (trimmed != title) {
                return LayoutError{1, L"La primera línea debe ser «" + std::wstring(title) + L"»."};
            }
        } else if (std::optional<LayoutError> error = ReadLine(trimmed, number, sections)) {
            return *error;
        }
    }
    return sections;
}

std::wstring EscapeLayoutText(std::wstring_view text) {
    std::wstring escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!NeedsEscape(text, i)) {
            escaped += text[i];
            continue;
        }
        escaped += L'\\';
        for (int shift = 12; shift >= 0; shift -= 4) {
            escaped += kHexDigits[(static_cast<unsigned>(text[i]) >> shift) & 0xF];
        }
    }
    return escaped;
}

std::optional<std::wstring> UnescapeLayoutText(std::wstring_view text) {
    constexpr std::size_t kDigits = 4;
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\\') {
            plain += text[i];
            continue;
        }
        if (text.size() - i <= kDigits) {
            return std::nullopt;
        }
        unsigned code = 0;
        for (std::size_t last = i + kDigits; i < last;) {
            const std::size_t digit = kHexDigits.find(text[++i]);
            if (digit == std::wstring_view::npos) {
                return std::nullopt;
            }
            code = code * 16 + static_cast<unsigned>(digit);
        }
        plain += static_cast<wchar_t>(code);
    }
    return plain;
}

std::optional<LayoutError> ReadLayoutFields(const LayoutSection& section,
                                            std::span<const LayoutField> fields) {
    std::set<std::wstring_view> seen;
    for (const LayoutProperty& property : section.properties) {
        if (!seen.insert(property.name).second) {
            return LayoutError{property.line, L"La propiedad «" + property.name + L"» está repetida."};
        }
        const auto field = std::ranges::find(fields, property.name, &LayoutField::name);
        if (field != fields.end()) {
            if (std::optional<LayoutError> error = ReadField(property, *field)) {
                return error;
            }
        }
    }
    return std::nullopt;
}

std::wstring WriteLayoutSection(std::wstring_view kind, std::wstring_view name,
                                std::span<const LayoutField> fields) {
    std::wstring text;
    if (!kind.empty()) {
        text.append(L"\n[").append(kind).append(name.empty() ? L"" : L" ").append(name).append(L"]\n");
    }
    for (const LayoutField& field : fields) {
        const auto number = [&](int value) {
            return std::to_wstring(std::clamp(value, field.least, field.most));
        };
        text += field.name;
        text += L'=';
        text += std::visit(Overloaded{[&](const int* value) { return number(*value); },
                                      [&](const bool* value) { return number(*value); },
                                      [&](const std::wstring* value) {
                                          return EscapeLayoutText(std::wstring_view(*value).substr(
                                              0, static_cast<std::size_t>(field.most)));
                                      }},
                           field.target);
        text += L'\n';
    }
    return text;
}

} // namespace tamvelo::base
