#include "bench/MemoryHost.h"

#include "tests/support/RecordSets.h"

namespace tamvelo::bench {

using com::ComPtr;
using com::Invocation;
using com::Member;
using com::Run;
using com::Variant;

namespace {

class MemoryClass final : public com::Automation {
public:
    explicit MemoryClass(long rows)
        : m_set(com::Make<testing::MemoryRecordSet>(testing::RecordSetOptions{.rows = rows})) {}

    void SClassName(Invocation& call) { call.Return(Variant(L"articulos")); }
    void Recordset(Invocation& call) { call.Return(Variant(m_set.Get())); }
    void Requery(Invocation&) {}
    /// Codes run from 1 without a gap.
    void FindRecord(Invocation& call) { m_set->SetPosition(call[0].ToLong() - 1); }
    void MoveNext(Invocation&) { m_set->SetPosition(std::min(m_set->Position() + 1, m_set->Count())); }
    void Filter(Invocation& call) { call.Return(Variant(L"")); }
    void AplyFilter(Invocation& call) { m_set->SetFilter(call[0].ToText()); }
    void SetOrder(Invocation& call) { m_set->SetSort(call[1].ToText().empty() ? L"" : L"Codigo DESC"); }
    void Existenregistros(Invocation& call) { call.Return(Variant(true)); }

protected:
    std::span<const Member> Members() const override {
        using Own = MemoryClass;
        static constexpr Member kMembers[] = {
            {L"sClassName", 1, Member::Get, 0, 0, Run<&Own::SClassName>},
            {L"Recordset", 2, Member::Get, 0, 0, Run<&Own::Recordset>},
            {L"Requery", 3, Member::Method, 0, 1, Run<&Own::Requery>},
            {L"FindRecord", 4, Member::Method, 1, 2, Run<&Own::FindRecord>},
            {L"MoveNext", 5, Member::Method, 0, 0, Run<&Own::MoveNext>},
            {L"GetFilter", 6, Member::Method, 1, 1, Run<&Own::Filter>},
            {L"AplyFilter", 7, Member::Method, 1, 1, Run<&Own::AplyFilter>},
            {L"SetOrder", 8, Member::Method, 3, 3, Run<&Own::SetOrder>},
            {L"existenregistros", 9, Member::Method, 0, 0, Run<&Own::Existenregistros>},
        };
        return kMembers;
    }

private:
    const ComPtr<testing::MemoryRecordSet> m_set;
};

class TextControl final : public com::Automation {
public:
    explicit TextControl(std::wstring text) : m_text(std::move(text)) {}
    void Text(Invocation& call) { call.Return(Variant(m_text)); }

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Text", DISPID_VALUE, Member::Get, 0, 0, Run<&TextControl::Text>}};
        return kMembers;
    }

private:
    const std::wstring m_text;
};

class SilentSink final : public com::Automation {
protected:
    std::span<const Member> Members() const override { return {}; }
};

} // namespace

ComPtr<IDispatch> MakeTextControl(const std::wstring& text) { return com::Make<TextControl>(text); }

ComPtr<IDispatch> MakeSilentSink() { return com::Make<SilentSink>(); }

Host MakeMemoryHost(long rows, const std::wstring& text) {
    return {MakeSilentSink(), com::Make<MemoryClass>(rows), MakeTextControl(text)};
}

} // namespace tamvelo::bench
