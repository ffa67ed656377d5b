#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::Invocation;
using com::Member;
using com::Run;
using com::Variant;

class TextControl final : public com::Automation {
public:
    TextControl(HWND window, std::wstring_view name, short index, std::wstring_view dataField)
        : m_window(window), m_name(name), m_index(index), m_dataField(dataField) {}

protected:
    std::span<const Member> Members() const override {
        using C = TextControl;
        static constexpr Member kMembers[] = {
            {L"Text", DISPID_VALUE, Member::GetPut, 0, 0, Run<&C::Text>},
            {L"Name", 1, Member::Get, 0, 0, Run<&C::Name>},
            {L"Index", 2, Member::Get, 0, 0, Run<&C::Index>},
            {L"DataField", 3, Member::GetPut, 0, 0, Run<&C::DataField>},
            {L"Tag", 4, Member::GetPut, 0, 0, Run<&C::Tag>},
            {L"Enabled", 5, Member::GetPut, 0, 0, Run<&C::Enabled>},
            {L"Visible", 6, Member::GetPut, 0, 0, Run<&C::Visible>},
            {L"hWnd", 7, Member::Get, 0, 0, Run<&C::Handle>},
            {L"SetFocus", 8, Member::Method, 0, 0, Run<&C::TakeFocus>},
            {L"MaxLength", 9, Member::GetPut, 0, 0, Run<&C::MaxLength>},
            {L"SelStart", 10, Member::GetPut, 0, 0, Run<&C::SelStart>},
            {L"SelLength", 11, Member::GetPut, 0, 0, Run<&C::SelLength>},
        };
        return kMembers;
    }

private:
    struct Range {
        DWORD start = 0;
        DWORD end = 0;
    };

    HWND Window() const {
        if (!IsWindow(m_window)) {
            throw HostError(CO_E_OBJNOTCONNECTED, L"El control «" + m_name + L"» ya no existe.");
        }
        return m_window;
    }
    Range Selected() const {
        Range range;
        SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&range.start),
                     reinterpret_cast<LPARAM>(&range.end));
        return range;
    }
    void Select(long start, long length) const {
        SendMessageW(Window(), EM_SETSEL, static_cast<WPARAM>(start), LPARAM{start} + length);
    }

    void Name(Invocation& call) { call.Return(Variant(m_name)); }
    void Index(Invocation& call) { call.Return(Variant(m_index)); }
    void Text(Invocation& call) {
        if (call.IsPut()) {
            SetWindowTextW(Window(), call.NewValue().ToText().c_str());
            return;
        }
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Window())), L'\0');
        const int length = GetWindowTextW(m_window, text.data(), static_cast<int>(text.size()) + 1);
        text.resize(static_cast<std::size_t>(length));
        call.Return(Variant(text));
    }
    void DataField(Invocation& call) {
        if (call.IsPut()) {
            m_dataField = call.NewValue().ToText();
        } else {
            call.Return(Variant(m_dataField));
        }
    }
    void Tag(Invocation& call) {
        if (call.IsPut()) {
            m_tag = call.NewValue();
        } else {
            call.Return(m_tag);
        }
    }
    void Enabled(Invocation& call) {
        if (call.IsPut()) {
            EnableWindow(Window(), call.NewValue().ToBool());
        } else {
            call.Return(Variant(IsWindowEnabled(Window()) != FALSE));
        }
    }
    void Visible(Invocation& call) {
        if (call.IsPut()) {
            ShowWindow(Window(), call.NewValue().ToBool() ? SW_SHOWNA : SW_HIDE);
        } else {
            // Its own choice: a form that is hidden for a moment does not change it.
            call.Return(Variant((GetWindowLongW(Window(), GWL_STYLE) & WS_VISIBLE) != 0));
        }
    }
    void Handle(Invocation& call) {
        call.Return(Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(Window()))));
    }
    void TakeFocus(Invocation&) { SetFocus(Window()); }
    void MaxLength(Invocation& call) {
        if (call.IsPut()) {
            m_maxLength = call.NewValue().ToLong();
            SendMessageW(Window(), EM_SETLIMITTEXT, static_cast<WPARAM>(m_maxLength), 0);
        } else {
            call.Return(Variant(m_maxLength));
        }
    }
    void SelStart(Invocation& call) {
        if (call.IsPut()) {
            Select(call.NewValue().ToLong(), 0);
        } else {
            call.Return(Variant(static_cast<long>(Selected().start)));
        }
    }
    void SelLength(Invocation& call) {
        const Range range = Selected();
        if (call.IsPut()) {
            Select(static_cast<long>(range.start), call.NewValue().ToLong());
        } else {
            call.Return(Variant(static_cast<long>(range.end - range.start)));
        }
    }

    const HWND m_window;
    const std::wstring m_name;
    const short m_index;
    std::wstring m_dataField;
    Variant m_tag{L""};
    long m_maxLength = 0; // 0: as much as fits
};

} // namespace

ComPtr<IDispatch> MakeTextControl(HWND window, std::wstring_view name, short index,
                                  std::wstring_view dataField) {
    return ComPtr<IDispatch>(com::Make<TextControl>(window, name, index, dataField).Get());
}

} // namespace tamvelo::demo
