#include "base/SettingsKeys.h"
#include "base/Text.h"
#include "reports/Dialogs.h"
#include "reports/SharedConditions.h"

// The dialogs of conditions: dates, options, a price list, free texts, hours.
namespace tamvelo::reports {

using contract::ReportChoice;
using Kind = Condition::Kind;

namespace {

constexpr wchar_t kCaption[] = L"Selección de Documentos e informes";
constexpr wchar_t kNote[] = L"Sólo para los informes que aceptan parámetros.";

constexpr Condition kTypeOrCustomer{
    .kind = Kind::Text, .index = 1, .caption = L"Tipo / Cliente ", .width = 90};
constexpr Condition kSeries{.kind = Kind::Text, .index = 2, .caption = L"Serie", .width = 40, .beside = true};
constexpr Condition kRepeated{.kind = Kind::Choice,
                              .index = 0,
                              .caption = L"Repetición :",
                              .opening = kAllOfThem,
                              .entries = kYesNoAll,
                              .note = L"(Solo para Ordenes)"};
constexpr Condition kOnlyRepeated{
    .kind = Kind::Check, .index = 1, .caption = L"Solo las repeticiones", .beside = true, .shortWay = true};
constexpr Condition kInvoiced{
    .kind = Kind::Choice, .index = 2, .caption = L"Facturado :", .opening = kAllOfThem, .entries = kYesNoAll};
constexpr Condition kOnlyInvoiced{
    .kind = Kind::Check, .index = 0, .caption = L"Solo los Facturados", .beside = true, .shortWay = true};
constexpr Condition kPriceList{.kind = Kind::Choice,
                               .index = 1,
                               .caption = L"Lista  :",
                               .opening = kPriceLists[0],
                               .entries = kPriceLists,
                               .note = L"(Solo  Lista de precios. )"};

constexpr Condition kConditions[] = {kTypeOrCustomer, kSeries,       kRepeated, kOnlyRepeated,
                                     kInvoiced,       kOnlyInvoiced, kPriceList};

// frmRptsCond

void DeliverCond(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarReportsParam(choice, form.Range(), form.Text(1), form.Choice(2), form.Choice(0),
                                    form.Text(2), form.ChoiceText(1));
}

// frmRptsInfCond: the screen of the customers keeps the customer that was asked for last.

bool IsCustomers(const ReportForm& form) { return base::Lower(form.Cls()) == L"clientes"; }

void DeliverInfCond(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarReportsInformesParam(choice, form.Range(), form.Text(1), form.Choice(2),
                                            form.Choice(0), form.Text(2));
}

constexpr Condition kInfConditions[] = {kTypeOrCustomer, kSeries,   kRepeated,
                                        kOnlyRepeated,   kInvoiced, kOnlyInvoiced};

// frmRptsMailCond: for drafts the document type is fixed.

constexpr const wchar_t* kMail[] = {L"Enviar por e-mail"};
constexpr wchar_t kDraft[] = L"Borrador";
constexpr Condition kMailConditions[] = {
    {.kind = Kind::Text, .index = 1, .caption = L"Tipo doc.", .width = 90},
    kSeries,
    kRepeated,
    kOnlyRepeated,
    kInvoiced,
    kOnlyInvoiced,
    kPriceList,
};

void OpenMailCond(ReportForm& form) {
    if (form.IsLimited()) {
        form.Row(Kind::Text, 1).SetText(kDraft);
    } else if (form.Text(1) == kDraft) {
        form.Row(Kind::Text, 1).SetText(L"");
    }
    form.Row(Kind::Text, 1).Enable(!form.IsLimited(), L"Sólo borradores");
}

void DeliverMailCond(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarReportsParamMail(choice, form.Range(), form.Text(1), form.Choice(2), form.Choice(0),
                                        form.Text(2), form.ChoiceText(1));
}

// frmRptsCondHr

constexpr Condition kHourConditions[] = {
    kTypeOrCustomer,
    {.kind = Kind::Hour, .index = 2, .caption = L"Hora entre ", .opening = L"07:00", .width = 34},
    {.kind = Kind::Hour, .index = 3, .caption = L"y ", .opening = L"23:59", .width = 34, .beside = true},
    {.kind = Kind::Check, .index = 0, .caption = kOnlyInvoiced.caption},
    {.kind = Kind::Check, .index = 1, .caption = kOnlyRepeated.caption, .beside = true},
};

void DeliverCondHr(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarReportsParamHr(choice, form.Range(), form.Text(1), form.IsTicked(0), form.IsTicked(1),
                                      form.Hour(2), form.Hour(3));
}

} // namespace

const ReportDesign kRptsCond{
    .name = L"frmRptsCond",
    .caption = kCaption,
    .deliver = DeliverCond,
    .dates = true,
    .conditions = kConditions,
    .note = kNote,
};

const ReportDesign kRptsInfCond{
    .name = L"frmRptsInfCond",
    .caption = kCaption,
    .deliver = DeliverInfCond,
    .dates = true,
    .conditions = kInfConditions,
    .note = kNote,
    .period = base::PeriodParts::MonthAndYear,
    .kept = KeptText{.index = 1,
                     .name = L"Cliente",
                     .sesion = base::kSesionPersonalClientes,
                     .applies = IsCustomers,
                     .eachTime = true},
};

const ReportDesign kRptsMailCond{
    .name = L"frmRptsMailCond",
    .caption = kCaption,
    .deliver = DeliverMailCond,
    .ownOutputs = kMail,
    .printerByName = true,
    .dates = true,
    .conditions = kMailConditions,
    .note = kNote,
    .period = base::PeriodParts::Year,
    .opened = OpenMailCond,
};

const ReportDesign kRptsCondHr{
    .name = L"frmRptsCondHr",
    .caption = kCaption,
    .deliver = DeliverCondHr,
    .dates = true,
    .conditions = kHourConditions,
    .note = kNote,
};

} // namespace tamvelo::reports
