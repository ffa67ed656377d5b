#include "tests/support/RecordSets.h"

#include <dispex.h>
#include <msdatsrc.h>

#include <algorithm>

#include "com/Guard.h"

__CRT_UUID_DECL(DataSource, 0x7c0ffab3, 0xcd84, 0x11d0, 0x94, 0x9a, 0x00, 0xa0, 0xc9, 0x11, 0x10, 0xed)

namespace tamvelo::testing {

using com::ComPtr;
using com::Invocation;
using com::Member;
using com::Run;
using com::Variant;

namespace {

constexpr HRESULT kNoCurrentRecord = static_cast<HRESULT>(0x800A0BCD);
constexpr HRESULT kNoSuchItem = static_cast<HRESULT>(0x800A0CC1);
constexpr long kFirstBookmark = 1000;

struct Column {
    const wchar_t* name;
    const wchar_t* caption;
    long type;
    long size;
};
constexpr Column kTable[MemoryRecordSet::kColumns] = {
    {L"Codigo", L"Código", 3, 4}, {L"Nombre", L"Nombre", 202, 40},    {L"Precio", L"Precio", 6, 8},
    {L"Alta", L"Alta", 7, 8},     {L"Activo", L"Activo", 11, 2},      {L"Cantidad", L"Cantidad", 5, 8},
    {L"Notas", L"Notas", 203, 0}, {L"Grupo", L"Grupo del año", 2, 2},
};

} // namespace

int RecordTable::Calls() const {
    int sum = 0;
    for (const auto& [member, count] : calls) {
        sum += count;
    }
    return sum;
}

int RecordTable::Calls(const std::wstring& member) const {
    const auto found = calls.find(member);
    return found == calls.end() ? 0 : found->second;
}

void RecordTable::Note(const std::wstring& member) {
    ++calls[member];
    if (onCall) {
        onCall(member);
    }
}

Variant RecordTable::ValueOf(long record, short column) const {
    if (const auto cell = written.find({record, column}); cell != written.end()) {
        return cell->second;
    }
    return value ? value(record, column) : TypedValue(record, column);
}

Variant RecordTable::TypedValue(long record, short column) {
    switch (column) {
    case 0:
        return Variant(record + 1);
    case 1:
        return Variant(L"Artículo " + std::to_wstring(record + 1));
    case 2: {
        Variant price;
        price.Address()->vt = VT_CY;
        price.Address()->cyVal.int64 = (record % 5000 + 1) * 12345;
        return price;
    }
    case 3:
        return Variant::Date(36526.0 + static_cast<double>(record % 9000));
    case 4:
        return Variant(record % 2 == 0);
    case 5:
        return Variant(static_cast<double>(record % 700 + 1) / 4);
    case 6:
        return record % 3 == 0 ? Variant::Null() : Variant(L"Nota de " + std::to_wstring(record));
    default:
        return Variant(static_cast<short>(record % 12 + 30));
    }
}

/// Of the record with that number, or for -1 of the set's current one.
class MemoryField : public Fake {
public:
    MemoryField(ComPtr<MemoryRecordSet> set, short column, long record)
        : Fake(L"Field"), m_set(std::move(set)), m_column(column), m_record(record) {}

    void Name(Invocation& call) {
        const auto named = m_set->m_table->names.find(m_column);
        call.Return(Variant(named == m_set->m_table->names.end()
                                ? kTable[m_column % MemoryRecordSet::kColumns].name
                                : named->second));
    }
    void Caption(Invocation& call) {
        call.Return(Variant(kTable[m_column % MemoryRecordSet::kColumns].caption));
    }
    void Type(Invocation& call) { call.Return(Variant(kTable[m_column % MemoryRecordSet::kColumns].type)); }
    void DefinedSize(Invocation& call) {
        call.Return(Variant(kTable[m_column % MemoryRecordSet::kColumns].size));
    }
    void Relacion(Invocation& call) { call.Return(Variant(m_set->m_table->related[m_column])); }
    void Value(Invocation& call) {
        if (call.IsPut()) {
            m_set->Write(m_column, call.NewValue());
            return;
        }
        m_set->m_table->Note(L"Value");
        call.Return(m_record < 0 ? m_set->ValueAt(m_column) : m_set->m_table->ValueOf(m_record, m_column));
    }

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Value", DISPID_VALUE, Member::GetPut, 0, 0, Run<&MemoryField::Value>},
            {L"Name", 1, Member::Get, 0, 0, Run<&MemoryField::Name>},
            {L"Caption", 2, Member::Get, 0, 0, Run<&MemoryField::Caption>},
            {L"Type", 3, Member::Get, 0, 0, Run<&MemoryField::Type>},
            {L"DefinedSize", 4, Member::Get, 0, 0, Run<&MemoryField::DefinedSize>},
            {L"Relacion", 5, Member::Get, 0, 0, Run<&MemoryField::Relacion>},
        };
        const std::span<const Member> all = kMembers;
        const RecordTable& table = *m_set->m_table;
        return all.first(!table.options.fieldTypes ? 2 : table.related.empty() ? 5 : 6);
    }

