#include <gtest/gtest.h>

#include <cstdio>

#include "base/Text.h"
#include "demo/data/Filter.h"
#include "demo/data/Records.h"
#include "demo/data/SampleData.h"
#include "demo/data/Values.h"
#include "demo/data/View.h"

namespace tamvelo::demo {

namespace {

constexpr long kArticles = 320;

std::string Shown(const Value& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return '"' + base::ToUtf8(*text) + '"';
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr ? std::to_string(*number) : "Null";
}

const TableInfo& Table(std::wstring_view className) { return *FindTable(className); }

const Column& ColumnOf(std::wstring_view className, std::wstring_view field) {
    return *Table(className).FindColumn(field);
}

class DemoData : public testing::Test {
protected:
    Value At(View& view, long row, int column) { return view.Row(row)[static_cast<std::size_t>(column)]; }
    std::wstring TextAt(View& view, long row, int column) {
        return std::get<std::wstring>(At(view, row, column));
    }

    /// Three clients whose names differ in accents, ñ and quotes only, at the end of the table.
    void AddNames() {
        int code = 900000;
        for (const wchar_t* name : {L"Peña y Ñandú", L"Pena 100%_real", L"D'Órs"}) {
            Insert(database, clients, {{L"codigo", std::to_wstring(++code)}, {L"nombre", Value(name)}});
        }
    }
    long CountOf(const std::wstring& filter) {
        View view(database, clients);
        view.SetFilter(filter);
        return view.Count();
    }

