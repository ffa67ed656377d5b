#include "tests/support/FakeHost.h"

#include <algorithm>
#include <cmath>

#include "com/Collection.h"

namespace tamvelo::testing {

using com::Invocation;
using com::Member;
using com::Variant;

namespace {

constexpr unsigned char kMostArguments = 16;

std::wstring Describe(const VARIANT& argument);

std::wstring NameOf(IDispatch* object) {
    if (!object) {
        return L"Nothing";
    }
    if (const auto* host = dynamic_cast<Fake*>(object)) {
        return host->Name();
    }
    com::LateObject control(object, L"control");
    if (control.Answers(L"Count")) { // a collection of values
        std::wstring list;
        for (const Variant& item : com::ItemsOf(control)) {
            list += (list.empty() ? L"" : L" ") + Describe(item.Get());
        }
        return L"[" + list + L"]";
    }
    const std::wstring name = control.Answers(L"Name") ? control.Call(L"Name").ToText() : L"objeto";
    return control.Answers(L"Index") ? name + L"(" + control.Call(L"Index").ToText() + L")" : name;
}

/// With a point, whatever the user's language; 4 decimals are money's.
std::wstring Number(double value) {
    std::wstring text = std::to_wstring(std::llround(value * 10000));
    const bool negative = text[0] == L'-';
    text.erase(0, negative ? 1 : 0);
    text.insert(0, text.size() < 5 ? 5 - text.size() : 0, L'0');
    text.insert(text.size() - 4, L".");
    text.erase(text.find_last_not_of(L'0') + 1);
    text.erase(text.find_last_not_of(L'.') + 1);
    return (negative ? L"-" : L"") + text;
}

std::wstring Describe(const VARIANT& argument) {
    const std::wstring mark = argument.vt & VT_BYREF ? L"&" : L"";
    const Variant value = Variant::CopyOf(argument);
    switch (value.Type()) {
    case VT_NULL:
        return mark + L"Null";
    case VT_CY:
        return mark + Number(static_cast<double>(value.Get().cyVal.int64) / 10000) + L"@";
    case VT_R8:
        return mark + Number(value.Get().dblVal) + L"#";
    case VT_ARRAY | VT_VARIANT: {
        std::wstring list;
        for (ULONG i = 0; i < value.Get().parray->rgsabound[0].cElements; ++i) {
            list += (i ? L", " : L"") + Describe(static_cast<const VARIANT*>(value.Get().parray->pvData)[i]);
        }
        return mark + L"{" + list + L"}";
    }
    case VT_BSTR:
        return mark + L"\"" + value.ToText() + L"\"";
    case VT_I2:
        return mark + value.ToText();
    case VT_I4:
        return mark + value.ToText() + L"L";
    case VT_BOOL:
        return mark + (value.ToBool() ? L"True" : L"False");
    case VT_DATE: {
        SYSTEMTIME time{};
        wchar_t text[24];
        VariantTimeToSystemTime(value.ToDate(), &time);
        wsprintfW(text, time.wHour || time.wMinute ? L"#%04d-%02d-%02d %02d:%02d#" : L"#%04d-%02d-%02d#",
                  time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute);
        return mark + text;
    }
    case VT_DISPATCH:
        return mark + NameOf(value.Get().pdispVal);
    case VT_EMPTY:
        return mark + L"Empty";
    default:
        return mark + L"vt" + std::to_wstring(value.Type());
    }
}

} // namespace

void HostObject::On(const std::wstring& member, Behaviour behaviour, bool quiet) {
    const auto known = std::ranges::find(m_entries, member, &Entry::name);
    if (known != m_entries.end()) {
        known->behaviour = std::move(behaviour);
        return;
    }
    m_entries.push_back({member, std::move(behaviour), quiet});
    Renumber();
}

void HostObject::Without(const std::wstring& member) {
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.name == member; });
    Renumber();
}

void HostObject::Returns(const std::wstring& member, Variant value, bool quiet) {
    On(
        member, [value = std::move(value)](Invocation& call) { call.Return(value); }, quiet);
}

void HostObject::Raises(const std::wstring& member) {
    On(member, [](Invocation&) { RaiseHostError(); });
}

void HostObject::Accepts(std::initializer_list<const wchar_t*> members) {
    for (const wchar_t* member : members) {
        On(member, [](Invocation&) {});
    }
}

void HostObject::Renumber() {
    constexpr auto kRun = [](com::Automation& self, Invocation& call) {
        auto& object = static_cast<HostObject&>(self);
        const Behaviour behaviour = object.m_entries[object.Running() - 1].behaviour; // it may change itself
        behaviour(call);
    };
    m_members.clear();
    for (size_t i = 0; i < m_entries.size(); ++i) {
        m_members.push_back({m_entries[i].name.c_str(), static_cast<DISPID>(i + 1), Member::Kind(7), 0,
                             kMostArguments, kRun});
    }
}

long HostObject::References() {
    AddRef();
    return static_cast<long>(Release());
}

