#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "demo/data/Database.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

/// Cents of an amount as people write it: "1.234,50", "1234,5", "-3" and, from the numeric keypad, "12.50".
std::optional<std::int64_t> ParseMoney(std::wstring_view text);

/// ISO text of a day written dd/MM/yyyy; one figure for day and month and two for the year (20yy) will do.
std::optional<std::wstring> ParseDate(std::wstring_view text);

/// What a typed text means for a column; Null for a blank one. Nothing when it is no value of the type.
/// Booleans: 0, 1, sí, no, or a list entry that begins with the figure (" 0 - No").
std::optional<Value> ParseTyped(Type type, std::wstring_view text);

/// The value as people read it, and as ParseTyped reads it back: "1.234,50", "29/02/2024", "Sí"; empty for
/// Null.
std::wstring ShowValue(Type type, const Value& value);

/// A whole number with dots between its thousands.
std::wstring ShowCount(std::int64_t number);

/// True when the column may hold the value: Null, or of the column's kind and, a text, not too long.
bool Fits(const Column& column, const Value& value);

// What the search boxes ask of the data class, by column.

/// Whether a character may be typed: a number takes no letter. Control characters (Backspace) always pass.
bool ValidaKey(const Column& column, wchar_t key);
/// Whether a finished text is good: blank, or a value of the column's type.
bool ValidaValue(const Column& column, std::wstring_view text);
/// The most characters that the column takes.
int ValidaDefinedSize(const Column& column);

} // namespace tamvelo::demo