    Database database = OpenSampleData(L":memory:", kArticles);
    const TableInfo& articles = Table(L"articulos");
    const TableInfo& clients = Table(L"clientes");
};

/// A digest of every cell of every table in order.
std::uint64_t Digest(Database& database) {
    std::uint64_t digest = 14695981039346656037U;
    const auto add = [&](std::string_view bytes) {
        for (const char c : bytes) {
            digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211U;
        }
    };
    for (const TableInfo& table : Tables()) {
        View view(database, table);
        for (long row = 0; row < view.Count(); ++row) {
            for (const Value& value : view.Row(row)) {
                add(Shown(value));
            }
        }
    }
    return digest;
}

TEST_F(DemoData, TheSameNumberOfArticlesMakesTheSameDataEverywhere) {
    EXPECT_EQ(Digest(database), 9732650957756113223U) << "raise kVersion in SampleData.cpp with it";
    Database other = OpenSampleData(L":memory:", kArticles + 1);
    EXPECT_NE(Digest(other), Digest(database));
    EXPECT_THROW(OpenSampleData(L":memory:", 0), DataError);
}

TEST_F(DemoData, EveryTableHasItsRowsAndEveryCellFitsItsColumn) {
    EXPECT_EQ(View(database, articles).Count(), kArticles);
    EXPECT_EQ(View(database, clients).Count(), kArticles * 2 / 5);
    EXPECT_EQ(View(database, Table(L"ORDENES")).Count(), kArticles * 4);
    for (const TableInfo& table : Tables()) {
        SCOPED_TRACE(base::ToUtf8(table.sqlName));
        View view(database, table);
        EXPECT_GT(view.Count(), 4);
        Value previous;
        for (long row = 0; row < view.Count(); ++row) {
            const auto cells = view.Row(row);
            ASSERT_LT(previous, cells[0]) << "out of order at " << row;
            previous = cells[0];
            for (std::size_t i = 0; i < cells.size(); ++i) {
                ASSERT_TRUE(Fits(table.columns[i], cells[i])) << i << ' ' << Shown(cells[i]);
            }
        }
        for (const Column& column : table.columns) {
            if (column.related.empty()) {
                continue;
            }
            const TableInfo& other = Table(column.related);
            EXPECT_EQ(database.Number(L"select count(*) from " + std::wstring(table.sqlName) + L" where " +
                                      std::wstring(column.field) + L" not in (select " +
                                      std::wstring(other.Code().field) + L" from " +
                                      std::wstring(other.sqlName) + L")"),
                      0)
                << base::ToUtf8(column.field) << " names rows that are not there";
        }
    }
}

TEST_F(DemoData, AFileIsReusedOrMadeAnewAndAForeignOneLeftAlone) {
    const std::wstring path = L"DemoDataTest.db";
    const auto clear = [&] { std::remove("DemoDataTest.db"); };
    clear();
    {
        Database made = OpenSampleData(path, 32);
        MarkAll(made, Table(L"familias"), true);
    }
    const std::wstring marked = L"select count(*) from familias where Planificar = 1";
    EXPECT_GT(OpenSampleData(path, 32).Number(marked), 0) << "the same file is opened, not made again";
    EXPECT_EQ(OpenSampleData(path, 33).Number(marked), 0);
    EXPECT_EQ(OpenSampleData(path, 33).Number(L"select count(*) from articulos"), 33);
    clear();
    Database(path).Execute(L"create table suya(a)");
    EXPECT_THROW(OpenSampleData(path, 32), DataError);
    EXPECT_EQ(Database(path).Number(L"select count(*) from suya"), 0);
    clear();
}

TEST_F(DemoData, FilterFragments) {
    const struct {
        const wchar_t *className, *field, *typed;
        Bound bound;
        const wchar_t* fragment;
    } cases[] = {
        {L"clientes", L"nombre", L"", Bound::Equal, L""},
        {L"clientes", L"nombre", L" * ", Bound::Equal, L""},
        {L"clientes", L"nombre", L" *PEÑA Güell", Bound::Anywhere,
         L"sin_acentos(nombre) Like '%peña guell%'"},
        {L"clientes", L"nombre", L"a*b*", Bound::Anywhere, L"sin_acentos(nombre) Like '%a%b%'"},
        {L"clientes", L"nombre", L"D'Órs", Bound::Anywhere, L"sin_acentos(nombre) Like '%d''ors%'"},
        {L"clientes", L"nombre", L" D'Órs", Bound::Equal, L"sin_acentos(nombre) = 'd''ors'"},
        {L"clientes", L"nombre", L"*PEÑA_ ", Bound::Equal,
         L"sin_acentos(nombre) Like '%peña\\_' Escape '\\'"},
        {L"clientes", L"nombre", L"a*b", Bound::Equal, L"sin_acentos(nombre) Like 'a%b'"},
        {L"articulos", L"existencias", L"12", Bound::Anywhere, L"existencias = 12"},
        {L"clientes", L"nombre", L"5%_\\", Bound::Anywhere,
         L"sin_acentos(nombre) Like '%5\\%\\_\\\\%' Escape '\\'"},
        {L"clientes", L"nombre", L"O'M", Bound::Lower, L"nombre >= 'O''M'"},
        {L"articulos", L"existencias", L"*12", Bound::Equal, L"existencias = 12"},
        {L"articulos", L"existencias", L"-3", Bound::Upper, L"existencias <= -3"},
        {L"articulos", L"precio", L"1.234,5", Bound::Lower, L"precio >= importe('1.234,5')"},
        {L"articulos", L"alta", L"3/2/2024", Bound::Upper, L"alta <= '2024-02-03'"},
        {L"articulos", L"activo", L" 0 - No", Bound::Equal, L"activo = 0"},
        {L"articulos", L"activo", L"Sí", Bound::Equal, L"activo = 1"},
        {L"articulos", L"activo", L"-1 - Sí", Bound::Equal, L"activo = 1"},
        {L"articulos", L"activo", L" 2 - Todos", Bound::Equal, L""},
        {L"Ordenes", L"PRESCRIPCIÓN", L"77", Bound::Equal, L"Prescripción = 77"},
    };
    for (const auto& c : cases) {
        const std::wstring fragment = BuildFilter(ColumnOf(c.className, c.field), c.typed, c.bound);
        EXPECT_EQ(base::ToUtf8(fragment), base::ToUtf8(c.fragment));
    }
    const std::vector<std::wstring> several = {L"1", L"", L"7"};
    EXPECT_EQ(BuildFilterAny(ColumnOf(L"Ordenes", L"Caja"), several), L"(Caja = 1 Or Caja = 7)");
    EXPECT_EQ(BuildFilterAny(ColumnOf(L"Ordenes", L"Caja"), {}), L"");
    EXPECT_EQ(BuildFilterAny(ColumnOf(L"clientes", L"nombre"), several),
              L"(sin_acentos(nombre) = '1' Or sin_acentos(nombre) = '7')");
    for (const wchar_t* field : {L"existencias", L"precio", L"alta", L"activo"}) {
        EXPECT_THROW(BuildFilter(ColumnOf(L"articulos", field), L"doce"), DataError) << base::ToUtf8(field);
    }
    EXPECT_THROW(BuildFilter(ColumnOf(L"articulos", L"alta"), L"30/02/2024"), DataError);
}

TEST_F(DemoData, TypedValues) {
    const std::pair<const wchar_t*, std::optional<std::int64_t>> amounts[] = {
        {L"12", 1200},
        {L"12,5", 1250},
        {L"12.50", 1250},
        {L"1.234", 123400},
        {L"-1.234.567,89", -123456789},
        {L"12,345", {}},
        {L"1.23.456", {}},
        {L"1234.567", {}},
        {L",5", {}},
        {L"12,", {}},
        {L"--1", {}},
        {L"1e3", {}},
        {L"1.234.56", {}},
        {L"0,00", 0},
        {L"9999999999999999", {}},
    };
    for (const auto& [text, cents] : amounts) {
        EXPECT_EQ(ParseMoney(text), cents) << base::ToUtf8(text);
    }
    const std::tuple<Type, Value, const char*> shown[] = {
        {Type::Money, std::int64_t{-123456789}, "-1.234.567,89"},
        {Type::Money, std::int64_t{5}, "0,05"},
        {Type::Money, std::int64_t{-99999}, "-999,99"},
        {Type::Date, L"2024-02-29", "29/02/2024"},
        {Type::Boolean, std::int64_t{0}, "No"},
        {Type::Integer, std::int64_t{100001}, "100001"},
        {Type::Text, {}, ""},
    };
    for (const auto& [type, value, text] : shown) {
        EXPECT_EQ(base::ToUtf8(ShowValue(type, value)), text);
    }
    EXPECT_EQ(base::ToUtf8(ShowCount(-123456)), "-123.456");
    EXPECT_EQ(ParseDate(L"29/02/2024"), L"2024-02-29");
    EXPECT_EQ(ParseDate(L"1-1-24"), L"2024-01-01");
    for (const wchar_t* text :
         {L"29/02/2023", L"2024-01-01", L"1/1", L"1/13/2024", L"a/1/2024", L"1/1/024"}) {
        EXPECT_EQ(ParseDate(text), std::nullopt) << base::ToUtf8(text);
    }
    EXPECT_FALSE(ValidaKey(ColumnOf(L"articulos", L"precio"), L'e'));
    EXPECT_TRUE(ValidaKey(ColumnOf(L"articulos", L"precio"), L','));
    EXPECT_FALSE(ValidaKey(ColumnOf(L"articulos", L"existencias"), L','));
    EXPECT_TRUE(ValidaKey(ColumnOf(L"articulos", L"existencias"), L'\b'));
    EXPECT_TRUE(ValidaKey(ColumnOf(L"clientes", L"nombre"), L'ñ'));
    EXPECT_TRUE(ValidaValue(ColumnOf(L"articulos", L"alta"), L" "));
    EXPECT_FALSE(ValidaValue(ColumnOf(L"articulos", L"alta"), L"31/4/2024"));
    EXPECT_EQ(ValidaDefinedSize(ColumnOf(L"clientes", L"cp")), 5);
}

TEST_F(DemoData, SearchesIgnoreAccentsAndCaseButKeepEnye) {
    AddNames();
    const auto found = [&](const wchar_t* typed) { return CountOf(BuildFilter(clients.columns[1], typed)); };
    EXPECT_EQ(found(L"pena 100%_REAL"), 1);
    EXPECT_EQ(found(L"100%r"), 0) << "a typed % is no wildcard";
    EXPECT_EQ(found(L"Y ÑANDU"), 1);
    EXPECT_EQ(found(L"y nandu"), 0);
    EXPECT_EQ(found(L"d'ors"), 1);
    EXPECT_EQ(found(L"p*real"), 1);

    View view(database, clients);
    view.SetOrder({1, false});
    const auto pena = view.Find(L"PENA 100", 1);
    const auto enye = view.Find(L"peña y", 1);
    ASSERT_TRUE(pena && enye);
    EXPECT_LT(*pena, *enye) << "ñ sorts after n";
    EXPECT_EQ(TextAt(view, *enye, 1), L"Peña y Ñandú");
}

TEST_F(DemoData, FindGoesByTheColumnsTypeAndOnlyToRowsOfTheView) {
    View view(database, articles);
    EXPECT_EQ(view.Find(L"01000002", 0), 1);
    EXPECT_EQ(view.Find(L"0100", 0), 0) << "the first code that begins so";
    EXPECT_EQ(view.Find(L"zzz", 0), std::nullopt);
    EXPECT_EQ(view.Find(L" ", 0), std::nullopt);
    EXPECT_EQ(view.Find(L"01000002", 3), std::nullopt);
    view.SetFilter(L"familia = '02'");
    EXPECT_EQ(view.Find(L"01000002", 0), std::nullopt);
    EXPECT_EQ(view.Find(L"02", 2), 0);
    EXPECT_EQ(view.Find(L"0", 0), 0) << "the first match in the view, not in the table";
    view.SetOrder({0, true});
    EXPECT_EQ(view.Find(L"02000001", 0), view.Count() - 1);

    View orders(database, Table(L"ordenes"));
    EXPECT_EQ(orders.Find(L"100003", 0), 2);
    EXPECT_EQ(orders.Find(L"10000", 0), std::nullopt) << "a number is found whole";
    EXPECT_EQ(orders.Find(L"cien", 0), std::nullopt);
}

TEST_F(DemoData, OrderAndFilterKeepEachOtherAndIdentity) {
    View view(database, articles);
    const std::int64_t id = view.IdOf(200);
    const Value code = At(view, 200, 0);
    const auto version = view.Version();
    view.SetOrder({3, true});
    EXPECT_NE(view.Version(), version);
    EXPECT_GE(At(view, 0, 3), At(view, 1, 3));
    const auto row = view.RowOf(id);
    ASSERT_TRUE(row);
    EXPECT_EQ(At(view, *row, 0), code);

    view.SetFilter(L"familia = '02' Or familia = '03'");
    EXPECT_EQ(view.Count(), 40);
    for (long i = 1; i < view.Count(); ++i) {
        EXPECT_GE(At(view, i - 1, 3), At(view, i, 3));
    }
    EXPECT_EQ(view.RowOf(id), std::nullopt);
    EXPECT_EQ(view.RowOf(1'000'000), std::nullopt);
    view.SetFilter(L"");
    EXPECT_EQ(view.CurrentOrder().column, 3);
    view.SetOrder({});
    EXPECT_EQ(view.RowOf(id), 200);
}

TEST_F(DemoData, ABadFilterKeepsTheView) {
    View view(database, articles);
    view.SetFilter(L"familia = '02' -- comentario");
    const auto version = view.Version();
    for (const wchar_t* bad :
         {L"familia =", L"nada = 1", L"1); delete from articulos; --", L"familia = 'x"}) {
        EXPECT_THROW(view.SetFilter(bad), DataError) << base::ToUtf8(bad);
    }
    EXPECT_THROW(view.SetOrder({99, false}), DataError);
    EXPECT_EQ(view.Count(), 20);
    EXPECT_EQ(view.Version(), version);
    EXPECT_EQ(view.Filter(), L"familia = '02' -- comentario");
    EXPECT_EQ(database.Number(L"select count(*) from articulos"), kArticles);
}

TEST_F(DemoData, BlocksGiveTheRowsOfAnyOrderUpToTheLast) {
    View view(database, articles);
    view.SetOrder({0, true});
    for (const long row : {0L, 63L, 64L, 319L, 5L, 200L}) {
        EXPECT_EQ(At(view, row, 0), At(view, row, 0));
        EXPECT_EQ(view.Find(TextAt(view, row, 0), 0), row);
    }
    Delete(database, articles, view.IdOf(3));
    view.Requery();
    EXPECT_EQ(view.Count(), kArticles - 1);
    EXPECT_EQ(view.Find(TextAt(view, 318, 0), 0), 318);

    View stale(database, clients);
    Delete(database, clients, stale.IdOf(1));
    EXPECT_EQ(At(stale, 1, 0), Value{});
    EXPECT_EQ(TextAt(stale, 2, 0), L"000003") << "the rows after a deleted one stay where they are";
}

TEST_F(DemoData, NewRowsTakeTheirPlaceByCode) {
    View view(database, articles);
    EXPECT_EQ(NuevoCodigoFam(database, L"02"), L"02000021");
    Insert(database, articles, {{L"CODIGO", Value(L"02000021")}, {L"precio", Value(std::int64_t{995})}});
    EXPECT_EQ(NuevoCodigoFam(database, L" 02 "), L"02000022");
    EXPECT_THROW(NuevoCodigoFam(database, L"99"), DataError);
    EXPECT_EQ(view.Count(), kArticles);
    view.Requery();
    EXPECT_EQ(view.Count(), kArticles + 1);
    EXPECT_EQ(view.Find(L"02000021", 0), 40) << "between the second family and the third";
    EXPECT_EQ(TextAt(view, 41, 0), L"03000001");

    Update(database, articles, view.IdOf(40), {{L"codigo", Value(L"99")}});
    view.Requery();
    EXPECT_EQ(TextAt(view, view.Count() - 1, 0), L"99");

    // Tables in order until now: a changed code or a deleted row ends it too.
    Update(database, clients, 1, {{L"codigo", Value(L"900000")}});
    View byCode(database, clients);
    EXPECT_EQ(TextAt(byCode, byCode.Count() - 1, 0), L"900000");
    Delete(database, Table(L"rutas"), 1);
    View routes(database, Table(L"rutas"));
    EXPECT_EQ(routes.Count(), 9);
    EXPECT_EQ(TextAt(routes, 0, 0), L"02");
}

TEST_F(DemoData, ChangesThatCannotBeAreRefusedInWords) {
    const auto message = [](const auto& change) {
        try {
            change();
        } catch (const DataError& error) {
            return base::ToUtf8(error.Message());
        }
        return std::string("accepted");
    };
    EXPECT_EQ(message([&] {
                  Insert(database, clients, {{L"codigo", Value(L"000001")}});
              }),
              "Ya existe un registro con ese código.");
    EXPECT_EQ(message([&] {
                  Insert(database, clients, {{L"nombre", Value(L"x")}});
              }),
              "Falta el valor de Código.");
    EXPECT_EQ(message([&] {
                  Update(database, clients, 1, {{L"codigo", Value(L" ")}});
              }),
              "El valor de Código no es válido.");
    EXPECT_EQ(message([&] {
                  Update(database, clients, 1, {{L"cp", Value(L"123456")}});
              }),
              "El valor de C. P. no es válido.");
    EXPECT_EQ(message([&] {
                  Update(database, clients, 1, {{L"nada", Value{}}});
              }),
              "Clientes: no hay ningún campo «nada».");
    EXPECT_EQ(message([&] { Delete(database, clients, 99999); }), "El registro ya no existe.");
    EXPECT_EQ(message([&] { MarkAll(database, Table(L"rutas"), true); }),
              "Rutas: no hay ninguna columna que marcar.");
    EXPECT_EQ(message([&] { database.Execute(L"nada"); }).find("Error de la base de datos: "), 0U);

    const std::wstring marked = L"select count(*) from fases where Planificar = 1 and Planificar_2 = 1";
    MarkAll(database, Table(L"fases"), true);
    EXPECT_EQ(database.Number(marked), View(database, Table(L"fases")).Count());
    MarkAll(database, Table(L"fases"), false);
    EXPECT_EQ(database.Number(marked), 0);
}

TEST_F(DemoData, ATransactionThatIsNotCommittedLeavesNothing) {
    const auto count = [&] { return database.Number(L"select count(*) from clientes"); };
    const auto before = count();
    {
        Transaction transaction(database);
        Delete(database, clients, 1);
    }
    EXPECT_EQ(count(), before);
    {
        Transaction transaction(database);
        Delete(database, clients, 1);
        transaction.Commit();
    }
    EXPECT_EQ(count(), before - 1);
}

} // namespace

} // namespace tamvelo::demo
