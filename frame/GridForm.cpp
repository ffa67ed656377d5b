#include "frame/GridForm.h"

#include <commdlg.h>

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "frame/MousePointer.h"
#include "frame/Nested.h"
#include "frame/RecordView.h"
#include "frame/ThemeScope.h"

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

void GridForm::Take(IDispatch* sink, IDispatch* data, const contract::HostControl& control, short column,
                    short indx) {
    m_sink = contract::Sink(sink);
    m_data = contract::DataClass(data);
    m_control = control;
    m_column = column;
    m_indx = indx;
    m_className = m_data.sClassName();
    m_layoutStore = GridLayoutStore(L"frmSelec" + m_className);
}

void GridForm::OpenRecords(std::wstring_view selection, bool find) {
    m_data.Requery(selection);
    const std::optional<base::FindRule> rule = find ? base::FindRuleFor(m_column) : std::nullopt;
    if (!rule) {
        return;
    }
    const std::wstring text = m_control.Text();
    if (!text.empty()) {
        m_data.FindRecord(text, rule->number);
    }
}

void GridForm::OnLoad() {
    {
        const ThemeScope theme;
        m_grid = std::make_unique<grid::Grid>(Window(), IDC_DATAGRID, *this);
    }
    // After the search strip in the tab order.
    SetWindowPos(m_grid->Window(), Control(IDC_CMDBUSCAR), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    DataGrid().SetAccessibleName(m_className);
    m_relay = std::make_unique<OwnRelay>(std::map<DISPID, OwnRelay::Handler>{
        {ConfigurarColumnas, [this](com::Invocation&) { clsMeEvents_ConfigurarColumnas(); }}});
    ObjectOf(IDC_TXTFIELDS0, L"TxtFields", 0);
    ShowControl(IDC_LBLTABLE, false); // until there is a filter to tell of
}

void GridForm::OnLaidOut() {
    LoadLook();
    // A record set that fails leaves a form that can still be used or closed.
    Trapped([&] { DataGrid().SetDataSource(m_data.Get()); });
    DataGrid().SetCurrentColumn(m_column < DataGrid().ColumnCount() ? m_column : short{0});
    NameSearchColumn();
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
    m_searched.clear();
    m_orderColumn = -1;
    m_lookChanged = false;
    m_control.Reset();
    m_data.Reset();
    m_sink.Reset();
}

// ---- the grid's look
// -----------------------------------------------------------------------------------------

void GridForm::LoadLook() {
    DataGrid().DefaultLook();
    Trapped([&] {
        if (const std::optional<base::GridLayout> saved = m_layoutStore.Load()) {
            DataGrid().Apply(*saved);
        }
    });
}

void GridForm::SaveLook() {
    m_lookChanged = false;
    m_layoutStore.Save(DataGrid().Layout());
}

void GridForm::CambiarFuenteGrid() {
    LOGFONTW font = DataGrid().Font();
    CHOOSEFONTW choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = Window();
    choice.lpLogFont = &font;
    choice.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_NOVERTFONTS | CF_NOSCRIPTSEL;
    MousePointer::Default();
    if (ChooseFontW(&choice) && IsLoaded()) {
        DataGrid().SetFont(font);
        SaveLook();
    }
}

void GridForm::ChooseColumns() {
    com::LateObject server = NewShowSerch();
    server.Call(L"ShowColums", {m_relay->Sink(), DataGrid().Columns().Get()});
}

void GridForm::clsMeEvents_ConfigurarColumnas() { SaveLook(); }

void GridForm::LayoutChanged() { m_lookChanged = true; }

// Searching.

bool GridForm::IsSearchPending() const {
    return IsSearchStripShown() && ControlText(IDC_TXTFIELDS0) != m_searched;
}

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
}

void GridForm::NameSearchColumn() {
    if (DataGrid().ColumnCount() == 0) {
        return;
    }
    const short column = DataGrid().CurrentColumn();
    ObjectOf(IDC_TXTFIELDS0, L"TxtFields", 0)->SetDataField(DataGrid().Field(column));
    SetControlText(IDC_LBLBUSCAR, L"B&uscar en " + AsLabel(DataGrid().Caption(column)) + L":");
}

