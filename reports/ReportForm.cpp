#include "reports/ReportForm.h"

#include <commctrl.h>

#include "base/Commands.h"
#include "base/SettingsKeys.h"
#include "com/Collection.h"
#include "environment/Product.h"
#include "frame/FormInstances.h"
#include "reports/Printer.h"
#include "reports/Resources.h"
#include "win/MousePointer.h"

namespace tamvelo::reports {

using namespace frame::tables;

namespace {

constexpr ToolUse kTools[] = {{base::kAceptar}, {base::kCancelar}};

constexpr wchar_t kChoosePrinter[] = L"{IMPRESORA}";
constexpr wchar_t kEntryChosen[] = L"{INFORME}";
constexpr wchar_t kPrinter[] = L"Impresora";
// From left to right; the spinner is part of the box of copies.
constexpr int kOutputRow[] = {IDC_LBLSELEC,   IDC_CMBSELEC,   IDC_LBLCOPIAS, IDC_TXTCOPIAS,
                              IDC_SPINCOPIAS, IDC_CMDPRINTER, IDC_LBLPRINTER};
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

} // namespace

ReportForm::ReportForm(const ReportDesign& design)
    : ListForm({design.name, IDD_REPORT, kTools, design.keys},
               {win::CheckList::Kind::Ticks, false, design.labels ? TickedLabels : TickedReports}),
      m_report(design) {
    if (design.dates) {
        m_dates.emplace(*this, base::WholeMonth, [this] { ShowPeriod(); });
    }
}

std::shared_ptr<ReportForm> ReportForm::Instance(const ReportDesign& design) {
    return std::static_pointer_cast<ReportForm>(
        frame::FormInstances::Obtain(design.name, [&] { return std::make_shared<ReportForm>(design); }));
}

// Life.

void ReportForm::Open(const Request& request, bool unseen) {
    const std::wstring key = L"rpts" + request.cls;
    if (!base::IsKeyName(key)) {
        throw com::Error(E_INVALIDARG, L"«" + request.cls + L"» no sirve como nombre de pantalla.");
    }
    if (IsLoaded() && (request.cls != m_cls || request.showAuto != m_showAuto ||
                       request.limited != m_limited || unseen != m_unseen)) {
        // It was left hidden with choices that were made for another operation: they are not this one's.
        Unload();
        frame::FormInstances::Obtain(Name(), [this] { return shared_from_this(); });
    }
    m_cls = request.cls;
    m_reportKey = key;
    m_sink = contract::Sink(request.sink, L"ClsEventos");
    m_reports = com::ComPtr<IDispatch>(request.reports);
    m_showAuto = request.showAuto;
    m_limited = request.limited;
    m_unseen = unseen;
    Load();
    EnableControl(IDC_LIST1, true);
    LoadChoices();
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
    ListForm::OnLoad();
    SetWindowTextW(Window(), m_report.caption);
    const auto answered = [this](com::Invocation& call) { clsEventos_AceptaSeleccion(call); };
    m_clsEventos =
        MakeRelay({{objects::AceptaSeleccion, answered}, {objects::AceptaSeleccionParam, answered}});
    for (const int control :
         {IDC_LBLFECHA0, IDC_DTPICKER0, IDC_LBLFECHA1, IDC_DTPICKER1, IDC_CMDPERIODO, IDC_LBLINTERVALO}) {
        ShowControl(control, m_report.dates);
    }
    ShowControl(IDC_FRMPARAM, m_report.dates || !m_report.conditions.empty());
    ObjectOf(IDC_CMBSELEC, L"CmbSelec", 0);
    ObjectOf(IDC_TXTCOPIAS, L"TxtFields", 0);
    MakeConditions();
    for (const int control : kOutputRow) {
        ShowControl(control, m_report.output);
        // Below the conditions, so after them in the tab order.
        SetWindowPos(Control(control), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    if (m_report.labels) {
        SetControlText(IDC_LBLLIST1, L"&Etiquetas:");
    }
    SetControlText(IDC_LBLNOTE, m_report.note ? m_report.note : L"");
    ShowControl(IDC_LBLNOTE, m_report.note != nullptr);
    ShowControl(IDC_LBLPERIODO, m_report.period.has_value());
    if (m_report.output) {
        SendMessageW(Control(IDC_CMBSELEC), CB_RESETCONTENT, 0, 0);
        SendMessageW(Control(IDC_SPINCOPIAS), UDM_SETRANGE32, 1, SHRT_MAX);
        ShowPrinter();
    }
    if (m_report.prepare) {
        m_report.prepare(*this);
    }
}

void ReportForm::OnUnload() noexcept {
    m_clsEventos.reset();
    m_sink.Reset();
    m_reports.Reset();
}

// The choices, and how they are kept.

std::wstring ReportForm::ChoicesKey() const {
    return environment::Product::Own().FormKey(Name()) + m_reportKey;
}

std::wstring ReportForm::Remembered(const wchar_t* name, const wchar_t* fallback) const {
    return environment::Environment::Get().GetSettings().ReadValue(ChoicesKey(), name, fallback);
}

void ReportForm::Remember(const wchar_t* name, const std::wstring& value) const {
    environment::Environment::Get().GetSettings().WriteValue(ChoicesKey(), name, value);
}

void ReportForm::LoadChoices() {
    environment::Settings& settings = environment::Environment::Get().GetSettings();
    if (m_report.labels) {
        settings.LoadLabelChoices(ChoicesKey(), m_reports.Get(), *this);
    } else {
        settings.LoadListChoices(ChoicesKey(), m_reports.Get(), *this);
    }
    CheckStands();
    // A component of the environment has worked on the controls themselves.
    ListForm::List().RememberTicks();
    if (m_report.output) {
        AddOwnOutputs();
        OutputChanged();
    }
    if (m_report.opened) {
        m_report.opened(*this);
    }
}

void ReportForm::SetReports(const std::vector<std::wstring>& titles, const std::vector<bool>& ticks) {
    std::vector<win::ListEntry> entries(titles.size());
    for (size_t i = 0; i < titles.size(); ++i) {
        entries[i] = {titles[i], ticks[i]};
    }
    ListForm::List().Fill(std::move(entries));
}

std::vector<std::wstring> ReportForm::Titles() const {
    std::vector<std::wstring> titles(static_cast<size_t>(ListForm::List().Count()));
    for (size_t i = 0; i < titles.size(); ++i) {
        titles[i] = ListForm::List().Caption(static_cast<int>(i));
    }
    return titles;
}

std::vector<bool> ReportForm::Ticks() const {
    std::vector<bool> ticks(static_cast<size_t>(ListForm::List().Count()));
    for (size_t i = 0; i < ticks.size(); ++i) {
        ticks[i] = ListForm::List().IsTicked(static_cast<int>(i));
    }
    return ticks;
}

com::ComPtr<IDispatch> ReportForm::ReportList() { return com::ComPtr<IDispatch>(ListObject().Get()); }

void ReportForm::SetOutputs(std::span<const wchar_t* const> common, const std::wstring& chosen) {
    const HWND list = Control(IDC_CMBSELEC);
    SendMessageW(list, CB_RESETCONTENT, 0, 0);
    for (const wchar_t* output : common) {
        SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(output));
    }
    AddOwnOutputs();
    const LRESULT found = SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(chosen.c_str()));
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(found == CB_ERR ? 0 : found), 0);
}

