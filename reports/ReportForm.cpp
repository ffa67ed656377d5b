#include "reports/ReportForm.h"

#include <algorithm>
#include <iterator>

#include "base/Commands.h"
#include "base/HourText.h"
#include "base/SettingsKeys.h"
#include "com/Collection.h"
#include "environment/Product.h"
#include "frame/FormInstances.h"
#include "frame/Resources.h"
#include "reports/Resources.h"
#include "win/MousePointer.h"

namespace tamvelo::reports {

using Kind = Condition::Kind;
using namespace frame::tables;

namespace {

constexpr ToolUse kTools[] = {{base::kAceptar}, {base::kCancelar}};

constexpr wchar_t kEntryChosen[] = L"{INFORME}";
constexpr int kDateControls[] = {IDC_LBLFECHA0, IDC_DTPICKER0,  IDC_LBLFECHA1,
                                 IDC_DTPICKER1, IDC_CMDPERIODO, IDC_LBLINTERVALO};
constexpr frame::FieldLook kLook{
    .firstControl = IDC_CONDITIONS,
    .leastLabel = 46, // as the template has that of the dates above
    .lookupByIndex = true,
};
// Automation's numbers 6 and 13.
constexpr auto kOverflow = static_cast<HRESULT>(0x800A0006);
constexpr auto kMismatch = static_cast<HRESULT>(0x800A000D);

std::wstring TickedReports(const win::CheckList& list) {
    const int count = list.TickedCount();
    return std::to_wstring(count) + (count == 1 ? L" informe marcado" : L" informes marcados");
}

std::wstring TickedLabels(const win::CheckList& list) {
    const int count = list.TickedCount();
    return std::to_wstring(count) + (count == 1 ? L" etiqueta marcada" : L" etiquetas marcadas");
}

std::wstring NoHour(const std::wstring& text) {
    return L"«" + text + L"» no es una hora. Se escribe 7, 730, 7:30 o 7.30, de 0:00 a 23:59.";
}

} // namespace

ReportForm::ReportForm(const ReportDesign& design)
    : Form({design.name, IDD_REPORT, kTools, design.keys}),
      m_report(design),
      m_list(*this, {win::CheckList::Kind::Ticks, false, design.labels ? TickedLabels : TickedReports},
             [this] { CurrentChanged(); }),
      m_conditions(*this, kLook),
      m_output(*this, design),
      m_choices(design, m_list, m_output) {
    if (design.dates) {
        m_dates.emplace(*this, base::WholeMonth, [this] { ShowPeriod(); });
    }
}

// Life.

void ReportForm::Open(const Request& request, bool unseen) {
    const std::wstring key = L"rpts" + request.cls; // what the choices are kept under
    if (!base::IsKeyName(key)) {
        throw com::Error(E_INVALIDARG, L"«" + request.cls + L"» no sirve como nombre de pantalla.");
    }
    Screen screen{request.cls, request.showAuto, request.limited, unseen};
    if (IsLoaded() && screen != m_screen) {
        // It was left hidden with choices that were made for another operation: they are not this one's.
        Unload();
        frame::FormInstances::Obtain(Name(), [this] { return shared_from_this(); });
    }
    m_screen = std::move(screen);
    m_choices.SetScreen(key);
    m_sink = contract::Sink(request.sink, L"ClsEventos");
    m_reports = com::ComPtr<IDispatch>(request.reports);
    Load();
    EnableControl(IDC_LIST1, true);
    m_choices.Load(m_reports.Get());
    if (m_report.kept && m_report.kept->eachTime) {
        ReadKept();
    }
    if (m_report.opened) {
        m_report.opened(*this);
    }
}

void ReportForm::Mostrar(const Request& request) {
    Show([&] {
        Open(request, false);
        ShowModal();
    });
}

void ReportForm::Aceptar(const Request& request) {
    Show([&] {
        win::MousePointer::Hourglass(); // until it unloads
        Open(request, true);
        Accept();
    });
}

void ReportForm::OnLoad() {
    SetWindowTextW(Window(), m_report.caption);
    for (const int control : kDateControls) {
        ShowControl(control, m_report.dates);
    }
    ShowControl(IDC_FRMPARAM, m_report.dates || !m_report.conditions.empty());
    m_conditions.Make(m_report.conditions);
    m_output.MoveBehind();
    if (m_report.labels) {
        SetControlText(IDC_LBLLIST1, L"&Etiquetas:");
    }
    SetControlText(IDC_LBLNOTE, m_report.note ? m_report.note : L"");
    ShowControl(IDC_LBLNOTE, m_report.note != nullptr);
    ShowControl(IDC_LBLPERIODO, m_report.period.has_value());
    if (m_report.kept && !m_report.kept->eachTime) {
        ReadKept();
    }
    if (m_report.prepare) {
        m_report.prepare(*this);
    }
}

void ReportForm::OnUnload() noexcept {
    m_sink.Reset();
    m_reports.Reset();
}

/// Where the text is kept; "" for one that is not on this screen.
std::wstring ReportForm::KeptKey() const {
    const std::optional<KeptText>& kept = m_report.kept;
    if (!kept || (kept->applies && !kept->applies(*this))) {
        return {};
    }
    return kept->sesion ? environment::Product::Own().SesionKey(kept->sesion) : m_choices.Key();
}

void ReportForm::ReadKept() const {
    if (const std::wstring key = KeptKey(); !key.empty()) {
        const KeptText& kept = *m_report.kept;
        Row(Kind::Text, kept.index)
            .SetText(environment::Environment::Get().GetSettings().ReadValue(key, kept.name, {}));
    }
}

void ReportForm::Keep() const {
    if (const std::wstring key = KeptKey(); !key.empty()) {
        const KeptText& kept = *m_report.kept;
        environment::Environment::Get().GetSettings().WriteValue(key, kept.name, Text(kept.index));
    }
}

// Accepting.

void ReportForm::Accept() {
    const auto complaint = [](const frame::FieldRow& row) {
        const bool wrong = row.Kind() == Kind::Hour && !base::ParseHour(row.Text());
        return wrong ? NoHour(row.Text()) : std::wstring();
    };
    if (!m_conditions.Check(m_report.caption, complaint)) { // before anything is hidden: to be mended
        return;
    }
    contract::ReportChoice choice;
    const auto keep = [&] {
        // The reports are worth more than remembering them.
        Tried([&] {
            m_choices.Save();
            Keep();
        });
        CheckStands();
        if (m_report.output) {
            choice.output = m_output.Chosen();
            choice.copies = CopiesNumber();
        }
        choice.selection = Selection();
    };
    Deliver(keep, [&] { m_report.deliver(*this, choice); });
}

short ReportForm::CopiesNumber() {
    const std::wstring text = m_output.Copies();
    try {
        return com::Variant(text).ToShort();
    } catch (const com::Error& error) {
        // The form stays, but the next operation brings objects of its own.
        m_sink.Reset();
        m_reports.Reset();
        throw com::Error(error.number == DISP_E_OVERFLOW ? kOverflow : kMismatch,
                         L"El número de copias «" + text + L"» no es válido.");
    }
}

com::ComPtr<IDispatch> ReportForm::Selection() const {
    std::vector<com::Variant> ticks;
    for (const bool tick : m_choices.Ticks()) {
        ticks.emplace_back(tick);
    }
    return com::MakeCollection(std::move(ticks));
}

DATE ReportForm::Hour(short index) const {
    constexpr double kMinutesPerDay = 24 * 60;
    const std::wstring text = Row(Kind::Hour, index).Text();
    const std::optional<int> minute = base::ParseHour(text);
    if (!minute) {
        throw com::Error(DISP_E_TYPEMISMATCH, NoHour(text));
    }
    return *minute / kMinutesPerDay;
}

std::span<const CommandRow> ReportForm::Commands() const {
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&ReportForm::Accept>},
        {kEntryChosen, Do<&ReportForm::EntryChosen>},
    };
    return kCommands;
}

