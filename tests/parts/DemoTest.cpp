// The demo is the host that the dialogs are shown and measured with: its data are the same everywhere, and
// its objects keep to docs/host-contract.md.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>

#include "base/Text.h"
#include "com/Collection.h"
#include "com/LateObject.h"
#include "demo/data/Records.h"
#include "demo/data/SampleData.h"
#include "demo/data/View.h"
#include "demo/host/DataClass.h"
#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/reports/PageDrawing.h"
#include "demo/reports/ReportCall.h"

namespace tamvelo::demo {
namespace {

using com::ComPtr;
using com::Invocation;
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
    const auto clear = [] { std::remove("DemoTest.db"); };
    const std::wstring marked = L"select count(*) from familias where Planificar = 1";
    clear();
    {
        Database made = OpenSampleData(kPath, 32);
        MarkAll(made, *FindTable(L"familias"), true);
    }
    EXPECT_GT(OpenSampleData(kPath, 32).Number(marked), 0) << "the same file is opened, not made again";
    EXPECT_EQ(OpenSampleData(kPath, 33).Number(marked), 0);
    clear();
    Database(kPath).Execute(L"create table suya(a)");
    EXPECT_THROW(OpenSampleData(kPath, 32), DataError);
    EXPECT_EQ(Database(kPath).Number(L"select count(*) from suya"), 0);
    clear();
}

/// A conversation with the host's objects, by name.
class DemoHost : public testing::Test {
protected:
    DemoHost() {
        objects[L"articles"] = Variant(MakeDataClass(database, L"ARTICULOS").Get());
        objects[L"box"] = Variant(MakeTextControl(edit, L"TxtFields", 3).Get());
        objects[L"columns"] = Variant(MakeColumns(L"articulos").Get());
        objects[L"reports"] = Variant(MakeReports({L"Listado", L"Etiquetas"}).Get());
        objects[L"classes"] = Variant(MakeDataClasses(database).Get());
        Do(L"set=articles.Recordset");
    }
    void TearDown() override {
        objects.clear();
        DestroyWindow(edit);
        EXPECT_TRUE(com::Module::Unused()) << "an object is still referred to";
    }

