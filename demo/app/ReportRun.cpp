#include "demo/app/ReportRun.h"

#include "ProductVersion.h"
#include "base/SettingsKeys.h"
#include "demo/data/Values.h"
#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/reports/Preview.h"
#include "demo/reports/Printing.h"
#include "demo/reports/ReportCall.h"

namespace tamvelo::demo {

namespace {

constexpr wchar_t kStockLedger[] = L"Articulos_Movimientos_Almacen";

std::vector<ReportInfo> OfferedBy(std::wstring_view className, std::wstring_view operation) {
    const TableInfo& table = *FindTable(className);
    return operation.ends_with(L"Etiq") ? LabelsOf(table) : ReportsOf(table);
}

/// What a dialog kept that its call to the sink does not carry.
std::wstring Kept(const std::wstring& key, const wchar_t* name) {
    wchar_t text[64] = L"";
    DWORD bytes = sizeof text;
    return RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &bytes) ==
                   ERROR_SUCCESS
               ? text
               : L"";
}

/// The letter that would go with the reports: the demo sends nothing.
Report Letter(const std::vector<Report>& reports) {
    Report letter{ReportInfo::Shape::List,
                  L"Mensaje de correo electrónico",
                  L"La demostración no envía nada: así saldría el mensaje, con estos documentos adjuntos.",
                  {},
                  {{L"Campo", Type::Text, 12}, {L"Contenido", Type::Text, 60}},
                  {}};
    const auto add = [&](const wchar_t* field, std::wstring content) {
        letter.lines.push_back({Report::Line::Row, {field, std::move(content)}});
        ++letter.rows;
    };
    add(L"De:", L"Gestión de pedidos");
    add(L"Para:", L"el destinatario que elija el usuario");
    add(L"Asunto:", reports.front().title + (reports.size() > 1 ? L" y otros" : L""));
    for (const Report& report : reports) {
        add(L"Adjunto:", report.title + L" (" + ShowCount(report.rows) + L" líneas)");
    }
    return letter;
}

} // namespace

ReportRun::ReportRun(std::shared_ptr<Database> database, std::wstring_view className,
                     std::wstring_view operation, Log log)
    : m_database(std::move(database)),
      m_className(className),
      m_operation(operation),
      m_offered(OfferedBy(className, operation)),
      m_log(std::move(log)) {}

com::ComPtr<IDispatch> ReportRun::Offer() const {
    std::vector<std::wstring> titles;
    for (const ReportInfo& report : m_offered) {
        titles.push_back(report.title);
    }
    return MakeReports(titles);
}

/// The lots' screen has the name for which the library asks for a section.
std::wstring ReportRun::Screen() const {
    return m_className == L"articulos_lotes" ? kStockLedger : m_className;
}

void ReportRun::AddOwnConditions(Parameters& parameters) const {
    const auto add = [&](const char* name, const std::wstring& text, const wchar_t* caption) {
        if (!text.empty()) {
            parameters.push_back({name, Value(text), caption + text});
        }
    };
    if (Is(L"ShowSql")) {
        add(":serie", Kept(base::SesionKey(L"" TAMVELO_COMPANY, base::kSesionClientes), L"Serie"),
            L"serie: ");
    } else if (Is(L"ShowRptFchAuto")) {
        const std::wstring key = base::FormKey(L"" TAMVELO_COMPANY, L"" TAMVELO_PRODUCT, TAMVELO_MAJOR,
                                               TAMVELO_MINOR, L"frmRptsFchAuto");
        add(":seccion", Kept(key + L"rpts" + Screen(), L"Seccion"), L"sección: ");
    } else if (Is(L"ShowRptFchAutoInf") &&
               m_database->Number(L"select count(*) from tipos_producto where Planificar") > 0) {
        parameters.push_back({":marcados", Value(std::int64_t{1}), L"solo los tipos de producto marcados"});
    }
}

void ReportRun::Accept(std::wstring_view member, com::Invocation& call) {
    using Output = ReportCall::Output;
    ReportCall wanted = ReadReportCall(member, call);
    if (wanted.ticks.size() != m_offered.size()) {
        throw HostError(kInvalidArgument, L"La selección no corresponde a los informes ofrecidos.");
    }
    AddOwnConditions(wanted.parameters);
    if (Is(L"PrintEtiq")) {
        wanted.output = Output::Printer;
    }
    std::vector<Report> reports;
    for (std::size_t i = 0; i < m_offered.size(); ++i) {
        if (wanted.ticks[i]) {
            reports.push_back(Produce(*m_database, m_offered[i], wanted.parameters));
            const Report& made = reports.back();
            m_log(L"    · " + made.title + L": " + ShowCount(made.rows) + L" líneas" +
                  (made.rows > kMostRows ? L", solo las primeras " + ShowCount(kMostRows) : L"") +
                  (made.conditions.empty() ? L"" : L" (" + made.conditions + L')'));
        }
    }
    if (reports.empty()) {
        m_log(L"    Ningún informe marcado: no se imprime nada.");
        return;
    }
    if (wanted.output == Output::Printer) {
        const std::wstring file = m_database->Path();
        const std::wstring folder = file.substr(0, file.find_last_of(L"\\/") + 1) + L"Impreso";
        m_log(L"    " + Print(reports, wanted.copies, folder));
        return;
    }
    m_caption = L"Vista previa";
    if (wanted.output == Output::Mail) {
        m_caption = L"Correo electrónico (sin enviar)";
        reports.insert(reports.begin(), Letter(reports));
    }
    m_log(L"    " + m_caption + L" abierta.");
    m_shown = std::move(reports);
}

HWND ReportRun::ShowPreview(HWND owner) {
    return m_shown.empty() ? nullptr : OpenPreview(owner, m_caption, std::move(m_shown));
}

} // namespace tamvelo::demo
