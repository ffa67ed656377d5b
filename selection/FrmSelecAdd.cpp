#include "selection/FrmSelecAdd.h"

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "selection/Resources.h"
#include "win/Message.h"

// The list, and what is handed over. The new record's boxes are in FrmSelecAddRecord.cpp.
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
        {kDescartar, Do<&F::Cancelar>},    {kLookUp, Do<&F::LookUp>},
        {kGuardar, Do<&F::Aceptar>},       {kPropose, Do<&F::ProposeCode>},
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
    const auto answered = [this](com::Invocation& call) { clsMeEvents_AceptaSeleccion(call); };
    m_clsMeEvents =
        MakeRelay({{objects::AceptaSeleccion, answered}, {objects::AceptaSeleccionParam, answered}});
    SetWindowTextW(Window(), Title().c_str());
    SetControlText(IDC_LBLTABLE1, L"Registro nuevo de " + m_request.className + L"   (* obligatorio)");
}

void FrmSelecAdd::OnUnload() noexcept {
    m_clsMeEvents.reset();
    m_familyWatch.reset();
    m_adding = false;
    m_fields.clear();
    m_boxes.clear();
    m_panel.reset();
    m_panelLayout = {};
    m_asked = 0;
    m_family.clear();
    m_proposed.clear();
}

std::wstring FrmSelecAdd::StatusNote() const { return m_adding ? L"Alta: Intro guarda, Esc descarta" : L""; }

// Answering.

void FrmSelecAdd::Aceptar() {
    if (m_adding) {
        AceptarAlta();
    } else if (m_answer.HasRecord()) {
        m_answer.DeliverSelection([&] { m_answer.Send(base::AnswerInAddPanel(m_request.className)); });
    }
}

void FrmSelecAdd::AceptarAlta() {
    ProposeCode(); // the family's box may not have been left yet
    if (!CheckRecord()) {
        return;
    }
    const std::wstring code = Text(*BoxNumber(base::kCodeBox));
    m_request.data.InsertarArticulo(Values());
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
    SetAddMode(false);
    m_search.AplicarBusqueda(false);
    m_request.data.FindRecord(code, {});
    m_grid.Grid().HostChanged();
}

void FrmSelecAdd::Cancelar() {
    if (!m_adding) {
        Unload();
    } else if (MayDiscard()) {
        SetAddMode(false);
    }
}

void FrmSelecAdd::Cerrar() {
    if (!m_adding || MayDiscard()) {
        Unload();
    }
}

/// One Esc too many must not cost a clerk what he has typed.
bool FrmSelecAdd::MayDiscard() {
    if (!IsAnythingTyped()) {
        return true;
    }
    const int answer =
        win::ShowMessage(Window(), L"¿Desea descartar el registro nuevo que ha escrito? No se guardará.",
                         Title(), MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2);
    return answer == IDYES && IsLoaded();
}

bool FrmSelecAdd::Offers(std::wstring_view command, int control) const {
    const Box* const box = m_adding ? BoxAt(control) : nullptr;
    return command == kLookUp    ? box && HasLookup(*box)
           : command == kGuardar ? box && box->control == control
                                 : true;
}

} // namespace tamvelo::selection
