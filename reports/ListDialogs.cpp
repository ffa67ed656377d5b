#include "base/Commands.h"
#include "base/SettingsKeys.h"
#include "reports/Dialogs.h"
#include "reports/SharedConditions.h"

// The dialogs of a list without dates.
namespace tamvelo::reports {

using contract::ReportChoice;
using Kind = Condition::Kind;

namespace {

// frmRpts

void DeliverReports(ReportForm& form, ReportChoice& choice) { form.Sink().AceptarReports(choice); }

// frmsql: the document series belongs to one report of the list.

constexpr int kReportWithSeries = 10;
constexpr wchar_t kWhyNoSeries[] = L"Sólo para el informe 11 de la lista";

constexpr Condition kSqlConditions[] = {
    {.kind = Kind::Text, .index = 0, .caption = L"Se&rie:", .note = kWhyNoSeries},
};

void PrepareSql(ReportForm& form) { form.Row(Kind::Text, 0).Enable(false, kWhyNoSeries); }

void SqlEntryChosen(ReportForm& form, int entry) {
    form.ReadKept();
    form.Row(Kind::Text, 0).Enable(entry == kReportWithSeries, kWhyNoSeries);
}

void DeliverSql(ReportForm& form, ReportChoice& choice) { form.Sink().AceptarReportsPlain(choice); }

// frmSelecEti

constexpr frame::KeyRow kLabelKeys[] = {{0, VK_F8, frame::kNoCommand}};

void DeliverLabels(ReportForm& form, ReportChoice& choice) { form.Sink().AceptarEtiqueta(choice.selection); }

// frmRptsListas

constexpr Condition kListasConditions[] = {
    {.kind = Kind::Choice,
     .index = 1,
     .caption = L"Lista  :",
     .opening = kPriceLists[0],
     .entries = kPriceLists,
     .note = L"(Solo  Lista de precios. )"},
};

void DeliverListas(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarListasParam(choice, form.ChoiceText(1));
}

} // namespace

const ReportDesign kRpts{
    .name = L"frmRpts",
    .caption = L"Selección de Documentos",
    .deliver = DeliverReports,
};

const ReportDesign kSql{
    .name = L"frmsql",
    .caption = L"Selección de Informes",
    .deliver = DeliverSql,
    .output = false,
    .conditions = kSqlConditions,
    .prepare = PrepareSql,
    .chosen = SqlEntryChosen,
    .kept = KeptText{.index = 0, .name = L"Serie", .sesion = base::kSesionClientes},
};

const ReportDesign kSelecEti{
    .name = L"frmSelecEti",
    .caption = L"Selección de Etiquetas",
    .deliver = DeliverLabels,
    .output = false,
    .labels = true,
    .keys = kLabelKeys,
};

const ReportDesign kRptsListas{
    .name = L"frmRptsListas",
    .caption = L"Selección de Listas",
    .deliver = DeliverListas,
    .conditions = kListasConditions,
};

} // namespace tamvelo::reports
