#include "demo/host/DataClass.h"

#include <algorithm>
#include <iterator>

#include "base/FilterText.h"
#include "base/Text.h"
#include "com/LateObject.h"
#include "demo/data/Records.h"
#include "demo/data/Values.h"
#include "demo/host/FieldValue.h"
#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/host/Lookup.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Invocation;
using com::LateObject;
using com::Member;
using com::Run;
using com::Variant;

constexpr wchar_t kPrimary[] = L"Primary"; // the name of our only data member

/// What a selection shows. Tables without the field show every row.
struct Selection {
    std::wstring_view name;
    std::wstring_view field;
    std::wstring_view condition;
};
constexpr Selection kSelections[] = {
    {base::kSeleccion, {}, {}},
    {base::kSeleccionar, L"activo", L" = 1"},
    {base::kSeleccionStock, L"existencias", L" > 0"},
    // Those that the criteria dialogs ask of the classes they look values up in.
    {base::kSeleccionMixta, {}, {}},
    {base::kSelecc, L"activo", L" = 1"},
    {L"selec_plan", {}, {}}, // what a report dialog asks of the product types before their marks are changed
};

/// What GetConnection gives out. A real host gives its database connection.
class Connection final : public com::Automation {
protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {{L"State", 1, Member::Get, 0, 0, Run<&Connection::State>}};
        return kMembers;
    }

private:
    void State(Invocation& call) {
        constexpr long kOpen = 1;
        call.Return(Variant(kOpen));
    }
};

/// A control that a dialog hands over: a text box or a list that stands for one of our fields.
class Control {
public:
    Control(const TableInfo& table, const Variant& control)
        : m_control(control.ToObject().Get(), L"Control") {
        if (!m_control) {
            throw HostError(kInvalidArgument, L"Falta el control.");
        }
        m_field = m_control.Call(L"DataField").ToText();
        m_column = table.FindColumn(m_field);
    }

    /// The column that the control stands for; null when it is none of ours.
    const Column* Find() const { return m_column; }
    const Column& Get() const {
        if (m_column == nullptr) {
            throw HostError(kItemNotFound, L"No hay ningún campo «" + m_field + L"».");
        }
        return *m_column;
    }
    std::wstring Text() { return m_control.Call(L"Text").ToText(); }
    /// Whether all its entries count; a list that drops down stands for its text.
    bool IsList() { return m_control.Answers(L"Selected"); }
    std::vector<std::wstring> Items() {
        std::vector<std::wstring> items;
        const long count = m_control.Call(L"ListCount").ToLong();
        for (long i = 0; i < count; ++i) {
            items.push_back(m_control.Call(L"List", {i}).ToText());
        }
        return items;
    }

private:
    LateObject m_control;
    std::wstring m_field;
    const Column* m_column = nullptr;
};

Bound BoundOf(const Variant& number) {
    const long bound = number.IsMissing() ? static_cast<long>(Bound::Anywhere) : number.ToLong();
    if (bound < static_cast<long>(Bound::Anywhere) || bound > static_cast<long>(Bound::Upper)) {
        throw HostError(kInvalidArgument, L"CreateFilter: 0 es igual, 1 desde y 2 hasta.");
    }
    return static_cast<Bound>(bound);
}

/// A text column that holds a code, of its own table or of another.
bool HoldsCode(const TableInfo& table, const Column& column) {
    return column.type == Type::Text && (&column == &table.Code() || !column.related.empty());
}

wchar_t UpperCase(wchar_t key) {
    CharUpperBuffW(&key, 1);
    return key;
}

} // namespace

DataClass::DataClass(std::shared_ptr<Database> database, const TableInfo& table)
    : m_database(std::move(database)),
      m_records(com::Make<RecordSet>(std::make_shared<SharedView>(m_database, table))),
      m_connection(com::Make<Connection>()) {}