    /// "object.Member", "object.Member:=" to write it, "name=object.Member" to keep an object (else it is
    /// called "it"). The answer, or what went wrong; of a member that answers nothing, where the record set
    /// stands.
    std::wstring Do(const std::wstring& call, std::vector<Variant> arguments = {}) {
        static std::set<std::wstring> names; // they must stay
        const size_t dot = call.find(L'.');
        const size_t equals = call.find(L'=') < dot ? call.find(L'=') : std::wstring::npos;
        const bool put = call.ends_with(L":=");
        const wchar_t* member =
            names.insert(call.substr(dot + 1, call.size() - dot - (put ? 3 : 1))).first->c_str();
        const ComPtr<IDispatch> holder = objects.at(call.substr(equals + 1, dot - equals - 1)).ToObject();
        IDispatch* object = holder.Get();
        std::vector<VARIANT> reversed;
        for (auto each = arguments.rbegin(); each != arguments.rend(); ++each) {
            reversed.push_back(each->Get());
        }
        DISPID written = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{reversed.data(), put ? &written : nullptr, static_cast<UINT>(reversed.size()),
                              put ? 1U : 0U};
        try {
            const Variant answer = com::InvokeMember(
                object, L"anfitrión", member, com::FindMember(object, member),
                put ? DISPATCH_PROPERTYPUT : DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters);
            if (answer.Type() == VT_DISPATCH || equals != std::wstring::npos) {
                objects[equals == std::wstring::npos ? L"it" : call.substr(0, equals)] = answer;
            }
            return answer.IsEmpty() ? Where() : Shown(answer);
        } catch (const com::Error& error) {
            EXPECT_NE(error.description, L"");
            return error.number == kInvalidArgument   ? L"invalid"
                   : error.number == kNoCurrentRecord ? L"no record"
                   : error.number == kItemNotFound    ? L"no item"
                                                      : L"error";
        }
    }
    std::wstring Where() {
        const std::wstring place = Do(L"set.AbsolutePosition") + L"/" + Do(L"set.RecordCount");
        return place + (Do(L"set.BOF") == L"True" ? L" BOF" : L"") +
               (Do(L"set.EOF") == L"True" ? L" EOF" : L"");
    }
    /// Values with the types that they come in, where text would do as well.
    std::wstring Shown(const Variant& value) {
        switch (value.Type()) {
        case VT_BOOL:
            return value.ToBool() ? L"True" : L"False";
        case VT_CY:
            return std::to_wstring(value.Get().cyVal.int64) + L" cy";
        case VT_DATE:
            return std::to_wstring(std::lround(value.ToDate())) + L" date";
        case VT_NULL:
            return L"Null";
        case VT_DISPATCH:
            return L"object";
        case VT_R8:
            return L"bookmark";
        case VT_ARRAY | VT_VARIANT: {
            const SAFEARRAY& block = *value.Get().parray;
            LONG last[] = {static_cast<LONG>(block.rgsabound[1].cElements) - 1,
                           static_cast<LONG>(block.rgsabound[0].cElements) - 1};
            Variant corner;
            EXPECT_EQ(SafeArrayGetElement(value.Get().parray, last, corner.Address()), S_OK);
            return std::to_wstring(last[0] + 1) + L"x" + std::to_wstring(last[1] + 1) + L" to " +
                   Shown(corner);
        }
        default:
            return value.ToText();
        }
    }
    static std::wstring Trimmed(const std::wstring& text) {
        const size_t from = text.find_first_not_of(L" \n");
        return from == std::wstring::npos ? L"" : text.substr(from, text.find_last_not_of(L" \n") + 1 - from);
    }
    /// A text in quotation marks, the name of an object, Null, Missing, False or a number.
    Variant Read(const std::wstring& word) {
        if (word.starts_with(L'"')) {
            return Variant(word.substr(1, word.size() - 2));
        }
        if (const auto known = objects.find(word); known != objects.end()) {
            return known->second;
        }
        return word == L"Null"      ? Variant::Null()
               : word == L"Missing" ? Variant::Missing()
               : word == L"False"   ? Variant(false)
                                    : Variant(std::stol(word));
    }
    /// Steps "call argument; ... => answer"; parted by "|".
    void Converse(const wchar_t* script) {
        std::wistringstream steps(script);
        for (std::wstring step; std::getline(steps, step, L'|');) {
            const size_t arrow = step.find(L"=>");
            std::wistringstream words(Trimmed(step.substr(0, arrow)));
            std::wstring call, word;
            std::getline(words, call, L' ');
            std::vector<Variant> arguments;
            while (std::getline(words, word, L';')) {
                arguments.push_back(Read(Trimmed(word)));
            }
            EXPECT_EQ(base::ToUtf8(Do(call, arguments)), base::ToUtf8(Trimmed(step.substr(arrow + 2))))
                << base::ToUtf8(step);
        }
    }

