#include "selection/CriteriaForm.h"

#include <algorithm>
#include <cmath>

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/Text.h"
#include "frame/FormInstances.h"
#include "frame/Nested.h"
#include "frame/Resources.h"
#include "frame/WindowText.h"
#include "grid/RecordCursor.h"
#include "selection/Resources.h"

namespace tamvelo::selection {

using frame::CommandRow;
using frame::Do;
using frame::KeyRow;
using frame::kFill;
using frame::kOwn;
using frame::LayoutRow;
using frame::ToolUse;
using grid::CellKind;

namespace {

constexpr ToolUse kTools[] = {
    {base::kAceptar, L"Intro"},
    {base::kCancelar, L"Esc"},
    {base::kMoveFirst, L"Ctrl+Inicio"},
    {base::kMovePre, L"Ctrl+Flecha arriba"},
    {base::kMoveNext, L"Ctrl+Flecha abajo"},
    {base::kMoveLast, L"Ctrl+Fin"},
    {base::kFiltrar, L"F5"},
    {base::kFiltro, L"F7", L"&Limpiar los criterios"},
};

constexpr KeyRow kKeys[] = {{0, VK_F5, base::kFiltrar}, {0, VK_F7, base::kFiltro}};

constexpr wchar_t kLookUp[] = L"{CONSULTAR}";

/// The numbers of one field's controls, from its first.
enum Part { Label, Entry, OnlyYes, Search, Parts };

constexpr int ControlOf(size_t field, Part part) {
    return IDC_CRITERIA_FIELDS + static_cast<int>(field) * Parts + part;
}

// The entries of a yes/no list; the numbers are automation's True, False, and neither.
constexpr const wchar_t* kYesNo[] = {L"-1 - Sí", L" 0 - No", L" 2 - Todos"};
constexpr int kYes = 0;
constexpr int kAll = 2;

constexpr int kComparisons[] = {IDC_OPTCOMPARISON0, IDC_OPTCOMPARISON1, IDC_OPTCOMPARISON2};

// Dialog units.
constexpr int kLongBox = 150;
constexpr int kShortBox = 70;
constexpr int kBoxHeight = 13;
constexpr int kTextHeight = 9;
constexpr int kButtonWidth = 16;
constexpr int kWidestLabel = 100;
constexpr int kTickWidth = 14;

constexpr long kShortText = 12; // characters that a short box shows

/// A date that was typed, as the user's short format has it; what is none, or has a time, stays as it is.
void ShowAsShortDate(HWND box) {
    DATE date = 0;
    const std::wstring text = frame::TextOf(box);
    const bool isDate = SUCCEEDED(VarDateFromStr(com::Bstr(text).Get(), LOCALE_USER_DEFAULT, 0, &date));
    if (isDate && date >= 1 && date == std::floor(date)) {
        const std::wstring shown = grid::Format(com::Variant::Date(date).Get(), CellKind::Date);
        if (shown != text) {
            SetWindowTextW(box, shown.c_str());
        }
    }
}

std::wstring CountOf(long count) {
    return grid::Grouped(count) + (count == 1 ? L" Registro" : L" Registros");
}

} // namespace

CriteriaForm::CriteriaForm(const CriteriaDesign& design)
    : Form({design.name, IDD_CRITERIA, kTools, kKeys}), m_dialog(design) {}

std::shared_ptr<CriteriaForm> CriteriaForm::Instance(const CriteriaDesign& design) {
    return std::static_pointer_cast<CriteriaForm>(
        frame::FormInstances::Obtain(design.name, [&] { return std::make_shared<CriteriaForm>(design); }));
}

std::span<const CommandRow> CriteriaForm::Commands() const {
    using F = CriteriaForm;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>}, {base::kCancelar, Do<&F::Cancelar>},
        {base::kCerrar, Do<&F::Cancelar>}, {base::kFiltrar, Do<&F::Buscar>},
        {base::kFiltro, Do<&F::Limpiar>},  {kLookUp, Do<&F::LookUp>},
    };
    return kCommands;
}

