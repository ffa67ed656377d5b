#include <gtest/gtest.h>

#include <algorithm>

#include "base/Text.h"
#include "com/Collection.h"
#include "demo/data/SampleData.h"
#include "demo/data/Values.h"
#include "demo/reports/PageDrawing.h"
#include "demo/reports/ReportCall.h"

namespace tamvelo::demo {

namespace {

using com::Variant;
using Line = Report::Line;
using Output = ReportCall::Output;

/// The cells of a line; a heading's in brackets.
std::string Shown(const Line& line) {
    std::wstring text;
    for (const std::wstring& cell : line.cells) {
        text += (&cell == line.cells.data() ? L"" : L"|") + cell;
    }
    return base::ToUtf8(line.kind == Line::Group ? L'[' + text + L']' : text);
}

class DemoReports : public testing::Test {
protected:
    /// Five orders of two customers in place of the sample's.
    void SetUp() override {
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
    }

    /// A call with the ticks yes, no, yes and what follows them.
    static ReportCall Read(const wchar_t* member, std::vector<Variant> arguments) {
        arguments.insert(arguments.begin(),
                         Variant(com::MakeCollection({Variant(true), Variant(false), Variant(true)}).Get()));
        std::vector<VARIANT> reversed;
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
            reversed.push_back(argument->Get());
        }
        DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        return ReadReportCall(member, com::Invocation(parameters, DISPATCH_METHOD));
    }
    Report Made(const wchar_t* className, const wchar_t* title, const Parameters& parameters) {
        const std::vector<ReportInfo> offered = ReportsOf(*FindTable(className));
        const auto found = std::ranges::find(offered, title, &ReportInfo::title);
        return found != offered.end() ? Produce(database, *found, parameters) : Report{};
    }
    void ExpectLines(const Report& report, const std::vector<const char*>& lines) {
        ASSERT_EQ(report.lines.size(), lines.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            EXPECT_EQ(Shown(report.lines[i]), lines[i]);
        }
    }

