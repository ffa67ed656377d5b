#pragma once

#include <string>
#include <string_view>

struct sqlite3;

namespace tamvelo::demo {

/// Small letters without accents, as people type when they search: "ÁRBOL" and "arbol" fold alike. Ñ becomes
/// ñ and stays a letter of its own. Western European letters; others are left as they are.
std::string Fold(std::string_view utf8);
std::wstring Fold(std::wstring_view text);

/// Teaches a connection the collation `espanol` (folded, with ñ after n) and the functions
/// `sin_acentos(text)`, which is Fold, and `importe('1.234,50')`, the cents of an amount as people write it
/// (Null when it is none). Throws DataError.
void RegisterSpanish(sqlite3* handle);

} // namespace tamvelo::demo
