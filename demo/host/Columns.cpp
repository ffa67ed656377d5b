#include "demo/host/HostObjects.h"
#include "demo/host/Lookup.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Invocation;
using com::Member;
using com::Run;
using com::Variant;

/// A column of the host's grid. The width is in characters.
class GridColumn final : public com::Automation {
public:
    explicit GridColumn(const Column& column) : m_column(column), m_width(column.width) {}
    const Column& Info() const { return m_column; }

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Caption", DISPID_VALUE, Member::Get, 0, 0, Run<&GridColumn::Caption>},
            {L"DataField", 1, Member::Get, 0, 0, Run<&GridColumn::DataField>},
            {L"Visible", 2, Member::GetPut, 0, 0, Run<&GridColumn::Visible>},
            {L"Width", 3, Member::GetPut, 0, 0, Run<&GridColumn::Width>},
        };
        return kMembers;
    }

private:
    void Caption(Invocation& call) { call.Return(Variant(m_column.caption)); }
    void DataField(Invocation& call) { call.Return(Variant(m_column.field)); }
    void Visible(Invocation& call) {
        if (call.IsPut()) {
            m_visible = call.NewValue().ToBool();
        } else {
            call.Return(Variant(m_visible));
        }
    }
    void Width(Invocation& call) {
        if (call.IsPut()) {
            m_width = call.NewValue().ToLong();
        } else {
            call.Return(Variant(m_width));
        }
    }

    const Column& m_column;
    long m_width;
    bool m_visible = true;
};

class GridColumns final : public com::Automation {
public:
    explicit GridColumns(const TableInfo& table) : m_table(table) {
        for (const Column& column : table.columns) {
            m_columns.push_back(com::Make<GridColumn>(column));
        }
    }

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Item", DISPID_VALUE, Member::Get, 1, 1, Run<&GridColumns::Item>},
            {L"Count", 1, Member::Get, 0, 0, Run<&GridColumns::Count>},
            {L"Col", 2, Member::GetPut, 0, 0, Run<&GridColumns::Col>},
        };
        return kMembers;
    }

private:
    void Count(Invocation& call) { call.Return(Variant(static_cast<long>(m_columns.size()))); }
    void Item(Invocation& call) { call.Return(Variant(m_columns[ColumnIndex(m_table, call[0])].Get())); }

    /// The current column, from 0.
    void Col(Invocation& call) {
        if (call.IsPut()) {
            m_current = call.NewValue().ToShort();
        } else {
            call.Return(Variant(m_current));
        }
    }

    const TableInfo& m_table;
    std::vector<ComPtr<GridColumn>> m_columns;
    short m_current = 0;
};

} // namespace

ComPtr<IDispatch> MakeColumns(std::wstring_view className) {
    return ComPtr<IDispatch>(com::Make<GridColumns>(TableOf(className)).Get());
}

} // namespace tamvelo::demo
