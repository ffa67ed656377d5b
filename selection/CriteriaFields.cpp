#include <algorithm>
#include <cmath>

#include "base/FilterText.h"
#include "base/MessageText.h"
#include "base/Text.h"
#include "frame/Resources.h"
#include "grid/RecordCursor.h"
#include "selection/CriteriaForm.h"
#include "selection/Resources.h"
#include "win/WindowText.h"

// The fields of a criteria dialog: read from the host's record set, and made into labels and boxes.
namespace tamvelo::selection {

using grid::CellKind;
using namespace frame::tables;

namespace {

// The entries of a yes/no list; the numbers are automation's True, False, and neither.
constexpr const wchar_t* kYesNo[] = {L"-1 - Sí", L" 0 - No", L" 2 - Todos"};

// Dialog units.
constexpr int kLongBox = 150;
constexpr int kShortBox = 70;
constexpr int kBoxHeight = 13;
constexpr int kTextHeight = 9;
constexpr int kButtonWidth = 16;
constexpr int kWidestLabel = 100;
constexpr int kTickWidth = 14;

constexpr size_t kMostFields = 300; // with a box: a process has room for 10,000 windows
constexpr long kShortText = 12;     // characters that a short box shows

/// A date that was typed, as the user's short format has it; what is none, or has a time, stays as it is.
void ShowAsShortDate(HWND box) {
    DATE date = 0;
    const std::wstring text = win::TextOf(box);
    const bool isDate = SUCCEEDED(VarDateFromStr(com::Bstr(text).Get(), LOCALE_USER_DEFAULT, 0, &date));
    if (isDate && date >= 1 && date == std::floor(date)) {
        const std::wstring shown = grid::Format(com::Variant::Date(date).Get(), CellKind::Date);
        if (shown != text) {
            SetWindowTextW(box, shown.c_str());
        }
    }
}

} // namespace

int CriteriaForm::ControlOf(size_t field, Part part) {
    return IDC_CRITERIA_FIELDS + static_cast<int>(field) * Parts + part;
}

void CriteriaForm::ReadFields() {
    m_fields.clear();
    m_unasked = 0;
    const com::ComPtr<IDispatch> set(m_records.Set());
    if (!set) {
        return;
    }
    grid::RecordCursor cursor(set.Get());
    if (!cursor.IsOpen()) {
        return;
    }
    for (const grid::FieldInfo& info : cursor.ReadFields()) {
        if (m_fields.size() == kMostFields) {
            ++m_unasked;
            continue;
        }
        Field field;
        field.name = info.name;
        field.caption = info.caption;
        field.kind = grid::KindOfField(info.type);
        const bool text = field.kind == CellKind::Text || field.kind == CellKind::Any;
        field.isShort =
            text ? info.definedSize > 0 && info.definedSize <= kShortText : field.kind != CellKind::Binary;
        m_fields.push_back(std::move(field));
    }
}

void CriteriaForm::FindRelated() {
    environment::DataClasses& classes = environment::Environment::Get().GetDataClasses();
    auto selection = m_dialog.selections.begin();
    for (Field& field : m_fields) {
        std::wstring related = classes.Related(m_className, field.name);
        CheckStands();
        if (!related.empty()) {
            field.related = std::move(related);
            field.selection = selection == m_dialog.selections.end() ? base::kSeleccion : *selection++;
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
    m_panel = std::make_unique<win::ScrollPanel>(Window(), IDC_CRITERIA);
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
        row.cells = {{ControlOf(i, Label)}, {ControlOf(i, Entry)}};
        if (m_fields[i].onlyYes) {
            row.cells.push_back({ControlOf(i, OnlyYes)});
        }
        if (!m_fields[i].related.empty()) {
            row.cells.push_back({ControlOf(i, Search)});
        }
    }
    m_panel->SetRows(std::move(rows));
}

void CriteriaForm::MakeField(size_t index, int labelWidth) {
    constexpr int kDropped = 60; // with the list open
    Field& field = m_fields[index];
    field.label = AddControl(ControlOf(index, Label), L"STATIC", LabelOf(field, false).c_str(),
                             SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, {labelWidth, kTextHeight});
    const int entry = ControlOf(index, Entry);
    if (IsList(field)) {
        field.entry = AddControl(entry, L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP,
                                 {kShortBox, kDropped});
        for (const wchar_t* text : kYesNo) {
            SendMessageW(field.entry, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        }
        SendMessageW(field.entry, CB_SETCURSEL, kAll, 0);
        const std::wstring only = L"Solo " + field.caption;
        field.onlyYes = AddControl(
            ControlOf(index, OnlyYes), L"BUTTON", only.c_str(), BS_AUTOCHECKBOX | BS_NOTIFY | WS_TABSTOP,
            {std::min(WidthOf(only.c_str()), 2 * kWidestLabel) + kTickWidth, kBoxHeight});
        ObjectOf(ControlOf(index, OnlyYes), L"chkFields", static_cast<short>(index));
        Box(index);
    } else {
        field.entry = AddControl(entry, L"EDIT", L"", ES_AUTOHSCROLL | WS_TABSTOP,
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

com::ComPtr<objects::ControlObject> CriteriaForm::Box(size_t index) {
    const Field& field = m_fields.at(index);
    com::ComPtr<objects::ControlObject> box = ObjectOf(
        ControlOf(index, Entry), IsList(field) ? L"CmbFields" : L"TxtFields", static_cast<short>(index));
    box->SetDataField(field.name);
    return box;
}

bool CriteriaForm::HasCondition(size_t index) const {
    const HWND box = m_fields[index].entry;
    return IsList(m_fields[index]) ? SendMessageW(box, CB_GETCURSEL, 0, 0) != kAll
                                   : !base::Trim(win::TextOf(box)).empty();
}

void CriteriaForm::Judged(size_t index, bool valid) {
    const Field& field = m_fields.at(index);
    if (!valid) {
        SetControlText(IDC_STATUS, L"«" + base::Named(win::TextOf(field.entry)) +
                                       L"» no es un valor válido para «" + field.caption + L"».");
        MessageBeep(MB_ICONWARNING);
        return;
    }
    if (field.kind == CellKind::Date) {
        ShowAsShortDate(field.entry);
    }
    ShowStatus();
}

void CriteriaForm::ChooseYesNo(size_t index, int entry) {
    SendMessageW(m_fields[index].entry, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    SendMessageW(m_fields[index].onlyYes, BM_SETCHECK, entry == kYes ? BST_CHECKED : BST_UNCHECKED, 0);
}

} // namespace tamvelo::selection
