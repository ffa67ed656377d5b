#include "frame/GridForm.h"

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "frame/RecordView.h"
#include "grid/CellText.h"
#include "win/ThemeScope.h"

namespace tamvelo::frame {

namespace {

/// A text as a label shows it: its ampersands are no access keys.
std::wstring AsLabel(std::wstring text) {
    for (size_t at = 0; (at = text.find(L'&', at)) != std::wstring::npos; at += 2) {
        text.insert(at, 1, L'&');
    }
    return text;
}

} // namespace

// Opening and closing.

void GridForm::OnLoad() {
    {
        const win::ThemeScope theme;
        m_grid = std::make_unique<grid::Grid>(Window(), IDC_DATAGRID, *this);
    }
    // Right after the search box in the tab order: the arrows there go where Tab goes, into the list.
    SetWindowPos(m_grid->Window(), Control(IDC_TXTFIELDS0), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    DataGrid().SetAccessibleName(m_className);
    const auto selected = [this](com::Invocation& call) { clsMeEvents_AceptaSeleccion(call); };
    m_relay = MakeRelay(
        {{objects::ConfigurarColumnas, [this](com::Invocation&) { clsMeEvents_ConfigurarColumnas(); }},
         {objects::AceptaSeleccion, selected},
         {objects::AceptaSeleccionParam, selected}});
    SearchBox();
    SetHeading(Heading({}));
}

void GridForm::OnLaidOut() {
    const bool kept = LoadLook();
    // A record set that fails leaves a form that can still be used or closed.
    Tried([&] { DataGrid().SetDataSource(m_data.Get()); });
    if (!kept) {
        OnDefaultLook();
    }
    DataGrid().SetCurrentColumn(m_column < DataGrid().ColumnCount() ? m_column : short{0});
    ShowStatus();
}

void GridForm::OnBeforeUnload() {
    if (m_lookChanged) {
        SaveLook();
    }
}

void GridForm::OnUnload() noexcept {
    m_grid.reset();
    m_relay.reset();
    m_searched = {};
    m_orderColumn = -1;
    m_lookChanged = false;
    m_filter.clear();
    m_caller = nullptr;
    m_control.Reset();
    m_data.Reset();
    m_sink.Reset();
}

// Searching.

GridForm::Search GridForm::TypedSearch() const {
    std::wstring text = ControlText(IDC_TXTFIELDS0);
    const bool somewhere = !text.empty() && !MeansAll(text);
    return {std::move(text), somewhere ? DataGrid().CurrentColumn() : kNoColumn};
}

bool GridForm::IsSearchPending() const { return IsSearchStripShown() && TypedSearch() != m_searched; }

void GridForm::SetSearchText(const std::wstring& text) { SetControlText(IDC_TXTFIELDS0, text); }

bool GridForm::IsSearchStripShown() const {
    return (GetWindowLongW(Control(IDC_TXTFIELDS0), GWL_STYLE) & WS_VISIBLE) != 0;
}

void GridForm::ShowSearchStrip(bool shown) {
    if (!shown && IsChild(Window(), GetFocus())) {
        SetFocus(DataGrid().Window());
    }
    for (const int control : {IDC_LBLBUSCAR, IDC_TXTFIELDS0, IDC_CMDBUSCAR}) {
        ShowControl(control, shown);
    }
    Relayout();
    OnSearchStrip(shown);
}

void GridForm::NameSearchColumn() {
    if (!m_grid || DataGrid().ColumnCount() == 0) {
        return;
    }
    const short column = DataGrid().CurrentColumn();
    SearchBox()->SetDataField(DataGrid().Field(column));
    SetControlText(IDC_LBLBUSCAR, L"B&uscar en " + AsLabel(DataGrid().Caption(column)) + L":");
}

void GridForm::BuildFilter(const std::wstring& typed) {
    std::wstring filter;
    if (!MeansAll(typed)) {
        const std::wstring fragments[] = {m_data.CreateFilter(SearchBox())};
        filter = base::JoinAnd(fragments);
    }
    m_data.SetFilter(filter, base::kSlotFilterSelec); // also an empty one, or the last one would come back
}

void GridForm::AplicarBusqueda(bool apply) {
    if (!m_data) {
        return;
    }
    if (!apply) {
        AskHost([&] {
            m_data.AplyFilter(L"");
            m_data.Requery(base::kSelec);
        });
        if (!IsLoaded()) {
            return;
        }
        ShowRecords({});
        return;
    }
    const Search search = TypedSearch();
    BuildFilter(search.text);
    AskHost([&] {
        m_data.AplyFilter(m_data.GetFilter(base::kSlotFilterSelec));
        m_data.Requery(base::kSelec);
    });
    if (!IsLoaded()) {
        return;
    }
    m_searched = search;
    DataGrid().Requeried();
    ShowFilter(m_data.GetFilter(base::kSlotFilterSelec));
    SetFocus(Control(IDC_TXTFIELDS0));
    SetEmptyText(!m_data.existenregistros());
    ShowStatus();
}

void GridForm::ShowRecords(const std::wstring& filter) {
    m_searched = {};
    DataGrid().Requeried();
    ShowFilter(filter);
    SetEmptyText(!filter.empty());
    ShowStatus();
}

void GridForm::ShowFilter(const std::wstring& filter) {
    m_filter = filter;
    Bar().SetPressed(base::kFiltro, IsFiltered());
    OnFiltered(IsFiltered());
    SetHeading(Heading(filter));
}

void GridForm::SetEmptyText(bool noMatch) {
    DataGrid().SetEmptyText(noMatch ? L"Sin coincidencias: quite el filtro (F7)" : L"No hay registros");
}

std::wstring GridForm::Heading(const std::wstring& filter) const {
    return filter.empty() ? filter : L"Filtro: " + filter;
}

void GridForm::Filtrar() {
    if (!AllowsSearch()) {
        return;
    }
    if (!IsSearchStripShown()) {
        ShowSearchStrip(true);
        SetFocus(Control(IDC_TXTFIELDS0));
    } else if (IsSearchPending()) {
        AplicarBusqueda(true);
        if (IsLoaded()) {
            ShowSearchStrip(false);
        }
    } else {
        SetFocus(Control(IDC_TXTFIELDS0));
    }
}

void GridForm::GoToSearch() {
    if (!AllowsSearch()) {
        return;
    }
    if (!IsSearchStripShown()) {
        ShowSearchStrip(true);
    }
    SetFocus(Control(IDC_TXTFIELDS0));
}

void GridForm::SetHeading(const std::wstring& text) {
    const bool shown = !text.empty();
    SetControlText(IDC_LBLTABLE, AsLabel(text));
    if (shown != ((GetWindowLongW(Control(IDC_LBLTABLE), GWL_STYLE) & WS_VISIBLE) != 0)) {
        ShowControl(IDC_LBLTABLE, shown);
        Relayout();
    }
}

// Moving and sorting.

void GridForm::Ordenar(bool descending) {
    short column = DataGrid().CurrentColumn();
    if (column < 0) {
        return;
    }
    AskHost([&] { m_data.SetOrder(column, descending); });
    if (!IsLoaded()) {
        return;
    }
    m_orderColumn = DataGrid().CurrentColumn();
    m_orderDescending = descending;
    DataGrid().Reordered();
    DataGrid().MarkOrder(m_orderColumn, descending);
    ShowStatus();
}

void GridForm::MoveFirst() {
    m_data.MoveFirst();
    DataGrid().HostChanged();
}

void GridForm::MovePrevious() {
    m_data.MovePrevious();
    DataGrid().HostChanged();
}

void GridForm::MoveNext() {
    m_data.MoveNext();
    DataGrid().HostChanged();
}

void GridForm::MoveLast() {
    m_data.MoveLast();
    DataGrid().HostChanged();
}

void GridForm::VerRegistro() {
    if (!HasCurrentRecord()) {
        return;
    }
    std::vector<RecordField> fields;
    for (short i = 0; i < DataGrid().ColumnCount(); ++i) {
        RecordField& field = fields.emplace_back(RecordField{DataGrid().Caption(i), grid::kErrorText});
        try {
            field.value = DataGrid().Text(i);
        } catch (const com::Error&) {
            continue; // a value that raises is its row's own trouble
        }
    }
    ShowRecord(L"Registro de " + m_className, fields);
}

// What the grid and the controls say.

void GridForm::RowActivated() { OnRowActivated(); }

void GridForm::HeadingClicked(short column) {
    const bool again = column == m_orderColumn && !m_orderDescending;
    DataGrid().SetCurrentColumn(column);
    Input(again ? base::kOrdenDesc : base::kOrdenAsc);
}

void GridForm::ContextMenuAsked(POINT screen) {
    static constexpr MenuItem kRecord[] = {
        {base::kAceptar, nullptr},
        {base::kRegistro, nullptr},
    };
    static constexpr MenuItem kGrid[] = {
        {L"", nullptr},
        {base::kOrdenAsc, nullptr},
        {base::kOrdenDesc, nullptr},
        {base::kFiltrar, nullptr},
        {base::kFiltro, nullptr},
        {L"", nullptr},
        {kCopyCell, L"Copiar &celda"},
        {kCopyRow, L"Copiar &fila"},
        {kCopyRowWithHeadings, L"Copiar fila con cabecera&s"},
        {L"", nullptr},
        {kFitColumn, L"A&justar la columna"},
        {kChooseColumns, L"Ele&gir columnas…"},
        {kChooseFont, L"F&uente…"},
    };
    std::vector<MenuItem> items(std::begin(kRecord), std::end(kRecord));
    const std::span<const MenuItem> own = OwnMenu();
    items.insert(items.end(), own.begin(), own.end());
    items.insert(items.end(), std::begin(kGrid), std::end(kGrid));
    RunMenu(items, screen);
}

void GridForm::CurrentRowChanged() { ShowStatus(); }

void GridForm::ShownWasAnother() {
    Hint(L"La lista había cambiado y se ha leído de nuevo: compruebe el registro y repita.");
}

void GridForm::Failed(const com::Error& error) noexcept { ControlErrores(error); }

std::vector<win::LayoutRow> GridForm::Layout() const {
    using namespace tables;
    return {
        {kOwn, {{IDC_LBLTABLE, kFill}}},
        {kOwn, {{IDC_LBLBUSCAR}, {IDC_TXTFIELDS0, kFill}, {IDC_CMDBUSCAR}}},
        {kFill, {{IDC_DATAGRID, kFill}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

std::span<const KeyRow> GridForm::SharedKeys() const {
    // So that every command has one.
    static constexpr KeyRow kKeys[] = {
        {0, kCtrl | 'E', kGoToSearch},
        {IDC_CMDBUSCAR, kClick, kApplySearch},
        {0, VK_F9, base::kOrdenAsc},
        {0, kShift | VK_F9, base::kOrdenDesc},
        {0, VK_F12, kChooseColumns},
        {0, VK_F7, base::kFiltro},
        {0, kCtrl | 'L', kCopyCell},
        {IDC_DATAGRID, kByControl | kCtrl | 'C', kCopyRow},
        {IDC_DATAGRID, kByControl | kCtrl | kShift | 'C', kCopyRowWithHeadings},
        {IDC_DATAGRID, kByControl | kCtrl | VK_ADD, kFitColumn},
        {IDC_DATAGRID, kByControl | VK_UP, base::kMovePre},
        {IDC_DATAGRID, kByControl | VK_DOWN, base::kMoveNext},
        {IDC_DATAGRID, kByControl | VK_HOME, base::kMoveFirst},
        {IDC_DATAGRID, kByControl | VK_END, base::kMoveLast},
    };
    return kKeys;
}

std::span<const CommandRow> GridForm::SharedCommands() const {
    using F = GridForm;
    static constexpr CommandRow kCommands[] = {
        {base::kMoveFirst, Do<&F::MoveFirst>},
        {base::kMovePre, Do<&F::MovePrevious>},
        {base::kMoveNext, Do<&F::MoveNext>},
        {base::kMoveLast, Do<&F::MoveLast>},
        {base::kOrdenAsc, Do<&F::OrdenAsc>},
        {base::kOrdenDesc, Do<&F::OrdenDesc>},
        {base::kFiltro, Do<&F::ClearSearch>},
        {base::kFiltrar, Do<&F::Filtrar>},
        {base::kRegistro, Do<&F::VerRegistro>},
        {kApplySearch, Do<&F::ApplyTypedSearch>},
        {kGoToSearch, Do<&F::GoToSearch>},
        {kChooseFont, Do<&F::CambiarFuenteGrid>},
        {kChooseColumns, Do<&F::ChooseColumns>},
        {kCopyCell, Do<&F::CopyCell>},
        {kCopyRow, Do<&F::CopyRow>},
        {kCopyRowWithHeadings, Do<&F::CopyRowWithHeadings>},
        {kFitColumn, Do<&F::FitColumn>},
    };
    return kCommands;
}

void GridForm::Hint(const std::wstring& text) {
    SetControlText(IDC_STATUS, text);
    MessageBeep(MB_ICONINFORMATION);
}

void GridForm::ShowStatus() {
    if (!m_grid || !IsLoaded()) {
        return;
    }
    std::wstring text = DataGrid().CounterText();
    for (const std::wstring& note : {StatusNote(), LayoutNote()}) {
        text += (note.empty() ? L"" : L"   ·   ") + note;
    }
    SetControlText(IDC_STATUS, text);
}

} // namespace tamvelo::frame
