#include "demo/host/RecordSet.h"

#include <algorithm>
#include <numeric>

#include "demo/data/Records.h"
#include "demo/host/FieldValue.h"
#include "demo/host/HostError.h"
#include "demo/host/Lookup.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Invocation;
using com::Member;
using com::Run;
using com::Variant;

class Field final : public com::Automation {
public:
    Field(ComPtr<RecordSet> set, std::size_t column)
        : m_set(std::move(set)), m_column(column), m_info(m_set->Table().columns[column]) {}

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Value", DISPID_VALUE, Member::GetPut, 0, 0, RunData<&Field::Value>},
            {L"Name", 1, Member::Get, 0, 0, Run<&Field::Name>},
            {L"Caption", 2, Member::Get, 0, 0, Run<&Field::Caption>},
            {L"Type", 3, Member::Get, 0, 0, Run<&Field::Type>},
            {L"DefinedSize", 4, Member::Get, 0, 0, Run<&Field::DefinedSize>},
            {L"Relacion", 5, Member::Get, 0, 0, Run<&Field::Relacion>},
        };
        return kMembers;
    }

private:
    void Value(Invocation& call) {
        if (call.IsPut()) {
            m_set->SetValueOf(m_column, call.NewValue());
        } else {
            call.Return(m_set->ValueOf(m_column));
        }
    }
    void Name(Invocation& call) { call.Return(Variant(m_info.field)); }
    void Caption(Invocation& call) { call.Return(Variant(m_info.caption)); }
    void Type(Invocation& call) { call.Return(Variant(AdoType(m_info))); }
    void DefinedSize(Invocation& call) { call.Return(Variant(demo::DefinedSize(m_info))); }
    void Relacion(Invocation& call) { call.Return(Variant(m_info.related)); }

    const ComPtr<RecordSet> m_set;
    const std::size_t m_column;
    const Column& m_info;
};

class FieldsObject final : public com::Automation {
public:
    explicit FieldsObject(ComPtr<RecordSet> set) : m_set(std::move(set)) {}

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Item", DISPID_VALUE, Member::Get, 1, 1, Run<&FieldsObject::Item>},
            {L"Count", 1, Member::Get, 0, 0, Run<&FieldsObject::Count>},
        };
        return kMembers;
    }

private:
    void Count(Invocation& call) { call.Return(Variant(static_cast<long>(m_set->Table().columns.size()))); }
    void Item(Invocation& call) {
        call.Return(Variant(com::Make<Field>(m_set, ColumnIndex(m_set->Table(), call[0])).Get()));
    }

    const ComPtr<RecordSet> m_set;
};

} // namespace

std::span<const Member> RecordSet::Members() const {
    static constexpr Member kMembers[] = {
        {L"Fields", DISPID_VALUE, Member::Get, 0, 1, Run<&RecordSet::Fields>},
        {L"RecordCount", 1, Member::Get, 0, 0, Run<&RecordSet::RecordCount>},
        {L"BOF", 2, Member::Get, 0, 0, Run<&RecordSet::Bof>},
        {L"EOF", 3, Member::Get, 0, 0, Run<&RecordSet::Eof>},
        {L"MoveFirst", 4, Member::Method, 0, 0, Run<&RecordSet::MoveFirst>},
        {L"MoveLast", 5, Member::Method, 0, 0, Run<&RecordSet::MoveLast>},
        {L"MoveNext", 6, Member::Method, 0, 0, Run<&RecordSet::MoveNext>},
        {L"MovePrevious", 7, Member::Method, 0, 0, Run<&RecordSet::MovePrevious>},
        {L"Bookmark", 8, Member::GetPut, 0, 0, Run<&RecordSet::Bookmark>},
        {L"AbsolutePosition", 9, Member::GetPut, 0, 0, Run<&RecordSet::AbsolutePosition>},
        {L"Clone", 10, Member::Method, 0, 1, Run<&RecordSet::Clone>},
        {L"GetRows", 11, Member::Method, 0, 3, RunData<&RecordSet::GetRows>},
        {L"State", 12, Member::Get, 0, 0, Run<&RecordSet::State>},
        {L"EditMode", 13, Member::Get, 0, 0, Run<&RecordSet::EditMode>},
        {L"Filter", 14, Member::Get, 0, 0, Run<&RecordSet::Filter>},
        {L"Sort", 15, Member::Get, 0, 0, Run<&RecordSet::Sort>},
        {L"DataVersion", 16, Member::Get, 0, 0, Run<&RecordSet::DataVersion>},
    };
    return kMembers;
}