void GridForm::BuildFilter() {
    if (ControlText(IDC_TXTFIELDS0) == base::kAnyText) {
        return;
    }
    NameSearchColumn();
    const std::wstring fragments[] = {m_data.CreateFilter(ObjectOf(IDC_TXTFIELDS0, L"TxtFields", 0))};
    std::wstring filter = base::JoinAnd(fragments);
    m_data.SetFilter(filter, base::kSlotFilterSelec);
}

void GridForm::AplicarBusqueda(bool apply) {
    if (!m_data) {
        return;
    }
    if (!apply) {
        m_data.AplyFilter(L"");
        m_data.Requery(base::kSelec);
        if (!IsLoaded()) {
            return;
        }
        m_searched.clear();
        DataGrid().Requeried();
        Bar().SetPressed(base::kFiltro, false);
        SetHeading({});
        ShowStatus();
        return;
    }
    BuildFilter();
    m_data.AplyFilter(m_data.GetFilter(base::kSlotFilterSelec));
    m_data.Requery(base::kSelec);
    if (!IsLoaded()) {
        return;
    }
    m_searched = ControlText(IDC_TXTFIELDS0);
    DataGrid().Requeried();
    Bar().SetPressed(base::kFiltro, !m_searched.empty());
    SetHeading(m_data.GetFilter(base::kSlotFilterSelec));
    SetFocus(Control(IDC_TXTFIELDS0));
    DataGrid().SetEmptyText(m_data.existenregistros() ? L"No hay registros"
                                                      : L"Sin coincidencias: quite el filtro (Supr)");
    ShowStatus();
}

void GridForm::SetHeading(const std::wstring& text) {
    const bool shown = !text.empty();
    SetControlText(IDC_LBLTABLE, shown ? L"Filtro: " + AsLabel(text) : text);
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
    m_data.SetOrder(column, descending);
    if (!IsLoaded()) {
        return;
    }
    m_orderColumn = DataGrid().CurrentColumn();
    m_orderDescending = descending;
    DataGrid().HostChanged();
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
    if (DataGrid().CurrentRow() < 0) {
        return;
    }
    std::vector<RecordField> fields;
    for (short i = 0; i < DataGrid().ColumnCount(); ++i) {
        fields.push_back({DataGrid().Caption(i), DataGrid().Text(i)});
    }
    ShowRecord(L"Registro de " + m_className, fields);
}

// What the grid and the controls say.

void GridForm::RowActivated() { OnRowActivated(); }

void GridForm::HeadingClicked(short column) {
    const bool again = column == m_orderColumn && !m_orderDescending;
    DataGrid().SetCurrentColumn(column);
    NameSearchColumn();
    Input(again ? base::kOrdenDesc : base::kOrdenAsc);
}

void GridForm::ContextMenuAsked(POINT screen) { RunMenu(ContextMenu(), screen); }

void GridForm::CurrentRowChanged() { ShowStatus(); }

void GridForm::Failed(const com::Error& error) noexcept { ControlErrores(error); }

void GridForm::OnControl(int control, int code) {
    if (control == IDC_CMDBUSCAR && code == BN_CLICKED) {
        Input(kApplySearch);
    } else if (control == IDC_TXTFIELDS0 && code == EN_SETFOCUS) {
        NameSearchColumn();
    }
}

bool GridForm::OnKey(UINT key, bool control, bool shift) {
    if (key != 'E' || !control || shift || !AllowsSearch()) {
        return false;
    }
    if (!IsSearchStripShown()) {
        ShowSearchStrip(true);
    }
    SetFocus(Control(IDC_TXTFIELDS0));
    return true;
}

void GridForm::ShowStatus() {
    if (!m_grid || !IsLoaded()) {
        return;
    }
    const std::wstring note = StatusNote();
    SetControlText(IDC_STATUS, DataGrid().CounterText() + (note.empty() ? L"" : L"   ·   ") + note);
}

} // namespace tamvelo::frame
