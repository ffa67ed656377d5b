#include "selection/FrmSeleccion.h"

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "base/SettingsKeys.h"
#include "environment/Product.h"
#include "selection/Resources.h"

namespace tamvelo::selection {

using com::Variant;
using namespace frame::tables;

namespace {

constexpr wchar_t kAnswerYes[] = L"{VERIFICADO}";
constexpr wchar_t kAnswerNo[] = L"{NO_VERIFICADO}";

constexpr auto kKeys = KeysAnd(kPanelKeys, {
                                               {IDC_CMD1, kClick, kAnswerYes},
                                               {IDC_CMD3, kClick, kAnswerNo},
                                               {IDC_CMD2, kClick, base::kCancelar},
                                               {IDC_CMD0, kClick, base::kCancelar},
                                           });

struct Button {
    int control;
    const wchar_t* caption;
};

/// The row of buttons of the verification modes, as they stand from left to right.
constexpr Button kButtons[] = {
    {IDC_CMD1, L"&Verificado"},
    {IDC_CMD3, L"&No verificado"},
    {IDC_CMD2, L"&Cancelar"},
    {IDC_CMD0, L"C&errar"},
};

} // namespace

FrmSeleccion::FrmSeleccion() : Form({kName, IDD_SELECCION, kPanelTools, kKeys}) {}

std::span<const CommandRow> FrmSeleccion::Commands() const {
    using F = FrmSeleccion;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>},
        {kAnswerYes, Do<&F::AnswerYes>},
        {kAnswerNo, Do<&F::AnswerNo>},
    };
    return kCommands;
}

std::vector<LayoutRow> FrmSeleccion::Layout() const {
    return {
        {kOwn, {{IDC_LBLTABLE, kFill}}},  {kOwn, {{IDC_LBLBUSCAR}, {IDC_TXTFIELDS0, kFill}, {IDC_CMDBUSCAR}}},
        {kFill, {{IDC_DATAGRID, kFill}}}, {kOwn, {{IDC_CMD1}, {IDC_CMD3}, {IDC_CMD2}, {IDC_CMD0}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

// Opening.

void FrmSeleccion::Open(IDispatch* sink, IDispatch* data, const contract::HostControl& ctl, short column,
                        short indx, bool verify, bool controlVerify) {
    m_terminal = environment::Environment::Get().GetSettings().ReadValue(
        environment::Product::Own().SesionKey(base::kSesionTerminal), L"Int", L"0");
    m_verify = verify;
    m_controlVerify = controlVerify;
    m_search.Allow(!verify);
    m_request.Take(sink, data, ctl, column, indx);
}

void FrmSeleccion::Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column,
                           short indx, bool find, bool stock, bool verify, bool controlVerify) {
    Show([&] {
        Open(sink, data, ctl, column, indx, verify, controlVerify);
        m_request.OpenRecords(base::SelectionName(stock, verify), find);
        m_request.ShowFor(ctl, 1);
    });
}

void FrmSeleccion::MostrarBuscando(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short column,
                                   short indx, bool find, short modal) {
    Show([&] {
        Open(sink, data, ctl, column, indx, false, false);
        m_search.ShowSearching(ctl, find, modal);
    });
}

void FrmSeleccion::MostrarBusquedaIndirecta(IDispatch* sink, IDispatch* data, contract::HostControl& ctl,
                                            short column, const std::wstring& text, bool find, short modal) {
    Show([&] {
        Open(sink, data, ctl, column, 0, false, false);
        m_request.OpenRecords(base::kSeleccion, find);
        Load();
        m_search.SetText(text);
        m_request.ShowFor(ctl, modal);
    });
}

void FrmSeleccion::OnLoad() {
    if (m_verify) {
        Bar().SetEnabled(base::kFiltrar, false); // there is no strip
        for (const Button& button : kButtons) {
            AddButton(button.control, button.caption, 64);
        }
    }
    SetWindowTextW(Window(), (L"Selección de " + m_request.className).c_str());
}

void FrmSeleccion::ResizeControls() {
    if (m_verify && m_search.IsShown()) {
        for (const int control : {IDC_LBLBUSCAR, IDC_TXTFIELDS0, IDC_CMDBUSCAR}) {
            ShowControl(control, false);
        }
    }
    ShowControl(IDC_CMD0, m_verify && m_controlVerify);
    ShowControl(IDC_CMD1, m_verify && !m_controlVerify);
    ShowControl(IDC_CMD2, m_verify);
    ShowControl(IDC_CMD3, m_verify);
    EnableControl(IDC_CMD2, !m_controlVerify);
    Form::ResizeControls();
}

// Answering.

void FrmSeleccion::Aceptar() {
    if (m_answer.HasRecord()) {
        m_answer.DeliverSelection([&] { m_answer.Send(base::AnswerFor(m_request.className)); });
    }
}

void FrmSeleccion::Answer(bool answer) {
    m_answer.ClampColumn();
    m_answer.Deliver([&] { m_request.SendValue(Variant(answer)); });
}

std::wstring FrmSeleccion::StatusNote() const {
    return m_terminal.empty() || m_terminal == L"0" ? std::wstring() : L"Terminal " + m_terminal;
}

} // namespace tamvelo::selection
