#include "selection/FrmSeleccion.h"

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "base/SettingsKeys.h"
#include "frame/Product.h"
#include "selection/Resources.h"

namespace tamvelo::selection {

using base::NumberSource;
using com::Variant;
using frame::CommandRow;
using frame::Do;
using frame::KeyRow;
using frame::kFill;
using frame::kOwn;
using frame::LayoutRow;
using frame::ToolUse;

namespace {

constexpr ToolUse kTools[] = {
    {base::kAceptar, L"Intro"},
    {base::kCancelar, L"Esc"},
    {base::kMoveFirst, L"Inicio"},
    {base::kMovePre, L"Flecha arriba"},
    {base::kMoveNext, L"Flecha abajo"},
    {base::kMoveLast, L"Fin"},
    {base::kOrdenAsc, L"clic en la cabecera"},
    {base::kOrdenDesc, L"otro clic en la cabecera"},
    {base::kFiltrar, L"Ins"},
    {base::kFiltro, L"Supr"},
    {base::kRegistro, L"F5"},
};

constexpr KeyRow kKeys[] = {
    {0, VK_RETURN, base::kModificar},
    {0, VK_DELETE, base::kEliminar},
    {0, VK_INSERT, base::kNuevo},
    {IDC_DATAGRID, VK_RETURN, base::kAceptar},
    {IDC_DATAGRID, VK_ESCAPE, base::kCancelar},
    {IDC_DATAGRID, VK_END, base::kMoveLast},
    {IDC_DATAGRID, VK_HOME, base::kMoveFirst},
    {IDC_DATAGRID, VK_DELETE, base::kFiltro},
    {IDC_DATAGRID, VK_INSERT, base::kFiltrar},
    {IDC_DATAGRID, VK_F5, base::kRegistro},
    {IDC_DATAGRID, VK_F3, frame::kChooseFont},
    {IDC_TXTFIELDS0, VK_UP, frame::kTabKey},
    {IDC_TXTFIELDS0, VK_DOWN, frame::kTabKey},
    {IDC_TXTFIELDS0, VK_RETURN, base::kAceptar},
    {IDC_TXTFIELDS0, VK_F4, base::kAceptar},
};

constexpr wchar_t kAnswerYes[] = L"{VERIFICADO}";
constexpr wchar_t kAnswerNo[] = L"{NO_VERIFICADO}";
constexpr wchar_t kRowCode[] = L"{DOBLE_CLIC}";

struct Button {
    int control;
    const wchar_t* caption;
    const wchar_t* command;
};

/// The row of buttons of the verification modes, as they stand from left to right.
constexpr Button kButtons[] = {
    {IDC_CMD1, L"&Verificado", kAnswerYes},
    {IDC_CMD3, L"&No verificado", kAnswerNo},
    {IDC_CMD2, L"&Cancelar", base::kCancelar},
    {IDC_CMD0, L"C&errar", base::kCancelar},
};

} // namespace

FrmSeleccion::FrmSeleccion() : GridForm({kName, IDD_SELECCION, kTools, kKeys}) {}

std::span<const CommandRow> FrmSeleccion::Commands() const {
    using F = FrmSeleccion;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>},
        {base::kMoveFirst, Do<&F::MoveFirst>},
        {base::kMovePre, Do<&F::MovePrevious>},
        {base::kMoveNext, Do<&F::MoveNext>},
        {base::kMoveLast, Do<&F::MoveLast>},
        {base::kOrdenAsc, Do<&F::OrdenAsc>},
        {base::kOrdenDesc, Do<&F::OrdenDesc>},
        {base::kFiltro, Do<&F::ClearSearch>},
        {base::kFiltrar, Do<&F::Filtrar>},
        {base::kRegistro, Do<&F::VerRegistro>},
        {kAnswerYes, Do<&F::AnswerYes>},
        {kAnswerNo, Do<&F::AnswerNo>},
        {kRowCode, Do<&F::DeliverCode>},
        {frame::kApplySearch, Do<&F::ApplyTypedSearch>},
        {frame::kChooseFont, Do<&F::CambiarFuenteGrid>},
        {frame::kChooseColumns, Do<&F::ChooseColumns>},
        {frame::kCopyCell, Do<&F::CopyCell>},
        {frame::kCopyRow, Do<&F::CopyRow>},
        {frame::kCopyRowWithHeadings, Do<&F::CopyRowWithHeadings>},
    };
    return kCommands;
}