// The selected report.

void ReportForm::CurrentChanged() {
    if (m_report.chosen) {
        Input(kEntryChosen);
    }
    ShowPeriod();
}

void ReportForm::EntryChosen() {
    // While the host is asked another one may become the selected one.
    for (int told = -1; m_list.CurrentEntry() >= 0 && m_list.CurrentEntry() != told;) {
        told = m_list.CurrentEntry();
        m_report.chosen(*this, told);
    }
}

void ReportForm::ShowPeriod() {
    const int entry = m_list.CurrentEntry();
    if (m_report.period) {
        SetControlText(IDC_LBLPERIODO, entry < 0 ? L""
                                                 : base::PeriodName(m_dates->Shown(), *m_report.period) +
                                                       L": " + m_list.List().Caption(entry));
    }
}

// Places.

std::vector<LayoutRow> ReportForm::Layout() const {
    std::vector<LayoutRow> rows = frame::TickList::Layout();
    std::vector<LayoutRow> conditions =
        m_report.dates ? frame::DateRangeControl::Layout() : std::vector<LayoutRow>();
    std::ranges::move(m_conditions.Layout(), std::back_inserter(conditions));
    conditions.push_back({kOwn, {{IDC_LBLPERIODO, kFill}}});
    conditions.push_back({kOwn, {{IDC_LBLNOTE, kFill}}});
    for (LayoutRow& row : conditions) {
        row.frame = IDC_FRMPARAM;
        rows.push_back(std::move(row));
    }
    rows.push_back(ReportOutput::Layout());
    return rows;
}

void ReportForm::ResizeControls() {
    Form::ResizeControls();
    m_output.PlaceSpinner();
}

} // namespace tamvelo::reports
