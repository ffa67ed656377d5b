#include "demo/data/SampleData.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <initializer_list>
#include <vector>

#include "base/Text.h"
#include "demo/data/SampleNames.h"
#include "demo/data/Schema.h"

namespace tamvelo::demo {

namespace {

using Kind = Recipe::Kind;

/// Raise it when tables or sample data change: older files are then made anew.
constexpr std::int64_t kVersion = 3;
constexpr std::int64_t kApplicationId = 0x54616D76; // in the file's header: this is one of ours
constexpr std::int64_t kVersionUnit = 1 << 20; // user_version holds the version and below it the articles
static_assert(kMostArticles < kVersionUnit);

/// At most so many rows in any table: a file of a million articles stays of a size that a laptop makes in a
/// minute.
constexpr std::int64_t kMostRows = 1'000'000;

constexpr int kFirstYear = 2019;
constexpr int kDays = 2880; // to November 2026

/// A cell on its way into the database, its text in UTF-8.
struct Cell {
    enum class Is { Null, Number, Text } is = Is::Null;
    std::int64_t number = 0;
    std::string text;

    static Cell Of(std::int64_t value) { return {Is::Number, value, {}}; }
    static Cell Of(std::string value) { return {Is::Text, 0, std::move(value)}; }
};

/// A well mixed number from any other (the finalizer of splitmix64): no state, so every cell can be made
/// alone.
std::uint64_t Mix(std::uint64_t x) {
    x += 0x9E3779B97F4A7C15;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EB;
    return x ^ (x >> 31);
}

/// The dice of one cell.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}
    std::int64_t Below(std::int64_t limit) {
        m_state = Mix(m_state);
        return static_cast<std::int64_t>((m_state >> 32) % static_cast<std::uint64_t>(limit));
    }
    std::int64_t Between(std::int64_t least, std::int64_t most) { return least + Below(most - least + 1); }
    std::string Any(WordList words) {
        return std::string(words[static_cast<std::size_t>(Below(Size(words)))]);
    }
    std::string Any(Words words) { return Any(ListOf(words)); }
    static std::int64_t Size(WordList words) { return static_cast<std::int64_t>(words.size()); }

private:
    std::uint64_t m_state;
};

std::string Padded(std::int64_t number, int width) {
    std::string digits = std::to_string(number);
    return std::string(static_cast<std::size_t>(std::max(0, width - static_cast<int>(digits.size()))), '0') +
           digits;
}

/// ISO texts of the days that the sample data knows.
std::vector<std::string> Calendar() {
    std::vector<std::string> days;
    const std::chrono::sys_days first = std::chrono::year{kFirstYear} / 1 / 1;
    for (int i = 0; i < kDays; ++i) {
        const std::chrono::year_month_day day = first + std::chrono::days{i};
        days.push_back(Padded(static_cast<int>(day.year()), 4) + '-' +
                       Padded(static_cast<unsigned>(day.month()), 2) + '-' +
                       Padded(static_cast<unsigned>(day.day()), 2));
    }
    return days;
}

/// The parts one after another. The dice are thrown in the braces of the call, where C++ keeps the order;
/// between operands of + each compiler throws them as it likes, and makes other data.
std::string Joined(std::initializer_list<std::string> parts) {
    std::string joined;
    for (const std::string& part : parts) {
        joined += part;
    }
    return joined;
}

std::string Person(Dice& dice) {
    return Joined(
        {dice.Any(Words::GivenNames), " ", dice.Any(Words::Surnames), " ", dice.Any(Words::Surnames)});
}

std::string Clinic(Dice& dice) {
    return Joined(
        {dice.Any(Words::ClinicKinds), " ", dice.Any(Words::Surnames), " ", dice.Any(Words::Surnames)});
}

std::string Supplier(Dice& dice) {
    return Joined({dice.Any(Words::SupplierKinds), " ", dice.Any(Words::Surnames), ", S. L."});
}

std::string Street(Dice& dice) {
    return Joined({dice.Any(Words::StreetKinds), " ", dice.Any(Words::StreetNames), ", ",
                   std::to_string(dice.Between(1, 180))});
}

std::string Phone(Dice& dice) {
    return Joined({"9", Padded(dice.Between(10, 88), 2), " ", Padded(dice.Below(1000), 3), " ",
                   Padded(dice.Below(1000), 3)});
}

std::string Time(Dice& dice) {
    return Joined({Padded(dice.Between(9, 19), 2), ":", Padded(dice.Below(4) * 15, 2)});
}

std::string ArticleName(Dice& dice, std::size_t family) {
    std::string_view pieces = ListOf(Words::Pieces)[family];
    const auto count = static_cast<std::int64_t>(std::ranges::count(pieces, '|'));
    for (std::int64_t skip = dice.Between(0, count); skip > 0; --skip) {
        pieces.remove_prefix(pieces.find('|') + 1);
    }
    return Joined({std::string(pieces.substr(0, pieces.find('|'))), " de ", dice.Any(Words::Materials), " ",
                   dice.Any(Words::Shades), " n.º ", std::to_string(dice.Between(1, 99))});
}

class Generator {
public:
    explicit Generator(long articles) {
        for (const TableInfo& table : Tables()) {
            const auto [fixed, perHundred] = table.sampleRows;
            std::int64_t rows = fixed + std::int64_t{perHundred} * articles / 100;
            for (const Column& column : table.columns) {
                rows = column.recipe.kind == Kind::Each ? Dice::Size(List(column.recipe)) : rows;
            }
            m_rows.push_back(std::clamp(rows, std::int64_t{1}, kMostRows));
        }
    }