std::vector<LayoutRow> CriteriaForm::Rows() const {
    return {
        {kOwn, {{IDC_LBLBUSCAR, kFill}}},
        {kFill, {{IDC_CRITERIA, kFill}}},
        {kOwn, {{IDC_OPTCOMPARISON0}, {IDC_OPTCOMPARISON1}, {IDC_OPTCOMPARISON2}}, IDC_FRMCOMPARISON},
        {kOwn, {{IDC_CMDBUSCAR}, {IDC_CMDCLEAR}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

// Opening and closing.

void CriteriaForm::Mostrar(IDispatch* sink, IDispatch* data) {
    Show([&] {
        m_sink = contract::Sink(sink);
        m_data = contract::DataClass(data);
        m_className = m_data.sClassName();
        m_records = grid::RecordSource(data);
        ShowModal();
    });
}

void CriteriaForm::OnLoad() {
    SetWindowTextW(Window(), m_dialog.caption);
    Bar().SetBandVisible(base::kBandRegistros, true);
    m_clsMeEvents = std::make_unique<frame::OwnRelay>(std::map<DISPID, frame::OwnRelay::Handler>{
        {frame::AceptaSeleccion, [this](com::Invocation& call) { clsMeEvents_AceptaSeleccion(call); }},
        {frame::AceptaSeleccionParam, [this](com::Invocation& call) { clsMeEvents_AceptaSeleccion(call); }}});
    ReadFields();
    CheckStands();
    SetControlText(IDC_LBLBUSCAR, m_fields.empty() ? L"La clase «" + m_className + L"» no tiene campos."
                                                   : L"Criterios para «" + m_className + L"»:");
    Trapped([&] { FindRelated(); }); // without look-ups the dialog still works
    CheckStands();
    MakeFields();
    const bool compares =
        std::ranges::any_of(m_fields, [&](const Field& field) { return IsCompared(field); });
    ShowControl(IDC_FRMCOMPARISON, compares);
    for (const int option : kComparisons) {
        ShowControl(option, compares);
    }
    CheckRadioButton(Window(), IDC_OPTCOMPARISON0, IDC_OPTCOMPARISON2, IDC_OPTCOMPARISON0);
    Trapped([&] { CountRecords(); });
    CheckStands();
    ShowCriteria();
}

void CriteriaForm::OnUnload() noexcept {
    m_boxes.Clear();
    m_panel.reset();
    m_bold.reset();
    m_clsMeEvents.reset();
    m_fields.clear();
    m_count.reset();
    m_before.reset();
    m_records = {};
    m_data.Reset();
    m_sink.Reset();
}

HWND CriteriaForm::FirstFocus() const {
    return m_fields.empty() ? Control(IDC_CMDBUSCAR) : Control(ControlOf(0, Entry));
}

// The fields.

void CriteriaForm::ReadFields() {
    m_fields.clear();
    const com::ComPtr<IDispatch> set(m_records.Set());
    if (!set) {
        return;
    }
    grid::RecordCursor cursor(set.Get());
    if (!cursor.IsOpen()) {
        return;
    }
    for (const grid::FieldInfo& info : cursor.ReadFields()) {
        Field field;
        field.name = info.name;
        field.caption = info.caption.empty() ? info.name : info.caption;
        field.kind = grid::KindOfField(info.type);
        const bool text = field.kind == CellKind::Text || field.kind == CellKind::Any;
        field.isShort =
            text ? info.definedSize > 0 && info.definedSize <= kShortText : field.kind != CellKind::Binary;
        m_fields.push_back(std::move(field));
    }
}

void CriteriaForm::FindRelated() {
    frame::DataClasses& classes = frame::Environment::Get().GetDataClasses();
    auto selection = m_dialog.selections.begin();
    for (size_t i = 0; i < m_fields.size(); ++i) {
        std::wstring related = classes.Related(m_className, m_fields[i].name);
        CheckStands();
        if (!related.empty()) {
            m_fields[i].related = std::move(related);
            m_fields[i].selection = selection == m_dialog.selections.end() ? base::kSeleccion : *selection++;
        }
    }
}

/// Bold alone is hard to tell in some fonts, and nothing to hear.
std::wstring CriteriaForm::LabelOf(const Field& field, bool marked) {
    return field.caption + (marked ? L": •" : L":");
}

bool CriteriaForm::IsList(const Field& field) const {
    return m_dialog.yesNoLists && field.kind == CellKind::Check;
}

/// Texts and yes/no have nothing that a clerk would call a bound.
bool CriteriaForm::IsCompared(const Field& field) const {
    return m_dialog.comparisons && field.kind != CellKind::Text && field.kind != CellKind::Check &&
           field.kind != CellKind::Binary;
}

void CriteriaForm::MakeFields() {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Window(), WM_GETFONT, 0, 0)), sizeof font, &font);
    font.lfWeight = FW_BOLD;
    m_bold.reset(CreateFontIndirectW(&font));
    m_panel = std::make_unique<frame::ScrollPanel>(Window(), IDC_CRITERIA);
    SetWindowPos(m_panel->Window(), Control(IDC_LBLBUSCAR), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetContainer(m_panel->Window());
    int labelWidth = 0;
    for (const Field& field : m_fields) {
        labelWidth = std::max(labelWidth, WidthOf(LabelOf(field, true).c_str(), m_bold.get()));
    }
    labelWidth = std::min(labelWidth, kWidestLabel);
    std::vector<LayoutRow> rows;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        MakeField(i, labelWidth);
        LayoutRow& row = rows.emplace_back();
        for (const Part part : {Label, Entry, OnlyYes, Search}) {
            if (Control(ControlOf(i, part))) {
                row.cells.push_back({ControlOf(i, part)});
            }
        }
    }
    m_panel->SetRows(std::move(rows));
}

void CriteriaForm::MakeField(size_t index, int labelWidth) {
    constexpr int kDropped = 60; // with the list open
    const Field& field = m_fields[index];
    AddControl(ControlOf(index, Label), L"STATIC", LabelOf(field, false).c_str(),
               SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, {labelWidth, kTextHeight});
    const int entry = ControlOf(index, Entry);
    if (IsList(field)) {
        AddControl(entry, L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP,
                   {kShortBox, kDropped});
        for (const wchar_t* text : kYesNo) {
            SendMessageW(Control(entry), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        }
        SendMessageW(Control(entry), CB_SETCURSEL, kAll, 0);
        const std::wstring only = L"Solo " + field.caption;
        AddControl(ControlOf(index, OnlyYes), L"BUTTON", only.c_str(),
                   BS_AUTOCHECKBOX | BS_NOTIFY | WS_TABSTOP,
                   {WidthOf(only.c_str()) + kTickWidth, kBoxHeight});
        ObjectOf(ControlOf(index, OnlyYes), L"chkFields", static_cast<short>(index));
        Box(index);
    } else {
        AddControl(entry, L"EDIT", L"", ES_AUTOHSCROLL | WS_TABSTOP,
                   {field.isShort ? kShortBox : kLongBox, kBoxHeight});
        frame::CheckedBoxes::Hooks hooks;
        hooks.judged = [this, index](bool valid) { Judged(index, valid); };
        m_boxes.Add(Box(index), std::move(hooks));
    }
    if (!field.related.empty()) {
        AddControl(ControlOf(index, Search), L"BUTTON", L"…", BS_PUSHBUTTON | BS_NOTIFY | WS_TABSTOP,
                   {kButtonWidth, kBoxHeight});
        ObjectOf(ControlOf(index, Search), L"CmdSerch", static_cast<short>(index));
    }
}

com::ComPtr<frame::ControlObject> CriteriaForm::Box(size_t index) {
    const Field& field = m_fields.at(index);
    com::ComPtr<frame::ControlObject> box = ObjectOf(
        ControlOf(index, Entry), IsList(field) ? L"CmbFields" : L"TxtFields", static_cast<short>(index));
    box->SetDataField(field.name);
    return box;
}

bool CriteriaForm::HasCondition(size_t index) const {
    const HWND box = Control(ControlOf(index, Entry));
    return IsList(m_fields[index]) ? SendMessageW(box, CB_GETCURSEL, 0, 0) != kAll
                                   : !base::Trim(frame::TextOf(box)).empty();
}

void CriteriaForm::Judged(size_t index, bool valid) {
    const Field& field = m_fields.at(index);
    if (!valid) {
        SetControlText(IDC_STATUS, L"«" + ControlText(ControlOf(index, Entry)) +
                                       L"» no es un valor válido para «" + field.caption + L"».");
        MessageBeep(MB_ICONWARNING);
        return;
    }
    if (field.kind == CellKind::Date) {
        ShowAsShortDate(Control(ControlOf(index, Entry)));
    }
    ShowStatus();
}

void CriteriaForm::ChooseYesNo(size_t index, int entry) {
    SendMessageW(Control(ControlOf(index, Entry)), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    SendMessageW(Control(ControlOf(index, OnlyYes)), BM_SETCHECK, entry == kYes ? BST_CHECKED : BST_UNCHECKED,
                 0);
}

// What the form tells.

void CriteriaForm::ShowCriteria() {
    const auto plain = SendMessageW(Window(), WM_GETFONT, 0, 0);
    bool any = false;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const bool set = HasCondition(i);
        any = any || set;
        if (std::exchange(m_fields[i].marked, set) != set) {
            SetControlText(ControlOf(i, Label), LabelOf(m_fields[i], set));
            SendMessageW(Control(ControlOf(i, Label)), WM_SETFONT,
                         set ? reinterpret_cast<WPARAM>(m_bold.get()) : static_cast<WPARAM>(plain), TRUE);
        }
    }
    Bar().SetPressed(base::kFiltro, any);
    ShowStatus();
}

void CriteriaForm::ShowStatus() {
    std::wstring names;
    long count = 0;
    for (const Field& field : m_fields) {
        if (field.marked) {
            names += (count++ == 0 ? L": " : L", ") + field.caption;
        }
    }
    std::wstring status = count == 0   ? L"Sin criterios"
                          : count == 1 ? L"1 criterio"
                                       : std::to_wstring(count) + L" criterios";
    status += names;
    SetControlText(IDC_STATUS, m_count ? CountOf(*m_count) + L"   ·   " + status : status);
}

void CriteriaForm::CountRecords() {
    grid::RecordSource records = m_records; // the host may close the form while it is asked
    records.Renew();
    const com::ComPtr<IDispatch> set(records.Set());
    std::optional<long> count;
    if (set) {
        grid::RecordCursor cursor(set.Get());
        if (cursor.IsOpen()) {
            count = cursor.ReadMarks().count;
        }
    }
    CheckStands();
    m_records = records;
    m_count = count;
}

short CriteriaForm::Comparison() const {
    for (short i = 0; i < static_cast<short>(std::size(kComparisons)); ++i) {
        if (SendMessageW(Control(kComparisons[i]), BM_GETCHECK, 0, 0) == BST_CHECKED) {
            return i;
        }
    }
    return 0;
}

// What the user wants.

void CriteriaForm::Apply() {
    std::vector<std::wstring> fragments;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        // An empty box is the host's to judge; " 2 - Todos" is a text, which not every host knows as none.
        if (!IsList(m_fields[i]) || HasCondition(i)) {
            const short bound = IsCompared(m_fields[i]) ? Comparison() : short{0};
            fragments.push_back(m_data.CreateFilter(Box(i), bound));
            CheckStands();
        }
    }
    std::wstring filter = base::JoinAnd(fragments);
    m_data.SetFilter(filter, base::kSlotFilter);
    m_data.AplyFilter(m_data.GetFilter(base::kSlotFilter));
    m_data.Requery(base::kSelec);
    CheckStands();
}

void CriteriaForm::Buscar() {
    if (!m_boxes.SettleAll()) {
        return;
    }
    if (!m_before) {
        std::wstring before = m_data.GetFilter(base::kSlotFilter);
        CheckStands();
        m_before = std::move(before);
    }
    Apply();
    CountRecords();
    ShowCriteria();
}

void CriteriaForm::Aceptar() {
    if (!m_boxes.SettleAll()) {
        return;
    }
    Apply();
    m_sink.AceptarBuscar();
    if (IsLoaded()) {
        Unload();
    }
}

void CriteriaForm::Cancelar() {
    contract::DataClass data = m_data;
    std::optional<std::wstring> before = std::exchange(m_before, std::nullopt);
    Unload(); // first: nothing that the host does may keep the user here
    if (before) {
        data.SetFilter(*before, base::kSlotFilter);
        data.AplyFilter(*before);
        data.Requery(base::kSelec);
    }
}

void CriteriaForm::Limpiar() {
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (IsList(m_fields[i])) {
            ChooseYesNo(i, kAll);
        } else {
            SetControlText(ControlOf(i, Entry), {});
        }
    }
    ShowCriteria();
    SetFocus(FirstFocus());
}