    const Variant printer{short{0}};
    const Variant one{short{1}};
    const Variant all{short{2}};
    const Variant nov1 = Variant::Date(46327); // 2026
    const Variant nov30 = Variant::Date(46356);
    Database database = OpenSampleData(L":memory:", 320);
};

TEST_F(DemoReports, TheConditionsOfEachCallAct) {
    const Variant none(L"");
    const Variant yes(short{0});
    const Variant no(short{1});
    const struct {
        const wchar_t* member;
        std::vector<Variant> arguments;
        const char* orders; // by number
        const char* heading;
    } cases[] = {
        {L"AceptarReports", {printer, one}, "1 2 3 4 5 ", ""},
        {L"AceptarInformesFchAuto", {printer, one, nov1, nov30}, "2 3 4 ", "Entre 01/11/2026 y 30/11/2026"},
        {L"AceptarReportsFchAuto", {printer, one, nov30, nov30, yes}, "4 ", "Entre 30/11/2026 y 30/11/2026"},
        {L"AceptarInformesFch",
         {printer, one, nov1, nov30, Variant(L" b ")},
         "3 4 ",
         "Entre 01/11/2026 y 30/11/2026; serie: b"},
        {L"AceptarReportsParam",
         {printer, one, nov1, nov30, Variant(L"clinica ñ"), no, all, none, Variant(L"PRC")},
         "4 ",
         "Entre 01/11/2026 y 30/11/2026; tipo o cliente: clinica ñ; facturado: no; repetición: todos"},
        {L"AceptarReportsParamMail",
         {printer, one, nov1, nov30, Variant(L"Borrador"), yes, all, none, Variant(L"PRC")},
         "2 ",
         "Entre 01/11/2026 y 30/11/2026; facturado: sí; repetición: todos"},
        {L"AceptarReportsInformesParam",
         {printer, one, nov1, nov30, none, all, yes, none},
         "2 ",
         "Entre 01/11/2026 y 30/11/2026; facturado: todos; repetición: sí"},
        {L"AceptarReportsParamHr",
         {printer, one, nov1, nov30, none, Variant(false), Variant(false), Variant::Date(7.0 / 24),
          Variant::Date(10.5 / 24)},
         "2 4 ",
         "Entre 01/11/2026 y 30/11/2026; hora entre 07:00 y 10:30"},
        {L"AceptarReportsParamHr",
         {printer, one, nov1, nov30, none, Variant(true), Variant(true), Variant::Date(0),
          Variant::Date(0.9)},
         "2 ",
         "Entre 01/11/2026 y 30/11/2026; solo lo facturado; solo las repeticiones; hora entre 00:00 y 21:36"},
        {L"AceptarInformesFchAutoTipoTime",
         {printer, one, nov1, nov30, yes, Variant(L"01"), Variant::Date(0), Variant::Date(0.9), all, all,
          Variant(L"000002")},
         "3 ",
         "Entre 01/11/2026 y 30/11/2026; tipo: 01; hora entre 00:00 y 21:36; repetición: todos;"
         " facturado: todos; cliente: 000002"},
        {L"AceptarDocNumAut",
         {printer, one, Variant(L"4"), Variant(), Variant(false)},
         "4 5 ",
         "Números desde 4"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(base::ToUtf8(c.member));
        ASSERT_TRUE(IsReportMember(c.member));
        const Report report =
            Made(L"Ordenes", L"Órdenes entre fechas", Read(c.member, c.arguments).parameters);
        std::wstring orders;
        for (const Line& line : report.lines) {
            orders += line.kind == Line::Row ? line.cells[0] + L' ' : L"";
        }
        EXPECT_EQ(base::ToUtf8(orders), c.orders);
        EXPECT_EQ(base::ToUtf8(report.conditions), c.heading);
        EXPECT_EQ(report.stamp,
                  c.member == std::wstring_view(L"AceptarReportsParamMail") ? L"Borrador" : L"");
    }
}

TEST_F(DemoReports, TicksOutputAndCopies) {
    const ReportCall mail = Read(L"AceptarReports", {all, Variant(short{3})});
    EXPECT_EQ(mail.ticks, (std::vector{true, false, true}));
    EXPECT_EQ(mail.output, Output::Mail);
    EXPECT_EQ(mail.copies, 3);
    EXPECT_EQ(Read(L"AceptarReports", {printer, one}).output, Output::Printer);
    EXPECT_EQ(Read(L"AceptarReports", {printer, Variant(short{0})}).output, Output::Preview)
        << "not asked for";
    EXPECT_EQ(Read(L"AceptarEtiqueta", {}).output, Output::Preview);
    EXPECT_EQ(Read(L"AceptarInformesFchAuto", {one, one, nov1, nov30, one}).output, Output::Printer)
        << "automatic";
    EXPECT_THROW(Read(L"AceptarDocNumAut", {one, one, Variant(L"cuatro"), Variant(), Variant(false)}),
                 com::Error);
    EXPECT_FALSE(IsReportMember(L"AceptarSeleccion"));
}

TEST_F(DemoReports, RowsAndTotals) {
    ExpectLines(Made(L"clientes", L"Órdenes por cliente",
                     {{":desde", Value(L"2026-11-01"), L""}, {":hasta", Value(L"2026-11-30"), L""}}),
                {"[000001 Clínica Ñ]", "2|01/11/2026|Luis|Facturada|1.234,50",
                 "4|30/11/2026|Eva|Recibida|2,00", "Suma (2)||||1.236,50", "[000002 Clínica T]",
                 "3|15/11/2026|Íñigo|Recibida|0,50", "Suma (1)||||0,50", "Total (3)||||1.237,00"});
    ExpectLines(Made(L"Ordenes", L"Resumen por meses", {}),
                {"10/2026|1|0|1|1.000,00", "11/2026|3|1|1|1.237,00", "12/2026|1|1|1|3,00",
                 "Total (3)|5|2|3|2.240,00"});
    ExpectLines(Made(L"Ordenes", L"Órdenes repetidas", {{":serie", Value(L"C"), L""}}),
                {"Total (0)||||0,00"});

    database.Execute(
        L"update articulos set activo = id = 1; update articulos set precio = 1000 where id = 1");
    const Report prices = Made(L"articulos", L"Lista de precios", {{":lista", Value(L"SL2"), L"SL2"}});
    ASSERT_EQ(prices.rows, 1);
    EXPECT_EQ(prices.lines[1].cells[3], L"9,00");
    EXPECT_EQ(Made(L"articulos", L"Lista de precios", {{":lista", Value(L"TDS"), L""}}).rows, 9);

    const Report many = Produce(database,
                                {ReportInfo::Shape::List,
                                 L"",
                                 L"with n(i) as (select 1 union all select i + 1 from n where i < 6000)"
                                 L" select i from n",
                                 {{L"", Type::Integer, 9, true}}},
                                {});
    EXPECT_EQ(many.lines.size(), 5002U) << "the rows printed, that it was not all, and the total of all";
    EXPECT_EQ(Shown(many.lines[4999]), "5.000");
    EXPECT_EQ(many.rows, 6000);
}

TEST_F(DemoReports, EveryReportOfEveryScreenWorks) {
    for (const TableInfo& table : Tables()) {
        for (const ReportInfo& info : ReportsOf(table)) {
            SCOPED_TRACE(base::ToUtf8(std::wstring(table.className) + L": " + info.title));
            const Report report = Produce(database, info, {});
            std::vector<bool> filled(report.columns.size());
            for (const Line& line : report.lines) {
                for (std::size_t i = 0; line.kind == Line::Row && i < filled.size(); ++i) {
                    filled[i] = filled[i] || !line.cells[i].empty();
                }
            }
            EXPECT_TRUE(report.rows == 0 || std::ranges::all_of(filled, std::identity{}))
                << "a column without a value";
        }
    }
    for (const wchar_t* className : {L"articulos", L"Ordenes"}) { // whose eleventh the dialog of series knows
        EXPECT_NE(ReportsOf(*FindTable(className)).at(10).title.find(L"por serie"), std::wstring::npos);
        EXPECT_FALSE(LabelsOf(*FindTable(className)).empty());
    }
}

TEST_F(DemoReports, PagesHoldEveryLineOnce) {
    std::vector<Report> reports(3);
    reports[0].lines.resize(100);
    reports[2].shape = ReportInfo::Shape::Labels;
    reports[2].lines.resize(25);
    const std::vector<Page> pages = Paginate(reports);
    ASSERT_EQ(pages.size(), 6U) << "three of lines, an empty one, two of labels";
    EXPECT_EQ(pages[0].count + pages[1].count + pages[2].count, 100U);
    EXPECT_EQ(pages[2].first, pages[0].count + pages[1].count);
    EXPECT_EQ(pages[2].of, 3);
    EXPECT_EQ(pages[5].count, 1U);
}

} // namespace

} // namespace tamvelo::demo