std::span<const Member> DataClass::Members() const {
    using C = DataClass;
    static constexpr Member kMembers[] = {
        {L"sClassName", 1, Member::Get, 0, 0, Run<&C::ClassName>},
        {L"Requery", 2, Member::Method, 0, 1, RunData<&C::Requery>},
        {L"FindRecord", 3, Member::Method, 1, 2, RunData<&C::FindRecord>},
        {L"GetFilter", 4, Member::Method, 1, 1, Run<&C::GetFilter>},
        {L"SetFilter", 5, Member::Method, 2, 2, Run<&C::SetFilter>},
        {L"CreateFilter", 6, Member::Method, 1, 2, RunData<&C::CreateFilter>},
        {L"AplyFilter", 7, Member::Method, 1, 1, RunData<&C::AplyFilter>},
        {L"existenregistros", 8, Member::Method, 0, 0, Run<&C::ExistenRegistros>},
        {L"MoveFirst", 9, Member::Method, 0, 0, Run<&C::MoveFirst>},
        {L"MoveLast", 10, Member::Method, 0, 0, Run<&C::MoveLast>},
        {L"MoveNext", 11, Member::Method, 0, 0, Run<&C::MoveNext>},
        {L"MovePrevious", 12, Member::Method, 0, 0, Run<&C::MovePrevious>},
        {L"SetOrder", 13, Member::Method, 2, 3, RunData<&C::SetOrder>},
        {L"ValidaKey", 14, Member::Method, 2, 2, Run<&C::ValidaKey>},
        {L"ValidaValue", 15, Member::Method, 1, 1, Run<&C::ValidaValue>},
        {L"ValidaDefinedSize", 16, Member::Method, 1, 1, Run<&C::ValidaDefinedSize>},
        {L"GetConnection", 17, Member::Method, 0, 0, Run<&C::GetConnection>},
        {L"Aceptar_todos", 18, Member::Method, 1, 1, RunData<&C::AceptarTodos>},
        {L"Denegar_todos", 19, Member::Method, 1, 1, RunData<&C::DenegarTodos>},
        {L"NuevoCodigo_Fam", 20, Member::Method, 1, 1, RunData<&C::NuevoCodigoFam>},
        {L"Recordset", 21, Member::Get, 0, 0, Run<&C::Recordset>},
        {L"InsertarArticulo", 22, Member::Method, 1, 1, RunData<&C::InsertarArticulo>},
    };
    return kMembers;
}

void DataClass::ClassName(Invocation& call) { call.Return(Variant(Table().className)); }

std::wstring DataClass::WithSelection(const std::wstring& filter) const {
    std::vector<std::wstring> conditions{m_selection};
    if (!filter.empty()) {
        // In brackets, for it may contain an Or; the line end keeps a comment in it from hiding ours.
        conditions.push_back(L'(' + filter + L"\n)");
    }
    return base::JoinAnd(conditions);
}

/// Reads the rows anew: with a selection's name that selection, without any filter; with "selec", or no name
/// at all, the rows asked for last.
void DataClass::Requery(Invocation& call) {
    const std::wstring name = base::Lower(call[0].ToText());
    if (name.empty() || name == base::kSelec) {
        m_records->KeepingRecord([](View& rows) { rows.Requery(); });
        return;
    }
    const auto* selection = std::ranges::find(kSelections, name, &Selection::name);
    if (selection == std::end(kSelections)) {
        throw HostError(kInvalidArgument, L"No hay ninguna selección «" + name + L"».");
    }
    const bool limited = !selection->field.empty() && Table().FindColumn(selection->field) != nullptr;
    const std::wstring condition =
        limited ? std::wstring(selection->field) + std::wstring(selection->condition) : std::wstring();
    m_records->KeepingRecord([&](View& rows) { rows.SetFilter(condition); });
    m_selection = condition;
}

/// Stays on the current record when there is none with that value.
void DataClass::FindRecord(Invocation& call) {
    const int column = call[1].IsMissing() ? 0 : call[1].ToShort();
    if (const std::optional<long> row = m_records->Rows().Find(call[0].ToText(), column)) {
        m_records->MoveTo(*row);
    }
}

void DataClass::GetFilter(Invocation& call) {
    const auto stored = m_stored.find(base::Lower(call[0].ToText()));
    call.Return(Variant(stored == m_stored.end() ? std::wstring() : stored->second));
}

void DataClass::SetFilter(Invocation& call) { m_stored[base::Lower(call[1].ToText())] = call[0].ToText(); }

void DataClass::CreateFilter(Invocation& call) {
    Control control(Table(), call[0]);
    const Column& column = control.Get();
    call.Return(Variant(control.IsList() ? BuildFilterAny(column, control.Items())
                                         : BuildFilter(column, control.Text(), BoundOf(call[1]))));
}

void DataClass::AplyFilter(Invocation& call) {
    m_records->Rows().SetFilter(WithSelection(call[0].ToText()));
    m_records->MoveTo(0);
}

void DataClass::ExistenRegistros(Invocation& call) { call.Return(Variant(m_records->Rows().Count() > 0)); }

// The buttons of a dialog stop at the ends: a record stays current.
void DataClass::MoveFirst(Invocation&) { m_records->MoveTo(0); }
void DataClass::MoveLast(Invocation&) { m_records->MoveTo(m_records->Rows().Count() - 1); }

void DataClass::MoveNext(Invocation&) {
    m_records->MoveBy(1);
    if (m_records->AtEnd()) {
        m_records->MoveBy(-1);
    }
}

void DataClass::MovePrevious(Invocation&) {
    m_records->MoveBy(-1);
    if (m_records->AtStart()) {
        m_records->MoveTo(0);
    }
}

/// The column by its number in the grid, which is its field's in the record set. There is one record set, so
/// the selection that is to be ordered (the third argument) is the one shown.
void DataClass::SetOrder(Invocation& call) {
    const std::wstring direction = base::Lower(call[1].ToText());
    const Order order{call[0].ToShort(), base::Trim(direction) == L"desc"};
    m_records->KeepingRecord([&](View& rows) { rows.SetOrder(order); });
}

