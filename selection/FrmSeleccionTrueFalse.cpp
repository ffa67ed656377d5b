#include "selection/FrmSeleccionTrueFalse.h"

#include <algorithm>

#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "base/Text.h"
#include "selection/Resources.h"
#include "win/LinkLabel.h"

namespace tamvelo::selection {

using com::Variant;
using namespace frame::tables;

namespace {

constexpr wchar_t kTodos[] = L"{TODOS}";
constexpr wchar_t kNinguno[] = L"{NINGUNO}";

constexpr auto kKeys = KeysAnd(kPanelKeys, {
                                               {IDC_DATAGRID, VK_SPACE, frame::kToggleMark},
                                               {0, kCtrl | 'T', kTodos},
                                               {0, kCtrl | 'U', kNinguno},
                                               {IDC_LBLTODOS, VK_RETURN, kTodos},
                                               {IDC_LBLNINGUNO, VK_RETURN, kNinguno},
                                               {IDC_LBLTODOS, kClick, kTodos},
                                               {IDC_LBLNINGUNO, kClick, kNinguno},
                                           });

/// The two ways to mark all rows: a link above the grid, and a key with Ctrl everywhere in the form.
struct Link {
    int control;
    const wchar_t* command;
    const wchar_t* tip;
};

constexpr Link kLinks[] = {
    {IDC_LBLTODOS, kTodos, L"Marca todos los registros, también los que no se ven"},
    {IDC_LBLNINGUNO, kNinguno, L"Desmarca todos los registros, también los que no se ven"},
};

/// The marks that this list is for, by field, with the captions that the user knows them by.
struct Planning {
    const wchar_t* field;
    const wchar_t* caption;
};

constexpr Planning kPlanning[] = {{L"Planificar", L"Planificar 1 ?"}, {L"Planificar_2", L"Planificar 2 ?"}};

/// Marked lists of one class are arranged one by one, by the host's own number.
std::wstring LayoutName(const frame::RecordRequest& request) {
    return L"frmSelecTF" + request.className + L"_" + std::to_wstring(request.indx);
}

} // namespace

const MenuItem FrmSeleccionTrueFalse::kMenu[] = {
    {L"", nullptr},
    {frame::kToggleMark, L"&Marcar o desmarcar"},
    {kTodos, L"Seleccionar &todos"},
    {kNinguno, L"Seleccionar &ninguno"},
};

FrmSeleccionTrueFalse::FrmSeleccionTrueFalse()
    : Form({kName, IDD_TRUEFALSE, kPanelTools, kKeys}),
      m_grid(*this, m_request,
             {.menu = kMenu, .codes = true, .marks = true, .layoutName = LayoutName, .note = [this] {
                  return StatusNote();
              }}) {}

std::span<const CommandRow> FrmSeleccionTrueFalse::Commands() const {
    using F = FrmSeleccionTrueFalse;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>},
        {kTodos, Do<&F::Todos>},
        {kNinguno, Do<&F::Ninguno>},
        {frame::kToggleMark, Do<&F::ToggleMark>},
    };
    return kCommands;
}

std::vector<LayoutRow> FrmSeleccionTrueFalse::Layout() const {
    return {
        {kOwn, {{IDC_LBLTABLE, kFill}}},
        {kOwn, {{IDC_LBLBUSCAR}, {IDC_TXTFIELDS0, kFill}, {IDC_CMDBUSCAR}}},
        {kOwn, {{IDC_LBLTODOS}, {IDC_LBLNINGUNO}, {IDC_LBLALCANCE, kFill}}},
        {kFill, {{IDC_DATAGRID, kFill}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

// Opening.

void FrmSeleccionTrueFalse::MostrarBuscando(IDispatch* sink, IDispatch* data, contract::HostControl& ctl,
                                            short column, short indx, bool find, short modal) {
    Show([&] {
        m_request.Take(sink, data, ctl, column, indx);
        m_search.ShowSearching(ctl, find, modal);
    });
}

void FrmSeleccionTrueFalse::OnLoad() {
    SetWindowTextW(Window(), (L"Lista con casillas de " + m_request.className).c_str());
    for (const Link& link : kLinks) {
        win::MakeLink(Control(link.control));
        SetTip(link.control, link.tip, link.command);
    }
    ShowScope(false);
    for (const Planning& each : kPlanning) {
        m_grid.Grid().NameField(each.field, each.caption);
    }
}

// Marking.

void FrmSeleccionTrueFalse::MarkAll(void (contract::DataClass::*mark)(Variant& connection)) {
    Variant connection = m_request.data.GetConnection();
    (m_request.data.*mark)(connection);
    m_request.data.Requery(base::kSeleccion);
    if (IsLoaded()) {
        m_search.ShowRecords({}); // that selection is every record: the search has ended
    }
}

void FrmSeleccionTrueFalse::ToggleMark() {
    const std::vector<short> marks = m_grid.Grid().MarkColumns();
    const auto isPlanning = [&](short column) {
        const std::wstring field = base::Lower(m_grid.Grid().Field(column));
        return std::ranges::any_of(kPlanning,
                                   [&](const Planning& each) { return base::Lower(each.field) == field; });
    };
    auto mark = std::ranges::find(marks, m_grid.Grid().CurrentColumn());
    if (mark == marks.end()) {
        mark = std::ranges::find_if(marks, isPlanning); // any other Boolean is data, not for a stray key
    }
    if (mark == marks.end()) {
        m_grid.Hint(L"Para marcar, vaya antes a la columna de la casilla.");
        return;
    }
    if (m_grid.Grid().ToggleMark(*mark)) {
        m_grid.ShowStatus();
    }
}

void FrmSeleccionTrueFalse::ShowScope(bool filtered) {
    ShowControl(IDC_LBLALCANCE, filtered);
    Relayout();
}

std::wstring FrmSeleccionTrueFalse::StatusNote() const {
    std::wstring note;
    bool one = false;
    bool all = true;
    for (const short column : m_grid.Grid().MarkColumns()) {
        const grid::MarkCount count = m_grid.Grid().CountMarks(column);
        one = note.empty() && count.marked == 1;
        all = count.all;
        note += (note.empty() ? L"" : L" y ") + std::to_wstring(count.marked);
    }
    return note.empty() ? note : note + (one ? L" marcada" : L" marcadas") + (all ? L"" : L" a la vista");
}

// Answering.

void FrmSeleccionTrueFalse::Aceptar() {
    if (m_answer.HasRecord()) {
        m_answer.DeliverSelection([&] { TellSink(); });
    }
}

/// The member beyond the answer tells a host with an event handler of that name that the marks are settled.
void FrmSeleccionTrueFalse::TellSink() {
    const base::Answer answer = base::AnswerFor(m_request.className);
    std::vector<Variant> texts = m_answer.TextsFor(answer);
    for (short column = 0; texts.size() < 3; ++column) {
        const bool there = column < m_grid.Grid().ColumnCount();
        texts.emplace_back(std::wstring_view(there ? m_grid.Grid().Text(column) : std::wstring()));
    }
    m_answer.Send(answer);
    if (IsLoaded()) {
        short index = answer.first.Resolve(m_request.column, m_request.indx);
        m_request.sink.clsEvents_AceptaSeleccion(index, m_request.control.Reference(), texts[0], texts[1],
                                                 texts[2]);
    }
}

} // namespace tamvelo::selection