    void Fill(Database& database, const TableInfo& table) {
        std::wstring sql = L"insert into " + std::wstring(table.sqlName) + L" values (?";
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            sql += L", ?";
        }
        Statement insert(database, sql + L')');
        for (std::int64_t row = 0; row < RowsOf(table); ++row) {
            insert.Bind(1, row + 1);
            for (std::size_t i = 0; i < table.columns.size(); ++i) {
                BindCell(insert, static_cast<int>(i) + 2, Make(table, i, row));
            }
            insert.Run();
        }
    }

private:
    static WordList List(const Recipe& recipe) { return ListOf(static_cast<Words>(recipe.a)); }

    static void BindCell(Statement& insert, int parameter, const Cell& cell) {
        switch (cell.is) {
        case Cell::Is::Null:
            insert.BindNull(parameter);
            break;
        case Cell::Is::Number:
            insert.Bind(parameter, cell.number);
            break;
        case Cell::Is::Text:
            insert.Bind(parameter, cell.text);
            break;
        }
    }

    static std::uint64_t Place(const TableInfo& table) {
        return static_cast<std::uint64_t>(&table - Tables().data());
    }
    std::int64_t RowsOf(const TableInfo& table) const { return m_rows[Place(table)]; }

    static Dice DiceOf(const TableInfo& table, std::size_t column, std::int64_t row) {
        return Dice(Mix(Place(table) * 64 + column) ^ static_cast<std::uint64_t>(row));
    }
    /// Town, province and post code of a row belong together, so they share their dice.
    static const demo::Place& PlaceOf(const TableInfo& table, std::int64_t row) {
        constexpr std::size_t kNoColumn = 63;
        const auto count = static_cast<std::int64_t>(Places().size());
        return Places()[static_cast<std::size_t>(DiceOf(table, kNoColumn, row).Below(count))];
    }
    static const TableInfo& Related(const TableInfo& table, std::size_t column) {
        return *FindTable(table.columns[column].related);
    }
    std::int64_t ReferredRow(const TableInfo& table, std::size_t column, std::int64_t row) const {
        return DiceOf(table, column, row).Below(RowsOf(Related(table, column)));
    }

    /// Articles stand family after family, so that their codes, which begin with the family's, rise.
    std::int64_t FamilyOf(const TableInfo& table, std::int64_t row) const {
        return row * Dice::Size(ListOf(Words::Families)) / RowsOf(table);
    }
    std::string ArticleCode(const TableInfo& table, std::int64_t row) const {
        const std::int64_t family = FamilyOf(table, row);
        const std::int64_t families = Dice::Size(ListOf(Words::Families));
        const std::int64_t firstOfFamily = (family * RowsOf(table) + families - 1) / families;
        return Padded(family + 1, 2) + Padded(row - firstOfFamily + 1, 6);
    }