// What is typed into a box that stands for no field of ours is not for us to judge: Null lets it pass.

/// Codes are written in capitals: the key that the dialog goes on with is changed.
void DataClass::ValidaKey(Invocation& call) {
    const Column* column = Control(Table(), call[0]).Find();
    if (column == nullptr) {
        call.Return(Variant::Null());
        return;
    }
    const auto key = static_cast<wchar_t>(call[1].ToShort());
    if (HoldsCode(Table(), *column)) {
        call.WriteBack(1, Variant(static_cast<short>(UpperCase(key))));
    }
    call.Return(Variant(demo::ValidaKey(*column, key)));
}

void DataClass::ValidaValue(Invocation& call) {
    Control control(Table(), call[0]);
    const Column* column = control.Find();
    call.Return(column != nullptr ? Variant(demo::ValidaValue(*column, control.Text())) : Variant::Null());
}

void DataClass::ValidaDefinedSize(Invocation& call) {
    constexpr int kAnySize = 255;
    const Column* column = Control(Table(), call[0]).Find();
    call.Return(Variant(long{column != nullptr ? demo::ValidaDefinedSize(*column) : kAnySize}));
}

void DataClass::GetConnection(Invocation& call) { call.Return(Variant(m_connection.Get())); }

void DataClass::MarkAll(Invocation& call, bool marked) {
    if (!com::SameObject(call[0].ToObject().Get(), m_connection.Get())) {
        throw HostError(kInvalidArgument, L"La conexión no es la que dio GetConnection.");
    }
    demo::MarkAll(*m_database, Table(), marked);
}

void DataClass::AceptarTodos(Invocation& call) { MarkAll(call, true); }
void DataClass::DenegarTodos(Invocation& call) { MarkAll(call, false); }

void DataClass::NuevoCodigoFam(Invocation& call) {
    call.Return(Variant(demo::NuevoCodigoFam(*m_database, call[0].ToText())));
}

void DataClass::Recordset(Invocation& call) { call.Return(Variant(m_records.Get())); }

void DataClass::InsertarArticulo(Invocation& call) {
    const Variant& given = call[0];
    const SAFEARRAY* array = given.Type() == (VT_ARRAY | VT_VARIANT) ? given.Get().parray : nullptr;
    if (array == nullptr || array->cDims != 1 || array->rgsabound[0].cElements > Table().columns.size()) {
        throw HostError(kInvalidArgument, L"InsertarArticulo espera un valor por campo, en su orden.");
    }
    const auto* values = static_cast<const VARIANT*>(array->pvData);
    FieldValues fields;
    for (ULONG i = 0; i < array->rgsabound[0].cElements; ++i) {
        const Column& column = Table().columns[i];
        fields.emplace_back(column.field, FromVariant(column, Variant::CopyOf(values[i])));
    }
    const std::int64_t id = Insert(*m_database, Table(), fields);
    m_records->KeepingRecord([](View& rows) { rows.Requery(); });
    if (const std::optional<long> row = m_records->Rows().RowOf(id)) {
        m_records->MoveTo(*row);
    }
}

HRESULT DataClass::QueryOther(REFIID id, void** out) {
    if (id != kDataSourceId) {
        return E_NOINTERFACE;
    }
    *out = static_cast<DataSource*>(this);
    AddRef();
    return S_OK;
}

HRESULT DataClass::getDataMember(DataMember name, REFIID id, IUnknown** out) {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = nullptr;
    const bool known = name == nullptr || *name == L'\0' || lstrcmpiW(name, kPrimary) == 0;
    return known ? m_records->QueryInterface(id, reinterpret_cast<void**>(out)) : E_INVALIDARG;
}

HRESULT DataClass::getDataMemberName(LONG index, DataMember* name) {
    if (name == nullptr) {
        return E_POINTER;
    }
    *name = index == 0 ? SysAllocString(kPrimary) : nullptr;
    return index == 0 ? S_OK : E_INVALIDARG;
}

HRESULT DataClass::getDataMemberCount(LONG* count) {
    if (count == nullptr) {
        return E_POINTER;
    }
    *count = 1;
    return S_OK;
}

// The data member is one object for as long as we live: there is nothing to tell a listener.
HRESULT DataClass::addDataSourceListener(DataSourceListener*) { return S_OK; }
HRESULT DataClass::removeDataSourceListener(DataSourceListener*) { return S_OK; }

ComPtr<IDispatch> MakeDataClass(std::shared_ptr<Database> database, std::wstring_view className) {
    try {
        return ComPtr<IDispatch>(com::Make<DataClass>(std::move(database), TableOf(className)).Get());
    } catch (const DataError& error) {
        throw HostError(kInvalidArgument, error.Message());
    }
}

} // namespace tamvelo::demo
