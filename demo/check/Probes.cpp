#include "demo/check/Probes.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/FilterText.h"
#include "com/Automation.h"
#include "com/Collection.h"
#include "com/Error.h"
#include "contract/ColumnCollection.h"
#include "contract/HostControl.h"
#include "contract/ReportCollection.h"
#include "grid/RecordSource.h"
#include "grid/SetMembers.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::LateObject;
using com::Variant;
using Choice = contract::ReportChoice;
using contract::Answers;
using contract::Effect;
using contract::Sink;

/// A box like those that the dialogs hand to the data class, with nothing typed in it.
class EmptyBox final : public com::Automation {
public:
    explicit EmptyBox(std::wstring field) : m_field(std::move(field)) {}

private:
    std::span<const com::Member> Members() const override {
        using com::Member;
        static constexpr Member kMembers[] = {
            {L"Text", DISPID_VALUE, Member::GetPut, 0, 0, com::Run<&EmptyBox::Empty>},
            {L"Name", 1, Member::Get, 0, 0, com::Run<&EmptyBox::Name>},
            {L"Index", 2, Member::Get, 0, 0, com::Run<&EmptyBox::Zero>},
            {L"DataField", 3, Member::Get, 0, 0, com::Run<&EmptyBox::DataField>},
            {L"Caption", 4, Member::Get, 0, 0, com::Run<&EmptyBox::DataField>},
            {L"Value", 5, Member::GetPut, 0, 0, com::Run<&EmptyBox::Empty>},
            {L"Tag", 6, Member::GetPut, 0, 0, com::Run<&EmptyBox::Empty>},
            {L"MaxLength", 7, Member::GetPut, 0, 0, com::Run<&EmptyBox::Zero>},
            {L"SelStart", 8, Member::GetPut, 0, 0, com::Run<&EmptyBox::Zero>},
            {L"SelLength", 9, Member::GetPut, 0, 0, com::Run<&EmptyBox::Zero>},
            {L"hWnd", 10, Member::Get, 0, 0, com::Run<&EmptyBox::Zero>},
            {L"Enabled", 11, Member::GetPut, 0, 0, com::Run<&EmptyBox::True>},
            {L"Visible", 12, Member::GetPut, 0, 0, com::Run<&EmptyBox::True>},
        };
        return kMembers;
    }
    void Empty(com::Invocation& call) { call.Return(Variant(L"")); }
    void Name(com::Invocation& call) { call.Return(Variant(L"TxtFields")); }
    void Zero(com::Invocation& call) { call.Return(Variant(0L)); }
    void True(com::Invocation& call) { call.Return(Variant(true)); }
    void DataField(com::Invocation& call) { call.Return(Variant(m_field)); }

    const std::wstring m_field;
};

const base::DateRange kToday{46000, 46000};

/// Of the work orders' reports.
std::array<Variant, 9> NineConditions() {
    return {Variant::Date(kToday.first),
            Variant::Date(kToday.last),
            Variant(short{0}),
            Variant(L""),
            Variant::Date(0),
            Variant::Date(0),
            Variant(short{2}),
            Variant(short{2}),
            Variant(L"")};
}

std::wstring Quoted(const std::wstring& text) { return L"«" + text + L"»"; }

/// A value of any kind.
std::wstring Shown(const Variant& value) {
    return value.IsObject() ? L"un objeto" : value.Type() & VT_ARRAY ? L"una tabla" : Quoted(value.ToText());
}

/// As what the library reads it.
std::wstring Read(const com::Answer& answer, Answers as) {
    switch (as) {
    case Answers::Text:
        return Quoted(answer.ToText());
    case Answers::Boolean:
        return answer.ToBool() ? L"Verdadero" : L"Falso";
    case Answers::Number:
        return std::to_wstring(answer.ToLong());
    case Answers::Object:
        return answer.ToObject() ? L"un objeto" : L"Nada";
    case Answers::Value:
        return Shown(answer);
    default:
        return L"";
    }
}

} // namespace

/// How the contract's classes call a member; what it answered.
struct Probes::Row {
    std::wstring_view object;
    std::wstring_view name;
    std::wstring (*call)(Probes& p);
    std::wstring_view arguments = L"*"; // of one among several rows of the member
};

