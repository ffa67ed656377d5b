#include "com/WinHeaders.h"

#include <commctrl.h>

#include <algorithm>

#include "base/Commands.h"
#include "base/Text.h"
#include "frame/Lookup.h"
#include "selection/FrmSelecAdd.h"
#include "selection/Resources.h"
#include "win/Message.h"

// The panel for a new record: its boxes are made from the record set's fields, checked, and become values.
namespace tamvelo::selection {

using grid::CellKind;
using namespace frame::tables;

namespace {

/// The numbers of one box's controls, from its label's.
enum Part { Label, Entry, Button, Parts };

constexpr int kMargin = 4; // dialog units, as the rows have it
constexpr int kTextHeight = 9;
constexpr int kBoxHeight = 13;
constexpr int kDropped = 120; // a list, open
constexpr int kEntryWidth = 100;
constexpr int kWidestLabel = 80;
/// The search strip needs it; what is left of the form is the new record's, whose boxes then get narrower.
constexpr int kLeastListWidth = 250;
constexpr int kButtonWidth = 16;
constexpr int kCommandWidth = 56;
constexpr wchar_t kFamilies[] = L"familias";
/// The access keys of the panel's other controls: Buscar, B&uscar en, Nuevo, Guardar, Descartar.
constexpr wchar_t kTakenKeys[] = L"bungd";

constexpr LCID kSpanish = MAKELCID(MAKELANGID(LANG_SPANISH, SUBLANG_SPANISH_MODERN), SORT_DEFAULT);

bool IsDate(const std::wstring& text, DWORD flags) {
    DATE date = 0;
    return SUCCEEDED(VarDateFromStr(com::Bstr(text).Get(), kSpanish, flags, &date));
}

} // namespace

// Making the boxes.

const wchar_t* FrmSelecAdd::ArrayOf(const Box& box) const {
    return FieldOf(box).mark ? L"chkFields" : box.list ? L"CmbFields" : L"TxtFields";
}

void FrmSelecAdd::MakeBoxes() {
    m_fields = ReadRecordFields(m_request.data.Get());
    CheckStands();
    const std::vector<base::RecordField> rules(m_fields.begin(), m_fields.end());
    std::wstring keys = kTakenKeys;
    std::vector<Box> boxes;
    for (const base::RecordBox& rule : base::BoxesFor(rules)) {
        Box& box = boxes.emplace_back();
        static_cast<base::RecordBox&>(box) = rule;
        if (!box.family && !FieldOf(box).relation.empty()) {
            if (auto choices = ReadChoices(FieldOf(box).relation)) {
                box.list = true;
                box.choices = std::move(*choices);
                box.choices.insert(box.choices.begin(), Choice{});
            }
            CheckStands();
        }
    }
    if (std::ranges::find(boxes, base::kCodeBox, &Box::number) == boxes.end()) {
        throw com::Error(E_UNEXPECTED, L"Los registros no tienen campos que se puedan escribir.");
    }
    AddButton(IDC_CMDGUARDAR, L"&Guardar", kCommandWidth);
    AddButton(IDC_CMDDESCARTAR, L"&Descartar", kCommandWidth);
    m_panel = std::make_unique<win::ScrollPanel>(Window(), IDC_RECORD_PANEL);
    SetWindowPos(m_panel->Window(), Control(IDC_LBLTABLE1), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetContainer(m_panel->Window());
    for (Box& box : boxes) {
        MakeBox(box, keys);
    }
    m_boxes = std::move(boxes);
    m_panel->SetRows(BoxRows());
    m_panelLayout = win::RowLayout(Window(), {{kOwn, {{IDC_LBLTABLE1, kFill}}, IDC_PICNEW},
                                              {kFill, {{IDC_RECORD_PANEL, kFill}}, IDC_PICNEW},
                                              {kOwn, {{IDC_CMDGUARDAR}, {IDC_CMDDESCARTAR}}, IDC_PICNEW}});
    if (const Box* family = BoxNumber(base::kFamilyBox); family && family->family) {
        m_familyWatch = win::EditWatch::Start(Control(family->control),
                                              {[](wchar_t&) {}, [this] { return FamilyLeft(); }, {}});
    }
}

void FrmSelecAdd::MakeBox(Box& box, std::wstring& keys) {
    const RecordField& field = FieldOf(box);
    const int first = IDC_RECORD_BOXES + box.number * Parts;
    box.control = first + Entry;
    std::wstring caption = base::WithAccessKey(field.caption, keys);
    if (box.required) {
        caption += L" *";
    }
    AddControl(first + Label, L"STATIC", field.mark ? L"" : caption.c_str(), SS_LEFT | SS_ENDELLIPSIS,
               {kEntryWidth, kTextHeight});
    if (field.mark) {
        AddControl(box.control, L"BUTTON", caption.c_str(), BS_AUTOCHECKBOX | WS_TABSTOP,
                   {kEntryWidth, kBoxHeight});
    } else if (box.list) {
        AddControl(box.control, L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP,
                   {kEntryWidth, kDropped});
        for (const Choice& choice : box.choices) {
            SendMessageW(Control(box.control), CB_ADDSTRING, 0,
                         reinterpret_cast<LPARAM>(choice.shown.c_str()));
        }
    } else {
        AddControl(box.control, L"EDIT", L"", ES_AUTOHSCROLL | WS_TABSTOP, {kEntryWidth, kBoxHeight});
        if (field.size > 0) {
            SendMessageW(Control(box.control), EM_SETLIMITTEXT, static_cast<WPARAM>(field.size), 0);
        }
        if (box.required) {
            Edit_SetCueBannerText(Control(box.control), L"obligatorio");
        }
    }
    if (HasLookup(box)) {
        // No tab stop: F4 is its key, and from the family one goes on to the code.
        AddControl(first + Button, L"BUTTON", L"…", BS_PUSHBUTTON, {kButtonWidth, kBoxHeight + 1});
        SetTip(first + Button, L"Buscar", kLookUp);
    }
    SetText(box, {});
    ObjectOf(box.control, ArrayOf(box), box.number)->SetDataField(field.name);
}

int FrmSelecAdd::LabelWidth() const {
    int width = 0;
    for (const Box& box : m_boxes) {
        width = FieldOf(box).mark ? width : std::max(width, WidthOf((FieldOf(box).caption + L" *").c_str()));
    }
    return std::min(width, kWidestLabel);
}

std::vector<LayoutRow> FrmSelecAdd::BoxRows() const {
    const int labels = LabelWidth();
    std::vector<LayoutRow> rows;
    for (const Box& box : m_boxes) {
        const int first = box.control - Entry;
        LayoutRow& row =
            rows.emplace_back(LayoutRow{kOwn, {{first + Label, labels}, {first + Entry, kFill}}});
        if (Control(first + Button)) {
            row.cells.push_back({first + Button});
        }
    }
    return rows;
}

void FrmSelecAdd::LayOutBeside(RECT& area) {
    if (!m_adding) {
        return;
    }
    // The margins are the form's, the frame's and the panel's on either side, and two between the controls.
    RECT units{kLeastListWidth, 0, 8 * kMargin + LabelWidth() + kEntryWidth + kButtonWidth, 0};
    MapDialogRect(Window(), &units);
    const LONG wanted = area.right - units.right - GetSystemMetrics(SM_CXVSCROLL);
    const LONG left = std::max(wanted, area.left + units.left);
    m_panelLayout.Arrange({left, area.top, area.right, area.bottom});
    area.right = left;
}

void FrmSelecAdd::ShowBoxes(bool shown) {
    for (const int control :
         {IDC_PICNEW, IDC_LBLTABLE1, IDC_RECORD_PANEL, IDC_CMDGUARDAR, IDC_CMDDESCARTAR}) {
        ShowControl(control, shown);
    }
}

// The mode.

void FrmSelecAdd::Nuevo() {
    if (m_boxes.empty()) {
        MakeBoxes();
    }
    SetAddMode(true);
    SetFocus(Control(m_boxes.front().control));
}

void FrmSelecAdd::SetAddMode(bool on) {
    if (on == m_adding) {
        return;
    }
    if (!on) {
        SetFocus(m_grid.Grid().Window());
        ClearBoxes();
    }
    m_adding = on;
    ShowBoxes(on);
    Relayout();
    m_grid.ShowStatus();
}

void FrmSelecAdd::ClearBoxes() {
    for (const Box& box : m_boxes) {
        SetText(box, {});
    }
    m_family.clear();
    m_proposed.clear();
}

bool FrmSelecAdd::IsAnythingTyped() const {
    return std::ranges::any_of(m_boxes, [&](const Box& box) { return !Text(box).empty(); });
}

// The values.

const FrmSelecAdd::Box* FrmSelecAdd::BoxNumber(short number) const {
    const auto found = std::ranges::find(m_boxes, number, &Box::number);
    return found == m_boxes.end() ? nullptr : &*found;
}

const FrmSelecAdd::Box* FrmSelecAdd::BoxAt(int control) const {
    const int number = (control - IDC_RECORD_BOXES) / Parts;
    return control < IDC_RECORD_BOXES ? nullptr : BoxNumber(static_cast<short>(number));
}

std::wstring FrmSelecAdd::Text(const Box& box) const {
    const HWND control = Control(box.control);
    if (FieldOf(box).mark) {
        return SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED ? L"1" : L"";
    }
    if (box.list) {
        const LRESULT chosen = SendMessageW(control, CB_GETCURSEL, 0, 0);
        return chosen < 0 ? std::wstring() : box.choices.at(static_cast<size_t>(chosen)).code;
    }
    return std::wstring(base::Trim(ControlText(box.control)));
}

void FrmSelecAdd::SetText(const Box& box, const std::wstring& text) {
    const HWND control = Control(box.control);
    if (FieldOf(box).mark) {
        SendMessageW(control, BM_SETCHECK, text.empty() ? BST_UNCHECKED : BST_CHECKED, 0);
    } else if (box.list) {
        const auto choice = std::ranges::find(box.choices, text, &Choice::code);
        SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(choice - box.choices.begin()), 0);
    } else {
        SetControlText(box.control, text);
    }
}

com::Variant FrmSelecAdd::ValueOf(const Box& box) const {
    const std::wstring text = Text(box);
    if (FieldOf(box).mark) {
        return com::Variant(!text.empty());
    }
    return text.empty() ? com::Variant() : com::Variant(text); // the host reads what people write
}

std::vector<com::Variant> FrmSelecAdd::Values() const {
    std::vector<com::Variant> values(m_fields.size());
    for (const Box& box : m_boxes) {
        values[box.field] = ValueOf(box);
    }
    return values;
}

bool FrmSelecAdd::CheckRecord() {
    for (const Box& box : m_boxes) {
        const std::wstring complaint = Complaint(box);
        CheckStands();
        if (!complaint.empty()) {
            SetFocus(Control(box.control));
            win::ShowMessage(Window(), complaint, Title(), MB_OK | MB_ICONWARNING);
            return false;
        }
    }
    return true;
}

/// What is wrong with the box; "" when nothing is.
std::wstring FrmSelecAdd::Complaint(const Box& box) {
    const RecordField& field = FieldOf(box);
    const std::wstring text = Text(box);
    const std::wstring named = L"«" + field.caption + L"»";
    if (text.empty()) {
        return box.required ? L"Falta " + named + L", que es obligatorio." : L"";
    }
    if (field.mark) {
        return {};
    }
    if (field.size > 0 && text.size() > static_cast<size_t>(field.size)) {
        return named + L" admite " + std::to_wstring(field.size) + L" caracteres, y tiene " +
               std::to_wstring(text.size()) + L".";
    }
    const bool number = field.kind == CellKind::Number || field.kind == CellKind::Money;
    if (number && !base::LooksLikeNumber(text)) {
        return named + L": «" + text + L"» no es un número.";
    }
    if (field.kind == CellKind::Date && !IsDate(text, 0)) {
        return named + L": «" + text + L"» no es una fecha.";
    }
    if (field.kind == CellKind::Time && !IsDate(text, VAR_TIMEVALUEONLY)) {
        return named + L": «" + text + L"» no es una hora.";
    }
    if (!box.list && m_request.data.ChecksValues() &&
        !m_request.data.ValidaValue(
            com::ComPtr<IDispatch>(ObjectOf(box.control, ArrayOf(box), box.number).Get()))) {
        return named + L": «" + text + L"» no es un valor válido.";
    }
    return {};
}

// Look-ups, and the code that a family proposes.

bool FrmSelecAdd::HasLookup(const Box& box) const {
    return !box.list && (box.family || !FieldOf(box).relation.empty());
}

/// `at` is a box or the button beside it.
void FrmSelecAdd::LookUp(int at) {
    SetFocus(Control(BoxAt(at)->control));
    CheckStands(); // a component hears of the focus, and may close the form with its boxes
    const Box* const box = BoxAt(at);
    const std::wstring relation = FieldOf(*box).relation.empty() ? kFamilies : FieldOf(*box).relation;
    const com::ComPtr<objects::ControlObject> control = ObjectOf(box->control, ArrayOf(*box), box->number);
    m_asked = box->number;
    // Indx says which column many classes answer with: the code's, whatever the number of the box.
    frame::OpenLookup(frame::Lookup{relation.c_str()}, m_clsMeEvents->Sink(), control.Get(), 0);
}

void FrmSelecAdd::clsMeEvents_AceptaSeleccion(com::Invocation& call) {
    const Box* const box = BoxNumber(std::exchange(m_asked, short{0}));
    if (!box) {
        return;
    }
    SetText(*box, call[2].ToText());
    if (box->family) {
        NewCode(Text(*box));
    }
}

/// Going on to another box takes the family as it stands. Looking one up does not, nor does leaving the
/// record: a host that refuses the family would take the click away from "Descartar".
bool FrmSelecAdd::FamilyLeft() {
    const int focused = GetDlgCtrlID(GetFocus());
    if (const Box* const next = BoxAt(focused); next && next->control == focused) {
        Input(kPropose);
    }
    return true;
}

/// For a family that was typed: only once for each, and never over a code of the user's own.
void FrmSelecAdd::ProposeCode() {
    const Box* const family = BoxNumber(base::kFamilyBox);
    const std::wstring text = family && family->family ? Text(*family) : std::wstring();
    const std::wstring code = Text(*BoxNumber(base::kCodeBox));
    if (!text.empty() && text != m_family && (code.empty() || code == m_proposed)) {
        NewCode(text);
    }
}

void FrmSelecAdd::NewCode(const std::wstring& family) {
    m_family = family;
    const std::wstring code = m_request.data.NuevoCodigo_Fam(family);
    CheckStands();
    if (const Box* box = BoxNumber(base::kCodeBox)) {
        m_proposed = code;
        SetText(*box, code);
    }
}

} // namespace tamvelo::selection
