#include "demo/reports/ReportCall.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "base/Text.h"
#include "com/Collection.h"

namespace tamvelo::demo {

namespace {

using com::Invocation;
using com::Variant;
using Output = ReportCall::Output;

/// What one or two arguments of a call mean.
struct Meaning {
    enum Kind {
        Days,    // two arguments, both belong to the range
        Hours,   // two
        Numbers, // two, each may be left open
        Text,    // empty: not asked for
        Place,   // in the list "Sí", "No", "Todos"
        Flag,    // True: must hold
        Automatic,
    };
    Kind kind;
    const char* name = "";
    const char* last = "";
    const wchar_t* caption = L"";
};

constexpr Meaning kDays{Meaning::Days, ":desde", ":hasta", L"entre "};
constexpr Meaning kHours{Meaning::Hours, ":hora1", ":hora2", L"hora entre "};
constexpr Meaning kNumbers{Meaning::Numbers, ":numero1", ":numero2", L"números "};
constexpr Meaning kCustomer{Meaning::Text, ":cliente", "", L"cliente: "};
constexpr Meaning kTypeOrCustomer{Meaning::Text, ":texto", "", L"tipo o cliente: "};
constexpr Meaning kType{Meaning::Text, ":tipo", "", L"tipo: "};
constexpr Meaning kSeries{Meaning::Text, ":serie", "", L"serie: "};
constexpr Meaning kDocumentType{Meaning::Text, kDocument};
constexpr Meaning kPriceList{Meaning::Text, ":lista", "", L"lista de precios: "};
constexpr Meaning kInvoiced{Meaning::Place, ":facturadas", "", L"facturado: "};
constexpr Meaning kRepeated{Meaning::Place, ":repetidas", "", L"repetición: "};
constexpr Meaning kOnlyInvoiced{Meaning::Flag, ":facturadas", "", L"solo lo facturado"};
constexpr Meaning kOnlyRepeated{Meaning::Flag, ":repetidas", "", L"solo las repeticiones"};
constexpr Meaning kAutomatic{Meaning::Automatic};

constexpr Meaning kCond[] = {kDays, kTypeOrCustomer, kInvoiced, kRepeated, kSeries, kPriceList};
constexpr Meaning kMail[] = {kDays, kDocumentType, kInvoiced, kRepeated, kSeries, kPriceList};
constexpr Meaning kCondHr[] = {kDays, kTypeOrCustomer, kOnlyInvoiced, kOnlyRepeated, kHours};
constexpr Meaning kFchAuto[] = {kDays, kAutomatic};
constexpr Meaning kFch[] = {kDays, kSeries};
constexpr Meaning kOrders[] = {kDays, kAutomatic, kType, kHours, kRepeated, kInvoiced, kCustomer};
constexpr Meaning kDocuments[] = {kNumbers, kAutomatic};
constexpr Meaning kLists[] = {kPriceList};

/// The members of the sink; their arguments after the ticks, the output and the copies.
struct MemberInfo {
    std::wstring_view name;
    std::span<const Meaning> conditions;
};

constexpr MemberInfo kMembers[] = {
    {L"AceptarReports", {}},
    {L"AceptarReportsParam", kCond},
    {L"AceptarReportsParamMail", kMail},
    {L"AceptarReportsInformesParam", std::span(kCond).first(5)},
    {L"AceptarReportsParamHr", kCondHr},
    {L"AceptarReportsFchAuto", kFchAuto},
    {L"AceptarInformesFchAuto", kFchAuto},
    {L"AceptarInformesFch", kFch},
    {L"AceptarInformesFchAutoTipoTime", kOrders},
    {L"AceptarDocNumAut", kDocuments},
    {L"AceptarListasParam", kLists},
    {L"AceptarEtiqueta", {}},
};

std::wstring TwoFigures(WORD number) { return std::to_wstring(100 + number).substr(1); }

SYSTEMTIME Moment(const Variant& value) {
    SYSTEMTIME moment{};
    if (!VariantTimeToSystemTime(value.ToDate(), &moment)) {
        throw com::Error(DISP_E_TYPEMISMATCH, L"Una de las fechas no es válida.", L"Pedidos");
    }
    return moment;
}

std::wstring Hour(const Variant& value) {
    const SYSTEMTIME time = Moment(value);
    return TwoFigures(time.wHour) + L':' + TwoFigures(time.wMinute);
}

/// Null when it is left open.
Value Number(const Variant& value) {
    const std::wstring text(base::Trim(value.ToText()));
    const std::optional<long> number = base::ParseLong(text);
    if (!number && !text.empty()) {
        throw com::Error(DISP_E_TYPEMISMATCH, L"«" + text + L"» no es un número de documento.", L"Pedidos");
    }
    return number ? Value(std::int64_t{*number}) : Value{};
}

class Reader {
public:
    Reader(const Invocation& call, ReportCall& out) : m_call(call), m_out(out) {}

