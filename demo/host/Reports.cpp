#include "com/Collection.h"
#include "demo/host/HostObjects.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Invocation;
using com::Member;
using com::Variant;

/// A report that the host can print.
class Report final : public com::Automation {
public:
    explicit Report(std::wstring title) : m_title(std::move(title)) {}

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Titulo", DISPID_VALUE, Member::Get, 0, 0, com::Run<&Report::Title>}};
        return kMembers;
    }

private:
    void Title(Invocation& call) { call.Return(Variant(m_title)); }

    const std::wstring m_title;
};

} // namespace

ComPtr<IDispatch> MakeReports(const std::vector<std::wstring>& titles) {
    std::vector<Variant> reports;
    reports.reserve(titles.size());
    for (const std::wstring& title : titles) {
        reports.emplace_back(com::Make<Report>(title).Get());
    }
    return com::MakeCollection(std::move(reports));
}

} // namespace tamvelo::demo
