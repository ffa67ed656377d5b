#include "search/FrmBuscar.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/Commands.h"
#include "base/FilterText.h"
#include "base/SettingsKeys.h"
#include "environment/Product.h"
#include "frame/Resources.h"
#include "search/Resources.h"

namespace tamvelo::search {

using namespace frame::tables;

namespace {

constexpr ToolUse kTools[] = {
    {base::kAceptar}, {base::kCancelar}, {base::kCerrar},   {base::kMoveFirst},
    {base::kMovePre}, {base::kMoveNext}, {base::kMoveLast}, {base::kFiltro, L"&Filtro aplicado"},
};

constexpr wchar_t kSearch[] = L"{BUSCAR}";
constexpr wchar_t kBoxEntered[] = L"{VALOR}";
constexpr wchar_t kRefresh[] = L"{ACTUALIZAR}";
constexpr wchar_t kChooseKind[] = L"{TIPO}";
constexpr wchar_t kNormal[] = L"{NORMAL}";
constexpr wchar_t kSimpleLook[] = L"{SIMPLE}";

constexpr KeyRow kKeys[] = {
    {0, VK_F5, kRefresh},
    {IDC_TXTFIELDS0, kFirst | VK_RETURN, kBoxEntered},
    {{IDC_TXTFIELDS1, IDC_TXTFIELDS2}, kFirst | VK_RETURN, kBoxEntered},
    {IDC_TXTFIELDS0, VK_F4, kBoxEntered},
    {{IDC_TXTFIELDS1, IDC_TXTFIELDS2}, VK_F4, kBoxEntered},
    {IDC_CMDBUSCAR, kClick, kSearch},
    {IDC_CMDESTILO0, kClick, kNormal},
    {IDC_CMDESTILO1, kClick, kSimpleLook},
};

constexpr int kBoxes[] = {IDC_TXTFIELDS0, IDC_TXTFIELDS1, IDC_TXTFIELDS2};
constexpr int kBoxLabels[] = {IDC_LBLFIELDS0, IDC_LBLFIELDS1, IDC_LBLFIELDS2};
constexpr const wchar_t* kCues[] = {L"", L"desde", L"hasta"};

constexpr wchar_t kSimple[] = L"Simple";
constexpr wchar_t kSimpleIndex[] = L"Simple_idx";
constexpr wchar_t kMode[] = L"Modo_";
constexpr wchar_t kPanelHeading[] = L"Panel de Búsqueda - Buscar por : ";

/// The place of a control's number in a row of numbers; -1 when it is none of them.
template <class Controls>
int PlaceOf(const Controls& controls, int control) {
    const auto* found = std::find(std::begin(controls), std::end(controls), control);
    return found == std::end(controls) ? -1 : static_cast<int>(found - std::begin(controls));
}

long Selected(HWND list) { return static_cast<long>(SendMessageW(list, LB_GETCURSEL, 0, 0)); }

std::wstring SelectedText(HWND list) {
    const auto current = static_cast<WPARAM>(Selected(list));
    std::wstring text(static_cast<size_t>(SendMessageW(list, LB_GETTEXTLEN, current, 0)), L'\0');
    SendMessageW(list, LB_GETTEXT, current, reinterpret_cast<LPARAM>(text.data()));
    return text;
}

} // namespace

FrmBuscar::FrmBuscar() : Form({kName, IDD_BUSCAR, kTools, kKeys}) {}

std::span<const CommandRow> FrmBuscar::Commands() const {
    using F = FrmBuscar;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>},   {base::kCancelar, Do<&F::Cancelar>},
        {base::kFiltro, Do<&F::ShowFilter>}, {kSearch, Do<&F::Buscar>},
        {kBoxEntered, Do<&F::BoxEntered>},   {kRefresh, Do<&F::Refresh>},
        {kChooseKind, Do<&F::ChooseKind>},   {kNormal, Do<&F::Normal>},
        {kSimpleLook, Do<&F::Simple>},
    };
    return kCommands;
}

std::vector<LayoutRow> FrmBuscar::Layout() const {
    return {
        {kOwn, {{IDC_LBLBUSCAR, kFill}}},
        {kOwn, {{IDC_FRMOPTION, kFill}}},
        {kOwn,
         {{IDC_LBLFIELDS0},
          {IDC_TXTFIELDS0, kFill},
          {IDC_LBLFIELDS1},
          {IDC_TXTFIELDS1, kFill},
          {IDC_LBLFIELDS2},
          {IDC_TXTFIELDS2, kFill},
          {IDC_CMDBUSCAR}}},
        {kOwn, {{IDC_LBLTIPOS, kFill}, {IDC_LBLLIST2, kFill}}},
        {kFill, {{IDC_LSTTIPOS, kFill}, {IDC_LIST2, kFill}}},
        {kFill, {{IDC_HUECO, kFill}}},
        {kOwn, {{IDC_CMDESTILO0}, {IDC_CMDESTILO1}}},
        {kOwn, {{IDC_STATUS, kFill}}},
    };
}