void ReportForm::AddOwnOutputs() {
    const HWND list = Control(IDC_CMBSELEC);
    for (const wchar_t* output : m_report.ownOutputs) {
        const auto text = reinterpret_cast<LPARAM>(output);
        if (SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), text) == CB_ERR) {
            SendMessageW(list, CB_ADDSTRING, 0, text);
        }
    }
}

std::wstring ReportForm::Output() const { return ControlText(IDC_CMBSELEC); }

void ReportForm::SetCopies(const std::wstring& copies) { SetControlText(IDC_TXTCOPIAS, copies); }

std::wstring ReportForm::Copies() const { return ControlText(IDC_TXTCOPIAS); }

com::ComPtr<IDispatch> ReportForm::OutputList() {
    return com::ComPtr<IDispatch>(ObjectOf(IDC_CMBSELEC, L"CmbSelec", 0).Get());
}

com::ComPtr<IDispatch> ReportForm::CopiesBox() {
    return com::ComPtr<IDispatch>(ObjectOf(IDC_TXTCOPIAS, L"TxtFields", 0).Get());
}

// Accepting.

void ReportForm::Accept() {
    if (!CheckHours()) { // before anything is hidden: the user is to mend it
        return;
    }
    contract::ReportChoice choice;
    const auto keep = [&] {
        // The reports are worth more than remembering them.
        Tried([&] {
            environment::Environment::Get().GetSettings().SaveListChoices(ChoicesKey(), *this);
            if (m_report.save) {
                m_report.save(*this);
            }
        });
        CheckStands();
        if (m_report.output) {
            choice.output = static_cast<short>(SendMessageW(Control(IDC_CMBSELEC), CB_GETCURSEL, 0, 0));
            choice.copies = CopiesNumber();
        }
        choice.selection = Selection();
    };
    Deliver(keep, [&] { m_report.deliver(*this, choice); });
}

