#include "contract/Sink.h"

#include <tuple>

namespace tamvelo::contract {

using com::Argument;
using com::ComPtr;
using com::Variant;

namespace {

Argument Day(DATE day) { return Variant::Date(day); }

Argument First(const base::DateRange& dates) { return Day(dates.first); }

Argument Last(const base::DateRange& dates) { return Day(dates.last); }

/// The choice comes first in every report dialog's call.
template <class... Conditions>
void Hand(com::LateObject& sink, const wchar_t* member, ReportChoice& choice,
          const Conditions&... conditions) {
    sink.Call(member, {Argument::Ref(choice.selection), Argument::Ref(choice.output),
                       Argument::Ref(choice.copies), Argument(conditions)...});
}

} // namespace

void Sink::AceptarBuscar() { m_object.Call(L"AceptarBuscar"); }

void Sink::AceptarSeleccion(short& index, ComPtr<IDispatch>& control, const Variant& value) {
    m_object.Call(L"AceptarSeleccion", {Argument::Ref(index), Argument::Ref(control), value});
}

void Sink::AceptarSeleccionCode(short code, ComPtr<IDispatch>& control, const Variant& value) {
    m_object.Call(L"AceptarSeleccion", {code, Argument::Ref(control), value});
}

void Sink::AceptarSeleccionParam(short& index, ComPtr<IDispatch>& control, const Variant& first,
                                 const Variant& second, const Variant& third) {
    m_object.Call(L"AceptarSeleccionParam",
                  {Argument::Ref(index), Argument::Ref(control), first, second, third});
}

void Sink::AceptarSeleccionParamCode(short code, ComPtr<IDispatch>& control, const Variant& first,
                                     const Variant& second, const Variant& third) {
    m_object.Call(L"AceptarSeleccionParam", {code, Argument::Ref(control), first, second, third});
}

bool Sink::Offer(const wchar_t* member, short& index, ComPtr<IDispatch>& control) {
    const bool has = m_object.Answers(member);
    if (has) {
        m_object.Call(member, {Argument::Ref(index), Argument::Ref(control)});
    }
    return has;
}

void Sink::clsEvents_AceptaSeleccion(short& index, ComPtr<IDispatch>& control, const Variant& first,
                                     const Variant& second, const Variant& third) {
    constexpr wchar_t kMember[] = L"clsEvents_AceptaSeleccion";
    if (m_object.Answers(kMember)) {
        m_object.Call(kMember, {Argument::Ref(index), Argument::Ref(control), first, second, third});
    }
}

void Sink::ActualizaColumnas(ComPtr<IDispatch>& columns) {
    m_object.Call(L"ActualizaColumnas", {Argument::Ref(columns)});
}

void Sink::ActualizaOrden(short& column, short& mode) {
    m_object.Call(L"ActualizaOrden", {Argument::Ref(column), Argument::Ref(mode)});
}

void Sink::AceptarFechaEntre(DATE first, DATE last) {
    m_object.Call(L"AceptarFechaEntre", {Day(first), Day(last)});
}

void Sink::AceptarReports(ReportChoice& choice) { Hand(m_object, L"AceptarReports", choice); }

void Sink::AceptarReportsPlain(ReportChoice& choice) {
    m_object.Call(L"AceptarReports", {Argument::Ref(choice.selection), short{0}, short{0}});
}

void Sink::AceptarReportsParam(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text,
                               short third, short fourth, std::wstring_view other, std::wstring list) {
    Hand(m_object, L"AceptarReportsParam", choice, First(dates), Last(dates), text, Argument::Ref(third),
         Argument::Ref(fourth), other, Argument::Ref(list));
}

void Sink::AceptarReportsParamMail(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text,
                                   short third, short fourth, std::wstring_view other, std::wstring list) {
    Hand(m_object, L"AceptarReportsParamMail", choice, First(dates), Last(dates), text, Argument::Ref(third),
         Argument::Ref(fourth), other, Argument::Ref(list));
}

void Sink::AceptarReportsInformesParam(ReportChoice& choice, const base::DateRange& dates,
                                       std::wstring_view text, short third, short fourth,
                                       std::wstring_view other) {
    Hand(m_object, L"AceptarReportsInformesParam", choice, First(dates), Last(dates), text,
         Argument::Ref(third), Argument::Ref(fourth), other);
}

void Sink::AceptarReportsParamHr(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text,
                                 bool firstFlag, bool secondFlag, DATE firstHour, DATE lastHour) {
    Hand(m_object, L"AceptarReportsParamHr", choice, First(dates), Last(dates), text, firstFlag, secondFlag,
         Day(firstHour), Day(lastHour));
}

void Sink::AceptarReportsFchAuto(ReportChoice& choice, const base::DateRange& dates, short automatic) {
    Hand(m_object, L"AceptarReportsFchAuto", choice, First(dates), Last(dates), automatic);
}

void Sink::AceptarInformesFchAuto(ReportChoice& choice, const base::DateRange& dates, short automatic) {
    Hand(m_object, L"AceptarInformesFchAuto", choice, First(dates), Last(dates), automatic);
}

void Sink::AceptarInformesFchAuto(ReportChoice& choice, const base::DateRange& dates) {
    Hand(m_object, L"AceptarInformesFchAuto", choice, First(dates), Last(dates));
}

void Sink::AceptarInformesFch(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text) {
    Hand(m_object, L"AceptarInformesFch", choice, First(dates), Last(dates), text);
}

void Sink::AceptarInformesFchAutoTipoTime(ReportChoice& choice, const std::array<Variant, 9>& conditions) {
    std::apply(
        [&](const auto&... condition) {
            Hand(m_object, L"AceptarInformesFchAutoTipoTime", choice, condition...);
        },
        conditions);
}

void Sink::AceptarDocNumAut(ReportChoice& choice, const Variant& first, const Variant& last, bool automatic) {
    Hand(m_object, L"AceptarDocNumAut", choice, first, last, automatic);
}

void Sink::AceptarListasParam(ReportChoice& choice, std::wstring_view text) {
    Hand(m_object, L"AceptarListasParam", choice, text);
}

void Sink::AceptarEtiqueta(ComPtr<IDispatch>& selection) {
    m_object.Call(L"AceptarEtiqueta", {Argument::Ref(selection)});
}

} // namespace tamvelo::contract
