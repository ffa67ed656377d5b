#include "base/SearchModes.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"

namespace tamvelo::base {

namespace {

constexpr std::wstring_view kKindHeadings[] = {L"Caja", L"Prescripción", L"Orden", L"Núm. Prescripción",
                                               L"Paciente"};
constexpr std::wstring_view kKindFields[] = {L"Orden", L"Paciente", L"Caja", L"Prescripción"};
constexpr std::wstring_view kUncheckedFields[] = {L"parcial", L"descuentos"};
constexpr std::wstring_view kValueSeparators = L"\r\n\t;";

template <class Table>
bool Contains(const Table& table, std::wstring_view text) {
    return std::find(std::begin(table), std::end(table), text) != std::end(table);
}

} // namespace

int StoredIndex(std::wstring_view text, int count, int fallback) {
    const std::optional<long> index = ParseLong(text);
    return index && *index >= 0 && *index < count ? static_cast<int>(*index) : fallback;
}

bool IsSearchKind(std::wstring_view heading) { return Contains(kKindHeadings, heading); }

std::optional<std::wstring_view> SearchKindField(int index) {
    if (index < 0 || index >= static_cast<int>(std::size(kKindFields))) {
        return std::nullopt;
    }
    return kKindFields[index];
}

bool IsUncheckedField(std::wstring_view field) { return Contains(kUncheckedFields, Lower(field)); }

std::wstring TrimmedTo(std::wstring_view text, long size) {
    return std::wstring(Trim(text).substr(0, size < 0 ? std::wstring_view::npos : static_cast<size_t>(size)));
}

std::optional<std::vector<std::wstring>> PastedValues(std::wstring_view text) {
    if (text.find_first_of(kValueSeparators) == std::wstring_view::npos) {
        return std::nullopt;
    }
    std::vector<std::wstring> values;
    for (const std::wstring& piece : Split(text, kValueSeparators)) {
        if (const std::wstring_view value = Trim(piece); !value.empty()) {
            values.emplace_back(value);
        }
    }
    return values;
}

std::wstring CountOfValues(long count) {
    return std::to_wstring(count) + (count == 1 ? L" valor" : L" valores");
}

} // namespace tamvelo::base
