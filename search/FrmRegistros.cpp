#include "search/FrmRegistros.h"

#include <algorithm>

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/MessageText.h"
#include "base/SelectionAnswers.h"
#include "search/Resources.h"
#include "win/Message.h"
#include "win/MousePointer.h"

namespace tamvelo::search {

using namespace frame::tables;

namespace {

constexpr wchar_t kFiltroCaption[] = L"Aplicar o &quitar el filtro";

constexpr ToolUse kTools[] = {
    {base::kAceptar},
    {base::kCancelar},
    {base::kNuevo},
    {base::kModificar},
    {base::kEliminar},
    {base::kMoveFirst},
    {base::kMovePre},
    {base::kMoveNext},
    {base::kMoveLast},
    {base::kOrdenAsc},
    {base::kOrdenDesc},
    {base::kFiltrar},
    {base::kFiltro, kFiltroCaption},
    {base::kRegistro},
};

// Rows by control rather than for the whole form: a key does one thing. In the grid Insert is the search, as
// in the selection panel; in the box Enter is for what was typed and Delete for its characters; on the button
// Enter presses it.
constexpr KeyRow kKeys[] = {
    {0, kCtrl | 'N', base::kNuevo},
    {0, VK_RETURN, frame::kNoCommand},
    {IDC_DATAGRID, VK_RETURN, base::kModificar},
    {IDC_DATAGRID, VK_DELETE, base::kEliminar},
    {IDC_DATAGRID, VK_INSERT, base::kFiltrar},
    {IDC_DATAGRID, VK_F3, frame::kChooseFont},
    {IDC_DATAGRID, VK_F4, base::kAceptar},
    {IDC_DATAGRID, VK_F5, base::kRegistro},
    {IDC_TXTFIELDS0, VK_INSERT, base::kNuevo},
    {IDC_TXTFIELDS0, VK_UP, frame::kTabKey},
    {IDC_TXTFIELDS0, VK_DOWN, frame::kTabKey},
    {IDC_TXTFIELDS0, VK_RETURN, base::kAceptar},
    {IDC_TXTFIELDS0, VK_F4, base::kAceptar},
    {IDC_CMDBUSCAR, VK_RETURN, frame::kApplySearch},
    {IDC_CMDBUSCAR, VK_INSERT, base::kNuevo},
    {IDC_CMDBUSCAR, VK_DELETE, base::kEliminar},
};

constexpr MenuItem kMenu[] = {
    {L"", nullptr},
    {base::kNuevo, nullptr},
    {base::kModificar, nullptr},
    {base::kEliminar, nullptr},
};

std::wstring Heading(const frame::RecordRequest& request, const std::wstring& filter) {
    return filter.empty() ? request.className : request.className + L"   ·   Filtro: " + filter;
}

} // namespace

FrmRegistros::FrmRegistros()
    : Form({kName, IDD_REGISTROS, kTools, kKeys}),
      m_grid(*this, m_request, {.menu = kMenu}),
      m_search(*this, m_request, m_grid, {.heading = Heading, .shown = [this](bool shown) {
                                              Bar().SetPressed(base::kFiltrar, shown);
                                          }}) {}

std::span<const CommandRow> FrmRegistros::Commands() const {
    using F = FrmRegistros;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>},     {base::kNuevo, Do<&F::Nuevo>},
        {base::kModificar, Do<&F::Modificar>}, {base::kEliminar, Do<&F::Eliminar>},
        {base::kFiltro, Do<&F::Filtro>},
    };
    return kCommands;
}

std::vector<LayoutRow> FrmRegistros::Layout() const {
    return {
        {kOwn, {{IDC_LBLTABLE, kFill}}},
        {kOwn, {{IDC_LBLBUSCAR}, {IDC_TXTFIELDS0, kFill}, {IDC_CMDBUSCAR}}},
        {kFill, {{IDC_DATAGRID, kFill}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

void FrmRegistros::OnLoad() {
    Bar().SetPressed(base::kFiltrar, true);
    SetWindowTextW(Window(), (L"Registros de " + m_request.className).c_str());
}

void FrmRegistros::Aceptar() {
    if (m_answer.HasRecord()) {
        m_answer.Deliver([&] { m_answer.Send(base::AnswerInBrowser(m_request.className)); });
    }
}

// What becomes of the records is for the host, which may or may not offer it from here.

void FrmRegistros::Nuevo() {
    PassOn(L"AceptarNuevo", L"Este programa no permite dar de alta registros desde esta lista.");
}

void FrmRegistros::Modificar() {
    if (m_grid.HasCurrentRecord()) {
        PassOn(L"AceptarModificar",
               L"Este programa no permite modificar registros desde esta lista. "
               L"Para elegir el registro: F4 o doble clic.");
    }
}

void FrmRegistros::Eliminar() {
    if (m_grid.HasCurrentRecord() && ConfirmsDeletion()) {
        PassOn(L"AceptarEliminar",
               L"No se ha eliminado nada: este programa no permite eliminar registros desde esta lista.");
    }
}

bool FrmRegistros::ConfirmsDeletion() {
    constexpr short kShown = 3; // enough columns to recognise the record by
    std::wstring question = L"¿Desea eliminar este registro?\n";
    for (short column = 0; column < std::min(m_grid.Grid().ColumnCount(), kShown); ++column) {
        question += L"\n" + base::Named(m_grid.Grid().Caption(column)) + L": " +
                    base::Named(m_grid.Grid().Text(column));
    }
    const int answer = win::ShowMessage(Window(), question, L"Registros de " + m_request.className,
                                        MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2);
    return answer == IDYES && IsLoaded();
}

void FrmRegistros::PassOn(const wchar_t* member, const wchar_t* refusal) {
    win::MousePointer::Default(); // the host may show a form of its own
    const bool offered = m_request.Offer(member);
    m_request.TakeControlBack();
    if (!IsLoaded()) {
        return;
    }
    if (!offered) {
        m_grid.Hint(refusal);
        return;
    }
    m_grid.Grid().Requeried();
    m_grid.ShowStatus();
}

void FrmRegistros::Filtro() {
    Bar().SetPressed(base::kFiltro,
                     m_search.IsFiltered()); // the click has turned it over; the host may refuse yet
    if (m_search.IsFiltered()) {
        m_request.data.AplyFilter(L"");
        m_search.ShowRecords({});
        return;
    }
    const std::wstring filter = m_request.data.GetFilter(base::kSlotFilter);
    m_request.data.AplyFilter(filter);
    m_request.data.Requery();
    m_search.ShowRecords(filter);
    if (filter.empty()) {
        m_grid.Hint(L"No hay ningún filtro que aplicar.");
    }
}

} // namespace tamvelo::search