void HostObject::Entered(DISPID id, const DISPPARAMS& parameters) {
    if (id < 1 || static_cast<size_t>(id) > m_entries.size()) {
        return; // a default value that it has not; a name that is known from before it went
    }
    const Entry& entry = m_entries[id - 1];
    const std::wstring name = entry.name;
    if (!entry.quiet) {
        std::wstring line = name + L"(";
        for (UINT i = parameters.cArgs; i-- > 0;) {
            line += Describe(parameters.rgvarg[i]) + (i ? L", " : L"");
        }
        m_log.push_back(line + L")");
    }
    if (beforeEach) {
        const auto hook = beforeEach; // it may take itself away
        hook(name);
    }
}

void RaiseHostError() { throw com::Error(kHostErrorNumber, kHostErrorText, kHostErrorSource); }

FakeHost::FakeHost(long records)
    : set(com::Make<MemoryRecordSet>([&] {
          RecordSetOptions options;
          options.rows = records;
          return options;
      }())),
      data(com::Make<HostObject>(L"MyClase", log)),
      sink(com::Make<HostObject>(L"objClsEvents", log)),
      ctl(com::Make<HostObject>(L"ctl", log)),
      columns(com::Make<HostObject>(L"Columns", log)) {
    data->On(L"sClassName", [this](Invocation& call) { call.Return(Variant(className)); });
    data->On(
        L"Recordset", [this](Invocation& call) { call.Return(Variant(set.Get())); }, true);
    data->On(L"Requery", [this](Invocation&) {
        set->SetSort(L"");
        set->SetPosition(0);
    });
    data->Accepts({L"FindRecord"});
    data->On(L"CreateFilter", [](Invocation& call) {
        const std::wstring typed = com::LateObject(call[0].ToObject().Get(), L"box").Call(L"Text").ToText();
        call.Return(Variant(typed.empty() ? L"" : L"campo=" + typed));
    });
    data->On(L"SetFilter", [this](Invocation& call) { stored = call[0].ToText(); });
    data->On(L"GetFilter", [this](Invocation& call) { call.Return(Variant(stored)); });
    data->On(L"AplyFilter", [this](Invocation& call) { set->SetFilter(call[0].ToText()); });
    data->On(L"existenregistros", [this](Invocation& call) { call.Return(Variant(set->Count() > 0)); });
    data->On(L"SetOrder", [this](Invocation& call) { set->SetSort(call[1].ToText()); });
    data->On(L"MoveFirst", [this](Invocation&) { set->SetPosition(0); });
    data->On(L"MoveLast", [this](Invocation&) { set->SetPosition(set->Count() - 1); });
    data->On(L"MoveNext", [this](Invocation&) { set->SetPosition(set->Position() + 1); });
    data->On(L"MovePrevious", [this](Invocation&) { set->SetPosition(set->Position() - 1); });
    sink->Accepts({L"AceptarSeleccion", L"AceptarSeleccionParam", L"AceptarBuscar", L"ActualizaColumnas",
                   L"ActualizaOrden", L"AceptarFechaEntre", L"AceptarReports", L"AceptarReportsParam",
                   L"AceptarReportsParamMail", L"AceptarReportsParamHr", L"AceptarReportsFchAuto",
                   L"AceptarReportsInformesParam", L"AceptarInformesFchAuto", L"AceptarInformesFch",
                   L"AceptarInformesFchAutoTipoTime", L"AceptarDocNumAut", L"AceptarListasParam",
                   L"AceptarEtiqueta"});
    ctl->On(
        L"Text", [this](Invocation& call) { call.Return(Variant(text)); }, true);
    columns->On(
        L"Count", [this](Invocation& call) { call.Return(Variant(static_cast<long>(m_columns.size()))); },
        true);
    columns->On(
        L"Item",
        [this](Invocation& call) {
            const auto index = static_cast<size_t>(call[0].ToLong());
            call.Return(Variant(m_columns.at(index)->object.Get()));
        },
        true);
}

void FakeHost::TextCells() {
    set->Table().value = [](long record, short column) {
        return Variant(L"f" + std::to_wstring(record) + L"c" + std::to_wstring(column));
    };
}

HostObject& FakeHost::AddColumn(const wchar_t* caption, const wchar_t* field, bool visible) {
    const std::wstring name = L"columna " + std::to_wstring(m_columns.size());
    Column& column =
        *m_columns.emplace_back(std::make_unique<Column>(Column{com::Make<HostObject>(name, log), visible}));
    column.object->Returns(L"Caption", Variant(caption), true);
    column.object->Returns(L"DataField", Variant(field), true);
    column.object->On(
        L"Visible",
        [&column, name, this](Invocation& call) {
            if (!call.IsPut()) {
                call.Return(Variant(column.visible));
                return;
            }
            column.visible = call.NewValue().ToBool();
            log.push_back(name + (column.visible ? L".Visible = True" : L".Visible = False"));
        },
        true);
    return *column.object.Get();
}

long FakeHost::References() const {
    set->AddRef();
    long count = static_cast<long>(set->Release());
    for (const auto* object : {&data, &sink, &ctl, &columns}) {
        count += (*object)->References();
    }
    for (const auto& column : m_columns) {
        count += column->object->References() - 1; // there may be more of them later
    }
    return count;
}

} // namespace tamvelo::testing
