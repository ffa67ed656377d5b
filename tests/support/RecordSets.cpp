#include "tests/support/RecordSets.h"

#include <algorithm>

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
        call.Return(Variant(named == m_set->m_table->names.end() ? m_kind.name : named->second));
    }
    void Caption(Invocation& call) { call.Return(Variant(m_kind.caption)); }
    void Type(Invocation& call) { call.Return(Variant(m_kind.type)); }
    void DefinedSize(Invocation& call) { call.Return(Variant(m_kind.size)); }
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
    const Column& m_kind = kTable[m_column % MemoryRecordSet::kColumns];
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

struct MemoryRecordSet::Row {
    const wchar_t* name;
    Member::Kind kind;
    unsigned char most; // arguments
    bool RecordSetOptions::*needs;
    void (*run)(MemoryRecordSet& set, Invocation& call);
};

MemoryRecordSet::MemoryRecordSet(std::shared_ptr<RecordTable> table)
    : Fake(L"Recordset"), m_table(std::move(table)) {
    for (DISPID id = 1; const Row& row : kRows) {
        if (!row.needs || m_table->options.*row.needs) {
            m_members.push_back({row.name, id, row.kind, 0, row.most, &Run});
        }
        ++id;
    }
}

void MemoryRecordSet::Run(com::Automation& self, Invocation& call) {
    auto& set = static_cast<MemoryRecordSet&>(self);
    const Row& row = kRows[set.Running() - 1];
    set.m_table->Note(row.name + std::wstring(call.IsPut() ? L"=" : L""));
    row.run(set, call);
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
    const bool standing = Standing();
    const long record = standing ? RecordAt(m_position) : 0;
    m_sort = sort;
    m_position = standing ? PositionOf(record) : m_position;
    ++m_table->version;
}

void MemoryRecordSet::Grow(long records) {
    m_table->records += records;
    ++m_table->version;
}

long MemoryRecordSet::Current() const {
    if (!Standing()) {
        throw com::Error(kNoCurrentRecord, L"No hay registro actual.");
    }
    return RecordAt(m_position);
}

Variant MemoryRecordSet::ValueAt(short column) const { return m_table->ValueOf(Current(), column); }

void MemoryRecordSet::Write(short column, Variant value) {
    m_table->Note(L"Value=");
    m_table->written.insert_or_assign({RecordAt(m_position), column}, std::move(value));
    ++m_table->version;
}

void MemoryRecordSet::Move(long position) {
    m_position = std::clamp(position, -1L, m_table->options.ends ? Count() : Count() - 1);
}