// Opening and closing.

void FrmBuscar::Mostrar(IDispatch* sink, IDispatch* data, IDispatch* columns) {
    Show([&] {
        m_sink = contract::Sink(sink);
        m_data = contract::DataClass(data);
        m_columns = contract::ColumnCollection(columns);
        m_className = m_data.sClassName();
        m_orders = m_className == base::kClassOfOrders;
        environment::Settings& settings = environment::Environment::Get().GetSettings();
        const std::wstring key = environment::Product::Own().SesionKey(base::kSesionOrdenes);
        m_simple = base::StoredIndex(settings.ReadValue(key, kSimple, L"0"), 2, 0) == 1 && m_orders;
        m_kind = base::StoredIndex(settings.ReadValue(key, kSimpleIndex, L"-1"), SHRT_MAX, -1);
        m_modes.Set(
            base::StoredIndex(settings.ReadValue(key, kMode + m_className, L"0"), ModeOptions::kCount, 0));
        ShowModal();
    });
}

void FrmBuscar::OnLoad() {
    Bar().SetBandVisible(base::kBandRegistros, true);
    for (short i = 0; i < 3; ++i) {
        Watch(i);
        SendMessageW(Control(kBoxes[i]), EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(kCues[i]));
    }
    m_values.Object();
    for (const int style : {IDC_CMDESTILO0, IDC_CMDESTILO1}) {
        ShowControl(style, m_orders);
    }
    if (m_orders) {
        FillKinds();
        SendMessageW(Control(IDC_LSTTIPOS), LB_SETCURSEL, static_cast<WPARAM>(m_kind), 0);
    }
    m_kind = m_orders ? Selected(Control(IDC_LSTTIPOS)) : -1;
    ShowParts();
    if (m_columns.Count() > 0) {
        contract::ColumnCollection::Column searched = m_columns.Item(m_columns.Current());
        SetFields(searched.DataField());
        m_heading = searched.Caption();
    }
    ShowKind();
}

void FrmBuscar::OnUnload() noexcept {
    m_heading.clear();
    m_filter.clear();
    m_columns.Reset();
    m_data.Reset();
    m_sink.Reset();
}

HWND FrmBuscar::FirstFocus() const { return Control(kBoxes[m_modes.Mode().focus]); }

com::ComPtr<objects::ControlObject> FrmBuscar::Box(short index) {
    return ObjectOf(kBoxes[index], L"TxtFields", index);
}

void FrmBuscar::Watch(short index) {
    frame::CheckedBoxes::Hooks hooks;
    hooks.checked = [this, index] { return IsChecked(index); };
    if (index == 0) {
        hooks.pasted = [this](const std::wstring& text) { return PasteValues(text); };
    }
    m_boxes.Add(Box(index), std::move(hooks));
}

void FrmBuscar::Remember(const std::wstring& name, int value) {
    if (m_orders) {
        // A choice that cannot be kept is still the user's choice.
        Using(Component::Settings, [&] {
            environment::Environment::Get().GetSettings().WriteValue(
                environment::Product::Own().SesionKey(base::kSesionOrdenes), name, std::to_wstring(value));
        });
    }
}

void FrmBuscar::RememberKind() { Remember(kSimpleIndex, m_kind); }

// Choosing: the kind, the mode, the layout.

void FrmBuscar::FillKinds() {
    const short count = m_columns.Count();
    for (short i = 0; i < count; ++i) {
        const std::wstring heading = m_columns.Item(i).Caption();
        if (base::IsSearchKind(heading)) {
            SendMessageW(Control(IDC_LSTTIPOS), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(heading.c_str()));
        }
    }
}

void FrmBuscar::ChooseKind() {
    // In a box the focus is only when its value was refused and called it back from this click.
    if (PlaceOf(kBoxes, GetDlgCtrlID(GetFocus())) >= 0 || !m_boxes.Settle()) {
        SendMessageW(Control(IDC_LSTTIPOS), LB_SETCURSEL, static_cast<WPARAM>(m_kind), 0);
        return;
    }
    m_kind = Selected(Control(IDC_LSTTIPOS));
    ShowKind();
    RememberKind();
}

void FrmBuscar::ShowKind() {
    for (const int box : kBoxes) {
        SetControlText(box, {});
    }
    if (const std::optional<std::wstring_view> field = base::SearchKindField(m_kind)) {
        SetFields(std::wstring(*field));
    }
    SetControlText(IDC_LBLBUSCAR,
                   kPanelHeading + (m_kind < 0 ? m_heading : SelectedText(Control(IDC_LSTTIPOS))));
}

void FrmBuscar::SetFields(const std::wstring& field) {
    CheckStands();
    for (short i = 0; i < 3; ++i) {
        Box(i)->SetDataField(field);
    }
    m_values.Object()->SetDataField(field);
}

