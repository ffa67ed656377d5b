#include "reports/ReportOutput.h"

#include <commctrl.h>

#include "reports/Printer.h"
#include "reports/Resources.h"

namespace tamvelo::reports {

using namespace frame::tables;

namespace {

constexpr wchar_t kChoosePrinter[] = L"{IMPRESORA}";
constexpr wchar_t kPrinter[] = L"Impresora";
// From left to right; the spinner is part of the box of copies.
constexpr int kOutputRow[] = {IDC_LBLSELEC,   IDC_CMBSELEC,   IDC_LBLCOPIAS, IDC_TXTCOPIAS,
                              IDC_SPINCOPIAS, IDC_CMDPRINTER, IDC_LBLPRINTER};
constexpr int kPrinterControls[] = {IDC_LBLCOPIAS, IDC_TXTCOPIAS, IDC_SPINCOPIAS, IDC_CMDPRINTER,
                                    IDC_LBLPRINTER};

LRESULT Find(HWND list, const wchar_t* output) {
    return SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(output));
}

void Add(HWND list, const wchar_t* output) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(output));
}

} // namespace

void ReportOutput::OnLoad() {
    for (const int control : kOutputRow) {
        Host().ShowControl(control, m_report.output);
    }
    OutputList();
    CopiesBox();
    if (m_report.output) {
        SendMessageW(Control(IDC_CMBSELEC), CB_RESETCONTENT, 0, 0);
        SendMessageW(Control(IDC_SPINCOPIAS), UDM_SETRANGE32, 1, SHRT_MAX);
        ShowPrinter();
    }
}

void ReportOutput::MoveBehind() {
    for (const int control : kOutputRow) {
        SetWindowPos(Control(control), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

LayoutRow ReportOutput::Layout() {
    return {kOwn,
            {{IDC_LBLSELEC},
             {IDC_CMBSELEC},
             {IDC_LBLCOPIAS},
             {IDC_TXTCOPIAS},
             {IDC_CMDPRINTER},
             {IDC_LBLPRINTER, kFill}}};
}

void ReportOutput::PlaceSpinner() {
    // It takes its place from the box whenever it is given the box anew.
    SendMessageW(Control(IDC_SPINCOPIAS), UDM_SETBUDDY, reinterpret_cast<WPARAM>(Control(IDC_TXTCOPIAS)), 0);
}

void ReportOutput::Set(const environment::ListChoices& choices) {
    const HWND list = Control(IDC_CMBSELEC);
    SendMessageW(list, CB_RESETCONTENT, 0, 0);
    for (const wchar_t* output : choices.outputs) {
        Add(list, output);
    }
    AddOwnOutputs();
    const LRESULT found = Find(list, choices.output.c_str());
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(found == CB_ERR ? 0 : found), 0);
    Host().SetControlText(IDC_TXTCOPIAS, choices.copies);
}

void ReportOutput::AddOwnOutputs() {
    const HWND list = Control(IDC_CMBSELEC);
    for (const wchar_t* output : m_report.ownOutputs) {
        if (Find(list, output) == CB_ERR) {
            Add(list, output);
        }
    }
}

void ReportOutput::Complete() {
    AddOwnOutputs();
    OutputChanged();
}

short ReportOutput::Chosen() const {
    return static_cast<short>(SendMessageW(Control(IDC_CMBSELEC), CB_GETCURSEL, 0, 0));
}

std::wstring ReportOutput::Output() const { return Host().ControlText(IDC_CMBSELEC); }

std::wstring ReportOutput::Copies() const { return Host().ControlText(IDC_TXTCOPIAS); }

com::ComPtr<IDispatch> ReportOutput::OutputList() const {
    return com::ComPtr<IDispatch>(Host().ObjectOf(IDC_CMBSELEC, L"CmbSelec", 0).Get());
}

com::ComPtr<IDispatch> ReportOutput::CopiesBox() const {
    return com::ComPtr<IDispatch>(Host().ObjectOf(IDC_TXTCOPIAS, L"TxtFields", 0).Get());
}

// What the user does.

void ReportOutput::OnControl(int control, int code) {
    if (control == IDC_CMBSELEC && code == CBN_SELCHANGE) {
        OutputChanged();
    }
}

void ReportOutput::OutputChanged() {
    const bool printer = m_report.printerByName ? Output() == kPrinter : Chosen() == 0;
    for (const int control : kPrinterControls) {
        Host().EnableControl(control, printer);
    }
}

std::span<const KeyRow> ReportOutput::Keys() const {
    static constexpr KeyRow kKeys[] = {{IDC_CMDPRINTER, kClick, kChoosePrinter}};
    return kKeys;
}

std::span<const CommandRow> ReportOutput::Commands() const {
    static constexpr CommandRow kCommands[] = {{kChoosePrinter, Do<&ReportOutput::CambiarImpresora>}};
    return kCommands;
}

void ReportOutput::CambiarImpresora() {
    if (ChoosePrinter(Host().Window()) && IsLoaded()) {
        ShowPrinter();
    }
}

void ReportOutput::ShowPrinter() { Host().SetControlText(IDC_LBLPRINTER, DefaultPrinter()); }

} // namespace tamvelo::reports
