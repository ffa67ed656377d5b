#include <array>
#include <utility>

#include "demo/host/HostObjects.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Invocation;
using com::Member;

/// A member of the sink and how many arguments its callers give it.
struct Shape {
    const wchar_t* name;
    unsigned char least;
    unsigned char most;
};

constexpr Shape kShapes[] = {
    {L"AceptarBuscar", 0, 0},
    {L"AceptarSeleccion", 3, 3},
    {L"AceptarSeleccionParam", 5, 5},
    {L"clsEvents_AceptaSeleccion", 5, 5},
    {L"ActualizaColumnas", 1, 1},
    {L"ActualizaOrden", 2, 2},
    {L"AceptarReports", 3, 3},
    {L"AceptarReportsParam", 10, 10},
    {L"AceptarReportsParamMail", 10, 10},
    {L"AceptarReportsInformesParam", 9, 9},
    {L"AceptarReportsParamHr", 10, 10},
    {L"AceptarReportsFchAuto", 6, 6},
    {L"AceptarInformesFchAuto", 5, 6}, // the dialog with addresses leaves the last one out
    {L"AceptarInformesFch", 6, 6},
    {L"AceptarInformesFchAutoTipoTime", 12, 12},
    {L"AceptarDocNumAut", 6, 6},
    {L"AceptarListasParam", 4, 4},
    {L"AceptarEtiqueta", 1, 1},
    {L"AceptarFechaEntre", 2, 2},
};

class Sink final : public com::Automation {
public:
    explicit Sink(SinkCallback callback) : m_callback(std::move(callback)) {}
    void Hear(std::wstring_view member, Invocation& call) { m_callback(member, call); }

protected:
    std::span<const Member> Members() const override;

private:
    const SinkCallback m_callback;
};

/// Every row of the table has a function of its own, which knows the member's name.
template <std::size_t Row>
void Receive(com::Automation& self, Invocation& call) {
    static_cast<Sink&>(self).Hear(kShapes[Row].name, call);
}

template <std::size_t... Row>
constexpr std::array<Member, sizeof...(Row)> MembersOf(std::index_sequence<Row...>) {
    return {{{kShapes[Row].name, static_cast<DISPID>(Row) + 1, Member::Method, kShapes[Row].least,
              kShapes[Row].most, &Receive<Row>}...}};
}

std::span<const Member> Sink::Members() const {
    static constexpr auto kMembers = MembersOf(std::make_index_sequence<std::size(kShapes)>());
    return kMembers;
}

} // namespace

ComPtr<IDispatch> MakeSink(SinkCallback callback) {
    return ComPtr<IDispatch>(com::Make<Sink>(std::move(callback)).Get());
}

} // namespace tamvelo::demo