    /// What a cell holds: depends on nothing but the table, the column, the row and the numbers of rows.
    Cell Make(const TableInfo& table, std::size_t column, std::int64_t row) const {
        const Column& info = table.columns[column];
        const auto& [kind, a, b, nullPercent] = info.recipe;
        if (nullPercent > 0 && DiceOf(table, column, ~row).Below(100) < nullPercent) {
            return {};
        }
        Dice dice = DiceOf(table, column, row);
        switch (kind) {
        case Kind::Code:
            return info.type == Type::Text ? Cell::Of(Padded(a + row, info.maxLength)) : Cell::Of(a + row);
        case Kind::ArticleCode:
            return Cell::Of(ArticleCode(table, row));
        case Kind::ArticleFamily:
            return Cell::Of(Padded(FamilyOf(table, row) + 1, 2));
        case Kind::Article:
            return Cell::Of(ArticleName(dice, static_cast<std::size_t>(FamilyOf(table, row))));
        case Kind::Each:
            return Cell::Of(std::string(List(info.recipe)[static_cast<std::size_t>(row)]));
        case Kind::Any:
            return Cell::Of(dice.Any(List(info.recipe)));
        case Kind::Person:
            return Cell::Of(Person(dice));
        case Kind::Clinic:
            return Cell::Of(Clinic(dice));
        case Kind::Supplier:
            return Cell::Of(Supplier(dice));
        case Kind::Street:
            return Cell::Of(Street(dice));
        case Kind::Town:
            return Cell::Of(std::string(PlaceOf(table, row).town));
        case Kind::Province:
            return Cell::Of(std::string(PlaceOf(table, row).province));
        case Kind::PostCode:
            return Cell::Of(Padded(PlaceOf(table, row).postCode + dice.Below(9), 5));
        case Kind::Phone:
            return Cell::Of(Phone(dice));
        case Kind::TaxId:
            return Cell::Of("B-" + Padded(dice.Below(100'000'000), 8));
        case Kind::Number:
            return Cell::Of(dice.Between(a, b));
        case Kind::Amount:
            return Cell::Of(dice.Between(std::int64_t{a} * 100, std::int64_t{b} * 100));
        case Kind::DateAlong:
            return Cell::Of(m_calendar[static_cast<std::size_t>(row * kDays / RowsOf(table))]);
        case Kind::Date:
            return Cell::Of(m_calendar[static_cast<std::size_t>(dice.Below(kDays))]);
        case Kind::Time:
            return Cell::Of(Time(dice));
        case Kind::Flag:
            return Cell::Of(dice.Below(100) < a ? std::int64_t{1} : std::int64_t{0});
        case Kind::Reference:
            return Make(Related(table, column), 0, ReferredRow(table, column, row));
        case Kind::FromReference: {
            // Of no row there is nothing to copy.
            const auto reference = static_cast<std::size_t>(a);
            return Make(table, reference, row).is == Cell::Is::Null
                       ? Cell{}
                       : Make(Related(table, reference), static_cast<std::size_t>(b),
                              ReferredRow(table, reference, row));
        }
        case Kind::Times:
            return Cell::Of(Make(table, static_cast<std::size_t>(a), row).number *
                            Make(table, static_cast<std::size_t>(b), row).number);
        }
        return {};
    }

    std::vector<std::int64_t> m_rows; // of each of Tables()
    std::vector<std::string> m_calendar = Calendar();
};

void MakeSampleData(Database& database, long articles) {
    CreateTables(database);
    Generator generator(articles);
    for (const TableInfo& table : Tables()) {
        generator.Fill(database, table);
    }
    FinishTables(database);
}

} // namespace

Database OpenSampleData(std::wstring_view path, long articles) {
    if (articles < 1 || articles > kMostArticles) {
        throw DataError(L"El número de artículos debe estar entre 1 y " + std::to_wstring(kMostArticles) +
                        L'.');
    }
    const std::int64_t wanted = kVersion * kVersionUnit + articles;
    Database database(path);
    // Enough memory to sort the indexes there, and no waiting for the disk: what is lost here is made again.
    database.Execute(L"pragma cache_size = -65536; pragma temp_store = memory; pragma synchronous = off");

    // Asked again once the file is ours alone: another program may have been making it meanwhile.
    const auto upToDate = [&] {
        return database.Number(L"pragma application_id") == kApplicationId &&
               database.Number(L"pragma user_version") == wanted;
    };
    if (!upToDate()) {
        Transaction transaction(database);
        if (!upToDate()) {
            if (database.Number(L"pragma application_id") != kApplicationId &&
                database.Number(L"select count(*) from sqlite_schema") != 0) {
                throw DataError(L"El archivo «" + std::wstring(path) +
                                L"» no es una base de datos de ejemplo.");
            }
            MakeSampleData(database, articles);
            database.Execute(L"pragma application_id = " + std::to_wstring(kApplicationId) +
                             L"; pragma user_version = " + std::to_wstring(wanted));
            transaction.Commit();
        }
    }
    database.Execute(L"pragma synchronous = normal");
    return database;
}

} // namespace tamvelo::demo
