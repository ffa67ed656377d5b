#include "selection/RecordEntry.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"
#include "frame/Resources.h"
#include "selection/Resources.h"

namespace tamvelo::selection {

using grid::CellKind;
using Kind = frame::Field::Kind;
using namespace frame::tables;

namespace {

constexpr wchar_t kPropose[] = L"{PROPONER_CODIGO}"; // for a family that was typed

// Dialog units.
constexpr int kMargin = 4; // as the rows have it
constexpr int kEntryWidth = 100;
constexpr int kWidestLabel = 80;
/// The search strip needs it; what is left of the form is the new record's, whose boxes then get narrower.
constexpr int kLeastListWidth = 250;
constexpr int kButtonWidth = 16;
constexpr int kCommandWidth = 56;

constexpr wchar_t kFamilies[] = L"familias";

constexpr LCID kSpanish = MAKELCID(MAKELANGID(LANG_SPANISH, SUBLANG_SPANISH_MODERN), SORT_DEFAULT);

constexpr frame::FieldLook kLook{
    .firstControl = IDC_RECORD_BOXES,
    .panel = IDC_RECORD_PANEL,
    .panelAfter = IDC_LBLTABLE1,
    .fill = true,
    .widestLabel = kWidestLabel,
    .labelStyle = SS_ENDELLIPSIS,
    .takenKeys = L"bungd", // Buscar, B&uscar en, Nuevo, Guardar, Descartar
    .lookupStyle = 0,      // no tab stop: F4 is its key, and from the family one goes on to the code
    .lookupTip = L"Buscar",
};

bool IsDate(const std::wstring& text, DWORD flags) {
    DATE date = 0;
    return SUCCEEDED(VarDateFromStr(com::Bstr(text).Get(), kSpanish, flags, &date));
}

long MostLetters(const RecordField& field) {
    return field.kind == CellKind::Text ? std::max(field.size, 0L) : 0;
}

} // namespace

RecordEntry::RecordEntry(frame::Form& form, contract::DataClass& data)
    : FormPart(form),
      m_data(data),
      m_rows(form, kLook,
             {.lookingUp =
                  [this](const frame::FieldRow& row) {
                      SetFocus(row.Entry());
                      Host().CheckStands(); // a component hears of the focus, and may close the form
                      return true;
                  },
              .answered =
                  [this](const frame::FieldRow& row) {
                      if (const Box* const box = BoxNumber(row.Index()); box->family) {
                          NewCode(Text(*box));
                      }
                  }}) {}

void RecordEntry::OnUnload() noexcept {
    m_familyWatch.reset();
    m_open = false;
    m_fields.clear();
    m_boxes.clear();
    m_layout = {};
    m_family.clear();
    m_proposed.clear();
}

// Making the boxes.

std::vector<RecordEntry::Box> RecordEntry::ReadBoxes() {
    m_fields = ReadRecordFields(m_data.Get());
    Host().CheckStands();
    const std::vector<base::RecordField> rules(m_fields.begin(), m_fields.end());
    std::vector<Box> boxes;
    for (const base::RecordBox& rule : base::BoxesFor(rules)) {
        Box& box = boxes.emplace_back(Box{rule});
        if (!box.family && !FieldOf(box).relation.empty()) {
            if (auto choices = ReadChoices(FieldOf(box).relation)) {
                box.kind = Kind::Choice;
                box.choices = std::move(*choices);
                box.choices.insert(box.choices.begin(), Choice{});
                std::ranges::transform(box.choices, std::back_inserter(box.shown),
                                       [](const Choice& choice) { return choice.shown.c_str(); });
            }
            Host().CheckStands();
        }
        box.kind = FieldOf(box).mark ? Kind::Check : box.kind;
    }
    if (std::ranges::find(boxes, base::kCodeBox, &Box::number) == boxes.end()) {
        throw com::Error(E_UNEXPECTED, L"Los registros no tienen campos que se puedan escribir.");
    }
    return boxes;
}

void RecordEntry::MakeBoxes() {
    std::vector<Box> boxes = ReadBoxes();
    Host().AddButton(IDC_CMDGUARDAR, L"&Guardar", kCommandWidth);
    Host().AddButton(IDC_CMDDESCARTAR, L"&Descartar", kCommandWidth);
    m_boxes = std::move(boxes);
    std::vector<frame::Field> fields;
    std::ranges::transform(m_boxes, std::back_inserter(fields),
                           [&](const Box& box) { return FieldFor(box); });
    m_rows.Make(fields);
    m_layout = win::RowLayout(Host().Window(), {{kOwn, {{IDC_LBLTABLE1, kFill}}, IDC_PICNEW},
                                                {kFill, {{IDC_RECORD_PANEL, kFill}}, IDC_PICNEW},
                                                {kOwn, {{IDC_CMDGUARDAR}, {IDC_CMDDESCARTAR}}, IDC_PICNEW}});
    if (const Box* family = BoxNumber(base::kFamilyBox); family && family->family) {
        m_familyWatch = win::EditWatch::Start(RowOf(*family).Entry(),
                                              {[](wchar_t&) {}, [this] { return FamilyLeft(); }, {}});
    }
}

frame::Field RecordEntry::FieldFor(const Box& box) const {
    const RecordField& field = FieldOf(box);
    frame::Lookup lookup;
    if (box.choices.empty() && (box.family || !field.relation.empty())) {
        lookup.className = field.relation.empty() ? kFamilies : field.relation.c_str();
    }
    return {.kind = box.kind,
            .index = box.number,
            .caption = field.caption.c_str(),
            .entries = box.shown,
            .width = kEntryWidth,
            .lookup = lookup,
            .dataField = field.name.c_str(),
            .size = MostLetters(field),
            .required = box.required};
}

HWND RecordEntry::FirstFocus() const { return m_rows.First()->Entry(); }

void RecordEntry::LayOutBeside(RECT& area) {
    if (!m_open) {
        return;
    }
    // The margins are the form's, the frame's and the panel's on either side, and two between the controls.
    RECT units{kLeastListWidth, 0, 8 * kMargin + m_rows.LabelWidth() + kEntryWidth + kButtonWidth, 0};
    MapDialogRect(Host().Window(), &units);
    const LONG wanted = area.right - units.right - GetSystemMetrics(SM_CXVSCROLL);
    const LONG left = std::max(wanted, area.left + units.left);
    m_layout.Arrange({left, area.top, area.right, area.bottom});
    area.right = left;
}

void RecordEntry::Open() {
    if (!m_layout) {
        MakeBoxes();
    }
    Show(true);
}

void RecordEntry::Close() {
    m_rows.Clear();
    m_family.clear();
    m_proposed.clear();
    Show(false);
}

void RecordEntry::Show(bool shown) {
    m_open = shown;
    for (const int control :
         {IDC_PICNEW, IDC_LBLTABLE1, IDC_RECORD_PANEL, IDC_CMDGUARDAR, IDC_CMDDESCARTAR}) {
        Host().ShowControl(control, shown);
    }
}

// The values.

const RecordEntry::Box* RecordEntry::BoxNumber(short number) const {
    const auto found = std::ranges::find(m_boxes, number, &Box::number);
    return found == m_boxes.end() ? nullptr : &*found;
}

bool RecordEntry::IsAnythingTyped() const {
    return std::ranges::any_of(m_boxes, [&](const Box& box) { return !Text(box).empty(); });
}

std::wstring RecordEntry::Text(const Box& box) const {
    const frame::FieldRow& row = RowOf(box);
    switch (box.kind) {
    case Kind::Check:
        return row.IsTicked() ? L"1" : L"";
    case Kind::Choice:
        return row.Choice() < 0 ? L"" : box.choices.at(static_cast<size_t>(row.Choice())).code;
    default:
        return std::wstring(base::Trim(row.Text()));
    }
}

std::vector<com::Variant> RecordEntry::Values() const {
    std::vector<com::Variant> values(m_fields.size());
    for (const Box& box : m_boxes) {
        const std::wstring text = Text(box);
        if (FieldOf(box).mark) {
            values[box.field] = com::Variant(!text.empty());
        } else if (!text.empty()) {
            values[box.field] = com::Variant(text); // the host reads what people write
        }
    }
    return values;
}

bool RecordEntry::Check(const std::wstring& title) {
    return m_rows.Check(title,
                        [this](const frame::FieldRow& row) { return Complaint(*BoxNumber(row.Index())); });
}

/// What is wrong with the box; "" when nothing is.
std::wstring RecordEntry::Complaint(const Box& box) {
    const RecordField& field = FieldOf(box);
    const std::wstring text = Text(box);
    const std::wstring named = L"«" + field.caption + L"»";
    if (text.empty()) {
        return box.required ? L"Falta " + named + L", que es obligatorio." : L"";
    }
    if (field.mark) {
        return {};
    }
    const auto most = static_cast<size_t>(MostLetters(field));
    if (most > 0 && text.size() > most) {
        return named + L" admite " + std::to_wstring(most) + L" caracteres, y tiene " +
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
    if (box.choices.empty() && m_data.ChecksValues() &&
        !m_data.ValidaValue(com::ComPtr<IDispatch>(RowOf(box).Object().Get()))) {
        return named + L": «" + text + L"» no es un valor válido.";
    }
    return {};
}

// The code that a family proposes.

std::span<const CommandRow> RecordEntry::Commands() const {
    static constexpr CommandRow kCommands[] = {{kPropose, Do<&RecordEntry::ProposeCode>}};
    return kCommands;
}

/// Going on to another box takes the family as it stands. Looking one up does not, nor does leaving the
/// record: a host that refuses the family would take the click away from "Descartar".
bool RecordEntry::FamilyLeft() {
    if (IsEntry(GetDlgCtrlID(GetFocus()))) {
        Host().Input(kPropose);
    }
    return true;
}

void RecordEntry::ProposeCode() {
    const Box* const family = BoxNumber(base::kFamilyBox);
    const std::wstring text = family && family->family ? Text(*family) : std::wstring();
    const std::wstring code = Code();
    if (!text.empty() && text != m_family && (code.empty() || code == m_proposed)) {
        NewCode(text);
    }
}

void RecordEntry::NewCode(const std::wstring& family) {
    m_family = family;
    const std::wstring code = m_data.NuevoCodigo_Fam(family);
    Host().CheckStands();
    m_proposed = code;
    const Box& box = *BoxNumber(base::kCodeBox);
    const auto choice = std::ranges::find(box.choices, code, &Choice::code);
    RowOf(box).SetText(code);
    RowOf(box).Choose(static_cast<short>(choice - box.choices.begin()));
}

} // namespace tamvelo::selection