// Those that are not here are properties that are read, or are never called: they mark or add what nobody has
// chosen, or need a text that only the host knows.
const Probes::Row Probes::kCalls[] = {
    {L"MyClase", L"sClassName", [](Probes& p) { return Quoted(p.m_className = p.m_data.sClassName()); }},
    {L"MyClase", L"Requery", [](Probes& p) { return p.m_data.Requery(base::kSeleccion), std::wstring(); },
     L"String"},
    {L"MyClase", L"Requery", [](Probes& p) { return p.m_data.Requery(), std::wstring(); }, L""},
    {L"MyClase", L"FindRecord",
     [](Probes& p) { return p.m_data.FindRecord(p.FirstText(), {}), std::wstring(); }},
    {L"MyClase", L"CreateFilter", [](Probes& p) { return Quoted(p.m_data.CreateFilter(p.Box(), short{0})); },
     L"&Object, Integer"},
    {L"MyClase", L"CreateFilter", [](Probes& p) { return Quoted(p.m_data.CreateFilter(p.Box())); },
     L"&Object"},
    {L"MyClase", L"GetFilter",
     [](Probes& p) { return Quoted(p.m_filter = p.m_data.GetFilter(base::kSlotFilterSelec)); }},
    {L"MyClase", L"SetFilter",
     [](Probes& p) { return p.m_data.SetFilter(p.m_filter, base::kSlotFilterSelec), std::wstring(); }},
    {L"MyClase", L"AplyFilter", [](Probes& p) { return p.m_data.AplyFilter(p.m_filter), std::wstring(); }},
    {L"MyClase", L"existenregistros",
     [](Probes& p) { return std::wstring(p.m_data.existenregistros() ? L"Verdadero" : L"Falso"); }},
    {L"MyClase", L"MoveFirst", [](Probes& p) { return p.m_data.MoveFirst(), std::wstring(); }},
    {L"MyClase", L"MoveLast", [](Probes& p) { return p.m_data.MoveLast(), std::wstring(); }},
    {L"MyClase", L"MovePrevious", [](Probes& p) { return p.m_data.MovePrevious(), std::wstring(); }},
    {L"MyClase", L"MoveNext", [](Probes& p) { return p.m_data.MoveNext(), std::wstring(); }},
    {L"MyClase", L"SetOrder",
     [](Probes& p) {
         short column = 0;
         return p.m_data.SetOrder(column, false), std::wstring();
     }},
    {L"MyClase", L"ValidaKey",
     [](Probes& p) {
         short key = L'a';
         return std::wstring(p.m_data.ValidaKey(p.Box(), key) ? L"Verdadero" : L"Falso");
     }},
    {L"MyClase", L"ValidaValue",
     [](Probes& p) { return std::wstring(p.m_data.ValidaValue(p.Box()) ? L"Verdadero" : L"Falso"); }},
    {L"MyClase", L"ValidaDefinedSize",
     [](Probes& p) { return std::to_wstring(p.m_data.ValidaDefinedSize(p.Box())); }},
    {L"MyClase", L"GetConnection",
     [](Probes& p) { return p.m_connection = p.m_data.GetConnection(), std::wstring(); }},

    {L"ctl", L"Text", [](Probes& p) { return Quoted(contract::HostControl(p.Find(L"ctl")->Get()).Text()); }},
    {L"Columns", L"Count",
     [](Probes& p) {
         return std::to_wstring(contract::ColumnCollection(p.Find(L"Columns")->Get()).Count());
     }},
    {L"Columns", L"Item",
     [](Probes& p) {
         contract::ColumnCollection columns(p.Find(L"Columns")->Get());
         return columns.Item(0), std::wstring(L"un objeto");
     }},
    {L"Fields", L"Item",
     [](Probes& p) {
         const Variant item = p.Find(L"Fields")->Call(L"Item", {0L});
         return p.Give(L"Field", item.ToObject()), std::wstring(L"un objeto");
     }},
    {L"Field", L"Name",
     [](Probes& p) { return Quoted(p.m_field = p.Find(L"Field")->Call(L"Name").ToText()); }},
    {L"Field", L"Value",
     [](Probes& p) { // of the first record: where the set stands by now is nowhere
         LateObject& set = *p.Find(L"Recordset");
         if (grid::HasNoRows(set)) {
             return std::wstring(L"nada: no hay registros");
         }
         set.Call(L"MoveFirst");
         return Shown(grid::FieldOf(set, 0).Call(L"Value"));
     }},
    {L"Recordset", L"Fields",
     [](Probes& p) {
         p.Give(L"Fields", p.Find(L"Recordset")->Call(L"Fields").ToObject());
         return std::wstring(L"un objeto");
     }},
    {L"Recordset", L"Clone",
     [](Probes& p) { return Read(p.Find(L"Recordset")->Call(L"Clone", {short{1}}), Answers::Object); }},
    {L"Recordset", L"GetRows",
     [](Probes& p) { return p.Find(L"Recordset")->Call(L"GetRows", {1L}), std::wstring(); }},
    {L"cReports", L"_NewEnum",
     [](Probes& p) {
         DISPPARAMS none{};
         com::InvokeMember(p.Find(L"cReports")->Get(), L"cReports", L"_NewEnum", DISPID_NEWENUM,
                           DISPATCH_METHOD | DISPATCH_PROPERTYGET, none);
         return std::wstring(L"a For Each");
     }},
    {L"cReports", L"Count",
     [](Probes& p) {
         return std::to_wstring(contract::ReportTitles(p.Find(L"cReports")->Get()).size()) + L" informes";
     }},
    {L"cReports", L"Item", [](Probes&) { return std::wstring(); }}, // they have been read, with their titles

    {L"objClsEvents", L"AceptarBuscar", [](Probes& p) { return p.m_sink.AceptarBuscar(), std::wstring(); }},
    {L"objClsEvents", L"AceptarSeleccion",
     [](Probes& p) {
         short index = 0;
         ComPtr<IDispatch> control(p.Find(L"ctl") ? p.Find(L"ctl")->Get() : nullptr);
         return p.m_sink.AceptarSeleccion(index, control, Variant(p.FirstText())), std::wstring();
     }},
    {L"objClsEvents", L"AceptarSeleccionParam",
     [](Probes& p) {
         short index = 0;
         ComPtr<IDispatch> control(p.Find(L"ctl") ? p.Find(L"ctl")->Get() : nullptr);
         const Variant text(p.FirstText());
         return p.m_sink.AceptarSeleccionParam(index, control, text, text, text), std::wstring();
     }},
    {L"objClsEvents", L"ActualizaColumnas",
     [](Probes& p) {
         ComPtr<IDispatch> columns(p.Find(L"Columns") ? p.Find(L"Columns")->Get() : nullptr);
         return p.m_sink.ActualizaColumnas(columns), std::wstring();
     }},
    {L"objClsEvents", L"ActualizaOrden",
     [](Probes& p) {
         short column = 0;
         short mode = 0;
         return p.m_sink.ActualizaOrden(column, mode), std::wstring();
     }},
    {L"objClsEvents", L"AceptarFechaEntre",
     [](Probes& p) { return p.m_sink.AceptarFechaEntre(kToday.first, kToday.last), std::wstring(); }},
    {L"objClsEvents", L"AceptarReports",
     [](Probes& p) { return p.Hand([](Sink& sink, Choice& choice) { sink.AceptarReports(choice); }); }},
    {L"objClsEvents", L"AceptarReportsParam",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) {
             sink.AceptarReportsParam(choice, kToday, L"", 2, 2, L"", L"");
         });
     }},
    {L"objClsEvents", L"AceptarReportsParamMail",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) {
             sink.AceptarReportsParamMail(choice, kToday, L"", 2, 2, L"", L"");
         });
     }},
    {L"objClsEvents", L"AceptarReportsInformesParam",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) {
             sink.AceptarReportsInformesParam(choice, kToday, L"", 2, 2, L"");
         });
     }},
    {L"objClsEvents", L"AceptarReportsParamHr",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) {
             sink.AceptarReportsParamHr(choice, kToday, L"", false, false, 0, 0);
         });
     }},
    {L"objClsEvents", L"AceptarReportsFchAuto",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) { sink.AceptarReportsFchAuto(choice, kToday, 0); });
     }},
    {L"objClsEvents", L"AceptarInformesFchAuto",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) { sink.AceptarInformesFchAuto(choice, kToday, 0); });
     },
     L"&Object, &Integer, &Integer, Date, Date, Integer"},
    {L"objClsEvents", L"AceptarInformesFchAuto",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) { sink.AceptarInformesFchAuto(choice, kToday); });
     },
     L"&Object, &Integer, &Integer, Date, Date"},
    {L"objClsEvents", L"AceptarInformesFch",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) { sink.AceptarInformesFch(choice, kToday, L""); });
     }},
    {L"objClsEvents", L"AceptarInformesFchAutoTipoTime",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) {
             sink.AceptarInformesFchAutoTipoTime(choice, NineConditions());
         });
     }},
    {L"objClsEvents", L"AceptarDocNumAut",
     [](Probes& p) {
         return p.Hand(
             [](Sink& sink, Choice& choice) { sink.AceptarDocNumAut(choice, Variant(), Variant(), false); });
     }},
    {L"objClsEvents", L"AceptarListasParam",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) { sink.AceptarListasParam(choice, L""); });
     }},
    {L"objClsEvents", L"AceptarEtiqueta",
     [](Probes& p) {
         return p.Hand([](Sink& sink, Choice& choice) { sink.AceptarEtiqueta(choice.selection); });
     }},
};