private:
    const ComPtr<MemoryRecordSet> m_set;
    const short m_column;
    const long m_record;
};

class MemoryFields : public Fake {
public:
    MemoryFields(ComPtr<MemoryRecordSet> set, long record)
        : Fake(L"Fields"), m_set(std::move(set)), m_record(record) {}

    void Count(Invocation& call) { call.Return(Variant(m_set->m_table->columns)); }
    void Item(Invocation& call) {
        m_set->m_table->Note(L"Item");
        const long column = call[0].ToLong();
        if (column < 0 || column >= m_set->m_table->columns) {
            throw com::Error(kNoSuchItem, L"No hay ese campo.");
        }
        call.Return(Variant(com::Make<MemoryField>(m_set, static_cast<short>(column), m_record).Get()));
    }

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Item", DISPID_VALUE, Member::Get, 1, 1, Run<&MemoryFields::Item>},
            {L"Count", 1, Member::Get, 0, 0, Run<&MemoryFields::Count>},
        };
        return kMembers;
    }

private:
    const ComPtr<MemoryRecordSet> m_set;
    const long m_record;
};

MemoryRecordSet::MemoryRecordSet(const RecordSetOptions& options)
    : MemoryRecordSet(std::make_shared<RecordTable>(options)) {}

MemoryRecordSet::MemoryRecordSet(std::shared_ptr<RecordTable> table)
    : Fake(L"Recordset"), m_table(std::move(table)) {
    using Set = MemoryRecordSet;
    const RecordSetOptions& options = m_table->options;
    m_members = {
        {L"RecordCount", 1, Member::Get, 0, 0, Run<&Set::RecordCount>},
        {L"BOF", 2, Member::Get, 0, 0, Run<&Set::Bof>},
        {L"EOF", 3, Member::Get, 0, 0, Run<&Set::Eof>},
        {L"MoveFirst", 4, Member::Method, 0, 0, Run<&Set::MoveFirst>},
        {L"MoveLast", 5, Member::Method, 0, 0, Run<&Set::MoveLast>},
        {L"MoveNext", 6, Member::Method, 0, 0, Run<&Set::MoveNext>},
        {L"MovePrevious", 7, Member::Method, 0, 0, Run<&Set::MovePrevious>},
        {L"Fields", 8, Member::Get, 0, 0, Run<&Set::Fields>},
        {L"State", 9, Member::Get, 0, 0, Run<&Set::State>},
        {L"EditMode", 10, Member::Get, 0, 0, Run<&Set::EditMode>},
    };
    const auto offer = [&](bool wanted, const Member& member) {
        if (wanted) {
            m_members.push_back(member);
        }
    };
    offer(options.filterAndSort, {L"Filter", 11, Member::GetPut, 0, 0, Run<&Set::Filter>});
    offer(options.filterAndSort, {L"Sort", 12, Member::GetPut, 0, 0, Run<&Set::Sort>});
    offer(options.bookmarks, {L"Bookmark", 13, Member::GetPut, 0, 0, Run<&Set::Bookmark>});
    offer(options.absolutePosition,
          {L"AbsolutePosition", 14, Member::GetPut, 0, 0, Run<&Set::AbsolutePosition>});
    offer(options.clone, {L"Clone", 15, Member::Method, 0, 1, Run<&Set::Clone>});
    offer(options.getRows, {L"GetRows", 16, Member::Method, 0, 3, Run<&Set::GetRows>});
    offer(options.dataVersion, {L"DataVersion", 17, Member::Get, 0, 0, Run<&Set::DataVersion>});
    offer(options.updates, {L"Update", 18, Member::Method, 0, 0, Run<&Set::Update>});
    offer(options.updates, {L"CancelUpdate", 19, Member::Method, 0, 0, Run<&Set::CancelUpdate>});
}

long MemoryRecordSet::Count() const {
    return m_filter.empty() ? m_table->records : (m_table->records + 1) / 2;
}

long MemoryRecordSet::RecordAt(long position) const {
    const long place = m_sort.empty() ? position : Count() - 1 - position;
    return m_filter.empty() ? place : place * 2;
}

long MemoryRecordSet::PositionOf(long record) const {
    const long place = m_filter.empty() ? record : record / 2;
    return m_sort.empty() ? place : Count() - 1 - place;
}

void MemoryRecordSet::SetFilter(const std::wstring& filter) {
    m_filter = filter;
    m_position = 0;
    ++m_table->version;
}

