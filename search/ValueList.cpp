#include "search/ValueList.h"

#include <algorithm>

#include "base/SearchModes.h"
#include "search/Resources.h"
#include "win/BusyCursor.h"

namespace tamvelo::search {

using namespace frame::tables;

namespace {

constexpr wchar_t kRemoveValue[] = L"{QUITAR_VALOR}";

} // namespace

std::span<const KeyRow> ValueList::Keys() const {
    static constexpr KeyRow kKeys[] = {{IDC_LIST2, VK_DELETE, kRemoveValue}};
    return kKeys;
}

std::span<const CommandRow> ValueList::Commands() const {
    static constexpr CommandRow kCommands[] = {{kRemoveValue, Do<&ValueList::Remove>}};
    return kCommands;
}

com::ComPtr<objects::ControlObject> ValueList::Object() const {
    return Host().ObjectOf(IDC_LIST2, L"List2", 0);
}

long ValueList::Count() const {
    return static_cast<long>(SendMessageW(Control(IDC_LIST2), LB_GETCOUNT, 0, 0));
}

void ValueList::Add(std::span<const std::wstring> values) {
    const HWND list = Control(IDC_LIST2);
    const win::BusyWork busy(Host().Window(), values.size());
    LRESULT last = 0;
    ShowWindow(list, SW_HIDE); // or each value would be drawn, and the bar with it
    for (const std::wstring& value : values) {
        last = SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(value.c_str()));
    }
    ShowWindow(list, SW_SHOWNA);
    SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(last), 0);
    InvalidateRect(list, nullptr, TRUE);
    ShowCount();
}

void ValueList::Clear() {
    SendMessageW(Control(IDC_LIST2), LB_RESETCONTENT, 0, 0);
    ShowCount();
}

void ValueList::Remove() {
    const HWND list = Control(IDC_LIST2);
    const auto removed = static_cast<long>(SendMessageW(list, LB_GETCURSEL, 0, 0));
    const auto left = static_cast<long>(SendMessageW(list, LB_DELETESTRING, static_cast<WPARAM>(removed), 0));
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(std::min(removed, left - 1)), 0);
    ShowCount();
}

void ValueList::ShowCount() {
    Host().SetControlText(IDC_LBLLIST2, L"&Lista: " + base::CountOfValues(Count()));
}

} // namespace tamvelo::search
