#include "frame/RecordView.h"

#include <commctrl.h>

#include <algorithm>

#include "base/Commands.h"
#include "base/MessageText.h"
#include "base/Text.h"
#include "frame/Form.h"
#include "frame/Resources.h"
#include "win/Clipboard.h"

namespace tamvelo::frame {

namespace {

constexpr ToolUse kTools[] = {{base::kCerrar}};
constexpr wchar_t kCopyValue[] = L"{COPIAR_VALOR}";
constexpr KeyRow kKeys[] = {
    {0, VK_ESCAPE, base::kCerrar}, {0, VK_RETURN, base::kCerrar}, {IDC_RECORD_LIST, kCtrl | 'C', kCopyValue}};

class RecordForm final : public Form {
public:
    RecordForm(const std::wstring& title, const std::vector<RecordField>& fields)
        : Form({L"frmRegistro", IDD_RECORD, kTools, kKeys}), m_title(title), m_fields(fields) {}

    void Mostrar() {
        Show([&] { ShowModal(); });
    }

private:
    void OnLoad() override;
    std::span<const CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override {
        return {{win::kFill, {{IDC_RECORD_LIST, win::kFill}}},
                {win::kOwn, {{IDC_RECORD_LABEL, win::kFill}}},
                {win::kOwn, {{IDC_RECORD_VALUE, win::kFill}}}};
    }
    void ResizeControls() override;
    bool OnNotify(NMHDR& header, LRESULT& answer) override;
    HWND FirstFocus() const override { return Control(IDC_RECORD_LIST); }
    void ShowValue(const std::wstring& value);
    void CopyValue();
    void AddColumn(int index, const wchar_t* caption);

    const std::wstring& m_title;
    const std::vector<RecordField>& m_fields;
};

void RecordForm::OnLoad() {
    SetWindowTextW(Window(), m_title.c_str());
    const HWND list = Control(IDC_RECORD_LIST);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    AddColumn(0, L"Campo");
    AddColumn(1, L"Valor");
    for (size_t i = 0; i < m_fields.size(); ++i) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(i);
        item.pszText = const_cast<wchar_t*>(m_fields[i].caption.c_str());
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        item.iSubItem = 1;
        std::wstring line = base::Shortened(base::WithLineEnds(m_fields[i].value, L" "), base::kLongestLabel);
        item.pszText = line.data();
        SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    ListView_SetItemState(list, 0, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
}

/// The names as wide as they are, up to half of the list; the values take the rest.
void RecordForm::ResizeControls() {
    Form::ResizeControls();
    const HWND list = Control(IDC_RECORD_LIST);
    RECT area{};
    GetClientRect(list, &area);
    ListView_SetColumnWidth(list, 0, LVSCW_AUTOSIZE_USEHEADER);
    const int names = std::min(ListView_GetColumnWidth(list, 0), static_cast<int>(area.right) / 2);
    ListView_SetColumnWidth(list, 0, names);
    ListView_SetColumnWidth(list, 1, area.right - names);
}

bool RecordForm::OnNotify(NMHDR& header, LRESULT& /*answer*/) {
    if (header.idFrom == IDC_RECORD_LIST && header.code == LVN_ITEMCHANGED) {
        const auto& changed = reinterpret_cast<const NMLISTVIEW&>(header);
        if (changed.uNewState & LVIS_SELECTED) {
            ShowValue(m_fields[static_cast<size_t>(changed.iItem)].value);
        }
    }
    return false;
}

void RecordForm::ShowValue(const std::wstring& value) {
    constexpr size_t kMost = 10'000; // a text box breaks lines over and over
    std::wstring shown = base::WithLineEnds(value.substr(0, kMost), L"\r\n");
    if (value.size() > kMost) {
        shown += L"…\r\n\r\n(El valor tiene " + std::to_wstring(value.size()) +
                 L" caracteres; Ctrl+C en la lista lo copia entero.)";
    }
    SetControlText(IDC_RECORD_VALUE, shown);
}

void RecordForm::AddColumn(int index, const wchar_t* caption) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = const_cast<wchar_t*>(caption);
    SendMessageW(Control(IDC_RECORD_LIST), LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&column));
}

std::span<const CommandRow> RecordForm::Commands() const {
    static constexpr CommandRow kCommands[] = {{kCopyValue, Do<&RecordForm::CopyValue>}};
    return kCommands;
}

void RecordForm::CopyValue() {
    const int chosen = ListView_GetNextItem(Control(IDC_RECORD_LIST), -1, LVNI_SELECTED);
    if (chosen >= 0) {
        win::CopyText(Window(), m_fields[static_cast<size_t>(chosen)].value);
    }
}

} // namespace

void ShowRecord(const std::wstring& title, const std::vector<RecordField>& fields) {
    std::make_shared<RecordForm>(title, fields)->Mostrar();
}

} // namespace tamvelo::frame