void FrmBuscar::SetMode(int mode, bool enter) {
    if (!m_boxes.SettleAll()) {
        return;
    }
    const bool changes = mode != m_modes.Chosen();
    if (changes) { // otherwise what has been collected stays
        m_modes.Set(mode);
        m_values.Clear();
        ShowParts();
    }
    SetFocus(enter ? FirstFocus() : m_modes.Option());
    if (changes) {
        Remember(kMode + m_className, mode);
    }
}

void FrmBuscar::ChooseStyle(bool simple) {
    if (!m_boxes.SettleAll()) {
        return;
    }
    m_simple = simple;
    ShowParts();
    SetFocus(simple ? Control(IDC_LSTTIPOS) : FirstFocus());
    Remember(kSimple, simple ? 1 : 0);
    RememberKind();
}

void FrmBuscar::ShowParts() {
    m_modes.Show(!m_simple);
    for (size_t i = 0; i < 3; ++i) {
        ShowControl(kBoxLabels[i], m_modes.Mode().boxes[i]);
        ShowControl(kBoxes[i], m_modes.Mode().boxes[i]);
    }
    for (const int control : {IDC_LBLTIPOS, IDC_LSTTIPOS}) {
        ShowControl(control, m_simple);
    }
    for (const int control : {IDC_LBLLIST2, IDC_LIST2}) {
        ShowControl(control, m_modes.Mode().list);
    }
    ShowControl(IDC_HUECO, !m_simple && !m_modes.Mode().list); // or the last rows would hang in the middle
    Relayout();
}

void FrmBuscar::ResizeControls() {
    Form::ResizeControls();
    m_modes.Place();
}

void FrmBuscar::OnControl(int control, int code) {
    if (control == IDC_LSTTIPOS && code == LBN_SELCHANGE) {
        Input(kChooseKind);
    }
}

// What is typed: checks, and values for the list.

bool FrmBuscar::IsChecked(short index) {
    return m_modes.Mode().boxes.at(static_cast<size_t>(index)) &&
           !base::IsUncheckedField(Box(index)->DataField());
}

bool FrmBuscar::PasteValues(const std::wstring& text) {
    const auto values = m_modes.Mode().list ? base::PastedValues(text) : std::nullopt;
    if (!values) {
        return false;
    }
    m_values.Add(*values);
    return true;
}

bool FrmBuscar::TakeTyped() {
    const std::wstring typed = m_modes.Mode().list ? ControlText(IDC_TXTFIELDS0) : std::wstring();
    if (typed.empty()) {
        return false;
    }
    m_values.Add({&typed, 1});
    SetControlText(IDC_TXTFIELDS0, {});
    return true;
}

// Searching.

void FrmBuscar::BoxEntered() {
    // What the host checks and what it makes a filter of must be what stands in the box.
    if (m_boxes.SettleAll() && !TakeTyped()) {
        AplicarBusqueda(true);
    }
}

void FrmBuscar::Buscar() {
    if (m_boxes.SettleAll()) {
        TakeTyped();
        AplicarBusqueda(true);
    }
}

void FrmBuscar::AplicarBusqueda(bool apply) {
    if (apply) {
        RememberKind();
    }
    if (!m_data) {
        return;
    }
    std::wstring filter;
    if (apply) {
        BuildFilter();
        filter = m_data.GetFilter(base::kSlotFilter);
    }
    m_data.AplyFilter(filter);
    if (!IsLoaded()) {
        return;
    }
    m_filter = filter;
    ShowFilter();
    if (apply) {
        SetFocus(FirstFocus());
    }
}

void FrmBuscar::BuildFilter() {
    std::array<std::wstring, 3> fragments;
    if (!m_modes.Mode().list) {
        for (short i = 0; i < 3; ++i) {
            if (m_modes.Mode().boxes.at(static_cast<size_t>(i))) {
                fragments.at(static_cast<size_t>(i)) = m_data.CreateFilter(Box(i), i);
                CheckStands();
            }
        }
    } else if (m_values.Count() > 0) {
        fragments[0] = m_data.CreateFilter(m_values.Object(), short{0});
    }
    std::wstring filter = base::JoinAnd(fragments);
    m_data.SetFilter(filter, base::kSlotFilter);
}

void FrmBuscar::ShowFilter() {
    SetControlText(IDC_STATUS, m_filter.empty() ? L"Sin filtro" : L"Filtro aplicado: " + m_filter);
    Bar().SetPressed(base::kFiltro, !m_filter.empty());
}

void FrmBuscar::Aceptar() {
    contract::Sink sink = m_sink; // a copy: the host may close the form while it is told
    Deliver([&] { sink.AceptarBuscar(); });
}

void FrmBuscar::Cancelar() {
    AplicarBusqueda(false);
    if (IsLoaded()) {
        Unload();
    }
}

} // namespace tamvelo::search