void Probes::Give(std::wstring_view role, const ComPtr<IDispatch>& object) {
    if (!object) {
        return;
    }
    const auto row = std::ranges::find(contract::Members(), role, &contract::Member::object);
    m_objects[std::wstring(role)] = LateObject(object.Get(), row->object); // whose name stays
    if (role == L"MyClase") {
        m_data = contract::DataClass(object.Get());
    } else if (role == L"objClsEvents") {
        m_sink = contract::Sink(object.Get());
    }
    try { // what it hands out; whether it does so well is asked by their own rows
        if (role == L"Columns") {
            Give(L"Column", Find(role)->Call(L"Item", {short{0}}).ToObject());
        } else if (role == L"cReports") {
            const std::vector<Variant> items = com::ItemsOf(*Find(role));
            Give(L"informe", !items.empty() && items[0].IsObject() ? items[0].ToObject() : nullptr);
        }
    } catch (const com::Error&) {
        return;
    }
}

LateObject* Probes::Find(std::wstring_view role) {
    const auto found = m_objects.find(role);
    return found != m_objects.end() ? &found->second : nullptr;
}

void Probes::FindRecords() {
    Give(L"Recordset", grid::RecordSource(m_data.Get()).Set());
    LateObject* const set = Find(L"Recordset");
    if (set && set->Answers(L"Bookmark") && !grid::StandsOnNone(*set)) {
        m_bookmark = set->Call(L"Bookmark");
    } else if (set && set->Answers(L"AbsolutePosition")) {
        m_position = set->Call(L"AbsolutePosition").ToLong();
    }
}

