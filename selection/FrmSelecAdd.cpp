#include "selection/FrmSelecAdd.h"

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "selection/Resources.h"
#include "win/Message.h"

namespace tamvelo::selection {

using namespace frame::tables;

namespace {

// Not "ID_Nuevo": that one means nothing on a selection panel, and Insert in the grid is the search.
constexpr wchar_t kAlta[] = L"{ALTA}";
constexpr wchar_t kGuardar[] = L"{GUARDAR}"; // from a box
constexpr wchar_t kDescartar[] = L"{DESCARTAR}";

constexpr auto kKeys = KeysAnd(kPanelKeys, {
                                               {0, kCtrl | 'N', kAlta},
                                               {IDC_CMDNUEVO, kClick, kAlta},
                                               {IDC_CMDGUARDAR, kClick, base::kAceptar},
                                               {IDC_CMDDESCARTAR, kClick, kDescartar},
                                               {{IDC_RECORD_BOXES, 0xFFFF}, kFirst | VK_RETURN, kGuardar},
                                           });

constexpr MenuItem kMenu[] = {{kAlta, L"&Nuevo registro…"}};

} // namespace

FrmSelecAdd::FrmSelecAdd()
    : Form({kName, IDD_SELECADD, kPanelTools, kKeys}),
      m_grid(*this, m_request, {.menu = kMenu, .note = [this] { return StatusNote(); }}) {}

std::span<const CommandRow> FrmSelecAdd::Commands() const {
    using F = FrmSelecAdd;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>}, {base::kCancelar, Do<&F::Cancelar>},
        {base::kCerrar, Do<&F::Cerrar>},   {kAlta, Do<&F::Nuevo>},
        {kDescartar, Do<&F::Cancelar>},    {kGuardar, Do<&F::Aceptar>},
    };
    return kCommands;
}

std::vector<LayoutRow> FrmSelecAdd::Layout() const {
    return {
        {kOwn, {{IDC_LBLTABLE, kFill}}},
        {kOwn, {{IDC_LBLBUSCAR}, {IDC_TXTFIELDS0, kFill}, {IDC_CMDBUSCAR}, {IDC_CMDNUEVO}}},
        {kFill, {{IDC_DATAGRID, kFill}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

void FrmSelecAdd::OnLoad() {
    SetWindowTextW(Window(), Title().c_str());
    SetControlText(IDC_LBLTABLE1, L"Registro nuevo de " + m_request.className + L"   (* obligatorio)");
}

std::wstring FrmSelecAdd::StatusNote() const {
    return m_record.IsOpen() ? L"Alta: Intro guarda, Esc descarta" : L"";
}

// The mode.

void FrmSelecAdd::Nuevo() {
    if (!m_record.IsOpen()) {
        m_record.Open();
        Relayout();
        m_grid.ShowStatus();
    }
    SetFocus(m_record.FirstFocus());
}

void FrmSelecAdd::EndNuevo() {
    SetFocus(m_grid.Grid().Window());
    m_record.Close();
    Relayout();
    m_grid.ShowStatus();
}

// Answering.

void FrmSelecAdd::Aceptar() {
    if (m_record.IsOpen()) {
        AceptarAlta();
    } else if (m_answer.HasRecord()) {
        m_answer.DeliverSelection([&] { m_answer.Send(base::AnswerInAddPanel(m_request.className)); });
    }
}

void FrmSelecAdd::AceptarAlta() {
    m_record.ProposeCode(); // the family's box may not have been left yet
    if (!m_record.Check(Title())) {
        return;
    }
    const std::wstring code = m_record.Code();
    m_request.data.InsertarArticulo(m_record.Values());
    CheckStands();
    try {
        m_answer.DeliverSelection([&] { m_request.SendValue(com::Variant(code)); });
    } catch (const com::Error&) {
        // The record is stored: to offer it for storing again would make a second one.
        if (IsLoaded()) {
            Tried([&] { ShowStored(code); });
        }
        throw;
    }
}

void FrmSelecAdd::ShowStored(const std::wstring& code) {
    EndNuevo();
    m_search.AplicarBusqueda(false);
    m_request.data.FindRecord(code, {});
    m_grid.Grid().HostChanged();
}

void FrmSelecAdd::Cancelar() {
    if (!m_record.IsOpen()) {
        Unload();
    } else if (MayDiscard()) {
        EndNuevo();
    }
}

void FrmSelecAdd::Cerrar() {
    if (!m_record.IsOpen() || MayDiscard()) {
        Unload();
    }
}

/// One Esc too many must not cost a clerk what he has typed.
bool FrmSelecAdd::MayDiscard() {
    if (!m_record.IsAnythingTyped()) {
        return true;
    }
    const int answer =
        win::ShowMessage(Window(), L"¿Desea descartar el registro nuevo que ha escrito? No se guardará.",
                         Title(), MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2);
    return answer == IDYES && IsLoaded();
}

bool FrmSelecAdd::Offers(std::wstring_view command, int control) const {
    return command != kGuardar || m_record.IsEntry(control);
}

} // namespace tamvelo::selection
