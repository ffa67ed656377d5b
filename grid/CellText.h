#pragma once

#include <string>

#include "com/Variant.h"

namespace tamvelo::grid {

/// How a column's values are shown. Any: as each value's own type says.
enum class CellKind : unsigned char { Any, Text, Number, Money, Date, Time, Check, Binary };

/// In place of a value that raises.
inline constexpr wchar_t kErrorText[] = L"#Error";

/// From ADO's number for a field's type; Any for 0 and for numbers that we do not know.
CellKind KindOfField(long type);
/// What a value of a column of `kind` is shown as: never Any; Text for Null.
CellKind KindOfValue(const VARIANT& value, CellKind kind);

constexpr bool IsRightAligned(CellKind kind) { return kind == CellKind::Number || kind == CellKind::Money; }

/// The value as the user's locale writes it: short dates, two decimals for money, "Sí" and "No"; "" for Null.
/// Never throws over a value: one that cannot be shown says what it is.
std::wstring Format(const VARIANT& value, CellKind kind);

/// A count, its digits in groups as the user's locale parts them; four stand together, as Spanish has it.
std::wstring Grouped(long number);

} // namespace tamvelo::grid
