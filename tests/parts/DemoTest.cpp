// The demo is the host that the dialogs are shown and measured with: its data are the same everywhere, and
// its objects keep to docs/host-contract.md.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "base/Text.h"
#include "com/LateObject.h"
#include "demo/app/Manual.h"
#include "demo/app/MenuBar.h"
#include "demo/app/Resources.h"
#include "demo/data/Records.h"
#include "demo/data/SampleData.h"
#include "demo/data/View.h"
#include "demo/host/DataClass.h"
#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/reports/Report.h"

namespace tamvelo::demo {
namespace {

using com::ComPtr;
using com::LateObject;
using com::Variant;

constexpr long kArticles = 320;

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
                const auto* text = std::get_if<std::wstring>(&value);
                const auto* number = std::get_if<std::int64_t>(&value);
                add(text ? '"' + base::ToUtf8(*text) + '"' : number ? std::to_string(*number) : "Null");
            }
        }
    }
    return digest;
}

TEST(DemoData, TheSameNumberOfArticlesMakesTheSameDataAndAForeignFileIsLeftAlone) {
    Database database = OpenSampleData(L":memory:", kArticles);
    EXPECT_EQ(Digest(database), 9732650957756113223U) << "raise kVersion in SampleData.cpp with it";
    constexpr wchar_t kPath[] = L"DemoTest.db";
    std::remove("DemoTest.db");
    Database(kPath).Execute(L"create table suya(a)");
    EXPECT_THROW(OpenSampleData(kPath, 32), DataError);
    EXPECT_EQ(Database(kPath).Number(L"select count(*) from suya"), 0);
    std::remove("DemoTest.db");
}

TEST(DemoHost, TheRecordSetHasTheShapeThatGridsRead) {
    const auto database = std::make_shared<Database>(OpenSampleData(L":memory:", kArticles));
    database->Execute(
        L"update articulos set precio = -123456, alta = '2024-02-29', activo = 1, proveedor = null"
        L" where id = 1");
    LateObject articles(MakeDataClass(database, L"ARTICULOS").Get(), L"MyClase");
    LateObject set(articles.Call(L"Recordset").ToObject().Get(), L"Recordset");
    const auto where = [](LateObject& records) {
        return records.Call(L"AbsolutePosition").ToText() + L"/" + records.Call(L"RecordCount").ToText() +
               (records.Call(L"BOF").ToBool() ? L" BOF" : L"") +
               (records.Call(L"EOF").ToBool() ? L" EOF" : L"");
    };
    const auto call = [&](LateObject& object, const wchar_t* member, com::Arguments arguments,
                          const wchar_t* place) {
        object.Call(member, arguments);
        EXPECT_EQ(where(set), place) << base::ToUtf8(member);
    };
    call(articles, L"Requery", {}, L"1/320");
    LateObject fields(set.Call(L"Fields").ToObject().Get(), L"Fields");
    const auto field = [&](const com::Argument& which) {
        return LateObject(fields.Call(L"Item", {which}).ToObject().Get(), L"Field");
    };
    EXPECT_EQ(fields.Call(L"Count").ToLong(), 10);
    EXPECT_EQ(field(1L).Call(L"Name").ToText() + field(1L).Call(L"Caption").ToText(),
              L"descripcionDescripción");
    EXPECT_EQ(field(1L).Call(L"Type").ToLong(), 202);
    EXPECT_EQ(field(1L).Call(L"DefinedSize").ToLong(), 60);
    EXPECT_THROW(field(10L), com::Error);
    EXPECT_THROW(field(L"id"), com::Error);
    LateObject price = field(L"PRECIO");
    EXPECT_EQ(price.Call(L"Value").Get().cyVal.int64, -12345600);
    EXPECT_EQ(field(L"alta").Call(L"Value").ToDate(), 45351);
    EXPECT_EQ(field(L"activo").Call(L"Value").Type(), VT_BOOL);
    EXPECT_TRUE(field(L"proveedor").Call(L"Value").IsNull());
    call(set, L"MovePrevious", {}, L"-2/320 BOF");
    EXPECT_THROW(set.Call(L"Bookmark"), com::Error);
    EXPECT_THROW(price.Call(L"Value"), com::Error);
    call(set, L"MoveLast", {}, L"320/320");
    call(set, L"MoveNext", {}, L"-3/320 EOF");
    set.Put(L"AbsolutePosition", 40L);
    LateObject clone(set.Call(L"Clone").ToObject().Get(), L"Recordset");
    call(clone, L"MoveLast", {}, L"40/320");
    call(articles, L"SetOrder", {1L, L" DESC", L"seleccion"}, L"92/320"); // the record stays
    const Variant mark = set.Call(L"Bookmark");
    call(set, L"MoveFirst", {}, L"1/320");
    clone.Put(L"Bookmark", mark);
    EXPECT_EQ(where(clone), L"92/320");
    EXPECT_THROW(articles.Call(L"AplyFilter", {L"familia = 'x"}), com::Error);
    call(articles, L"AplyFilter", {L"id <= 3"}, L"1/3");
    EXPECT_EQ(where(clone), L"-3/3 EOF");
    call(articles, L"AplyFilter", {L"id < 0"}, L"-1/0 BOF EOF");
    EXPECT_THROW(set.Call(L"GetRows"), com::Error);
    call(articles, L"AplyFilter", {L""}, L"1/320");
    call(set, L"GetRows", {10L, Variant::Missing(), L"codigo"}, L"11/320");
    const long version = set.Call(L"DataVersion").ToLong();
    price.Put(L"Value", L"1.234,5");
    EXPECT_EQ(price.Call(L"Value").Get().cyVal.int64, 12345000);
    EXPECT_THROW(price.Put(L"Value", L"mucho"), com::Error);
    EXPECT_NE(set.Call(L"DataVersion").ToLong(), version);
    articles.Call(L"SetOrder", {0L, L"", L"seleccion"});
    call(articles, L"FindRecord", {L"03000004"}, L"44/320");
}