    void Read(const Meaning& meaning) {
        const std::wstring caption = meaning.caption;
        switch (meaning.kind) {
        case Meaning::Days: {
            const SYSTEMTIME first = Moment(Next());
            const SYSTEMTIME last = Moment(Next());
            const auto written = [](const SYSTEMTIME& d) {
                return TwoFigures(d.wDay) + L'/' + TwoFigures(d.wMonth) + L'/' + std::to_wstring(d.wYear);
            };
            const auto sorting = [](const SYSTEMTIME& d) {
                return std::to_wstring(d.wYear) + L'-' + TwoFigures(d.wMonth) + L'-' + TwoFigures(d.wDay);
            };
            AddPair(meaning, sorting(first), sorting(last),
                    caption + written(first) + L" y " + written(last));
            break;
        }
        case Meaning::Hours: {
            const std::wstring first = Hour(Next());
            const std::wstring last = Hour(Next());
            AddPair(meaning, first, last, caption + first + L" y " + last);
            break;
        }
        case Meaning::Numbers: {
            const std::wstring typed[] = {Peek(0).ToText(), Peek(1).ToText()};
            const Value first = Number(Next());
            const Value last = Number(Next());
            std::wstring shown;
            for (const int i : {0, 1}) {
                if (!typed[i].empty()) {
                    shown += (shown.empty() ? caption : L" ") + (i == 0 ? L"desde " : L"hasta ") + typed[i];
                }
            }
            AddPair(meaning, first, last, shown);
            break;
        }
        case Meaning::Text: {
            const std::wstring text(base::Trim(Next().ToText()));
            Add(meaning.name, text.empty() ? Value{} : Value(text), text.empty() ? L"" : caption + text);
            break;
        }
        case Meaning::Place: {
            constexpr const wchar_t* kEntries[] = {L"sí", L"no", L"todos"};
            const short place = Next().ToShort();
            const bool all = place < 0 || place > 1;
            Add(meaning.name, all ? Value{} : Value(std::int64_t{1} - place),
                caption + kEntries[all ? 2 : place]);
            break;
        }
        case Meaning::Flag: {
            const bool on = Next().ToBool();
            Add(meaning.name, on ? Value(std::int64_t{1}) : Value{}, on ? caption : L"");
            break;
        }
        case Meaning::Automatic: // nobody is asked: at once to the printer
            if (Next().ToBool()) {
                m_out.output = Output::Printer;
            }
            break;
        }
    }

private:
    const Variant& Peek(std::size_t ahead) const { return m_call[m_next + ahead]; }
    const Variant& Next() { return m_call[m_next++]; }
    void Add(const char* name, Value value, std::wstring shown) {
        m_out.parameters.push_back({name, std::move(value), std::move(shown)});
    }
    void AddPair(const Meaning& meaning, Value first, Value last, std::wstring shown) {
        Add(meaning.name, std::move(first), std::move(shown));
        Add(meaning.last, std::move(last), L"");
    }

    const Invocation& m_call;
    ReportCall& m_out;
    std::size_t m_next = 3;
};

} // namespace

bool IsReportMember(std::wstring_view member) {
    return std::ranges::find(kMembers, member, &MemberInfo::name) != std::end(kMembers);
}

ReportCall ReadReportCall(std::wstring_view member, const Invocation& call) {
    const auto info = std::ranges::find(kMembers, member, &MemberInfo::name);
    if (info == std::end(kMembers)) {
        throw com::Error(E_INVALIDARG, L"No es ninguna llamada de informes.", L"Pedidos");
    }
    ReportCall out;
    com::LateObject ticks(call[0].ToObject().Get(), L"selección");
    for (const Variant& tick : com::ItemsOf(ticks)) {
        out.ticks.push_back(tick.ToBool());
    }
    // A dialog without a box for the copies says 0 of them, or nothing at all.
    if (const short copies = call[2].IsMissing() ? short{0} : call[2].ToShort(); copies > 0) {
        out.copies = copies;
        out.output = static_cast<Output>(std::clamp<short>(call[1].ToShort(), 0, 2));
    }
    Reader reader(call, out);
    for (const Meaning& meaning : info->conditions) {
        reader.Read(meaning);
    }
    return out;
}

} // namespace tamvelo::demo
