#include "objects/ControlObject.h"

#include <commctrl.h>

#include <array>

#include "win/WindowText.h"

namespace tamvelo::objects {

namespace {

using com::Error;
using com::Invocation;
using com::Member;
using com::Variant;

constexpr HRESULT kBadIndex = static_cast<HRESULT>(0x800A0009); // automation's "subscript out of range"
constexpr HRESULT kBadValue = static_cast<HRESULT>(0x800A017C); // automation's "invalid property value"

enum class Kind { Plain, TextBox, Check, ListBox, ComboBox, DatePicker };

Kind KindOf(HWND window) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    const auto is = [&](const wchar_t* other) { return lstrcmpiW(name, other) == 0; };
    if (is(L"Edit")) {
        return Kind::TextBox;
    }
    if (is(L"ListBox") || is(WC_LISTVIEWW)) { // the list forms' list view answers a list box's messages
        return Kind::ListBox;
    }
    if (is(L"ComboBox")) {
        return Kind::ComboBox;
    }
    if (is(DATETIMEPICK_CLASSW)) {
        return Kind::DatePicker;
    }
    const LONG style = GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK;
    return is(L"Button") && style != BS_PUSHBUTTON && style != BS_DEFPUSHBUTTON ? Kind::Check : Kind::Plain;
}

/// The messages of the two kinds of list, which say the same in different numbers.
struct ListMessages {
    UINT count, textLength, text, current, setCurrent, add, clear;
};
constexpr ListMessages kListBox{LB_GETCOUNT,  LB_GETTEXTLEN, LB_GETTEXT,     LB_GETCURSEL,
                                LB_SETCURSEL, LB_ADDSTRING,  LB_RESETCONTENT};
constexpr ListMessages kComboBox{CB_GETCOUNT,  CB_GETLBTEXTLEN, CB_GETLBTEXT,   CB_GETCURSEL,
                                 CB_SETCURSEL, CB_ADDSTRING,    CB_RESETCONTENT};

const ListMessages& MessagesOf(HWND window) { return KindOf(window) == Kind::ListBox ? kListBox : kComboBox; }

std::wstring ItemText(HWND window, WPARAM index) {
    const ListMessages& messages = MessagesOf(window);
    const LRESULT length = SendMessageW(window, messages.textLength, index, 0);
    if (length < 0) {
        throw Error(kBadIndex, L"El índice está fuera del intervalo.");
    }
    std::wstring text(static_cast<size_t>(length), L'\0');
    SendMessageW(window, messages.text, index, reinterpret_cast<LPARAM>(text.data()));
    return text;
}

Variant DateOf(HWND picker) {
    SYSTEMTIME time{};
    DATE date = 0;
    DateTime_GetSystemtime(picker, &time);
    SystemTimeToVariantTime(&time, &date);
    return Variant::Date(date);
}

void SetDate(HWND picker, DATE date) {
    NMDATETIMECHANGE change{};
    if (!VariantTimeToSystemTime(date, &change.st) ||
        !DateTime_SetSystemtime(picker, GDT_VALID, &change.st)) {
        throw Error(kBadValue, L"La fecha no es válida para este control.");
    }
    // The picker tells its form only what the user does.
    change.nmhdr = {picker, static_cast<UINT_PTR>(GetDlgCtrlID(picker)), DTN_DATETIMECHANGE};
    change.dwFlags = GDT_VALID;
    SendMessageW(GetParent(picker), WM_NOTIFY, change.nmhdr.idFrom, reinterpret_cast<LPARAM>(&change));
}

} // namespace

HWND ControlObject::Alive() const {
    if (!IsWindow(m_window)) {
        throw Error(E_UNEXPECTED, L"El control «" + m_name + L"» ya no existe.");
    }
    return m_window;
}

