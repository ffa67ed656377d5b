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
constexpr wchar_t kToggle[] = L"{MARCAR}";

constexpr auto kKeys = KeysAnd(kPanelKeys, {
                                               {IDC_DATAGRID, VK_SPACE, kToggle},
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

} // namespace

FrmSeleccionTrueFalse::FrmSeleccionTrueFalse() : PanelForm({kName, IDD_TRUEFALSE, kPanelTools, kKeys}) {}

std::span<const CommandRow> FrmSeleccionTrueFalse::Commands() const {
    using F = FrmSeleccionTrueFalse;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>}, {kRowCode, Do<&F::DeliverCode>}, {kTodos, Do<&F::Todos>},
        {kNinguno, Do<&F::Ninguno>},       {kToggle, Do<&F::ToggleMark>},
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
        Take(sink, data, ctl, column, indx);
        ShowSearching(ctl, find, modal);
    });
}

void FrmSeleccionTrueFalse::OnLoad() {
    PanelForm::OnLoad();
    SetWindowTextW(Window(), (L"Lista con casillas de " + ClassName()).c_str());
    for (const Link& link : kLinks) {
        win::MakeLink(Control(link.control));
        SetTip(link.control, link.tip, link.command);
    }
    OnFiltered(false);
    DataGrid().OfferMarks();
    for (const Planning& each : kPlanning) {
        DataGrid().NameField(each.field, each.caption);
    }
}

std::wstring FrmSeleccionTrueFalse::LayoutName() const {
    return L"frmSelecTF" + ClassName() + L"_" + std::to_wstring(Indx());
}

// Marking.

void FrmSeleccionTrueFalse::MarkAll(void (contract::DataClass::*mark)(Variant& connection)) {
    Variant connection = MyClase().GetConnection();
    (MyClase().*mark)(connection);
    MyClase().Requery(base::kSeleccion);
    if (IsLoaded()) {
        ShowRecords({}); // that selection is every record: the search has ended
    }
}

void FrmSeleccionTrueFalse::ToggleMark() {
    const std::vector<short> marks = DataGrid().MarkColumns();
    const auto isPlanning = [&](short column) {
        const std::wstring field = base::Lower(DataGrid().Field(column));
        return std::ranges::any_of(kPlanning,
                                   [&](const Planning& each) { return base::Lower(each.field) == field; });
    };
    auto mark = std::ranges::find(marks, DataGrid().CurrentColumn());
    if (mark == marks.end()) {
        mark = std::ranges::find_if(marks, isPlanning); // any other Boolean is data, not for a stray key
    }
    if (mark == marks.end()) {
        Hint(L"Para marcar, vaya antes a la columna de la casilla.");
        return;
    }
    if (DataGrid().ToggleMark(*mark)) {
        ShowStatus();
    }
}

void FrmSeleccionTrueFalse::MarkClicked() { Input(kToggle); }

std::span<const frame::MenuItem> FrmSeleccionTrueFalse::OwnMenu() const {
    static constexpr MenuItem kMenu[] = {
        {L"", nullptr},
        {kToggle, L"&Marcar o desmarcar"},
        {kTodos, L"Seleccionar &todos"},
        {kNinguno, L"Seleccionar &ninguno"},
    };
    return kMenu;
}

void FrmSeleccionTrueFalse::OnFiltered(bool filtered) {
    ShowControl(IDC_LBLALCANCE, filtered);
    Relayout();
}

std::wstring FrmSeleccionTrueFalse::StatusNote() const {
    std::wstring note;
    bool one = false;
    bool all = true;
    for (const short column : DataGrid().MarkColumns()) {
        const grid::MarkCount count = DataGrid().CountMarks(column);
        one = note.empty() && count.marked == 1;
        all = count.all;
        note += (note.empty() ? L"" : L" y ") + std::to_wstring(count.marked);
    }
    return note.empty() ? note : note + (one ? L" marcada" : L" marcadas") + (all ? L"" : L" a la vista");
}

// Answering.

/// The member beyond the answer tells a host with an event handler of that name that the marks are settled.
void FrmSeleccionTrueFalse::TellSink() {
    const base::Answer answer = base::AnswerFor(ClassName());
    std::vector<Variant> texts = TextsFor(answer);
    for (short column = 0; texts.size() < 3; ++column) {
        const bool there = column < DataGrid().ColumnCount();
        texts.emplace_back(std::wstring_view(there ? DataGrid().Text(column) : std::wstring()));
    }
    SendAnswer(answer);
    if (IsLoaded()) {
        short index = answer.first.Resolve(Column(), Indx());
        Sink().clsEvents_AceptaSeleccion(index, Ctl().Reference(), texts[0], texts[1], texts[2]);
    }
}

} // namespace tamvelo::selection