void RecordSet::MoveTo(long row) { m_row = std::clamp(row, -1L, Rows().Count()); }

void RecordSet::CheckOnRecord() const {
    if (!OnRecord()) {
        throw HostError(kNoCurrentRecord, L"No hay ningún registro actual.");
    }
}

std::optional<std::int64_t> RecordSet::CurrentId() const {
    return OnRecord() ? std::optional(Rows().IdOf(m_row)) : std::nullopt;
}

Variant RecordSet::ValueOf(std::size_t column) {
    CheckOnRecord();
    return ToVariant(Table().columns[column], Rows().Row(m_row)[column]);
}

void RecordSet::SetValueOf(std::size_t column, const Variant& value) {
    CheckOnRecord();
    const Column& info = Table().columns[column];
    Update(*m_rows->database, Table(), Rows().IdOf(m_row),
           {{std::wstring(info.field), FromVariant(info, value)}});
    KeepingRecord([](View& rows) { rows.Requery(); });
}

void RecordSet::RecordCount(Invocation& call) { call.Return(Variant(Rows().Count())); }
void RecordSet::Bof(Invocation& call) { call.Return(Variant(AtStart())); }
void RecordSet::Eof(Invocation& call) { call.Return(Variant(AtEnd())); }
void RecordSet::MoveFirst(Invocation&) { MoveTo(0); }
void RecordSet::MoveLast(Invocation&) { MoveTo(std::max(Rows().Count() - 1, 0L)); }
void RecordSet::MoveNext(Invocation&) { MoveBy(1); }
void RecordSet::MovePrevious(Invocation&) { MoveBy(-1); }

void RecordSet::Bookmark(Invocation& call) {
    if (call.IsPut()) {
        MoveToBookmark(call.NewValue());
        return;
    }
    CheckOnRecord();
    // The row's identity, good through every filter, order and requery. A Double, so that GetRows can tell it
    // from the numbers that stand for the current, first and last record.
    call.Return(Variant(static_cast<double>(Rows().IdOf(m_row))));
}

void RecordSet::MoveToBookmark(const Variant& bookmark) {
    const std::optional<long> row = Rows().RowOf(bookmark.ToLong());
    if (!row) {
        throw HostError(kNoCurrentRecord, L"El registro del marcador ya no está entre los mostrados.");
    }
    MoveTo(*row);
}

void RecordSet::AbsolutePosition(Invocation& call) {
    constexpr long kPositionUnknown = -1;
    constexpr long kPositionBof = -2;
    constexpr long kPositionEof = -3;
    const long count = Rows().Count();
    if (!call.IsPut()) {
        call.Return(Variant(count == 0  ? kPositionUnknown
                            : AtStart() ? kPositionBof
                            : AtEnd()   ? kPositionEof
                                        : m_row + 1));
        return;
    }
    const long position = call.NewValue().ToLong();
    if (position < 1 || position > count) {
        throw HostError(kInvalidArgument, L"No hay ninguna posición " + std::to_wstring(position) + L'.');
    }
    MoveTo(position - 1);
}

void RecordSet::Fields(Invocation& call) {
    const ComPtr<RecordSet> self(this);
    if (call[0].IsMissing()) {
        call.Return(Variant(com::Make<FieldsObject>(self).Get()));
    } else {
        call.Return(Variant(com::Make<Field>(self, ColumnIndex(Table(), call[0])).Get()));
    }
}

