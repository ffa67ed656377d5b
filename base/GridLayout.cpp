#include "base/GridLayout.h"

#include <algorithm>
#include <array>
#include <map>

#include "base/Text.h"

namespace tamvelo::base {

namespace {

constexpr std::wstring_view kTitle = L"Tamvelo cuadrícula 1";
constexpr std::wstring_view kFontSection = L"fuente";
constexpr std::wstring_view kColumnSection = L"columna";
constexpr wchar_t kOccurrenceMark = L'#';

std::array<LayoutField, 1> FieldsOf(GridLayout& layout) { return {{{L"ppp", &layout.dpi, 48, 960}}}; }

std::array<LayoutField, 5> FieldsOf(GridLayout::Font& font) {
    return {{
        {L"nombre", &font.face, 0, 31},
        {L"décimas", &font.tenthsOfPoint, 40, 960},
        {L"negrita", &font.bold},
        {L"cursiva", &font.italic},
        {L"subrayado", &font.underline},
    }};
}

std::array<LayoutField, 3> FieldsOf(GridLayout::Column& column) {
    return {{
        {L"orden", &column.order, 0, static_cast<int>(kMaxLayoutItems) - 1},
        {L"ancho", &column.width, 0, 10000},
        {L"visible", &column.visible},
    }};
}

struct ColumnKey {
    std::wstring field;
    std::size_t occurrence = 1;
};

/// "CODIGO" or, for the second column of that name, "CODIGO#2".
std::optional<ColumnKey> ReadKey(std::wstring_view name) {
    const std::size_t mark = name.find(kOccurrenceMark);
    std::optional<std::wstring> field = UnescapeLayoutText(Trim(name.substr(0, mark)));
    if (!field) {
        return std::nullopt;
    }
    ColumnKey key{std::move(*field), 1};
    if (mark != std::wstring_view::npos) {
        const std::optional<long> occurrence = ParseLong(name.substr(mark + 1));
        if (!occurrence || *occurrence < 2) {
            return std::nullopt;
        }
        key.occurrence = static_cast<std::size_t>(*occurrence);
    }
    return key;
}

/// Adds columns one by one and numbers those that share a name.
class ColumnReader {
public:
    explicit ColumnReader(std::vector<GridLayout::Column>& columns) : m_columns(columns) {}

    std::optional<LayoutError> Add(const LayoutSection& section) {
        const std::optional<ColumnKey> key = ReadKey(section.name);
        if (!key) {
            return LayoutError{section.line, L"El nombre de la columna no está bien escrito."};
        }
        if (key->field.size() > kMaxLayoutName) {
            return std::nullopt; // as none is written
        }
        if (m_columns.size() == kMaxLayoutItems) {
            return LayoutError{section.line, L"Hay demasiadas columnas."};
        }
        std::size_t& count = m_counts[key->field];
        if (key->occurrence <= count) {
            return LayoutError{section.line, L"La columna está repetida."};
        }
        if (key->occurrence > count + 1) {
            return LayoutError{section.line, L"Falta la columna anterior del mismo nombre."};
        }
        ++count;
        GridLayout::Column& column = m_columns.emplace_back();
        column.field = key->field;
        return ReadLayoutFields(section, FieldsOf(column));
    }

private:
    std::vector<GridLayout::Column>& m_columns;
    std::map<std::wstring, std::size_t> m_counts;
};

} // namespace

std::string FormatGridLayout(const GridLayout& layout) {
    GridLayout copy = layout;
    std::wstring text(kTitle);
    text += L'\n';
    text += WriteLayoutSection({}, {}, FieldsOf(copy));
    text += WriteLayoutSection(kFontSection, {}, FieldsOf(copy.font));

    // What is written can be read: a column that would make the file too large is left out, and with it those
    // of its name that follow, which are larger.
    std::string utf8 = ToUtf8(text);
    std::map<std::wstring, std::size_t> counts;
    copy.columns.resize(std::min(copy.columns.size(), kMaxLayoutItems));
    for (GridLayout::Column& column : copy.columns) {
        if (column.field.size() > kMaxLayoutName) {
            continue;
        }
        std::wstring name = EscapeLayoutText(column.field);
        const std::size_t occurrence = ++counts[name];
        if (occurrence > 1) {
            name += kOccurrenceMark + std::to_wstring(occurrence);
        }
        const std::string section = ToUtf8(WriteLayoutSection(kColumnSection, name, FieldsOf(column)));
        if (utf8.size() + section.size() <= kMaxLayoutBytes) {
            utf8 += section;
        }
    }
    return utf8;
}

std::variant<GridLayout, LayoutError> ParseGridLayout(std::string_view utf8) {
    const auto parsed = ParseLayoutText(utf8, kTitle);
    if (const auto* error = std::get_if<LayoutError>(&parsed)) {
        return *error;
    }
    GridLayout layout;
    ColumnReader columns(layout.columns);
    bool fontSeen = false;
    for (const LayoutSection& section : std::get<0>(parsed)) {
        std::optional<LayoutError> error;
        if (section.kind.empty()) {
            error = ReadLayoutFields(section, FieldsOf(layout));
        } else if (section.kind == kFontSection) {
            error = fontSeen ? LayoutError{section.line, L"La sección «fuente» está repetida."}
                             : ReadLayoutFields(section, FieldsOf(layout.font));
            fontSeen = true;
        } else if (section.kind == kColumnSection) {
            error = columns.Add(section);
        }
        if (error) {
            return *error;
        }
    }
    return layout;
}

const GridLayout::Column* FindColumn(const GridLayout& layout, std::wstring_view field,
                                     std::size_t occurrence) {
    for (const GridLayout::Column& column : layout.columns) {
        if (column.field == field && --occurrence == 0) {
            return &column;
        }
    }
    return nullptr;
}

} // namespace tamvelo::base
