#include "base/Text.h"
#include "reports/Dialogs.h"
#include "reports/SharedConditions.h"

// The dialogs of a date range, in two of them with automatic printing.
namespace tamvelo::reports {

using contract::ReportChoice;
using Kind = Condition::Kind;

namespace {

constexpr wchar_t kReportsCaption[] = L"Selección de Documentos e informes";
constexpr wchar_t kNote[] = L"Sólo para los listados que aceptan parámetros.";
// frmRptsFchAuto

constexpr Condition kFchAutoConditions[] = {
    kAutomatic,
    {.kind = Kind::Text, .index = 2, .caption = L"Sección : "},
};

bool IsStockLedger(const ReportForm& form) {
    return base::Lower(form.Cls()) == L"articulos_movimientos_almacen";
}

void PrepareFchAuto(ReportForm& form) { form.Row(Kind::Text, 2).Show(IsStockLedger(form)); }

void DeliverFchAuto(ReportForm& form, ReportChoice& choice) {
    // One report of the stock ledger is asked for under another member than all the rest.
    if (IsStockLedger(form)) {
        form.Sink().AceptarInformesFchAuto(choice, form.Range(), Automatic(form));
    } else {
        form.Sink().AceptarReportsFchAuto(choice, form.Range(), Automatic(form));
    }
}

// frmRptsFchAutoInf

constexpr Condition kFchAutoInfConditions[] = {
    kAutomatic,
    {.kind = Kind::Button,
     .index = 1,
     .caption = L"Fiitrar Tipos Producto",
     .lookup = {.className = L"Tipos_Producto",
                .selection = L"selec_plan",
                .operation = L"ShowSelecTrueFalse",
                .find = false}},
};

/// A complaint is never printed unseen.
bool IsComplaints(const ReportForm& form) { return form.Cls() == L"Pedidos_Reclamaciones"; }

void OpenFchAutoInf(ReportForm& form) {
    ShowAutomaticIfAsked(form);
    if (IsComplaints(form)) {
        form.Row(Kind::Check, 0).Enable(false, L"Las reclamaciones no se imprimen sin verlas");
    }
}

void DeliverFchAutoInf(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarInformesFchAuto(choice, form.Range(), IsComplaints(form) ? short{0} : Automatic(form));
}

// frmRptsInfFch

constexpr Condition kInfFchConditions[] = {{.kind = Kind::Text, .index = 2, .caption = L"Serie"}};

void DeliverInfFch(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarInformesFch(choice, form.Range(), form.Text(2));
}

// frmRptsFchCliDirec

void DeliverFchCliDirec(ReportForm& form, ReportChoice& choice) {
    form.Sink().AceptarInformesFchAuto(choice, form.Range());
}

} // namespace

const ReportDesign kRptsFchAuto{
    .name = L"frmRptsFchAuto",
    .caption = kReportsCaption,
    .deliver = DeliverFchAuto,
    .dates = true,
    .conditions = kFchAutoConditions,
    .note = kNote,
    .prepare = PrepareFchAuto,
    .opened = ShowAutomaticIfAsked,
    .kept = KeptText{.index = 2, .name = L"Seccion", .applies = IsStockLedger},
};

const ReportDesign kRptsFchAutoInf{
    .name = L"frmRptsFchAutoInf",
    .caption = L"Selección de Informes",
    .deliver = DeliverFchAutoInf,
    .dates = true,
    .conditions = kFchAutoInfConditions,
    .note = kNote,
    .opened = OpenFchAutoInf,
};

const ReportDesign kRptsInfFch{
    .name = L"frmRptsInfFch",
    .caption = L"Selección de informes",
    .deliver = DeliverInfFch,
    .dates = true,
    .conditions = kInfFchConditions,
    .note = kNote,
};

const ReportDesign kRptsFchCliDirec{
    .name = L"frmRptsFchCliDirec",
    .caption = L"Selección de Informes",
    .deliver = DeliverFchCliDirec,
    .dates = true,
    .note = kNote,
};

} // namespace tamvelo::reports
