#include "selection/CriteriaForm.h"

#include <algorithm>

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/MessageText.h"
#include "frame/FormInstances.h"
#include "frame/Lookup.h"
#include "frame/Resources.h"
#include "grid/RecordCursor.h"
#include "selection/Resources.h"

namespace tamvelo::selection {

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
    const auto answered = [this](com::Invocation& call) { clsMeEvents_AceptaSeleccion(call); };
    m_clsMeEvents =
        MakeRelay({{objects::AceptaSeleccion, answered}, {objects::AceptaSeleccionParam, answered}});
    ReadFields();
    CheckStands();
    const std::wstring name = L"«" + base::Named(m_className) + L"»";
    SetControlText(IDC_LBLBUSCAR, m_fields.empty() ? L"La clase " + name + L" no tiene campos."
                                  : m_unasked == 0
                                      ? L"Criterios para " + name + L":"
                                      : L"Criterios para " + name + L", sin los últimos " +
                                            grid::Grouped(m_unasked) + L" campos, que no caben:");
    Tried([&] { FindRelated(); }); // without look-ups the dialog still works
    MakeFields();
    const bool compares =
        std::ranges::any_of(m_fields, [&](const Field& field) { return IsCompared(field); });
    ShowControl(IDC_FRMCOMPARISON, compares);
    for (const int option : kComparisons) {
        ShowControl(option, compares);
    }
    CheckRadioButton(Window(), IDC_OPTCOMPARISON0, IDC_OPTCOMPARISON2, IDC_OPTCOMPARISON0);
    Tried([&] { CountRecords(); });
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
    return m_fields.empty() ? Control(IDC_CMDBUSCAR) : m_fields.front().entry;
}

// What the form tells.

void CriteriaForm::ShowCriteria() {
    for (size_t i = 0; i < m_fields.size(); ++i) {
        Mark(i);
    }
    ShowStatus();
}

/// Shows whether the field has a condition.
void CriteriaForm::Mark(size_t index) {
    Field& field = m_fields[index];
    const bool set = HasCondition(index);
    if (std::exchange(field.marked, set) != set) {
        SetWindowTextW(field.label, LabelOf(field, set).c_str());
        SendMessageW(field.label, WM_SETFONT,
                     set ? reinterpret_cast<WPARAM>(m_bold.get())
                         : static_cast<WPARAM>(SendMessageW(Window(), WM_GETFONT, 0, 0)),
                     TRUE);
    }
}

/// After one field changed: what the others hold is known.
void CriteriaForm::ShowCriterion(size_t index) {
    if (!m_clearing) {
        Mark(index);
        ShowStatus();
    }
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
    const std::wstring before = m_before ? *m_before : m_data.GetFilter(base::kSlotFilter);
    CheckStands();
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
    m_clearing = true; // each box tells of its change
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (IsList(m_fields[i])) {
            ChooseYesNo(i, kAll);
        } else {
            SetWindowTextW(m_fields[i].entry, L"");
        }
    }
    m_clearing = false;
    ShowCriteria();
    SetFocus(FirstFocus());
}

// Look-ups: the button beside a box, F4 and Alt+Down in it open the selection panel, which answers our relay.

void CriteriaForm::LookUp(int control) {
    const size_t index = *FieldAt(control);
    if (!m_boxes.Settle()) {
        return;
    }
    const std::wstring related = m_fields.at(index).related; // the host may close the form meanwhile
    const com::ComPtr<objects::ControlObject> box = Box(index);
    frame::OpenLookup({related.c_str(), m_fields[index].selection}, m_clsMeEvents->Sink(), box.Get(), 0);
    if (IsLoaded()) {
        SetFocus(box->Window());
    }
}

void CriteriaForm::clsMeEvents_AceptaSeleccion(com::Invocation& call) {
    com::LateObject control(call[1].ToObject().Get(), L"ctl");
    const auto index = static_cast<size_t>(control.Call(L"Index").ToLong());
    if (index < m_fields.size()) {
        SetWindowTextW(m_fields[index].entry, call[2].ToText().c_str());
    }
}

void CriteriaForm::OnControl(int control, int code) {
    const std::optional<size_t> field = FieldAt(control);
    if (!field) {
        return;
    }
    const size_t index = *field;
    const int part = (control - IDC_CRITERIA_FIELDS) % Parts;
    if (part == Entry && code == EN_CHANGE) {
        ShowCriterion(index);
    } else if (part == Entry && code == CBN_SELCHANGE && IsList(m_fields[index])) {
        ChooseYesNo(index, static_cast<int>(SendMessageW(m_fields[index].entry, CB_GETCURSEL, 0, 0)));
        ShowCriterion(index);
    } else if (part == OnlyYes && code == BN_CLICKED) {
        const bool ticked = SendMessageW(m_fields[index].onlyYes, BM_GETCHECK, 0, 0) == BST_CHECKED;
        ChooseYesNo(index, ticked ? kYes : kAll);
        ShowCriterion(index);
    }
}

std::optional<size_t> CriteriaForm::FieldAt(int control) const {
    const int place = control - IDC_CRITERIA_FIELDS;
    const auto index = static_cast<size_t>(place / Parts);
    return place >= 0 && index < m_fields.size() ? std::optional(index) : std::nullopt;
}

bool CriteriaForm::Offers(std::wstring_view command, int control) const {
    const std::optional<size_t> field = FieldAt(control);
    return command != kLookUp || (field && !m_fields[*field].related.empty());
}

} // namespace tamvelo::selection
