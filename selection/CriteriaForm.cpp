#include "selection/CriteriaForm.h"

#include <algorithm>
#include <cmath>

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/MessageText.h"
#include "frame/Resources.h"
#include "selection/Resources.h"

namespace tamvelo::selection {

using grid::CellKind;
using Kind = frame::Field::Kind;
using namespace frame::tables;

namespace {

constexpr ToolUse kTools[] = {
    {base::kAceptar},  {base::kCancelar}, {base::kMoveFirst}, {base::kMovePre},
    {base::kMoveNext}, {base::kMoveLast}, {base::kFiltrar},   {base::kFiltro, L"&Limpiar los criterios"},
};

constexpr KeyRow kKeys[] = {{0, VK_RETURN, base::kAceptar},
                            {0, VK_F5, base::kFiltrar},
                            {0, VK_F7, base::kFiltro},
                            {IDC_CMDBUSCAR, kClick, base::kFiltrar},
                            {IDC_CMDCLEAR, kClick, base::kFiltro}};

constexpr int kComparisons[] = {IDC_OPTCOMPARISON0, IDC_OPTCOMPARISON1, IDC_OPTCOMPARISON2};

// Dialog units.
constexpr int kLongBox = 150;
constexpr int kShortBox = 70;
constexpr int kWidestLabel = 100;
constexpr int kTickWidth = 14;

constexpr size_t kMostFields = 300; // with a box: a process has room for 10,000 windows
constexpr long kShortText = 12;     // characters that a short box shows

constexpr frame::FieldLook kLook{.firstControl = IDC_CRITERIA_FIELDS,
                                 .panel = IDC_CRITERIA,
                                 .panelAfter = IDC_LBLBUSCAR,
                                 .widestLabel = kWidestLabel,
                                 .labelStyle = SS_NOPREFIX | SS_ENDELLIPSIS,
                                 .labelEnd = L":",
                                 .marks = true,
                                 .buttonStyle = BS_NOTIFY,
                                 .lookupHeight = 13,
                                 .listHeight = 60};

bool IsShort(const RecordField& field) {
    const bool text = field.kind == CellKind::Text || field.kind == CellKind::Any;
    return text ? field.size > 0 && field.size <= kShortText : field.kind != CellKind::Binary;
}

/// A date that was typed, as the user's short format has it; what is none, or has a time, stays as it is.
void ShowAsShortDate(const frame::FieldRow& box) {
    DATE date = 0;
    const std::wstring text = box.Text();
    const bool isDate = SUCCEEDED(VarDateFromStr(com::Bstr(text).Get(), LOCALE_USER_DEFAULT, 0, &date));
    if (isDate && date >= 1 && date == std::floor(date)) {
        const std::wstring shown = grid::Format(com::Variant::Date(date).Get(), CellKind::Date);
        if (shown != text) {
            box.SetText(shown);
        }
    }
}

std::wstring CountOf(long count) {
    return grid::Grouped(count) + (count == 1 ? L" Registro" : L" Registros");
}

} // namespace

CriteriaForm::CriteriaForm(const CriteriaDesign& design)
    : Form({design.name, IDD_CRITERIA, kTools, kKeys}),
      m_dialog(design),
      m_rows(
          *this, kLook,
          {.changed = [this](const frame::FieldRow& row) { ShowCriterion(static_cast<size_t>(row.Index())); },
           .lookingUp = [this](const frame::FieldRow&) { return m_boxes.Settle(); },
           .lookedUp = [](const frame::FieldRow& row) { SetFocus(row.Entry()); }}) {}

std::span<const CommandRow> CriteriaForm::Commands() const {
    using F = CriteriaForm;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>}, {base::kCancelar, Do<&F::Cancelar>},
        {base::kCerrar, Do<&F::Cancelar>}, {base::kFiltrar, Do<&F::Buscar>},
        {base::kFiltro, Do<&F::Limpiar>},
    };
    return kCommands;
}

std::vector<LayoutRow> CriteriaForm::Layout() const {
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
    ReadCriteria();
    CheckStands();
    const std::wstring name = L"«" + base::Named(m_className) + L"»";
    SetControlText(IDC_LBLBUSCAR, m_fields.empty() ? L"La clase " + name + L" no tiene campos."
                                  : m_unasked == 0 ? L"Criterios para " + name + L":"
                                                   : L"Criterios para " + name + L", sin los últimos " +
                                                         grid::Grouped(static_cast<long>(m_unasked)) +
                                                         L" campos, que no caben:");
    Tried([&] { FindRelated(); }); // without look-ups the dialog still works
    MakeRows();
    const bool compares =
        std::ranges::any_of(m_fields, [&](const Criterion& field) { return IsCompared(field); });
    ShowControl(IDC_FRMCOMPARISON, compares);
    for (const int option : kComparisons) {
        ShowControl(option, compares);
    }
    CheckRadioButton(Window(), IDC_OPTCOMPARISON0, IDC_OPTCOMPARISON2, IDC_OPTCOMPARISON0);
    Tried([&] { CountRecords(); });
    ShowCriteria();
}

void CriteriaForm::OnUnload() noexcept {
    m_fields.clear();
    m_count.reset();
    m_before.reset();
    m_records = {};
    m_data.Reset();
    m_sink.Reset();
}

HWND CriteriaForm::FirstFocus() const {
    const frame::FieldRow* const first = m_rows.First();
    return first ? first->Entry() : Control(IDC_CMDBUSCAR);
}

// The fields.

