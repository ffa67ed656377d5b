#pragma once

#include <optional>
#include <string>

#include "com/LateObject.h"

namespace tamvelo::grid {

/// Where a grid's record set comes from, and how to ask for it again: the host may put another one in its
/// place.
class RecordSource {
public:
    RecordSource() = default;
    /// Null is the absent source. Throws com::Error when no record set can be had from it, or the host's own
    /// error.
    explicit RecordSource(IUnknown* source);

    explicit operator bool() const { return m_way != Way::None; }
    /// Null while the source has none to give.
    IDispatch* Set() const { return m_set.Get(); }
    /// After a host call: asks again in the way that worked. True when the record set is another object now.
    bool Renew();

private:
    enum class Way { None, Itself, Member, Property };
    com::ComPtr<IDispatch> FromMember(const std::optional<std::wstring>& member);
    bool FindMemberOf();
    com::ComPtr<IDispatch> Ask();

    Way m_way = Way::None;
    com::ComPtr<IUnknown> m_members;      // a DataSource
    std::optional<std::wstring> m_member; // none is the source's default member
    com::LateObject m_owner;
    com::ComPtr<IDispatch> m_set;
    bool m_changesEachTime = false;
};

} // namespace tamvelo::grid
