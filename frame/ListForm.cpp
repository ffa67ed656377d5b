#include "frame/ListForm.h"

namespace tamvelo::frame {

const MenuItem ListForm::kMenu[] = {
    {kTickAll, L"Marcar &todo"},        {kTickNone, L"&Quitar todas las marcas"},
    {kInvert, L"&Invertir las marcas"}, {L"", nullptr},
    {kRestore, L"Como al a&brir"},
};

void ListForm::OnLoad() {
    m_list = std::make_unique<win::CheckList>(Control(IDC_LIST1), m_listDesign.kind, *this);
    ShowControl(IDC_LBLFILTRO, m_listDesign.searchBox);
    ShowControl(IDC_TXTFILTRO, m_listDesign.searchBox);
    ObjectOf(IDC_TXTFILTRO, L"TxtFiltro", 0);
    ShowControl(IDC_LBLCUENTA, m_listDesign.counter != nullptr);
    ShowControl(IDC_CMDMARCAS, m_listDesign.kind == win::CheckList::Kind::Ticks);
}

std::vector<win::LayoutRow> ListForm::Layout() const {
    return {
        {win::kOwn, {{IDC_LBLFILTRO}, {IDC_TXTFILTRO, win::kFill}}},
        {win::kOwn, {{IDC_LBLLIST1, win::kFill}}},
        {win::kFill, {{IDC_LIST1, win::kFill}}},
        {win::kOwn, {{IDC_LBLCUENTA, win::kFill}, {IDC_CMDMARCAS}}},
    };
}

std::span<const CommandRow> ListForm::SharedCommands() const {
    static constexpr CommandRow kCommands[] = {
        {kTickAll, Do<&ListForm::TickAll>},       {kTickNone, Do<&ListForm::TickNone>},
        {kInvert, Do<&ListForm::Invert>},         {kRestore, Do<&ListForm::Restore>},
        {kGoToSearch, Do<&ListForm::GoToSearch>}, {kEnterList, Do<&ListForm::EnterList>},
        {kTickMenu, Do<&ListForm::ShowTickMenu>},
    };
    return kCommands;
}

void ListForm::ListChanged() {
    if (!m_list || !m_listDesign.counter) {
        return;
    }
    std::wstring text = m_listDesign.counter(*m_list);
    if (m_list->ShownCount() < m_list->Count()) {
        text += L" · se muestran " + std::to_wstring(m_list->ShownCount());
    }
    SetControlText(IDC_LBLCUENTA, text);
}

void ListForm::EntryDoubleClicked() {
    if (m_listDesign.kind == win::CheckList::Kind::Ticks) {
        const int current = List().Current();
        if (current >= 0) {
            List().Tick(current, !List().IsTicked(current));
        }
    }
}

void ListForm::ListMenuAsked(POINT screen) {
    if (m_listDesign.kind == win::CheckList::Kind::Ticks) {
        RunMenu(kMenu, screen);
    }
}

void ListForm::OnControl(int control, int code) {
    if (control == IDC_TXTFILTRO && code == EN_CHANGE && m_list) {
        List().Find(ControlText(IDC_TXTFILTRO));
    }
}

void ListForm::ShowTickMenu() {
    RunMenu(kMenu, IDC_CMDMARCAS);
    CheckStands();
    SetFocus(Control(IDC_LIST1)); // going on with the keys
}

bool ListForm::OnNotify(NMHDR& header, LRESULT& answer) { return m_list && m_list->Notified(header, answer); }

void ListForm::GoToSearch() {
    if (m_listDesign.searchBox) {
        SetFocus(Control(IDC_TXTFILTRO));
    }
}

void ListForm::Mark(void (*mark)(win::CheckList& list)) {
    if (m_listDesign.kind == win::CheckList::Kind::Ticks) {
        mark(List());
    }
}

} // namespace tamvelo::frame