void CriteriaForm::ReadCriteria() {
    m_fields.clear();
    m_unasked = 0;
    const com::ComPtr<IDispatch> set(m_records.Set());
    grid::RecordCursor cursor(set.Get());
    if (!set || !cursor.IsOpen()) {
        return;
    }
    for (RecordField& field : ReadFields(cursor)) {
        Criterion& made = m_fields.emplace_back(Criterion{std::move(field)});
        if (m_dialog.yesNoLists && made.mark) {
            made.only = L"Solo " + made.caption;
        }
    }
    if (m_fields.size() > kMostFields) {
        m_unasked = m_fields.size() - kMostFields;
        m_fields.resize(kMostFields);
    }
}

void CriteriaForm::FindRelated() {
    environment::DataClasses& classes = environment::Environment::Get().GetDataClasses();
    auto selection = m_dialog.selections.begin();
    for (Criterion& field : m_fields) {
        std::wstring related = classes.Related(m_className, field.name);
        CheckStands();
        if (!related.empty()) {
            field.relation = std::move(related);
            field.selection = selection == m_dialog.selections.end() ? base::kSeleccion : *selection++;
        }
    }
}

/// Texts and yes/no have nothing that a clerk would call a bound.
bool CriteriaForm::IsCompared(const Criterion& field) const {
    return m_dialog.comparisons && field.kind != CellKind::Text && field.kind != CellKind::Check &&
           field.kind != CellKind::Binary;
}

void CriteriaForm::MakeRows() {
    std::vector<frame::Field> rows;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const Criterion& field = m_fields[i];
        frame::Field& row = rows.emplace_back();
        row.index = static_cast<short>(i);
        row.caption = field.caption.c_str();
        row.width = IsShort(field) ? kShortBox : kLongBox;
        row.dataField = field.name.c_str();
        if (!field.relation.empty()) {
            row.lookup = {.className = field.relation.c_str(), .selection = field.selection};
        }
        if (!field.only.empty()) {
            row.kind = Kind::Choice;
            row.opening = frame::kAllOfThem;
            row.entries = frame::kYesNoAll;
            rows.push_back({.kind = Kind::Check,
                            .index = row.index,
                            .caption = field.only.c_str(),
                            .width = std::min(WidthOf(field.only.c_str()), 2 * kWidestLabel) + kTickWidth,
                            .beside = true,
                            .shortWay = true});
        }
    }
    m_rows.Make(rows);
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (m_fields[i].only.empty()) {
            frame::CheckedBoxes::Hooks hooks;
            hooks.judged = [this, i](bool valid) { Judged(i, valid); };
            m_boxes.Add(RowOf(i).Object(), std::move(hooks));
        }
    }
}

const frame::FieldRow& CriteriaForm::RowOf(size_t index) const {
    return m_rows.Of(m_fields.at(index).only.empty() ? Kind::Text : Kind::Choice, static_cast<short>(index));
}

void CriteriaForm::Judged(size_t index, bool valid) {
    const Criterion& field = m_fields.at(index);
    const frame::FieldRow& row = RowOf(index);
    if (!valid) {
        SetControlText(IDC_STATUS, L"«" + base::Named(row.Text()) + L"» no es un valor válido para «" +
                                       field.caption + L"».");
        MessageBeep(MB_ICONWARNING);
        return;
    }
    if (field.kind == CellKind::Date) {
        ShowAsShortDate(row);
    }
    ShowStatus();
}

// What the form tells.

void CriteriaForm::ShowCriteria() {
    for (size_t i = 0; i < m_fields.size(); ++i) {
        m_rows.Mark(RowOf(i));
    }
    ShowStatus();
}

/// After one field changed: what the others hold is known.
void CriteriaForm::ShowCriterion(size_t index) {
    m_rows.Mark(RowOf(index));
    ShowStatus();
}

void CriteriaForm::ShowStatus() {
    std::wstring names;
    long count = 0;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (RowOf(i).IsMarked()) {
            names += (count++ == 0 ? L": " : L", ") + m_fields[i].caption;
        }
    }
    std::wstring status = count == 0   ? L"Sin criterios"
                          : count == 1 ? L"1 criterio"
                                       : std::to_wstring(count) + L" criterios";
    status += names;
    Bar().SetPressed(base::kFiltro, count > 0);
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
            count = cursor.ReadSigns().count;
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
    const std::wstring before = m_before ? *m_before : m_data.GetFilter(base::kSlotFilter);
    CheckStands();
    std::vector<std::wstring> fragments;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        // An empty box is the host's to judge; " 2 - Todos" is a text, which not every host knows as none.
        if (m_fields[i].only.empty() || !RowOf(i).IsEmpty()) {
            const short bound = IsCompared(m_fields[i]) ? Comparison() : short{0};
            fragments.push_back(m_data.CreateFilter(RowOf(i).Object(), bound));
            CheckStands();
        }
    }
    std::wstring filter = base::JoinAnd(fragments);
    m_data.SetFilter(filter, base::kSlotFilter);
    CheckStands();
    m_before = before; // whatever follows may fail, and then the user may leave
    m_data.AplyFilter(m_data.GetFilter(base::kSlotFilter));
    m_data.Requery(base::kSelec);
    CheckStands();
}

void CriteriaForm::Buscar() {
    if (!m_boxes.SettleAll()) {
        return;
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
    contract::Sink sink = m_sink; // a copy: the host may close the form while it is told
    Deliver([&] { sink.AceptarBuscar(); });
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
    m_rows.Clear();
    ShowCriteria();
    SetFocus(FirstFocus());
}

} // namespace tamvelo::selection