short ReportForm::CopiesNumber() {
    const std::wstring text = Copies();
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
    for (const bool tick : Ticks()) {
        ticks.emplace_back(tick);
    }
    return com::MakeCollection(std::move(ticks));
}

std::span<const CommandRow> ReportForm::Commands() const {
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&ReportForm::Accept>},
        {kLookUp, Do<&ReportForm::LookUp>},
        {kChoosePrinter, Do<&ReportForm::CambiarImpresora>},
        {kEntryChosen, Do<&ReportForm::EntryChosen>},
    };
    return kCommands;
}

// Output and printer.

void ReportForm::OutputChanged() {
    const bool printer = m_report.printerByName
                             ? Output() == kPrinter
                             : SendMessageW(Control(IDC_CMBSELEC), CB_GETCURSEL, 0, 0) == 0;
    for (const int control : {IDC_LBLCOPIAS, IDC_TXTCOPIAS, IDC_SPINCOPIAS, IDC_CMDPRINTER, IDC_LBLPRINTER}) {
        EnableControl(control, printer);
    }
}

void ReportForm::ShowPrinter() { SetControlText(IDC_LBLPRINTER, DefaultPrinter()); }

void ReportForm::CambiarImpresora() {
    if (ChoosePrinter(Window()) && IsLoaded()) {
        ShowPrinter();
    }
}

void ReportForm::OnControl(int control, int code) {
    if (control == IDC_CMBSELEC && code == CBN_SELCHANGE) {
        OutputChanged();
    } else {
        OnConditionControl(control, code);
        ListForm::OnControl(control, code);
    }
}

std::span<const frame::KeyRow> ReportForm::SharedKeys() const {
    static constexpr auto kKeys = KeysAnd(frame::kListKeys, {{IDC_CMDPRINTER, kClick, kChoosePrinter}});
    return kKeys;
}

void ReportForm::CurrentChanged() {
    if (m_report.chosen) {
        Input(kEntryChosen);
    }
    ShowPeriod();
}

void ReportForm::EntryChosen() {
    // While the host is asked another one may become the selected one.
    for (int told = -1; CurrentEntry() >= 0 && CurrentEntry() != told;) {
        told = CurrentEntry();
        m_report.chosen(*this, told);
    }
}

void ReportForm::ShowPeriod() {
    const int entry = CurrentEntry();
    if (m_report.period) {
        SetControlText(IDC_LBLPERIODO, entry < 0 ? L""
                                                 : base::PeriodName(m_dates->Shown(), *m_report.period) +
                                                       L": " + ListForm::List().Caption(entry));
    }
}

// Places.

std::vector<LayoutRow> ReportForm::Layout() const {
    std::vector<LayoutRow> rows = ListForm::Layout();
    std::vector<LayoutRow> conditions = ConditionRows();
    if (m_report.dates) {
        const std::vector<LayoutRow> dates = frame::DateRangeControl::Layout();
        conditions.insert(conditions.begin(), dates.begin(), dates.end());
    }
    conditions.push_back({kOwn, {{IDC_LBLPERIODO, kFill}}});
    conditions.push_back({kOwn, {{IDC_LBLNOTE, kFill}}});
    for (LayoutRow& row : conditions) {
        row.frame = IDC_FRMPARAM;
        rows.push_back(std::move(row));
    }
    rows.push_back({kOwn,
                    {{IDC_LBLSELEC},
                     {IDC_CMBSELEC},
                     {IDC_LBLCOPIAS},
                     {IDC_TXTCOPIAS},
                     {IDC_CMDPRINTER},
                     {IDC_LBLPRINTER, kFill}}});
    return rows;
}

void ReportForm::ResizeControls() {
    ListForm::ResizeControls();
    // The spinner takes its place from the box whenever it is given the box anew.
    SendMessageW(Control(IDC_SPINCOPIAS), UDM_SETBUDDY, reinterpret_cast<WPARAM>(Control(IDC_TXTCOPIAS)), 0);
}

} // namespace tamvelo::reports
