#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// How the fields of a record become the boxes of a form for a new one. The host and the form speak of a box
/// by its number, and two numbers have a meaning.
namespace tamvelo::base {

inline constexpr short kCodeBox = 1;
inline constexpr short kFamilyBox = 4;
/// A form has no room for more; the fields that are left over get no value.
inline constexpr std::size_t kMostBoxes = 22;

struct RecordField {
    std::wstring name;
    std::wstring relation; // the class whose codes it holds; "" for none
    bool typed = true;     // takes something that can be typed or ticked
    bool mark = false;     // yes or no
    std::optional<bool> required;
};

struct RecordBox {
    std::size_t field = 0;
    short number = 0;
    bool required = false;
    bool family = false;
};

/// The boxes in the order in which they are filled in: the family first, since it proposes the code.
std::vector<RecordBox> BoxesFor(std::span<const RecordField> fields);

/// Whether a text can be a number: figures with signs, points and commas, as people of any country write it.
bool LooksLikeNumber(std::wstring_view text);

/// The caption with an ampersand before a letter that no other caption has: the first of a word if it can be.
/// `taken` (lower case) grows by it. A caption whose letters are all taken gets none.
std::wstring WithAccessKey(std::wstring_view caption, std::wstring& taken);

} // namespace tamvelo::base
