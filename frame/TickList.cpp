#include "frame/TickList.h"

#include "base/Commands.h"
#include "frame/Resources.h"

namespace tamvelo::frame {

namespace {

constexpr wchar_t kTickAll[] = L"{MARCAR_TODO}";
constexpr wchar_t kTickNone[] = L"{MARCAR_NADA}";
constexpr wchar_t kInvert[] = L"{INVERTIR_MARCAS}";
constexpr wchar_t kRestore[] = L"{RESTAURAR_MARCAS}";
constexpr wchar_t kEnterList[] = L"{LISTA}";
constexpr wchar_t kTickMenu[] = L"{MENU_MARCAS}";

constexpr MenuItem kMenu[] = {
    {kTickAll, L"Marcar &todo"},        {kTickNone, L"&Quitar todas las marcas"},
    {kInvert, L"&Invertir las marcas"}, {L"", nullptr},
    {kRestore, L"Como al a&brir"},
};

} // namespace

std::span<const KeyRow> TickList::Keys() const {
    static constexpr KeyRow kKeys[] = {
        {0, kCtrl | 'E', kGoToSearch},      {IDC_TXTFILTRO, VK_DOWN, kEnterList},
        {0, kCtrl | 'A', kTickAll},         {0, kCtrl | kShift | 'A', kTickNone},
        {0, kCtrl | 'I', kInvert},          {0, kCtrl | 'Z', kRestore},
        {IDC_CMDMARCAS, kClick, kTickMenu},
    };
    return kKeys;
}

std::span<const CommandRow> TickList::Commands() const {
    using L = TickList;
    using win::CheckList;
    static constexpr CommandRow kCommands[] = {
        {kTickAll, Do<&L::Ticks<&CheckList::TickAll, true>>},
        {kTickNone, Do<&L::Ticks<&CheckList::TickAll, false>>},
        {kInvert, Do<&L::Ticks<&CheckList::InvertTicks>>},
        {kRestore, Do<&L::Ticks<&CheckList::RestoreTicks>>},
        {kGoToSearch, Do<&L::GoToSearch>},
        {kEnterList, Do<&L::EnterList>},
        {kTickMenu, Do<&L::ShowTickMenu>},
    };
    return kCommands;
}

std::vector<win::LayoutRow> TickList::Layout() {
    return {
        {win::kOwn, {{IDC_LBLFILTRO}, {IDC_TXTFILTRO, win::kFill}}},
        {win::kOwn, {{IDC_LBLLIST1, win::kFill}}},
        {win::kFill, {{IDC_LIST1, win::kFill}}},
        {win::kOwn, {{IDC_LBLCUENTA, win::kFill}, {IDC_CMDMARCAS}}},
    };
}

HWND TickList::FirstFocus() const { return Control(IDC_LIST1); }

com::ComPtr<objects::ControlObject> TickList::Object() const {
    return Host().ObjectOf(IDC_LIST1, L"List1", 0);
}

void TickList::OnLoad() {
    m_list = std::make_unique<win::CheckList>(Control(IDC_LIST1), m_design.kind, *this);
    Host().ShowControl(IDC_LBLFILTRO, m_design.searchBox);
    Host().ShowControl(IDC_TXTFILTRO, m_design.searchBox);
    Host().ObjectOf(IDC_TXTFILTRO, L"TxtFiltro", 0);
    Host().ShowControl(IDC_LBLCUENTA, m_design.counter != nullptr);
    Host().ShowControl(IDC_CMDMARCAS, HasTicks());
}

void TickList::ListChanged() {
    if (!m_list || !m_design.counter) {
        return;
    }
    std::wstring text = m_design.counter(*m_list);
    if (m_list->ShownCount() < m_list->Count()) {
        text += L" · se muestran " + std::to_wstring(m_list->ShownCount());
    }
    Host().SetControlText(IDC_LBLCUENTA, text);
}

void TickList::EntryDoubleClicked() {
    if (!HasTicks()) {
        Host().Input(base::kAceptar);
    } else if (const int current = List().Current(); current >= 0) {
        List().Tick(current, !List().IsTicked(current));
    }
}

void TickList::CurrentChanged() {
    if (m_chosen) {
        m_chosen();
    }
}

void TickList::ListMenuAsked(POINT screen) {
    if (HasTicks()) {
        Host().RunMenu(kMenu, screen);
    }
}

void TickList::OnControl(int control, int code) {
    if (control == IDC_TXTFILTRO && code == EN_CHANGE && m_list) {
        List().Find(Host().ControlText(IDC_TXTFILTRO));
    }
}

bool TickList::OnNotify(NMHDR& header, LRESULT& answer) { return m_list && m_list->Notified(header, answer); }

void TickList::ShowTickMenu() {
    Host().RunMenu(kMenu, IDC_CMDMARCAS);
    Host().CheckStands();
    SetFocus(Control(IDC_LIST1)); // going on with the keys
}

void TickList::GoToSearch() {
    if (m_design.searchBox) {
        SetFocus(Control(IDC_TXTFILTRO));
    }
}

} // namespace tamvelo::frame