void MemoryRecordSet::SetSort(const std::wstring& sort) {
    const bool standing = m_position >= 0 && m_position < Count();
    const long record = standing ? RecordAt(m_position) : 0;
    m_sort = sort;
    m_position = standing ? PositionOf(record) : m_position;
    ++m_table->version;
}

void MemoryRecordSet::Grow(long records) {
    m_table->records += records;
    ++m_table->version;
}

Variant MemoryRecordSet::ValueAt(short column) const {
    if (m_position < 0 || m_position >= Count()) {
        throw com::Error(kNoCurrentRecord, L"No hay registro actual.");
    }
    return m_table->ValueOf(RecordAt(m_position), column);
}

void MemoryRecordSet::Write(short column, Variant value) {
    m_table->Note(L"Value=");
    m_table->written.insert_or_assign({RecordAt(m_position), column}, std::move(value));
    ++m_table->version;
}

void MemoryRecordSet::Update(Invocation&) { m_table->Note(L"Update"); }

/// As good as the real thing where every record is written once.
void MemoryRecordSet::CancelUpdate(Invocation&) {
    m_table->Note(L"CancelUpdate");
    std::erase_if(m_table->written,
                  [&](const auto& cell) { return cell.first.first == RecordAt(m_position); });
}

void MemoryRecordSet::Move(long position) {
    m_position = std::clamp(position, -1L, m_table->options.ends ? Count() : Count() - 1);
}

void MemoryRecordSet::RecordCount(Invocation& call) {
    m_table->Note(L"RecordCount");
    call.Return(Variant(m_table->options.knowsCount ? Count() : -1L));
}

void MemoryRecordSet::Bof(Invocation& call) {
    m_table->Note(L"BOF");
    call.Return(Variant(m_position < 0 || Count() == 0));
}

void MemoryRecordSet::Eof(Invocation& call) {
    m_table->Note(L"EOF");
    call.Return(Variant(m_table->options.ends && m_position >= Count()));
}

void MemoryRecordSet::MoveFirst(Invocation&) {
    m_table->Note(L"MoveFirst");
    Move(0);
}

void MemoryRecordSet::MoveLast(Invocation&) {
    m_table->Note(L"MoveLast");
    Move(Count() - 1);
}

void MemoryRecordSet::MoveNext(Invocation&) {
    m_table->Note(L"MoveNext");
    Move(m_position + 1);
}

void MemoryRecordSet::MovePrevious(Invocation&) {
    m_table->Note(L"MovePrevious");
    Move(m_position - 1);
}

void MemoryRecordSet::Bookmark(Invocation& call) {
    m_table->Note(call.IsPut() ? L"Bookmark=" : L"Bookmark");
    if (call.IsPut()) {
        const long record = call.NewValue().ToLong() - kFirstBookmark;
        if (record < 0 || record >= m_table->records || (!m_filter.empty() && record % 2 != 0)) {
            throw com::Error(kNoCurrentRecord, L"El marcador no es válido.");
        }
        m_position = PositionOf(record);
        return;
    }
    if (m_position < 0 || m_position >= Count()) {
        throw com::Error(kNoCurrentRecord, L"No hay registro actual.");
    }
    call.Return(Variant(kFirstBookmark + RecordAt(m_position)));
}

void MemoryRecordSet::AbsolutePosition(Invocation& call) {
    m_table->Note(call.IsPut() ? L"AbsolutePosition=" : L"AbsolutePosition");
    if (call.IsPut()) {
        const long position = call.NewValue().ToLong();
        if (position < 1 || position > Count()) {
            throw com::Error(kNoCurrentRecord, L"No hay esa posición.");
        }
        m_position = position - 1;
        return;
    }
    const long position = Count() == 0            ? -1
                          : m_position < 0        ? -2
                          : m_position >= Count() ? -3
                                                  : m_position + 1;
    call.Return(Variant(position));
}

void MemoryRecordSet::Fields(Invocation& call) {
    m_table->Note(L"Fields");
    const long record = m_table->options.recordFields ? Standing() : -1;
    if (m_table->options.recordFields && record < 0) {
        throw com::Error(kNoCurrentRecord, L"No hay registro actual.");
    }
    call.Return(Variant(com::Make<MemoryFields>(ComPtr<MemoryRecordSet>(this), record).Get()));
}

void MemoryRecordSet::State(Invocation& call) {
    m_table->Note(L"State");
    call.Return(Variant(m_table->open ? 1L : 0L));
}

void MemoryRecordSet::EditMode(Invocation& call) {
    m_table->Note(L"EditMode");
    call.Return(Variant(m_table->editMode));
}