TEST(DemoReports, ConditionsActRowsAreSummedAndEveryReportCanBeMade) {
    Database database = OpenSampleData(L":memory:", kArticles);
    database.Execute(
        L"delete from ordenes; insert into ordenes(Orden, Paciente, cliente, fecha, estado, importe) values"
        L"(2, 'Luis', '000001', '2026-11-01', 'Facturada', 123450),"
        L"(3, 'Íñigo', '000002', '2026-11-15', 'Recibida', 50),"
        L"(4, 'Eva', '000001', '2026-11-30', 'Recibida', 200),"
        L"(5, 'Juan', '000002', '2026-12-01', 'Facturada', 300);"
        L" update clientes set nombre = 'Clínica ' || substr('ÑT', id, 1) where id <= 2");
    const Parameters november{{":desde", Value(L"2026-11-01"), L""}, {":hasta", Value(L"2026-11-30"), L""}};
    std::wstring cells;
    for (const TableInfo& table : Tables()) {
        for (const ReportInfo& info : ReportsOf(table)) {
            if (info.title != std::wstring_view(L"Órdenes por cliente")) {
                EXPECT_NO_THROW(Produce(database, info, {})) << base::ToUtf8(info.title);
                continue;
            }
            cells.clear();
            for (const Report::Line& line : Produce(database, info, november).lines) {
                for (const std::wstring& cell : line.cells) {
                    cells += cell + L"|";
                }
            }
        }
    }
    EXPECT_EQ(base::ToUtf8(cells),
              "000001 Clínica Ñ|2|01/11/2026|Luis|Facturada|1.234,50|4|30/11/2026|Eva|Recibida|2,00|"
              "Suma (2)||||1.236,50|000002 Clínica T|3|15/11/2026|Íñigo|Recibida|0,50|Suma (1)||||0,50|"
              "Total (3)||||1.237,00|");
}

/// In a package the manual lies in docs\manual of the folder above the program's, and programs are also
/// copied.
TEST(Demo, TheMenuFindsTheManualNearTheProgram) {
    namespace fs = std::filesystem;
    const fs::path top = fs::temp_directory_path() / L"TamveloManual (ñ)";
    fs::remove_all(top);
    const fs::path program = top / L"uno" / L"dos";
    fs::create_directories(program);
    EXPECT_EQ(FindManual(program), fs::path());
    for (const fs::path& folder : {top / L"docs", top / L"uno" / L"docs", program, program / L"docs"}) {
        const fs::path page = folder / L"manual" / L"index.html"; // each is nearer than the last
        fs::create_directories(page);
        EXPECT_NE(FindManual(program), page) << "a folder is no page";
        fs::remove(page);
        std::ofstream(page) << "x";
        EXPECT_EQ(FindManual(program), page);
    }
    fs::remove_all(top);

    const HMENU bar = MakeMenuBar();
    wchar_t text[32] = L"";
    GetMenuStringW(bar, IDM_MANUAL, text, ARRAYSIZE(text), MF_BYCOMMAND);
    EXPECT_STREQ(text, L"&Manual");
    DestroyMenu(bar);
}

} // namespace
} // namespace tamvelo::demo
