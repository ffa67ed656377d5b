#include <iterator>

#include "demo/host/FieldValue.h"
#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/host/Lookup.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Member;
using com::Variant;

/// The fields that the arguments go to, in their order; a database connection follows them.
constexpr const wchar_t* kFields[] = {L"fecha",           L"hora",       L"cliente",
                                      L"nombre",          L"comentario", L"empleado",
                                      L"nombre_empleado", L"box",        L"tipo"};
constexpr auto kArguments = static_cast<unsigned char>(std::size(kFields) + 1);

/// The table keeps hours as text: "10:15".
Variant HourText(const Variant& hour) {
    SYSTEMTIME time{};
    wchar_t text[8];
    VariantTimeToSystemTime(hour.ToDate(), &time);
    wsprintfW(text, L"%02d:%02d", time.wHour, time.wMinute);
    return Variant(text);
}

class Appointments final : public com::Automation {
public:
    explicit Appointments(std::shared_ptr<Database> database) : m_database(std::move(database)) {}

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"GuardarCita", 1, Member::Method, kArguments, kArguments, RunData<&Appointments::GuardarCita>}};
        return kMembers;
    }

private:
    void GuardarCita(com::Invocation& call) {
        const TableInfo& table = TableOf(L"citas");
        std::wstring fields = L"cita";
        std::wstring values = L"(select coalesce(max(cita), 0) + 1 from citas)";
        for (const wchar_t* field : kFields) {
            fields += std::wstring(L", ") + field;
            values += L", ?";
        }
        Statement insert(*m_database, L"insert into citas(" + fields + L") values(" + values + L")");
        for (UINT i = 0; i < std::size(kFields); ++i) {
            const std::wstring_view field = kFields[i];
            const Variant value = field == L"hora" ? HourText(call[i]) : call[i];
            insert.Bind(static_cast<int>(i) + 1, FromVariant(*table.FindColumn(field), value));
        }
        insert.Run();
    }

    const std::shared_ptr<Database> m_database;
};

} // namespace

ComPtr<IDispatch> MakeAppointments(std::shared_ptr<Database> database) {
    return ComPtr<IDispatch>(com::Make<Appointments>(std::move(database)).Get());
}

std::vector<std::wstring> AppointmentsOn(Database& database, DATE day) {
    const TableInfo& table = TableOf(L"citas");
    Statement rows(database,
                   L"select hora, nombre, tipo, nombre_empleado from citas where fecha = ? order by hora");
    rows.Bind(1, FromVariant(*table.FindColumn(L"fecha"), Variant::Date(day)));
    std::vector<std::wstring> lines;
    while (rows.Step()) {
        std::wstring line;
        for (int column = 0; column < 4; ++column) {
            const Value cell = rows.Cell(column);
            const auto* const text = std::get_if<std::wstring>(&cell);
            if (text && !text->empty()) {
                line += (line.empty() ? L"" : L"   ") + *text;
            }
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace tamvelo::demo