std::span<const frame::Form::MenuItem> FrmSeleccion::ContextMenu() const {
    static constexpr MenuItem kItems[] = {
        {base::kAceptar, nullptr},
        {base::kRegistro, nullptr},
        {L"", nullptr},
        {base::kOrdenAsc, nullptr},
        {base::kOrdenDesc, nullptr},
        {base::kFiltrar, nullptr},
        {base::kFiltro, nullptr},
        {L"", nullptr},
        {frame::kCopyCell, L"Copiar &celda"},
        {frame::kCopyRow, L"Copiar &fila"},
        {frame::kCopyRowWithHeadings, L"Copiar fila con ca&beceras"},
        {L"", nullptr},
        {frame::kChooseColumns, L"Ele&gir columnas…"},
        {frame::kChooseFont, L"F&uente…"},
    };
    return kItems;
}

std::vector<LayoutRow> FrmSeleccion::Rows() const {
    return {
        {kOwn, {{IDC_LBLTABLE, kFill}}},  {kOwn, {{IDC_LBLBUSCAR}, {IDC_TXTFIELDS0, kFill}, {IDC_CMDBUSCAR}}},
        {kFill, {{IDC_DATAGRID, kFill}}}, {kOwn, {{IDC_CMD1}, {IDC_CMD3}, {IDC_CMD2}, {IDC_CMD0}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

// Opening.

void FrmSeleccion::Open(IDispatch* sink, IDispatch* data, const contract::HostControl& ctl, short column,
                        short indx, bool verify, bool controlVerify) {
    m_terminal = frame::Environment::Get().GetSettings().ReadValue(
        frame::Product::Own().SesionKey(base::kSesionTerminal), L"Int", L"0");
    m_verify = verify;
    m_controlVerify = controlVerify;
    Take(sink, data, ctl, column, indx);
}

void FrmSeleccion::ShowFor(contract::HostControl& ctl, short modal) {
    if (modal == 0) {
        ShowModeless();
        return;
    }
    m_caller = &ctl;
    ShowModal();
}

void FrmSeleccion::Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short& column,
                           short& indx, bool& find, bool& stock, bool& verify, bool& controlVerify) {
    Show([&] {
        Open(sink, data, ctl, column, indx, verify, controlVerify);
        OpenRecords(base::SelectionName(stock, verify), find);
        ShowFor(ctl, 1);
    });
}

void FrmSeleccion::MostrarBuscando(IDispatch* sink, IDispatch* data, contract::HostControl& ctl,
                                   short& column, short& indx, bool& find, short& modal) {
    Show([&] {
        Open(sink, data, ctl, column, indx, false, false);
        OpenRecords(base::kSeleccion, find);
        Load();
        const std::wstring text = Ctl().Text();
        if (!text.empty()) {
            SetSearchText(base::kAnyText + text);
            AplicarBusqueda(true);
        }
        ShowFor(ctl, modal);
    });
}

void FrmSeleccion::MostrarBusquedaIndirecta(IDispatch* sink, IDispatch* data, contract::HostControl& ctl,
                                            short& column, std::wstring& text, bool& find, short& modal) {
    Show([&] {
        Open(sink, data, ctl, column, 0, false, false);
        OpenRecords(base::kSeleccion, find);
        Load();
        SetSearchText(text);
        ShowFor(ctl, modal);
    });
}

void FrmSeleccion::OnLoad() {
    GridForm::OnLoad();
    if (m_verify) {
        for (const Button& button : kButtons) {
            AddButton(button.control, button.caption, 64);
        }
    }
    Bar().SetBandVisible(base::kBandRegistros, true);
    Bar().SetBandVisible(base::kBandRegistro, true);
    SetWindowTextW(Window(), (L"Selección de " + ClassName()).c_str());
}

void FrmSeleccion::OnUnload() noexcept {
    m_caller = nullptr;
    GridForm::OnUnload();
}

void FrmSeleccion::ResizeControls() {
    if (m_verify && IsSearchStripShown()) {
        for (const int control : {IDC_LBLBUSCAR, IDC_TXTFIELDS0, IDC_CMDBUSCAR}) {
            ShowControl(control, false);
        }
    }
    ShowControl(IDC_CMD0, m_verify && m_controlVerify);
    ShowControl(IDC_CMD1, m_verify && !m_controlVerify);
    ShowControl(IDC_CMD2, m_verify);
    ShowControl(IDC_CMD3, m_verify);
    EnableControl(IDC_CMD2, !m_controlVerify);
    GridForm::ResizeControls();
}

// Answering.

void FrmSeleccion::TakeControlBack() {
    if (m_caller) {
        *m_caller = Ctl();
    }
}

void FrmSeleccion::Aceptar() {
    // Enter on something typed but not searched yet means "find it": it is delivered at once only when it is
    // the one.
    if (IsSearchPending() && GetFocus() == Control(IDC_TXTFIELDS0)) {
        AplicarBusqueda(true);
        if (!IsLoaded() || DataGrid().RowCount() != 1) {
            return;
        }
    }
    if (DataGrid().CurrentRow() < 0) {
        MessageBeep(MB_ICONWARNING); // no record to deliver: an empty text would overwrite the host's control
        return;
    }
    Deliver();
}

void FrmSeleccion::Deliver() {
    Column() = base::ClampColumn(Column(), DataGrid().ColumnCount());
    const base::Answer answer = base::AnswerFor(ClassName());
    std::vector<Variant> texts;
    for (const NumberSource& source : answer.Columns()) {
        texts.emplace_back(std::wstring_view(DataGrid().Text(source.Resolve(Column(), Indx()))));
    }
    com::ComPtr<IDispatch>& ctl = Ctl().Reference();
    short& first = answer.first.kind == NumberSource::Kind::Indx ? Indx() : Column();
    const bool fixed = answer.first.kind == NumberSource::Kind::Fixed;
    if (answer.member == base::SinkMember::AceptarSeleccion) {
        Sink().AceptarSeleccion(first, ctl, texts[0]);
    } else if (fixed) {
        Sink().AceptarSeleccionParamCode(answer.first.fixed, ctl, texts[0], texts[1], texts[2]);
    } else {
        Sink().AceptarSeleccionParam(first, ctl, texts[0], texts[1], texts[2]);
    }
    TakeControlBack();
    if (!IsLoaded()) {
        return;
    }
    // The record is delivered: whatever becomes of the filter, the panel has done its work.
    Trapped([&] { MyClase().AplyFilter(L""); });
    Unload();
}

void FrmSeleccion::Answer(bool answer) {
    Column() = base::ClampColumn(Column(), DataGrid().ColumnCount());
    Sink().AceptarSeleccion(Column(), Ctl().Reference(), Variant(answer));
    TakeControlBack();
    Dispatch(base::kCancelar);
}

void FrmSeleccion::OnRowActivated() {
    Input(base::DoubleClickAnswerFor(ClassName()) ? kRowCode : base::kAceptar);
}

void FrmSeleccion::DeliverCode() {
    const std::optional<base::DoubleClickAnswer> answer = base::DoubleClickAnswerFor(ClassName());
    Sink().AceptarSeleccionCode(answer->code, Ctl().Reference(), DataGrid().Value(answer->column));
    TakeControlBack();
    Dispatch(base::kCancelar);
}

void FrmSeleccion::Filtrar() {
    if (m_verify) {
        return;
    }
    if (!IsSearchStripShown()) {
        ShowSearchStrip(true);
        SetFocus(Control(IDC_TXTFIELDS0));
    } else if (IsSearchPending()) {
        AplicarBusqueda(true);
        if (IsLoaded()) {
            ShowSearchStrip(false);
            SetHeading({});
        }
    } else {
        SetFocus(Control(IDC_TXTFIELDS0));
    }
}

void FrmSeleccion::OnControl(int control, int code) {
    for (const Button& button : kButtons) {
        if (button.control == control && code == BN_CLICKED) {
            Input(button.command);
            return;
        }
    }
    GridForm::OnControl(control, code);
}

std::wstring FrmSeleccion::StatusNote() const {
    return m_terminal.empty() || m_terminal == L"0" ? std::wstring() : L"Terminal " + m_terminal;
}

} // namespace tamvelo::selection