void RecordSet::Clone(Invocation& call) { call.Return(Variant(com::Make<RecordSet>(m_rows).Get())); }

/// GetRows' second argument: missing or 0 the current record, 1 the first, 2 the last, or a bookmark.
void RecordSet::MoveToStart(const Variant& start) {
    if (start.Type() == VT_R8) {
        MoveToBookmark(start);
        return;
    }
    switch (start.IsMissing() ? 0 : start.ToLong()) {
    case 0:
        break;
    case 1:
        MoveTo(0);
        break;
    case 2:
        MoveTo(Rows().Count() - 1);
        break;
    default:
        throw HostError(kInvalidArgument, L"El punto de partida de GetRows no es válido.");
    }
}

/// GetRows' third argument: missing for every column, one column by number or name, or an array of them.
std::vector<std::size_t> RecordSet::ColumnsOf(const Variant& fields) const {
    if (fields.IsMissing()) {
        std::vector<std::size_t> all(Table().columns.size());
        std::iota(all.begin(), all.end(), std::size_t{0});
        return all;
    }
    if (fields.Type() != (VT_ARRAY | VT_VARIANT)) {
        return {ColumnIndex(Table(), fields)};
    }
    const SAFEARRAY& array = *fields.Get().parray;
    const auto* wanted = static_cast<const VARIANT*>(array.pvData);
    std::vector<std::size_t> columns;
    for (ULONG i = 0; i < array.rgsabound[0].cElements; ++i) {
        columns.push_back(ColumnIndex(Table(), Variant::CopyOf(wanted[i])));
    }
    return columns;
}

/// A block of values by field and record; afterwards the record behind it is the current one.
void RecordSet::GetRows(Invocation& call) {
    constexpr long kRest = -1;
    const long wanted = call[0].IsMissing() ? kRest : call[0].ToLong();
    const std::vector<std::size_t> columns = ColumnsOf(call[2]);
    if (columns.empty() || wanted == 0 || wanted < kRest) {
        throw HostError(kInvalidArgument, L"GetRows no puede leer tantas filas o columnas.");
    }
    MoveToStart(call[1]);
    CheckOnRecord();
    const long left = Rows().Count() - m_row;
    const long count = wanted == kRest ? left : std::min(wanted, left);

    // The first dimension, the fields, runs fastest in memory.
    SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(columns.size()), 0}, {static_cast<ULONG>(count), 0}};
    Variant block;
    block.Address()->parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (block.Get().parray == nullptr) {
        throw std::bad_alloc();
    }
    block.Address()->vt = VT_ARRAY | VT_VARIANT;
    auto* cell = static_cast<VARIANT*>(block.Get().parray->pvData);
    for (long i = 0; i < count; ++i) {
        const std::span<const Value> row = Rows().Row(m_row + i);
        for (const std::size_t column : columns) {
            *cell++ = ToVariant(Table().columns[column], row[column]).Detach();
        }
    }
    MoveBy(count);
    call.Return(std::move(block));
}

void RecordSet::State(Invocation& call) {
    constexpr long kOpen = 1;
    call.Return(Variant(kOpen));
}

void RecordSet::EditMode(Invocation& call) {
    constexpr long kNotEditing = 0;
    call.Return(Variant(kNotEditing));
}

void RecordSet::Filter(Invocation& call) { call.Return(Variant(Rows().Filter())); }

void RecordSet::Sort(Invocation& call) {
    const Order order = Rows().CurrentOrder();
    const std::wstring field(Table().columns[static_cast<std::size_t>(order.column)].field);
    call.Return(Variant(field + (order.descending ? L" DESC" : L"")));
}

void RecordSet::DataVersion(Invocation& call) { call.Return(Variant(static_cast<long>(Rows().Version()))); }

} // namespace tamvelo::demo