void Probes::PutBack() noexcept {
    try {
        LateObject* const set = Find(L"Recordset");
        if (set && m_bookmark) {
            set->Put(L"Bookmark", *m_bookmark);
        } else if (set && m_position) {
            set->Put(L"AbsolutePosition", *m_position);
        }
    } catch (const com::Error&) {
        return; // it stands elsewhere, as after any dialog
    }
}

ComPtr<IDispatch> Probes::Box() const { return ComPtr<IDispatch>(com::Make<EmptyBox>(m_field).Get()); }

std::wstring Probes::Hand(void (*answer)(contract::Sink& sink, contract::ReportChoice& choice)) {
    contract::ReportChoice choice{com::MakeCollection({Variant(true)}), 0, 1};
    answer(m_sink, choice);
    return {};
}

std::wstring Probes::FirstText() {
    LateObject* const set = Find(L"Recordset");
    return set && !grid::StandsOnNone(*set) ? grid::FieldOf(*set, 0).Call(L"Value").ToText() : std::wstring();
}

std::optional<std::wstring> Probes::Call(const contract::Member& row) {
    const auto call = std::ranges::find_if(kCalls, [&](const Row& each) {
        return each.object == row.object && each.name == row.name &&
               (each.arguments == L"*" || each.arguments == row.arguments);
    });
    const bool known = call != std::end(kCalls);
    const bool property = row.effect == Effect::Reads && *row.arguments == L'\0' && row.name[0] != L'_';
    const bool put = std::wstring_view(row.name).ends_with(L"=");
    if (put || (row.effect == Effect::Writes && !m_write) ||
        (!known && !property && row.effect != Effect::Moves)) {
        return std::nullopt;
    }
    if (known) {
        return call->call(*this);
    }
    return Read(Find(row.object)->Call(row.name), row.answers);
}

} // namespace tamvelo::demo