std::span<const Member> ControlObject::Members() const {
    using C = ControlObject;
    constexpr Member kName{L"Name", 1, Member::Get, 0, 0, com::Run<&C::Name>};
    constexpr Member kIndex{L"Index", 2, Member::Get, 0, 0, com::Run<&C::Index>};
    constexpr Member kField{L"DataField", 3, Member::GetPut, 0, 0, com::Run<&C::DataFieldMember>};
    constexpr Member kEnabled{L"Enabled", 4, Member::GetPut, 0, 0, com::Run<&C::Enabled>};
    constexpr Member kVisible{L"Visible", 5, Member::GetPut, 0, 0, com::Run<&C::Visible>};
    constexpr Member kFocus{L"SetFocus", 6, Member::Method, 0, 0, com::Run<&C::Focus>};
    constexpr Member kHandle{L"hWnd", 7, Member::Get, 0, 0, com::Run<&C::Handle>};
    constexpr Member kTag{L"Tag", 8, Member::GetPut, 0, 0, com::Run<&C::Tag>};
    constexpr Member kText{L"Text", DISPID_VALUE, Member::GetPut, 0, 0, com::Run<&C::Text>};
    constexpr Member kCaption{L"Caption", DISPID_VALUE, Member::GetPut, 0, 0, com::Run<&C::Text>};
    constexpr Member kValue{L"Value", 9, Member::GetPut, 0, 0, com::Run<&C::Value>};
    constexpr Member kCount{L"ListCount", 10, Member::Get, 0, 0, com::Run<&C::ListCount>};
    constexpr Member kList{L"List", 11, Member::Get, 1, 1, com::Run<&C::List>};
    constexpr Member kListIndex{L"ListIndex", 12, Member::GetPut, 0, 0, com::Run<&C::ListIndex>};
    constexpr Member kAdd{L"AddItem", 13, Member::Method, 1, 1, com::Run<&C::AddItem>};
    constexpr Member kClear{L"Clear", 14, Member::Method, 0, 0, com::Run<&C::Clear>};
    constexpr Member kSelected{L"Selected", 15, Member::GetPut, 1, 1, com::Run<&C::Selected>};
    constexpr Member kMaxLength{L"MaxLength", 16, Member::GetPut, 0, 0, com::Run<&C::MaxLength>};
    constexpr Member kSelStart{L"SelStart", 17, Member::GetPut, 0, 0, com::Run<&C::SelStart>};
    constexpr Member kSelLength{L"SelLength", 18, Member::GetPut, 0, 0, com::Run<&C::SelLength>};

    static constexpr std::array kPlain{kName,  kIndex,  kField, kEnabled, kVisible,
                                       kFocus, kHandle, kTag,   kCaption};
    static constexpr std::array kTextBox{kName,   kIndex, kField, kEnabled,   kVisible,  kFocus,
                                         kHandle, kTag,   kText,  kMaxLength, kSelStart, kSelLength};
    static constexpr std::array kCheck{kName,  kIndex,  kField, kEnabled, kVisible,
                                       kFocus, kHandle, kTag,   kCaption, kValue};
    static constexpr std::array kDatePicker{kName,  kIndex,  kField, kEnabled, kVisible,
                                            kFocus, kHandle, kTag,   kValue};
    static constexpr std::array kListBoxMembers{kName,  kIndex,     kField, kEnabled, kVisible,
                                                kFocus, kHandle,    kTag,   kText,    kCount,
                                                kList,  kListIndex, kAdd,   kClear,   kSelected};
    static constexpr std::array kComboMembers{kName, kIndex, kField, kEnabled, kVisible,   kFocus, kHandle,
                                              kTag,  kText,  kCount, kList,    kListIndex, kAdd,   kClear};
    switch (KindOf(m_window)) {
    case Kind::TextBox:
        return kTextBox;
    case Kind::Check:
        return kCheck;
    case Kind::ListBox:
        return kListBoxMembers;
    case Kind::ComboBox:
        return kComboMembers;
    case Kind::DatePicker:
        return kDatePicker;
    default:
        return kPlain;
    }
}

void ControlObject::Name(Invocation& call) { call.Return(Variant(m_name)); }

void ControlObject::Index(Invocation& call) { call.Return(Variant(m_index)); }

void ControlObject::Text(Invocation& call) {
    const HWND window = Alive();
    if (call.IsPut()) {
        SetWindowTextW(window, call.NewValue().ToText().c_str());
    } else if (KindOf(window) == Kind::ListBox) {
        const LRESULT current = SendMessageW(window, LB_GETCURSEL, 0, 0);
        call.Return(Variant(current < 0 ? std::wstring() : ItemText(window, static_cast<WPARAM>(current))));
    } else {
        call.Return(Variant(win::TextOf(window)));
    }
}

