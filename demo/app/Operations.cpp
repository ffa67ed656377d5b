#include "demo/app/Operations.h"

#include <algorithm>

namespace tamvelo::demo {

namespace {

using com::Argument;
using com::LateObject;

// The shapes of the calls. Variables travel by reference: the library declares every parameter so.

void Selection(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink), Argument::Ref(r.dataClass), Argument::Ref(r.control),
                          Argument::Ref(r.column), Argument::Ref(r.index), Argument::Ref(r.find),
                          Argument::Ref(r.stock)});
}

void Panel(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink), Argument::Ref(r.dataClass), Argument::Ref(r.control),
                          Argument::Ref(r.column), Argument::Ref(r.index), Argument::Ref(r.find)});
}

void Direct(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink), Argument::Ref(r.dataClass), Argument::Ref(r.control),
                          Argument::Ref(r.column), Argument::Ref(r.index), Argument::Ref(r.find),
                          Argument::Ref(r.modal)});
}

void Indirect(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink), Argument::Ref(r.dataClass), Argument::Ref(r.control),
                          Argument::Ref(r.column), Argument::Ref(r.text), Argument::Ref(r.find),
                          Argument::Ref(r.modal)});
}

void Criteria(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink), Argument::Ref(r.dataClass)});
}

void Search(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink), Argument::Ref(r.dataClass), Argument::Ref(r.columns)});
}

void Columns(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink), Argument::Ref(r.columns)});
}

void SortOrder(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.mode), Argument::Ref(r.sink), Argument::Ref(r.columns)});
}

void Reports(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.screen), Argument::Ref(r.sink), Argument::Ref(r.reports)});
}

void AutoReports(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.screen), Argument::Ref(r.sink), Argument::Ref(r.reports),
                          Argument::Ref(r.showAuto)});
}

void DateRange(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(name, {Argument::Ref(r.sink)});
}

void Appointment(LateObject& showSerch, const wchar_t* name, Request& r) {
    showSerch.Call(
        name, {Argument::Ref(r.sink), Argument::Ref(r.dataClass), Argument(r.window), Argument::Ref(r.date)});
}

constexpr Operation kOperations[] = {
    {L"ShowSelec", Group::Selection, L"&Seleccionar un registro", Selection},
    {L"ShowSelecNoVerif", Group::Selection, L"Seleccionar sin &posicionar", Selection},
    {L"ShowSelecVerif", Group::Selection, L"&Verificar un registro", Selection},
    {L"ShowSelecControlVerif", Group::Selection, L"C&ontrolar la verificación", Selection},
    {L"ShowSelecDirecta", Group::Selection, L"Selección &directa: busca el valor", Direct},
    {L"ShowSelecInDirecta", Group::Selection, L"Selección &indirecta: propone el valor", Indirect},
    {L"ShowSelecAdd", Group::Selection, L"Selección con &altas", Panel},
    {L"ShowSelecTrueFalse", Group::Selection, L"Lista con &casillas", Panel},

    {L"ShowBuscar", Group::Search, L"&Buscar registros", Search},
    {L"ShowRegistros", Group::Search, L"&Examinar registros", Panel},
    {L"ShowSeleccionar", Group::Search, L"Criterios de &ventas", Criteria},
    {L"ShowSeleccionarComp", Group::Search, L"Criterios de &compras", Criteria},
    {L"ShowSelecMinim", Group::Search, L"Criterios &mínimos", Criteria},
    {L"ShowSelecLab", Group::Search, L"Criterios de &laboratorio", Criteria},
    {L"ShowSeleccionarRecibo", Group::Search, L"Criterios de &recibos", Criteria},

    {L"ShowColums", Group::Grid, L"&Columnas visibles", Columns},
    {L"ShowOrder", Group::Grid, L"Columna de &orden", SortOrder},

    {L"ShowRpt", Group::Reports, L"&Informes de la pantalla", Reports},
    {L"ShowSql", Group::Reports, L"Informes por &serie", Reports},
    {L"ShowRptListas", Group::Reports, L"&Listas", Reports},
    {L"ShowRptCond", Group::Reports, L"Informes con &condiciones", Reports},
    {L"ShowRptMailCond", Group::Reports, L"Informes con condiciones y co&rreo", Reports},
    {L"ShowRptBorrador", Group::Reports, L"&Borradores", Reports},
    {L"ShowRptInfCond", Group::Reports, L"Informes resumidos con con&diciones", Reports},
    {L"ShowRptCondHr", Group::Reports, L"Informes con condiciones y &horas", Reports},
    {L"ShowRptFchAuto", Group::Reports, L"Informes entre &fechas", AutoReports},
    {L"ShowRptFchAutoInf", Group::Reports, L"Informes resumidos en&tre fechas", AutoReports},
    {L"ShowRptFchCliDirec", Group::Reports, L"Informes de un client&e entre fechas", Reports},
    {L"ShowRptsInfFch", Group::Reports, L"Informes entre fechas &por serie", Reports},
    {L"ShowRptInfOrdenes", Group::Reports, L"Informes de órdenes de traba&jo", AutoReports},
    {L"ShowRptNumAut", Group::Reports, L"Documentos &numerados", AutoReports},
    {L"PrintRptNumAut", Group::Reports, L"Documento n&umerado sin diálogo", AutoReports},
    {L"ShowEtiq", Group::Reports, L"Eti&quetas", Reports},
    {L"PrintEtiq", Group::Reports, L"Etiquetas sin diálo&go", Reports},

    {L"ShowSelecDate", Group::Dates, L"&Intervalo de fechas", DateRange},
    {L"ShowNuevaCita", Group::Dates, L"&Cita nueva", Appointment},
};
static_assert(std::size(kOperations) == 36);

} // namespace

std::span<const Operation> Operations() { return kOperations; }

const Operation* FindOperation(std::wstring_view name) {
    const auto found = std::ranges::find(kOperations, name, &Operation::name);
    return found != std::end(kOperations) ? found : nullptr;
}

} // namespace tamvelo::demo
