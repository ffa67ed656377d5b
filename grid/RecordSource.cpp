#include "grid/RecordSource.h"

#include <msdatsrc.h>

#include <algorithm>
#include <iterator>

#include "com/CallOut.h"
#include "com/Error.h"

namespace tamvelo::grid {

namespace {

using com::ComPtr;

constexpr IID kDataSourceId = {0x7c0ffab3, 0xcd84, 0x11d0, {0x94, 0x9a, 0x00, 0xa0, 0xc9, 0x11, 0x10, 0xed}};
// The record set of ADO has had two identities over the years.
constexpr IID kRecordSetIds[] = {
    {0x00000556, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x6d, 0x2e, 0xa4}},
    {0x00001556, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x6d, 0x2e, 0xa4}},
};
constexpr const wchar_t* kShape[] = {L"RecordCount", L"Fields", L"EOF", L"MoveFirst", L"MoveNext"};
constexpr const wchar_t* kPrimary = L"Primary";

/// The first member of a record set that the object has not.
const wchar_t* const* LacksForRecordSet(IDispatch* object) {
    return std::find_if(std::begin(kShape), std::end(kShape), [&](const wchar_t* member) {
        return com::FindMember(object, member) == DISPID_UNKNOWN;
    });
}

/// Whether the object has what a grid cannot do without in a record set.
bool LooksLikeRecordSet(IDispatch* object) { return object && LacksForRecordSet(object) == std::end(kShape); }

bool IsAdoRecordSet(IUnknown* object) {
    return std::any_of(std::begin(kRecordSetIds), std::end(kRecordSetIds),
                       [&](const IID& id) { return com::Query<IUnknown>(object, id) != nullptr; });
}

} // namespace

RecordSource::RecordSource(IUnknown* source) {
    if (!source) {
        return;
    }
    const ComPtr<IDispatch> object = com::Query<IDispatch>(source);
    // An ADO record set answers DataSource too, but knows no member "Primary": it comes first.
    if (object && IsAdoRecordSet(source)) {
        m_way = Way::Itself;
        m_set = object;
        return;
    }
    m_members = com::Query<IUnknown>(source, kDataSourceId);
    if (m_members && FindMemberOf()) {
        return;
    }
    if (object && com::FindMember(object.Get(), L"Recordset") != DISPID_UNKNOWN) {
        m_way = Way::Property;
        m_owner = com::LateObject(object.Get(), L"DataSource");
        m_set = Ask();
        return;
    }
    if (LooksLikeRecordSet(object.Get())) {
        m_way = Way::Itself;
        m_set = object;
        return;
    }
    throw com::Error(E_NOINTERFACE,
                     L"El objeto no es un conjunto de registros ni contiene ninguno en «Recordset».");
}

bool RecordSource::FindMemberOf() {
    const ComPtr<DataSource> members(static_cast<DataSource*>(m_members.Get()));
    const auto offered = [&] {
        com::Bstr name;
        return SUCCEEDED(com::CallOut([&] { return members->getDataMemberName(0, name.Address()); })) &&
                       name.Get()
                   ? std::optional<std::wstring>(name.View())
                   : std::nullopt;
    };
    m_set = FromMember(m_member = kPrimary);
    if (!m_set) {
        m_set = FromMember(m_member = std::nullopt);
    }
    if (!m_set && (m_member = offered())) {
        m_set = FromMember(m_member);
    }
    m_way = m_set ? Way::Member : Way::None;
    return m_set != nullptr;
}

ComPtr<IDispatch> RecordSource::FromMember(const std::optional<std::wstring>& member) {
    const ComPtr<DataSource> members(static_cast<DataSource*>(m_members.Get()));
    for (const IID& id : {IID_IDispatch, IID_IUnknown}) {
        const com::Bstr name(member.value_or(L""));
        ComPtr<IUnknown> got;
        const BSTR asked = member ? name.Get() : nullptr;
        if (SUCCEEDED(com::CallOut([&] { return members->getDataMember(asked, id, &got); }))) {
            if (auto set = com::Query<IDispatch>(got.Get()); LooksLikeRecordSet(set.Get())) {
                return set;
            }
        }
    }
    return nullptr;
}

ComPtr<IDispatch> RecordSource::Ask() {
    if (m_way == Way::Member) {
        return FromMember(m_member);
    }
    if (m_way != Way::Property) {
        return m_set;
    }
    ComPtr<IDispatch> set = m_owner.Call(L"Recordset").ToObject();
    if (const auto* lacks = set ? LacksForRecordSet(set.Get()) : std::end(kShape);
        lacks != std::end(kShape)) {
        throw com::Error(E_NOINTERFACE,
                         L"«Recordset» no devolvió un conjunto de registros: no tiene el miembro «" +
                             std::wstring(*lacks) + L"».");
    }
    return set;
}

bool RecordSource::Renew() {
    if (m_way == Way::None || m_way == Way::Itself || m_changesEachTime) {
        return false;
    }
    ComPtr<IDispatch> now = Ask();
    if (com::SameObject(now.Get(), m_set.Get())) {
        return false;
    }
    // A source that makes a new record set for every question would never come to rest: ours stays.
    if (now && m_set && !com::SameObject(Ask().Get(), now.Get())) {
        m_changesEachTime = true;
        return false;
    }
    m_set = now;
    return true;
}

} // namespace tamvelo::grid
