#include "base/RecordBoxes.h"

#include <algorithm>

#include "base/Text.h"

namespace tamvelo::base {

namespace {

constexpr wchar_t kFamilies[] = L"familias";
constexpr wchar_t kFamily[] = L"familia";

bool HoldsFamily(const RecordField& field) {
    return field.typed && !field.mark &&
           (Lower(field.relation) == kFamilies || Lower(field.name).find(kFamily) != std::wstring::npos);
}

/// Letters that have a key of their own on a Spanish keyboard.
bool IsKey(wchar_t letter) {
    return (letter >= L'a' && letter <= L'z') || (letter >= L'0' && letter <= L'9');
}

} // namespace

std::vector<RecordBox> BoxesFor(std::span<const RecordField> fields) {
    const auto family = std::ranges::find_if(fields, HoldsFamily);
    std::vector<RecordBox> boxes;
    short next = kCodeBox;
    for (auto field = fields.begin(); field != fields.end() && boxes.size() < kMostBoxes; ++field) {
        if (!field->typed) {
            continue;
        }
        const auto index = static_cast<std::size_t>(field - fields.begin());
        if (field == family) {
            boxes.insert(boxes.begin(), {index, kFamilyBox, field->required.value_or(true), true});
            continue;
        }
        if (next == kFamilyBox && family != fields.end()) {
            ++next;
        }
        // A record without its code cannot be handed over; one without a name is of no use to anybody.
        const bool code = next == kCodeBox;
        const bool required = code || field->required.value_or(index == 1);
        boxes.push_back({index, next++, required && !field->mark, false});
    }
    return boxes;
}

bool LooksLikeNumber(std::wstring_view text) {
    constexpr std::wstring_view kFigures = L"0123456789";
    text = Trim(text);
    return text.find_first_of(kFigures) != std::wstring_view::npos &&
           text.find_first_not_of(L"0123456789.,+-") == std::wstring_view::npos;
}

std::wstring WithAccessKey(std::wstring_view caption, std::wstring& taken) {
    const std::wstring folded = Fold(caption);
    std::size_t key = std::wstring::npos;
    for (const bool starts : {true, false}) {
        for (std::size_t i = 0; i < folded.size() && key == std::wstring::npos; ++i) {
            const bool start = i == 0 || folded[i - 1] == L' ';
            if ((start || !starts) && IsKey(folded[i]) && taken.find(folded[i]) == std::wstring::npos) {
                key = i;
            }
        }
    }
    std::wstring marked;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (i == key) {
            taken += folded[i];
        }
        marked.append(i == key || caption[i] == L'&' ? 1 : 0, L'&');
        marked += caption[i];
    }
    return marked;
}

} // namespace tamvelo::base