    std::shared_ptr<Database> database = std::make_shared<Database>(OpenSampleData(L":memory:", kArticles));
    std::map<std::wstring, Variant> objects; // and the bookmarks
    HWND edit = CreateWindowW(L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, HWND_MESSAGE, nullptr,
                              nullptr, nullptr);
};

TEST_F(DemoHost, TheRecordSetKeepsItsContract) {
    database->Execute(
        L"update articulos set precio = -123456, alta = '2024-02-29', activo = 1, proveedor = null where id "
        L"= 1");
    Converse(
        LR"(
        articles.Requery => 1/320 | fields=set.Fields => object | fields.Count => 10 |
        name=fields.Item 1 => object | name.Name => descripcion | name.Caption => Descripción | name.Type => 202 |
        name.DefinedSize => 60 | fields.Item 10 => no item | fields.Item "id" => no item |
        price=fields.Item "PRECIO" => object | price.Value => -12345600 cy | since=fields.Item "alta" => object |
        since.Value => 45351 date | active=fields.Item "activo" => object | active.Value => True |
        from=fields.Item "proveedor" => object | from.Value => Null | code=fields.Item 0 => object |
        set.AbsolutePosition:= 5 => 5/320 | price.Value:= "1.234,5" => 5/320 | price.Value => 12345000 cy |
        price.Value:= "mucho" => invalid | code.Value:= "" => invalid | set.MoveFirst => 1/320 |
        set.MovePrevious => -2/320 BOF | code.Value => no record | set.Bookmark => no record |
        set.MoveLast => 320/320 | set.MoveNext => -3/320 EOF | set.MoveNext => -3/320 EOF |
        set.MovePrevious => 320/320 | set.AbsolutePosition:= 321 => invalid | articles.MoveNext => 320/320 |
        articles.MoveFirst => 1/320 | articles.MovePrevious => 1/320 | articles.MoveLast => 320/320 |
        set.AbsolutePosition:= 40 => 40/320 | clone=set.Clone 1 => object |
        clone.MoveLast => 40/320 |
        clone.AbsolutePosition => 320 | articles.SetOrder 1; " DESC"; "seleccion" => 92/320 |
        code.Value => 02000020 | clone.Sort => descripcion DESC | mark=set.Bookmark => bookmark | set.MoveFirst => 1/320 |
        set.Bookmark:= mark => 92/320 | clone.Bookmark:= mark => 92/320 | clone.AbsolutePosition => 92 |
        articles.SetOrder 99; ""; "seleccion" => invalid |
        articles.AplyFilter "id <= 3" => 1/3 | clone.EOF => True | clone.MovePrevious => 1/3 |
        clone.AbsolutePosition => 3 | set.Bookmark:= 40 => no record |
        articles.AplyFilter "id < 0" => -1/0 BOF EOF | set.MoveFirst => -1/0 BOF EOF |
        articles.MoveLast => -1/0 BOF EOF | articles.existenregistros => False | set.GetRows => no record |
        articles.SetOrder 0; ""; "seleccion" => -1/0 BOF EOF | articles.AplyFilter "" => 1/320 |
        set.AbsolutePosition:= 61 => 61/320 | set.GetRows 10; Missing; "codigo" => 1x10 to 04000010 |
        set.AbsolutePosition => 71 | set.GetRows -1; 2; "codigo" => 1x1 to 16000020 | set.EOF => True |
        set.GetRows 1 => no record | set.GetRows 1; 1; "color" => no item | set.GetRows 0 => invalid)");
    const std::wstring version = Do(L"set.DataVersion");
    Do(L"set.MoveFirst");
    Do(L"price.Value:=", {Variant::Null()});
    EXPECT_NE(Do(L"set.DataVersion"), version);
    ComPtr<DataSource> source;
    ComPtr<IUnknown> found;
    ASSERT_EQ(
        objects[L"articles"].ToObject()->QueryInterface(kDataSourceId, reinterpret_cast<void**>(&source)),
        S_OK);
    EXPECT_EQ(source->getDataMember(com::Bstr(L"Primary").Get(), IID_IDispatch, &found), S_OK);
    EXPECT_TRUE(com::SameObject(found.Get(), objects[L"set"].ToObject().Get()));
    EXPECT_TRUE(FAILED(source->getDataMember(com::Bstr(L"Secundario").Get(), IID_IDispatch, &found)));
}

TEST_F(DemoHost, TheDataClassKeepsItsContract) {
    database->Execute(
        L"update articulos set existencias = familia <> '02'; update articulos set activo = id <> 7;"
        L"update articulos set descripcion = 'Cerámica ÑANDÚ' where id <= 2");
    Converse(
        LR"(
        articles.sClassName => articulos | articles.Requery "seleccion_stock" => 1/300 |
        articles.Requery "Seleccionar" => 1/319 |
        articles.AplyFilter "familia = '01' Or familia = '02' -- todo" => 1/39 | set.AbsolutePosition:= 3 => 3/39 |
        articles.AplyFilter "familia =" => invalid |
        articles.AplyFilter "familia = 'x" => invalid | articles.Requery "selección" => invalid |
        articles.Requery "selec" => 3/39 | articles.Requery "seleccion" => 3/320 |
        articles.SetFilter "familia = '02'"; "FilterSelec" => 3/320 |
        articles.GetFilter "FilterSelec" => familia = '02' | articles.GetFilter "Filter" => |
        articles.FindRecord "03000004" => 44/320 | articles.FindRecord "ceramica n"; 1 => 44/320 |
        articles.FindRecord "CERAMICA ñandú"; 1 => 1/320 | box.DataField:= "descripcion" => 1/320 |
        box.Text:= "*ÑANDU" => 1/320 | articles.CreateFilter box => sin_acentos(descripcion) Like '%ñandu%' |
        articles.AplyFilter "sin_acentos(descripcion) Like '%ñandu%'" => 1/2 | articles.AplyFilter "" => 1/320 |
        articles.CreateFilter box; 0 => sin_acentos(descripcion) Like '%ñandu' |
        articles.CreateFilter box; 3 => invalid | box.Text:= " *Güell_ " => 1/320 |
        articles.CreateFilter box; 0 => sin_acentos(descripcion) Like '%guell\_' Escape '\' |
        box.Text:= "D'Órs" => 1/320 | articles.CreateFilter box; 2 => descripcion <= 'D''Órs' |
        box.DataField:= "precio" => 1/320 | box.Text:= "1.234,5" => 1/320 |
        articles.CreateFilter box; 1 => precio >= importe('1.234,5') | box.Text:= "1.23.456" => 1/320 |
        articles.CreateFilter box; 1 => invalid | box.DataField:= "activo" => 1/320 |
        box.Text:= " 0 - No" => 1/320 | articles.CreateFilter box; 0 => activo = 0 |
        box.Text:= " 2 - Todos" => 1/320 | articles.CreateFilter box; 0 => | box.DataField:= "color" => 1/320 |
        articles.CreateFilter box => no item | articles.ValidaValue box => Null | box.DataField:= "alta" => 1/320 |
        box.Text:= "31/2/2024" => 1/320 | articles.ValidaValue box => False | box.Text:= "29/2/2024" => 1/320 |
        articles.ValidaValue box => True | articles.ValidaDefinedSize box => 10 |
        articles.ValidaKey box; 120 => False | articles.ValidaValue Null => invalid |
        link=articles.GetConnection => object | articles.Aceptar_todos set => invalid |
        articles.NuevoCodigo_Fam " 02 " => 02000021 | articles.NuevoCodigo_Fam "XX" => invalid |
        articles.InsertarArticulo "uno" => invalid | box.Name => TxtFields | box.Index => 3 | columns.Count => 10 |
        columns.Item "precio" => object | it.Visible:= False => 1/320 | columns.Item 3 => object |
        it.Visible => False | it.Caption => Precio | columns.Item 10 => no item | reports.Item 2 => object |
        it.Titulo => Etiquetas | classes.CrearClase "IMPUESTOS" => object | it.sClassName => impuestos |
        it.Requery "seleccionar" => 1/320 | classes.CrearClase "facturas" => no item |
        classes.ClaseRelacionada "Ordenes"; "CLIENTE" => clientes |
        classes.ClaseRelacionada "Ordenes"; "Orden" =>)");
    Do(L"articles.Denegar_todos", {objects.at(L"link")});
    EXPECT_EQ(database->Number(L"select count(*) from articulos where activo = 1"), 0);
    short key = L'ñ';
    com::LateObject articles(objects[L"articles"].ToObject().Get(), L"MyClase");
    Do(L"box.DataField:=", {Variant(L"codigo")});
    articles.Call(L"ValidaKey", {objects[L"box"], com::Argument::Ref(key)});
    EXPECT_EQ(key, L'Ñ');

    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 5);
    LONG next = 0;
    for (const wchar_t* text : {L"02000021", L"Corona de prueba", L"02", L"12,50", L""}) {
        static_cast<VARIANT*>(array->pvData)[next++] = Variant(text).Detach();
    }
    VARIANT record{};
    record.vt = VT_ARRAY | VT_VARIANT;
    record.parray = array;
    const Variant values = Variant::Attach(record);
    EXPECT_EQ(Do(L"articles.InsertarArticulo", {values}), L"41/321");
    EXPECT_EQ(Do(L"articles.InsertarArticulo", {values}), L"invalid");
    EXPECT_EQ(
        database->Number(L"select precio from articulos where codigo = '02000021' and existencias is null"),
        1250);
    DestroyWindow(edit);
    EXPECT_EQ(Do(L"box.Text"), L"error");
    com::LateObject(MakeAppointments(database).Get(), L"Citas")
        .Call(L"GuardarCita", {Variant::Date(60000), Variant::Date(17.75 / 24), L"000", L"Tarde", L"-.-",
                               L"003", L"Eva", L"2", L"Prueba", static_cast<IDispatch*>(nullptr)});
    EXPECT_EQ(AppointmentsOn(*database, 60000), (std::vector<std::wstring>{L"17:45   Tarde   Prueba   Eva"}));
}