// Look-ups: the button beside a box, F4 and Alt+Down in it open the selection panel, which answers our relay.

void CriteriaForm::LookUp() {
    const std::wstring related = m_fields.at(m_lookedUp).related; // the host may close the form meanwhile
    const com::ComPtr<frame::ControlObject> box = Box(m_lookedUp);
    frame::OpenLookup({related.c_str(), m_fields[m_lookedUp].selection}, m_clsMeEvents->Sink(), box.Get(), 0);
    if (IsLoaded()) {
        SetFocus(box->Window());
    }
}

void CriteriaForm::clsMeEvents_AceptaSeleccion(com::Invocation& call) {
    com::LateObject control(call[1].ToObject().Get(), L"ctl");
    const auto index = static_cast<size_t>(control.Call(L"Index").ToLong());
    if (index < m_fields.size()) {
        SetControlText(ControlOf(index, Entry), call[2].ToText());
    }
}

void CriteriaForm::OnControl(int control, int code) {
    if ((control == IDC_CMDBUSCAR || control == IDC_CMDCLEAR) && code == BN_CLICKED) {
        Input(control == IDC_CMDBUSCAR ? base::kFiltrar : base::kFiltro);
        return;
    }
    const int place = control - IDC_CRITERIA_FIELDS;
    if (place < 0 || static_cast<size_t>(place / Parts) >= m_fields.size()) {
        return;
    }
    const auto index = static_cast<size_t>(place / Parts);
    const int part = place % Parts;
    if (part == Entry && code == EN_CHANGE) {
        ShowCriteria();
    } else if (part == Entry && code == CBN_SELCHANGE && IsList(m_fields[index])) {
        ChooseYesNo(index, static_cast<int>(SendMessageW(Control(control), CB_GETCURSEL, 0, 0)));
        ShowCriteria();
    } else if (part == OnlyYes && code == BN_CLICKED) {
        const bool ticked = SendMessageW(Control(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
        ChooseYesNo(index, ticked ? kYes : kAll);
        ShowCriteria();
    } else if (part == Search && code == BN_CLICKED && m_boxes.Settle()) {
        m_lookedUp = index;
        Input(kLookUp);
    }
}

bool CriteriaForm::OnKey(UINT key, bool control, bool shift) {
    if ((key != VK_F4 && key != frame::kAltDown) || control || shift) {
        return false;
    }
    const int place = GetDlgCtrlID(GetFocus()) - IDC_CRITERIA_FIELDS;
    if (place < 0 || static_cast<size_t>(place / Parts) >= m_fields.size() ||
        m_fields[static_cast<size_t>(place / Parts)].related.empty()) {
        return false;
    }
    m_lookedUp = static_cast<size_t>(place / Parts);
    Input(kLookUp);
    return true;
}

} // namespace tamvelo::selection
