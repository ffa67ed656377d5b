#include "selection/FrmSelecAdd.h"

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "selection/Resources.h"
#include "win/Message.h"

// The list, and what is handed over. The new record's boxes are in FrmSelecAddRecord.cpp.
namespace tamvelo::selection {

using frame::CommandRow;
using frame::Do;
using win::kFill;
using win::kOwn;
using win::LayoutRow;

namespace {

// Not "ID_Nuevo": that one means nothing on a selection panel, and Insert in the grid is the search.
constexpr wchar_t kAlta[] = L"{ALTA}";
constexpr wchar_t kDescartar[] = L"{DESCARTAR}";
constexpr wchar_t kLookUp[] = L"{BUSCAR_CODIGO}";

constexpr auto kKeys = PanelKeysAnd({{0, frame::kCtrl | 'N', kAlta}});

} // namespace

FrmSelecAdd::FrmSelecAdd() : PanelForm({kName, IDD_SELECADD, kPanelTools, kKeys}) {}

std::span<const CommandRow> FrmSelecAdd::Commands() const {
    using F = FrmSelecAdd;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>}, {base::kCancelar, Do<&F::Cancelar>},
        {base::kCerrar, Do<&F::Cerrar>},   {kAlta, Do<&F::Nuevo>},
        {kDescartar, Do<&F::Cancelar>},    {kLookUp, Do<&F::LookUp>},
        {kPropose, Do<&F::ProposeCode>},
    };
    return kCommands;
}

std::span<const frame::Form::MenuItem> FrmSelecAdd::OwnMenu() const {
    static constexpr MenuItem kItems[] = {{kAlta, L"&Nuevo registro…"}};
    return kItems;
}

std::vector<win::LayoutRow> FrmSelecAdd::Rows() const {
    return {
        {win::kOwn, {{IDC_LBLTABLE, win::kFill}}},
        {win::kOwn, {{IDC_LBLBUSCAR}, {IDC_TXTFIELDS0, win::kFill}, {IDC_CMDBUSCAR}, {IDC_CMDNUEVO}}},
        {win::kFill, {{IDC_DATAGRID, win::kFill}}},
        {win::kOwn, {{IDC_STATUS, win::kFill}}},
    };
}

void FrmSelecAdd::Mostrar(IDispatch* sink, IDispatch* data, contract::HostControl& ctl, short& column,
                          short& indx, bool& find) {
    Show([&] {
        Take(sink, data, ctl, column, indx);
        OpenRecords(base::kSeleccion, find);
        ShowFor(ctl, 1);
    });
}

void FrmSelecAdd::OnLoad() {
    PanelForm::OnLoad();
    SetWindowTextW(Window(), Title().c_str());
    SetControlText(IDC_LBLTABLE1, L"Registro nuevo de " + ClassName() + L"   (* obligatorio)");
}

void FrmSelecAdd::OnUnload() noexcept {
    PanelForm::OnUnload();
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

void FrmSelecAdd::OnRowActivated() { Input(base::kAceptar); }

// Answering.

void FrmSelecAdd::Aceptar() {
    if (m_adding) {
        AceptarAlta();
    } else if (HasRecordToDeliver()) {
        Column() = base::ClampColumn(Column(), DataGrid().ColumnCount());
        DeliverSelection([&] { SendAnswer(base::AnswerInAddPanel(ClassName())); });
    }
}

void FrmSelecAdd::AceptarAlta() {
    ProposeCode(); // the family's box may not have been left yet
    if (!CheckRecord()) {
        return;
    }
    const std::wstring code = Text(*BoxNumber(base::kCodeBox));
    MyClase().InsertarArticulo(Values());
    CheckStands();
    Column() = base::ClampColumn(Column(), DataGrid().ColumnCount());
    try {
        DeliverSelection([&] { Sink().AceptarSeleccion(Column(), Ctl().Reference(), com::Variant(code)); });
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
    AplicarBusqueda(false);
    MyClase().FindRecord(code, {});
    DataGrid().HostChanged();
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

void FrmSelecAdd::OnControl(int control, int code) {
    if (code == BN_CLICKED) {
        switch (control) {
        case IDC_CMDNUEVO:
            Input(kAlta);
            return;
        case IDC_CMDGUARDAR:
            Input(base::kAceptar);
            return;
        case IDC_CMDDESCARTAR:
            Input(kDescartar);
            return;
        default:
            if (const Box* box = BoxAt(control); box && control != box->control) {
                SetFocus(Control(box->control));
                Input(kLookUp);
                return;
            }
            break;
        }
    }
    PanelForm::OnControl(control, code);
}

bool FrmSelecAdd::OnKey(UINT key, bool control, bool shift) {
    const int focused = GetDlgCtrlID(GetFocus());
    const Box* const box = m_adding ? BoxAt(focused) : nullptr;
    if (box && !control && !shift) {
        if ((key == VK_F4 || key == frame::kAltDown) && HasLookup(*box)) {
            Input(kLookUp);
            return true;
        }
        if (key == VK_RETURN && focused == box->control) {
            Input(base::kAceptar);
            return true;
        }
    }
    return false;
}

} // namespace tamvelo::selection