void ControlObject::Value(Invocation& call) {
    const HWND window = Alive();
    if (KindOf(window) == Kind::DatePicker) {
        if (call.IsPut()) {
            SetDate(window, call.NewValue().ToDate());
        } else {
            call.Return(DateOf(window));
        }
    } else if (call.IsPut()) {
        SendMessageW(window, BM_SETCHECK, call.NewValue().ToBool() ? BST_CHECKED : BST_UNCHECKED, 0);
    } else {
        call.Return(Variant(static_cast<short>(SendMessageW(window, BM_GETCHECK, 0, 0))));
    }
}

void ControlObject::DataFieldMember(Invocation& call) {
    if (call.IsPut()) {
        m_dataField = call.NewValue().ToText();
    } else {
        call.Return(Variant(m_dataField));
    }
}

void ControlObject::Enabled(Invocation& call) {
    if (call.IsPut()) {
        EnableWindow(Alive(), call.NewValue().ToBool());
    } else {
        call.Return(Variant(IsWindowEnabled(Alive()) != FALSE));
    }
}

void ControlObject::Visible(Invocation& call) {
    if (call.IsPut()) {
        ShowWindow(Alive(), call.NewValue().ToBool() ? SW_SHOWNA : SW_HIDE);
    } else {
        call.Return(Variant((GetWindowLongW(Alive(), GWL_STYLE) & WS_VISIBLE) != 0));
    }
}

void ControlObject::MaxLength(Invocation& call) {
    if (call.IsPut()) {
        SendMessageW(Alive(), EM_SETLIMITTEXT, static_cast<WPARAM>(call.NewValue().ToLong()), 0);
    } else {
        call.Return(Variant(static_cast<long>(SendMessageW(Alive(), EM_GETLIMITTEXT, 0, 0))));
    }
}

void ControlObject::SelStart(Invocation& call) {
    const HWND window = Alive();
    if (call.IsPut()) {
        const long start = call.NewValue().ToLong();
        SendMessageW(window, EM_SETSEL, static_cast<WPARAM>(start), start);
    } else {
        DWORD start = 0;
        SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
        call.Return(Variant(static_cast<long>(start)));
    }
}

void ControlObject::SelLength(Invocation& call) {
    const HWND window = Alive();
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    if (call.IsPut()) {
        SendMessageW(window, EM_SETSEL, start, static_cast<LPARAM>(start) + call.NewValue().ToLong());
    } else {
        call.Return(Variant(static_cast<long>(end - start)));
    }
}

void ControlObject::ListCount(Invocation& call) {
    const HWND window = Alive();
    call.Return(Variant(static_cast<long>(SendMessageW(window, MessagesOf(window).count, 0, 0))));
}

void ControlObject::List(Invocation& call) {
    call.Return(Variant(ItemText(Alive(), static_cast<WPARAM>(call[0].ToLong()))));
}

void ControlObject::ListIndex(Invocation& call) {
    const HWND window = Alive();
    const ListMessages& messages = MessagesOf(window);
    if (call.IsPut()) {
        SendMessageW(window, messages.setCurrent, static_cast<WPARAM>(call.NewValue().ToLong()), 0);
    } else {
        call.Return(Variant(static_cast<long>(SendMessageW(window, messages.current, 0, 0))));
    }
}

void ControlObject::Selected(Invocation& call) {
    const HWND window = Alive();
    const auto index = static_cast<WPARAM>(call[0].ToLong());
    const LRESULT selected = SendMessageW(window, LB_GETSEL, index, 0);
    if (selected < 0) {
        throw Error(kBadIndex, L"El índice está fuera del intervalo.");
    }
    if (call.IsPut()) {
        SendMessageW(window, LB_SETSEL, call.NewValue().ToBool(), static_cast<LPARAM>(index));
    } else {
        call.Return(Variant(selected > 0));
    }
}

void ControlObject::AddItem(Invocation& call) {
    const HWND window = Alive();
    const std::wstring text = call[0].ToText();
    SendMessageW(window, MessagesOf(window).add, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void ControlObject::Clear(Invocation& /*call*/) {
    const HWND window = Alive();
    SendMessageW(window, MessagesOf(window).clear, 0, 0);
}

void ControlObject::Focus(Invocation& /*call*/) { SetFocus(Alive()); }

void ControlObject::Handle(Invocation& call) {
    call.Return(Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(Alive()))));
}

void ControlObject::Tag(Invocation& call) {
    if (call.IsPut()) {
        m_tag = call.NewValue();
    } else {
        call.Return(m_tag);
    }
}

} // namespace tamvelo::objects
