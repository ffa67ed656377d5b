#include "frame/RecordGrid.h"

#include <commdlg.h>

#include "base/Commands.h"
#include "base/SelectionAnswers.h"
#include "frame/Lookup.h"
#include "frame/RecordView.h"
#include "frame/Resources.h"
#include "grid/CellText.h"
#include "win/MousePointer.h"
#include "win/ThemeScope.h"

namespace tamvelo::frame {

// Opening and closing.

void RecordGrid::OnLoad() {
    {
        const win::ThemeScope theme;
        grid::GridEvents& events = *this;
        m_grid = std::make_unique<grid::Grid>(Host().Window(), IDC_DATAGRID, events);
    }
    // Right after the search box in the tab order: the arrows there go where Tab goes, into the list.
    SetWindowPos(m_grid->Window(), Control(IDC_TXTFIELDS0), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Grid().SetAccessibleName(m_request.className);
    if (m_design.marks) {
        Grid().OfferMarks();
    }
    Host().Bar().SetBandVisible(base::kBandRegistros, true);
    Host().Bar().SetBandVisible(base::kBandRegistro, true);
    m_relay = Host().MakeRelay(
        {{objects::ConfigurarColumnas, [this](com::Invocation&) { clsMeEvents_ConfigurarColumnas(); }}});
}

void RecordGrid::OnLaidOut() {
    const bool kept = LoadLook();
    // A record set that fails leaves a form that can still be used or closed.
    Host().Tried([&] { Grid().SetDataSource(m_request.data.Get()); });
    if (!kept && m_design.marks) {
        Grid().PutMarksFirst();
    }
    Grid().SetCurrentColumn(m_request.column < Grid().ColumnCount() ? m_request.column : short{0});
    ShowStatus();
}

void RecordGrid::OnBeforeUnload() {
    if (m_lookChanged) {
        SaveLook();
    }
}

void RecordGrid::OnUnload() noexcept {
    m_grid.reset();
    m_relay.reset();
    m_orderColumn = -1;
    m_lookChanged = false;
}

// Moving and sorting.

bool RecordGrid::HasCurrentRecord() {
    if (Grid().CurrentRow() < 0) {
        MessageBeep(MB_ICONWARNING);
        return false;
    }
    return Grid().Confirm();
}

void RecordGrid::Move(void (contract::DataClass::*move)()) {
    (m_request.data.*move)();
    Grid().HostChanged();
}

void RecordGrid::Ordenar(bool descending) {
    short column = Grid().CurrentColumn();
    if (column < 0) {
        return;
    }
    AskHost([&] { m_request.data.SetOrder(column, descending); });
    if (!IsLoaded()) {
        return;
    }
    m_orderColumn = Grid().CurrentColumn();
    m_orderDescending = descending;
    Grid().Reordered();
    Grid().MarkOrder(m_orderColumn, descending);
    ShowStatus();
}

void RecordGrid::VerRegistro() {
    if (!HasCurrentRecord()) {
        return;
    }
    std::vector<RecordField> fields;
    for (short i = 0; i < Grid().ColumnCount(); ++i) {
        RecordField& field = fields.emplace_back(RecordField{Grid().Caption(i), grid::kErrorText});
        try {
            field.value = Grid().Text(i);
        } catch (const com::Error&) {
            continue; // a value that raises is its record's own trouble
        }
    }
    ShowRecord(L"Registro de " + m_request.className, fields);
}

// The look: font and columns, and the file that keeps them.

bool RecordGrid::LoadLook() {
    m_layoutStore = environment::GridLayoutStore(m_design.layoutName ? m_design.layoutName(m_request)
                                                                     : L"frmSelec" + m_request.className);
    bool kept = false;
    Grid().DefaultLook();
    Host().Tried([&] {
        std::wstring note;
        const std::optional<base::GridLayout> saved = m_layoutStore.Load(note);
        Host().NoteLayout(std::move(note));
        if (saved) {
            Grid().Apply(*saved);
            kept = true;
        }
    });
    return kept;
}

void RecordGrid::SaveLook() {
    m_lookChanged = false;
    m_layoutStore.Save(Grid().Layout());
}

void RecordGrid::CambiarFuenteGrid() {
    LOGFONTW font = Grid().Font();
    CHOOSEFONTW choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = Host().Window();
    choice.lpLogFont = &font;
    choice.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_NOVERTFONTS | CF_NOSCRIPTSEL;
    win::MousePointer::Default();
    if (ChooseFontW(&choice) && IsLoaded()) {
        Grid().SetFont(font);
        SaveLook();
    }
}

void RecordGrid::ChooseColumns() {
    com::LateObject server = NewShowSerch();
    server.Call(L"ShowColums", {m_relay->Sink(), Grid().Columns().Get()});
}

void RecordGrid::FitColumn() {
    if (const short column = Grid().CurrentColumn(); column >= 0) {
        Grid().FitColumn(column);
        LayoutChanged();
    }
}

// What the grid says.

void RecordGrid::RowActivated() {
    const bool code = m_design.codes && base::DoubleClickAnswerFor(m_request.className);
    Host().Input(code ? kRowCode : base::kAceptar);
}

void RecordGrid::HeadingClicked(short column) {
    const bool again = column == m_orderColumn && !m_orderDescending;
    Grid().SetCurrentColumn(column);
    Host().Input(again ? base::kOrdenDesc : base::kOrdenAsc);
}

void RecordGrid::CurrentColumnChanged() {
    if (m_columnChanged && m_grid && Grid().ColumnCount() > 0) {
        m_columnChanged();
    }
}

void RecordGrid::RowsShown() {
    if (m_design.marks) {
        ShowStatus(); // it counts those on screen
    }
}

void RecordGrid::ShownWasAnother() {
    Hint(L"La lista había cambiado y se ha leído de nuevo: compruebe el registro y repita.");
}

void RecordGrid::ContextMenuAsked(POINT screen) {
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
    items.insert(items.end(), m_design.menu.begin(), m_design.menu.end());
    items.insert(items.end(), std::begin(kGrid), std::end(kGrid));
    Host().RunMenu(items, screen);
}

void RecordGrid::Hint(const std::wstring& text) {
    Host().SetControlText(IDC_STATUS, text);
    MessageBeep(MB_ICONINFORMATION);
}

void RecordGrid::ShowStatus() {
    if (!m_grid || !IsLoaded()) {
        return;
    }
    std::wstring text = Grid().CounterText();
    for (const std::wstring& note : {m_design.note ? m_design.note() : std::wstring(), Host().LayoutNote()}) {
        text += (note.empty() ? L"" : L"   ·   ") + note;
    }
    Host().SetControlText(IDC_STATUS, text);
}

// Commands.

std::span<const KeyRow> RecordGrid::Keys() const {
    // So that every command has one.
    static constexpr KeyRow kKeys[] = {
        {0, VK_F9, base::kOrdenAsc},
        {0, kShift | VK_F9, base::kOrdenDesc},
        {0, VK_F12, kChooseColumns},
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

std::span<const CommandRow> RecordGrid::Commands() const {
    using G = RecordGrid;
    static constexpr CommandRow kCommands[] = {
        {base::kMoveFirst, Do<&G::MoveFirst>},
        {base::kMovePre, Do<&G::MovePrevious>},
        {base::kMoveNext, Do<&G::MoveNext>},
        {base::kMoveLast, Do<&G::MoveLast>},
        {base::kOrdenAsc, Do<&G::OrdenAsc>},
        {base::kOrdenDesc, Do<&G::OrdenDesc>},
        {base::kRegistro, Do<&G::VerRegistro>},
        {kChooseFont, Do<&G::CambiarFuenteGrid>},
        {kChooseColumns, Do<&G::ChooseColumns>},
        {kCopyCell, Do<&G::CopyCell>},
        {kCopyRow, Do<&G::CopyRow>},
        {kCopyRowWithHeadings, Do<&G::CopyRowWithHeadings>},
        {kFitColumn, Do<&G::FitColumn>},
    };
    return kCommands;
}

} // namespace tamvelo::frame
