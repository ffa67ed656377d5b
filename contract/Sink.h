#pragma once

#include <array>
#include <string>

#include "base/DateRanges.h"
#include "com/LateObject.h"

namespace tamvelo::contract {

/// What every report dialog hands over first: which reports, where to, how many copies. All travel by
/// reference.
struct ReportChoice {
    com::ComPtr<IDispatch> selection; // a collection of Booleans, one per report
    short output = 0;                 // index of the output list; 0 is the printer
    short copies = 0;
};

/// The host's event sink: each member carries one dialog's result. Variables of the dialog travel by
/// reference, so the host may change them; expressions and literals by value. All throw com::Error with the
/// host's own error.
class Sink {
public:
    Sink() = default;
    /// `role` is the parameter's name in the operation that brought the sink; hosts know it by that name.
    explicit Sink(IDispatch* object, const wchar_t* role = L"objClsEvents") : m_object(object, role) {}

    explicit operator bool() const { return static_cast<bool>(m_object); }
    void Reset() { m_object.Reset(); }

    void AceptarBuscar();
    void AceptarSeleccion(short& index, com::ComPtr<IDispatch>& control, const com::Variant& value);
    /// With a fixed code in place of a variable, which then travels by value.
    void AceptarSeleccionCode(short code, com::ComPtr<IDispatch>& control, const com::Variant& value);
    void AceptarSeleccionParam(short& index, com::ComPtr<IDispatch>& control, const com::Variant& first,
                               const com::Variant& second, const com::Variant& third);
    /// A member that a host may have beyond its contract, `member`(index, control); false, and nothing done,
    /// when the sink has none.
    bool Offer(const wchar_t* member, short& index, com::ComPtr<IDispatch>& control);
    void AceptarSeleccionParamCode(short code, com::ComPtr<IDispatch>& control, const com::Variant& first,
                                   const com::Variant& second, const com::Variant& third);
    /// Only where the sink has it: it is the handler of an event, which the library's own relay has not.
    void clsEvents_AceptaSeleccion(short& index, com::ComPtr<IDispatch>& control, const com::Variant& first,
                                   const com::Variant& second, const com::Variant& third);
    void ActualizaColumnas(com::ComPtr<IDispatch>& columns);
    void ActualizaOrden(short& column, short& mode);
    void AceptarFechaEntre(DATE first, DATE last);

    void AceptarReports(ReportChoice& choice);
    /// For the dialog without output and copies: two zeros by value.
    void AceptarReportsPlain(ReportChoice& choice);
    void AceptarReportsParam(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text,
                             short third, short fourth, std::wstring_view other, std::wstring list);
    void AceptarReportsParamMail(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text,
                                 short third, short fourth, std::wstring_view other, std::wstring list);
    void AceptarReportsInformesParam(ReportChoice& choice, const base::DateRange& dates,
                                     std::wstring_view text, short third, short fourth,
                                     std::wstring_view other);
    void AceptarReportsParamHr(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text,
                               bool firstFlag, bool secondFlag, DATE firstHour, DATE lastHour);
    /// `automatic` is a check box's value, 0 or 1, by value.
    void AceptarReportsFchAuto(ReportChoice& choice, const base::DateRange& dates, short automatic);
    void AceptarInformesFchAuto(ReportChoice& choice, const base::DateRange& dates, short automatic);
    /// The five-argument call: a host with six parameters sees the sixth as missing.
    void AceptarInformesFchAuto(ReportChoice& choice, const base::DateRange& dates);
    void AceptarInformesFch(ReportChoice& choice, const base::DateRange& dates, std::wstring_view text);
    /// The nine arguments after the choice are the dialog's own, in its documented order.
    void AceptarInformesFchAutoTipoTime(ReportChoice& choice, const std::array<com::Variant, 9>& conditions);
    void AceptarDocNumAut(ReportChoice& choice, const com::Variant& first, const com::Variant& last,
                          bool automatic);
    void AceptarListasParam(ReportChoice& choice, std::wstring_view text);
    void AceptarEtiqueta(com::ComPtr<IDispatch>& selection);

private:
    com::LateObject m_object;
};

} // namespace tamvelo::contract
