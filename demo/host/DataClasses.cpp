#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/host/Lookup.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Member;

class DataClasses final : public com::Automation {
public:
    explicit DataClasses(std::shared_ptr<Database> database) : m_database(std::move(database)) {}

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"CrearClase", 1, Member::Method, 1, 1, RunData<&DataClasses::CrearClase>},
            {L"ClaseRelacionada", 2, Member::Method, 2, 2, com::Run<&DataClasses::ClaseRelacionada>}};
        return kMembers;
    }

private:
    void CrearClase(com::Invocation& call) {
        call.Return(com::Variant(MakeDataClass(m_database, call[0].ToText()).Get()));
    }

    void ClaseRelacionada(com::Invocation& call) {
        const Column* const column = TableOf(call[0].ToText()).FindColumn(call[1].ToText());
        call.Return(com::Variant(column != nullptr ? column->related : std::wstring_view()));
    }

    const std::shared_ptr<Database> m_database;
};

} // namespace

ComPtr<IDispatch> MakeDataClasses(std::shared_ptr<Database> database) {
    return ComPtr<IDispatch>(com::Make<DataClasses>(std::move(database)).Get());
}

} // namespace tamvelo::demo
