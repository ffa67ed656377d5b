#include "base/SettingsKeys.h"
#include "reports/Dialogs.h"
#include "reports/SharedConditions.h"

// The dialogs of orders and of numbered documents.
namespace tamvelo::reports {

using com::Variant;
using contract::ReportChoice;
using Kind = Condition::Kind;

namespace {

// frmRptsInfOrdenes

constexpr Condition kOrderConditions[] = {
    {.kind = Kind::Text, .index = 10, .caption = L"Cliente : ", .width = 50, .lookup = {L"clientes"}},
    {.kind = Kind::Text, .index = 1, .caption = L"Tipo : ", .width = 50, .beside = true},
    {.kind = Kind::Hour, .index = 2, .caption = L"Hora entre ", .opening = L"00:00", .width = 34},
    {.kind = Kind::Hour, .index = 3, .caption = L"y ", .opening = L"23:59", .width = 34, .beside = true},
    {.kind = Kind::Choice,
     .index = 0,
     .caption = L"Repetición :",
     .opening = kAllOfThem,
     .entries = kYesNoAll},
    {.kind = Kind::Choice,
     .index = 2,
     .caption = L"Facturado :",
     .opening = kAllOfThem,
     .entries = kYesNoAll,
     .beside = true},
    kAutomatic,
};

void DeliverOrders(ReportForm& form, ReportChoice& choice) {
    const base::DateRange range = form.Range();
    form.Sink().AceptarInformesFchAutoTipoTime(
        choice, {Variant::Date(range.first), Variant::Date(range.last), Variant(Automatic(form)),
                 Variant(form.Text(1)), Variant::Date(form.Hour(2)), Variant::Date(form.Hour(3)),
                 Variant(form.Choice(0)), Variant(form.Choice(2)), Variant(form.Text(10))});
}

// frmRptNumAut

constexpr Condition kNumberConditions[] = {
    {.kind = Kind::Text, .index = 1, .caption = L"Número desde "},
    {.kind = Kind::Text, .index = 2, .caption = L"hasta ", .beside = true},
    kAutomatic,
};

/// A number as it was typed; nothing typed is no number, not an empty text.
Variant Number(const ReportForm& form, short index) {
    const std::wstring text = form.Text(index);
    return text.empty() ? Variant() : Variant(text);
}

void DeliverNumbers(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarDocNumAut(choice, Number(form, 1), Number(form, 2), form.IsTicked(0));
}

} // namespace

const ReportDesign kRptsInfOrdenes{
    .name = L"frmRptsInfOrdenes",
    .caption = L"Selección de Informes",
    .deliver = DeliverOrders,
    .dates = true,
    .conditions = kOrderConditions,
    .opened = ShowAutomaticIfAsked,
    .kept = KeptText{.index = 1, .name = L"Tipo", .sesion = base::kSesionOrdenesInformes},
};

const ReportDesign kRptNumAut{
    .name = L"frmRptNumAut",
    .caption = L"Selección de Documentos",
    .deliver = DeliverNumbers,
    .conditions = kNumberConditions,
    .opened = ShowAutomaticIfAsked,
};

} // namespace tamvelo::reports
