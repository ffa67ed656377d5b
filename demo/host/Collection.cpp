#include <algorithm>

#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/host/Lookup.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Invocation;
using com::Member;
using com::Run;
using com::Variant;

using Items = std::shared_ptr<const std::vector<Variant>>;

/// What "For Each" walks.
class Walk final : public com::Object<IEnumVARIANT> {
public:
    Walk(Items items, std::size_t next) : m_items(std::move(items)), m_next(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* values, ULONG* fetched) override {
        ULONG got = 0;
        for (; got < wanted && m_next < m_items->size(); ++got, ++m_next) {
            VariantInit(&values[got]);
            if (const HRESULT result = VariantCopy(&values[got], (*m_items)[m_next].In()); FAILED(result)) {
                return result;
            }
        }
        if (fetched != nullptr) {
            *fetched = got;
        }
        return got == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = m_items->size() - m_next;
        m_next += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        m_next = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override {
        *out = com::Make<Walk>(m_items, m_next).Detach();
        return S_OK;
    }

private:
    const Items m_items;
    std::size_t m_next;
};

class Collection final : public com::Automation {
public:
    explicit Collection(std::vector<Variant> items)
        : m_items(std::make_shared<const std::vector<Variant>>(std::move(items))) {}

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Item", DISPID_VALUE, Member::Get, 1, 1, Run<&Collection::Item>},
            {L"_NewEnum", DISPID_NEWENUM, Member::Get, 0, 0, Run<&Collection::NewEnum>},
            {L"Count", 1, Member::Get, 0, 0, Run<&Collection::Count>},
        };
        return kMembers;
    }

private:
    void Count(Invocation& call) { call.Return(Variant(static_cast<long>(m_items->size()))); }
    void Item(Invocation& call) {
        const long index = call[0].ToLong();
        if (index < 1 || index > static_cast<long>(m_items->size())) {
            throw HostError(kBadIndex, L"La colección no tiene elemento " + std::to_wstring(index) + L'.');
        }
        call.Return((*m_items)[static_cast<std::size_t>(index) - 1]);
    }
    void NewEnum(Invocation& call) {
        Variant walk;
        walk.Address()->punkVal = com::Make<Walk>(m_items, 0).Detach();
        walk.Address()->vt = VT_UNKNOWN;
        call.Return(std::move(walk));
    }

    const Items m_items;
};

/// A report that the host can print.
class Report final : public com::Automation {
public:
    explicit Report(std::wstring title) : m_title(std::move(title)) {}

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Titulo", DISPID_VALUE, Member::Get, 0, 0, Run<&Report::Title>}};
        return kMembers;
    }

private:
    void Title(Invocation& call) { call.Return(Variant(m_title)); }

    const std::wstring m_title;
};

} // namespace

ComPtr<IDispatch> MakeCollection(std::vector<Variant> items) {
    return ComPtr<IDispatch>(com::Make<Collection>(std::move(items)).Get());
}

ComPtr<IDispatch> MakeReports(std::wstring_view className) {
    const std::wstring title(TableOf(className).title);
    std::vector<Variant> reports;
    for (const wchar_t* kind : {L"Listado", L"Listado detallado", L"Resumen por meses", L"Etiquetas"}) {
        reports.emplace_back(com::Make<Report>(kind + (L": " + title)).Get());
    }
    return MakeCollection(std::move(reports));
}

} // namespace tamvelo::demo