// One report with conditions, groups and sums, one call for each member that has conditions of its own.
TEST(DemoReports, TheConditionsOfEachCallActAndTheRowsAreSummed) {
    Database database = OpenSampleData(L":memory:", kArticles);
    database.Execute(
        L"delete from ordenes; insert into ordenes(Orden, Paciente, cliente, fecha, estado, importe,"
        L" urgente, hora, serie, tipo, repeticion) values"
        L"(1, 'Ana', '000001', '2026-10-31', 'Facturada', 100000, 0, '09:00', 'A', '01', 0),"
        L"(2, 'Luis', '000001', '2026-11-01', 'Facturada', 123450, 0, '10:30', 'A', '02', 1),"
        L"(3, 'Íñigo', '000002', '2026-11-15', 'Recibida', 50, 1, '18:45', 'B', '01', 0),"
        L"(4, 'Eva', '000001', '2026-11-30', 'Recibida', 200, 0, '07:00', 'B', '02', 0),"
        L"(5, 'Juan', '000002', '2026-12-01', 'Facturada', 300, 0, '23:59', 'A', '01', 1);"
        L"update ordenes set Caja = Orden;"
        L" update clientes set nombre = 'Clínica ' || substr('ÑT', id, 1) where id <= 2");
    const Variant out{short{1}}, one{short{1}}, yes{short{0}}, no{short{1}}, all{short{2}}, none(L"");
    const Variant from = Variant::Date(46327), to = Variant::Date(46356); // November 2026
    const struct {
        const wchar_t* member;
        std::vector<Variant> arguments;
        const wchar_t* rows;
        const wchar_t* heading;
    } cases[] = {
        {L"AceptarReports", {out, one}, L"1 2 3 4 5 ", L""},
        {L"AceptarReportsParam",
         {out, one, from, to, Variant(L"clinica ñ"), no, all, none, none},
         L"4 ",
         L"Entre 01/11/2026 y 30/11/2026; tipo o cliente: clinica ñ; facturado: no; repetición: todos"},
        {L"AceptarInformesFchAutoTipoTime",
         {out, one, from, to, yes, Variant(L"01"), Variant::Date(0), Variant::Date(0.9), all, all,
          Variant(L"000002")},
         L"3 ",
         L"Entre 01/11/2026 y 30/11/2026; tipo: 01; hora entre 00:00 y 21:36; repetición: todos; facturado: "
         L"todos; cliente: "
         L"000002"},
        {L"AceptarDocNumAut",
         {out, one, Variant(L"4"), Variant(), Variant(false)},
         L"4 5 ",
         L"Números desde 4"},
    };
    const auto made = [&](const wchar_t* className, const wchar_t* title, const Parameters& parameters) {
        const std::vector<ReportInfo> offered = ReportsOf(*FindTable(className));
        return Produce(database, *std::ranges::find(offered, title, &ReportInfo::title), parameters);
    };
    for (const auto& c : cases) {
        std::vector<VARIANT> reversed;
        for (auto argument = c.arguments.rbegin(); argument != c.arguments.rend(); ++argument) {
            reversed.push_back(argument->Get());
        }
        const Variant ticks(com::MakeCollection({Variant(true), Variant(false)}).Get());
        reversed.push_back(ticks.Get());
        DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        const ReportCall call = ReadReportCall(c.member, com::Invocation(parameters, DISPATCH_METHOD));
        EXPECT_EQ(call.ticks, (std::vector{true, false}));
        const Report report = made(L"Ordenes", L"Órdenes entre fechas", call.parameters);
        std::wstring orders;
        for (const Report::Line& line : report.lines) {
            orders += line.kind == Report::Line::Row ? line.cells[0] + L' ' : L"";
        }
        EXPECT_EQ(base::ToUtf8(orders), base::ToUtf8(c.rows)) << base::ToUtf8(c.member);
        EXPECT_EQ(base::ToUtf8(report.conditions), base::ToUtf8(c.heading));
    }
    std::wstring lines;
    for (const Report::Line& line :
         made(L"clientes", L"Órdenes por cliente",
              {{":desde", Value(L"2026-11-01"), L""}, {":hasta", Value(L"2026-11-30"), L""}})
             .lines) {
        for (const std::wstring& cell : line.cells) {
            lines += cell + L"|";
        }
    }
    EXPECT_EQ(base::ToUtf8(lines),
              "000001 Clínica Ñ|2|01/11/2026|Luis|Facturada|1.234,50|4|30/11/2026|Eva|Recibida|2,00|Suma "
              "(2)||||1.236,50|"
              "000002 Clínica T|3|15/11/2026|Íñigo|Recibida|0,50|Suma (1)||||0,50|Total (3)||||1.237,00|");
    for (const TableInfo& table : Tables()) {
        for (const ReportInfo& info : ReportsOf(table)) {
            EXPECT_NO_THROW(Produce(database, info, {})) << base::ToUtf8(info.title);
        }
    }
    std::vector<Report> reports(2);
    reports[0].lines.resize(100);
    const std::vector<Page> pages = Paginate(reports);
    ASSERT_EQ(pages.size(), 4U) << "three of lines, and an empty one";
    EXPECT_EQ(pages[2].first + pages[2].count, 100U);
}

} // namespace
} // namespace tamvelo::demo
