#include "demo/data/SpanishSql.h"

#include <sqlite3.h>

#include "base/Text.h"
#include "demo/data/Database.h"
#include "demo/data/Values.h"

namespace tamvelo::demo {

namespace {

// U+00C0 to U+00FF, which are the bytes C3 80 to C3 BF in UTF-8, without accent; 0 where the letter has no
// plain one.
constexpr char kPlain[] =
    "aaaaaa\0ceeeeiiii\0\0ooooo\0ouuuuy\0\0"
    "aaaaaa\0ceeeeiiii\0\0ooooo\0ouuuuy\0y";
constexpr unsigned char kLatinLead = 0xC3;
constexpr unsigned char kSmallEnye = 0xB1;
constexpr int kCapitalEnyeIndex = 0x11;
constexpr int kSmallEnyeIndex = 0x31;

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

/// Takes the first letter off the text. The weight doubles the code so that ñ fits between n and o.
int TakeWeight(std::string_view& utf8) {
    const unsigned char first = Byte(utf8[0]);
    utf8.remove_prefix(1);
    if (first >= 'A' && first <= 'Z') {
        return 2 * (first + 0x20);
    }
    if (first == kLatinLead && !utf8.empty() && (Byte(utf8[0]) & 0xC0) == 0x80) {
        const int index = Byte(utf8[0]) & 0x3F;
        if (index == kCapitalEnyeIndex || index == kSmallEnyeIndex) {
            utf8.remove_prefix(1);
            return 2 * 'n' + 1;
        }
        if (kPlain[index] != 0) {
            utf8.remove_prefix(1);
            return 2 * kPlain[index];
        }
    }
    return 2 * first; // also the bytes of other letters, one by one: UTF-8 sorts as its code points do
}

int Compare(void* /*unused*/, int leftSize, const void* left, int rightSize, const void* right) {
    std::string_view a(static_cast<const char*>(left), static_cast<std::size_t>(leftSize));
    std::string_view b(static_cast<const char*>(right), static_cast<std::size_t>(rightSize));
    while (!a.empty() && !b.empty()) {
        const int difference = TakeWeight(a) - TakeWeight(b);
        if (difference != 0) {
            return difference;
        }
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

std::string_view TextOf(sqlite3_value* value) {
    const void* text = sqlite3_value_text(value); // before its size is asked: this converts
    return {static_cast<const char*>(text), static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void SinAcentos(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) {
        return; // Null of Null
    }
    try {
        const std::string folded = Fold(TextOf(arguments[0]));
        sqlite3_result_text(context, folded.data(), static_cast<int>(folded.size()), SQLITE_TRANSIENT);
    } catch (const std::exception&) {
        sqlite3_result_error_nomem(context);
    }
}

void Importe(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept {
    try {
        const auto text = base::FromUtf8(TextOf(arguments[0]));
        if (const auto cents = text ? ParseMoney(*text) : std::nullopt) {
            sqlite3_result_int64(context, *cents);
        }
    } catch (const std::exception&) {
        sqlite3_result_error_nomem(context);
    }
}

} // namespace

std::string Fold(std::string_view utf8) {
    std::string folded;
    folded.reserve(utf8.size());
    while (!utf8.empty()) {
        const int weight = TakeWeight(utf8);
        if (weight % 2 != 0) {
            folded += static_cast<char>(kLatinLead);
            folded += static_cast<char>(kSmallEnye);
        } else {
            folded += static_cast<char>(weight / 2);
        }
    }
    return folded;
}

std::wstring Fold(std::wstring_view text) { return base::FromUtf8(Fold(base::ToUtf8(text))).value(); }

void RegisterSpanish(sqlite3* handle) {
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    if (sqlite3_create_collation(handle, "espanol", SQLITE_UTF8, nullptr, Compare) != SQLITE_OK ||
        sqlite3_create_function(handle, "sin_acentos", 1, flags, nullptr, SinAcentos, nullptr, nullptr) !=
            SQLITE_OK ||
        sqlite3_create_function(handle, "importe", 1, flags, nullptr, Importe, nullptr, nullptr) !=
            SQLITE_OK) {
        throw DataError(L"No se pudo preparar la base de datos para textos en español.");
    }
}

} // namespace tamvelo::demo
