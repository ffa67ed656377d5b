#include "frame/ListForm.h"

#include <algorithm>
#include <iterator>

namespace tamvelo::frame {

namespace {

constexpr wchar_t kTickAll[] = L"{MARCAR_TODO}";
constexpr wchar_t kTickNone[] = L"{MARCAR_NADA}";
constexpr wchar_t kInvert[] = L"{INVERTIR_MARCAS}";
constexpr wchar_t kRestore[] = L"{RESTAURAR_MARCAS}";

/// The commands for ticks with their keys, which mean other things where text is typed.
struct TickKey {
    UINT key;
    bool shift;
    const wchar_t* command;
};
constexpr TickKey kTickKeys[] = {
    {'A', false, kTickAll},
    {'A', true, kTickNone},
    {'I', false, kInvert},
    {'Z', false, kRestore},
};

} // namespace

void ListForm::OnLoad() {
    m_list = std::make_unique<CheckList>(Control(IDC_LIST1), m_listDesign.kind, *this);
    ShowControl(IDC_LBLFILTRO, m_listDesign.searchBox);
    ShowControl(IDC_TXTFILTRO, m_listDesign.searchBox);
    ShowControl(IDC_LBLCUENTA, m_listDesign.counter != nullptr);
    ShowControl(IDC_CMDMARCAS, m_listDesign.kind == CheckList::Kind::Ticks);
}

std::vector<LayoutRow> ListForm::Rows() const {
    return {
        {kOwn, {{IDC_LBLFILTRO}, {IDC_TXTFILTRO, kFill}}},
        {kOwn, {{IDC_LBLLIST1, kFill}}},
        {kFill, {{IDC_LIST1, kFill}}},
        {kOwn, {{IDC_LBLCUENTA, kFill}, {IDC_CMDMARCAS}}},
    };
}

std::span<const CommandRow> ListForm::SharedCommands() const {
    static constexpr CommandRow kCommands[] = {
        {kTickAll, Do<&ListForm::TickAll>},
        {kTickNone, Do<&ListForm::TickNone>},
        {kInvert, Do<&ListForm::Invert>},
        {kRestore, Do<&ListForm::Restore>},
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
    if (m_listDesign.kind == CheckList::Kind::Ticks) {
        const int current = List().Current();
        if (current >= 0) {
            List().Tick(current, !List().IsTicked(current));
        }
    }
}

void ListForm::ListMenuAsked(POINT screen) {
    static constexpr MenuItem kMenu[] = {
        {kTickAll, L"Marcar &todo\tCtrl+A"},        {kTickNone, L"&Quitar todas las marcas\tCtrl+Mayús+A"},
        {kInvert, L"&Invertir las marcas\tCtrl+I"}, {L"", nullptr},
        {kRestore, L"Como al a&brir\tCtrl+Z"},
    };
    if (m_listDesign.kind == CheckList::Kind::Ticks) {
        RunMenu(kMenu, screen);
    }
}

void ListForm::OnControl(int control, int code) {
    if (control == IDC_TXTFILTRO && code == EN_CHANGE && m_list) {
        List().Find(ControlText(IDC_TXTFILTRO));
    } else if (control == IDC_CMDMARCAS && code == BN_CLICKED) {
        RECT button{};
        GetWindowRect(Control(IDC_CMDMARCAS), &button);
        ListMenuAsked({button.left, button.bottom});
        SetFocus(Control(IDC_LIST1)); // going on with the keys
    }
}

bool ListForm::OnNotify(NMHDR& header, LRESULT& answer) { return m_list && m_list->Notified(header, answer); }

bool ListForm::OnKey(UINT key, bool control, bool shift) {
    const HWND focus = GetFocus();
    if (m_listDesign.searchBox && key == 'E' && control && !shift) {
        SetFocus(Control(IDC_TXTFILTRO));
        return true;
    }
    if (key == VK_DOWN && !control && !shift && focus == Control(IDC_TXTFILTRO)) {
        List().Enter();
        return true;
    }
    const bool typing = (SendMessageW(focus, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0;
    if (!control || typing || m_listDesign.kind != CheckList::Kind::Ticks) {
        return false;
    }
    const auto* found = std::find_if(std::begin(kTickKeys), std::end(kTickKeys), [&](const TickKey& row) {
        return row.key == key && row.shift == shift;
    });
    if (found == std::end(kTickKeys)) {
        return false;
    }
    Input(found->command);
    return true;
}

} // namespace tamvelo::frame