const MemoryRecordSet::Row MemoryRecordSet::kRows[19] = {
    {L"RecordCount", Member::Get, 0, nullptr,
     [](MemoryRecordSet& set, Invocation& call) {
         call.Return(Variant(set.m_table->options.knowsCount ? set.Count() : -1L));
     }},
    {L"BOF", Member::Get, 0, nullptr,
     [](MemoryRecordSet& set, Invocation& call) {
         call.Return(Variant(set.m_position < 0 || set.Count() == 0));
     }},
    {L"EOF", Member::Get, 0, nullptr,
     [](MemoryRecordSet& set, Invocation& call) {
         call.Return(Variant(set.m_table->options.ends && set.m_position >= set.Count()));
     }},
    {L"MoveFirst", Member::Method, 0, nullptr, [](MemoryRecordSet& set, Invocation&) { set.Move(0); }},
    {L"MoveLast", Member::Method, 0, nullptr,
     [](MemoryRecordSet& set, Invocation&) { set.Move(set.Count() - 1); }},
    {L"MoveNext", Member::Method, 0, nullptr,
     [](MemoryRecordSet& set, Invocation&) { set.Move(set.m_position + 1); }},
    {L"MovePrevious", Member::Method, 0, nullptr,
     [](MemoryRecordSet& set, Invocation&) { set.Move(set.m_position - 1); }},
    {L"Fields", Member::Get, 0, nullptr,
     [](MemoryRecordSet& set, Invocation& call) {
         const long record = set.m_table->options.recordFields ? set.Current() : -1;
         call.Return(Variant(com::Make<MemoryFields>(ComPtr<MemoryRecordSet>(&set), record).Get()));
     }},
    {L"State", Member::Get, 0, nullptr,
     [](MemoryRecordSet& set, Invocation& call) { call.Return(Variant(set.m_table->open ? 1L : 0L)); }},
    {L"EditMode", Member::Get, 0, nullptr,
     [](MemoryRecordSet& set, Invocation& call) { call.Return(Variant(set.m_table->editMode)); }},
    {L"Filter", Member::GetPut, 0, &RecordSetOptions::filterAndSort,
     [](MemoryRecordSet& set, Invocation& call) {
         if (call.IsPut()) {
             set.m_filter = call.NewValue().ToText();
             set.m_position = 0;
         } else {
             call.Return(Variant(set.m_filter));
         }
     }},
    {L"Sort", Member::GetPut, 0, &RecordSetOptions::filterAndSort,
     [](MemoryRecordSet& set, Invocation& call) {
         if (call.IsPut()) {
             set.m_sort = call.NewValue().ToText();
         } else {
             call.Return(Variant(set.m_sort));
         }
     }},
    {L"Bookmark", Member::GetPut, 0, &RecordSetOptions::bookmarks,
     [](MemoryRecordSet& set, Invocation& call) {
         if (!call.IsPut()) {
             call.Return(Variant(kFirstBookmark + set.Current()));
             return;
         }
         const long record = call.NewValue().ToLong() - kFirstBookmark;
         if (record < 0 || record >= set.m_table->records || (!set.m_filter.empty() && record % 2 != 0)) {
             throw com::Error(kNoCurrentRecord, L"El marcador no es válido.");
         }
         set.m_position = set.PositionOf(record);
     }},
    {L"AbsolutePosition", Member::GetPut, 0, &RecordSetOptions::absolutePosition,
     [](MemoryRecordSet& set, Invocation& call) {
         if (!call.IsPut()) {
             const long outside = set.Count() == 0 ? -1 : set.m_position < 0 ? -2 : -3;
             call.Return(Variant(set.Standing() ? set.m_position + 1 : outside));
             return;
         }
         const long position = call.NewValue().ToLong();
         if (position < 1 || position > set.Count()) {
             throw com::Error(kNoCurrentRecord, L"No hay esa posición.");
         }
         set.m_position = position - 1;
     }},
    {L"Clone", Member::Method, 1, &RecordSetOptions::clone,
     [](MemoryRecordSet& set, Invocation& call) {
         const bool snapshot = set.m_table->options.snapshots;
         const auto clone =
             com::Make<MemoryRecordSet>(snapshot ? std::make_shared<RecordTable>(*set.m_table) : set.m_table);
         clone->m_filter = snapshot ? set.m_filter : L"";
         clone->m_sort = snapshot ? set.m_sort : L"";
         call.Return(Variant(clone.Get()));
     }},
    {L"GetRows", Member::Method, 3, &RecordSetOptions::getRows,
     [](MemoryRecordSet& set, Invocation& call) {
         const long wanted = call[0].IsMissing() ? set.Count() : call[0].ToLong();
         const long rows = std::clamp(wanted, 0L, set.Count() - std::max(set.m_position, 0L));
         if (rows == 0) {
             throw com::Error(kNoCurrentRecord, L"No hay registro actual.");
         }
         const auto columns = static_cast<ULONG>(set.m_table->columns);
         SAFEARRAYBOUND bounds[2] = {{columns, 0}, {static_cast<ULONG>(rows), 0}};
         Variant block;
         block.Address()->vt = VT_ARRAY | VT_VARIANT;
         block.Address()->parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
         for (LONG row = 0; row < rows; ++row, ++set.m_position) {
             for (LONG column = 0; column < set.m_table->columns; ++column) {
                 LONG place[2] = {column, row};
                 Variant value = set.ValueAt(static_cast<short>(column));
                 com::Check(SafeArrayPutElement(block.Get().parray, place, value.Address()));
             }
         }
         call.Return(std::move(block));
     }},
    {L"DataVersion", Member::Get, 0, &RecordSetOptions::dataVersion,
     [](MemoryRecordSet& set, Invocation& call) { call.Return(Variant(set.m_table->version)); }},
    {L"Update", Member::Method, 0, &RecordSetOptions::updates, [](MemoryRecordSet&, Invocation&) {}},
    {L"CancelUpdate", Member::Method, 0, &RecordSetOptions::updates,
     [](MemoryRecordSet& set, Invocation&) { // as good as the real thing where every record is written once
         std::erase_if(set.m_table->written, [record = set.RecordAt(set.m_position)](const auto& cell) {
             return cell.first.first == record;
         });
     }},
};

} // namespace tamvelo::testing