void MemoryRecordSet::Clone(Invocation& call) {
    m_table->Note(L"Clone");
    if (m_table->options.snapshots) {
        const auto clone = com::Make<MemoryRecordSet>(std::make_shared<RecordTable>(*m_table));
        clone->m_filter = m_filter;
        clone->m_sort = m_sort;
        call.Return(Variant(clone.Get()));
        return;
    }
    call.Return(Variant(com::Make<MemoryRecordSet>(m_table).Get()));
}

void MemoryRecordSet::GetRows(Invocation& call) {
    m_table->Note(L"GetRows");
    const long wanted = call[0].IsMissing() ? Count() : call[0].ToLong();
    const long rows = std::clamp(wanted, 0L, Count() - std::max(m_position, 0L));
    if (rows == 0) {
        throw com::Error(kNoCurrentRecord, L"No hay registro actual.");
    }
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(m_table->columns), 0}, {static_cast<ULONG>(rows), 0}};
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    Variant block;
    block.Address()->vt = VT_ARRAY | VT_VARIANT;
    block.Address()->parray = array;
    for (LONG row = 0; row < rows; ++row, ++m_position) {
        for (LONG column = 0; column < m_table->columns; ++column) {
            LONG place[2] = {column, row};
            Variant value = ValueAt(static_cast<short>(column));
            com::Check(SafeArrayPutElement(array, place, value.Address()));
        }
    }
    call.Return(std::move(block));
}

void MemoryRecordSet::Filter(Invocation& call) {
    m_table->Note(call.IsPut() ? L"Filter=" : L"Filter");
    if (call.IsPut()) {
        m_filter = call.NewValue().ToText();
        m_position = 0;
    } else {
        call.Return(Variant(m_filter));
    }
}

void MemoryRecordSet::Sort(Invocation& call) {
    m_table->Note(call.IsPut() ? L"Sort=" : L"Sort");
    if (call.IsPut()) {
        m_sort = call.NewValue().ToText();
    } else {
        call.Return(Variant(m_sort));
    }
}

void MemoryRecordSet::DataVersion(Invocation& call) {
    m_table->Note(L"DataVersion");
    call.Return(Variant(m_table->version));
}

namespace {

class ScriptObject final : public com::Object<IDispatchEx> {
public:
    explicit ScriptObject(IDispatch* object) : m_object(object) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown,
                                     UINT* wrong) override {
        const HRESULT code = m_object->Invoke(id, reserved, locale, flags, parameters, result, thrown, wrong);
        if (SUCCEEDED(code) && result && result->vt == VT_DISPATCH && result->pdispVal) {
            IDispatch* const plain = result->pdispVal;
            result->pdispVal = AsScript(plain).Detach();
            plain->Release();
        }
        return code;
    }
    HRESULT STDMETHODCALLTYPE GetDispID(BSTR name, DWORD, DISPID* id) override {
        LPOLESTR names = name;
        return m_object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, id);
    }
    HRESULT STDMETHODCALLTYPE InvokeEx(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                       VARIANT* result, EXCEPINFO* thrown, IServiceProvider*) override {
        return Invoke(id, IID_NULL, locale, flags, parameters, result, thrown, nullptr);
    }
    HRESULT STDMETHODCALLTYPE DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

private:
    const ComPtr<IDispatch> m_object;
};

class MemoryDataSource final : public com::Object<DataSource> {
public:
    explicit MemoryDataSource(std::function<ComPtr<IDispatch>()> set) : m_set(std::move(set)) {}

    HRESULT STDMETHODCALLTYPE getDataMember(DataMember name, REFIID id, IUnknown** out) override {
        *out = nullptr;
        if (!name || std::wstring_view(name) != L"Primary") {
            return E_INVALIDARG;
        }
        const ComPtr<IDispatch> set = m_set();
        return set ? set->QueryInterface(id, reinterpret_cast<void**>(out)) : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE getDataMemberName(LONG, DataMember*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE getDataMemberCount(LONG* count) override { return *count = 1, S_OK; }
    HRESULT STDMETHODCALLTYPE addDataSourceListener(DataSourceListener*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE removeDataSourceListener(DataSourceListener*) override { return S_OK; }

private:
    const std::function<ComPtr<IDispatch>()> m_set;
};

} // namespace

ComPtr<IDispatch> AsScript(IDispatch* object) {
    return ComPtr<IDispatch>(com::Make<ScriptObject>(object).Get());
}

std::span<const Member> RecordsetOwner::Members() const {
    static constexpr Member kMembers[] = {
        {L"Recordset", 1, Member::Get, 0, 0, Run<&RecordsetOwner::Recordset>}};
    return kMembers;
}

void RecordsetOwner::Recordset(Invocation& call) { call.Return(Variant(make ? make().Get() : set.Get())); }

ComPtr<IUnknown> MakeDataSource(std::function<ComPtr<IDispatch>()> set) {
    return ComPtr<IUnknown>(com::Make<MemoryDataSource>(std::move(set)).Get());
}

} // namespace tamvelo::testing
