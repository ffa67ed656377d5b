#include "objects/FormObject.h"

#include "win/WindowText.h"

namespace tamvelo::objects {

using com::Invocation;
using com::Member;
using com::Variant;

std::span<const Member> FormObject::Members() const {
    using F = FormObject;
    static constexpr Member kMembers[] = {
        {L"Left", 1, Member::GetPut, 0, 0, com::Run<&F::Left>},
        {L"Top", 2, Member::GetPut, 0, 0, com::Run<&F::Top>},
        {L"Width", 3, Member::GetPut, 0, 0, com::Run<&F::Width>},
        {L"Height", 4, Member::GetPut, 0, 0, com::Run<&F::Height>},
        {L"Name", 5, Member::Get, 0, 0, com::Run<&F::Name>},
        {L"Caption", DISPID_VALUE, Member::GetPut, 0, 0, com::Run<&F::Caption>},
        {L"hWnd", 6, Member::Get, 0, 0, com::Run<&F::Handle>},
    };
    return kMembers;
}

RECT FormObject::Place() const {
    RECT place{};
    if (!GetWindowRect(m_window, &place)) {
        throw com::Error(E_UNEXPECTED, L"El formulario «" + m_name + L"» ya no existe.");
    }
    return place;
}

void FormObject::Move(long left, long top, long width, long height) {
    SetWindowPos(m_window, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormObject::Left(Invocation& call) {
    const RECT now = Place();
    if (call.IsPut()) {
        Move(call.NewValue().ToLong(), now.top, now.right - now.left, now.bottom - now.top);
    } else {
        call.Return(Variant(now.left));
    }
}

void FormObject::Top(Invocation& call) {
    const RECT now = Place();
    if (call.IsPut()) {
        Move(now.left, call.NewValue().ToLong(), now.right - now.left, now.bottom - now.top);
    } else {
        call.Return(Variant(now.top));
    }
}

void FormObject::Width(Invocation& call) {
    const RECT now = Place();
    if (call.IsPut()) {
        Move(now.left, now.top, call.NewValue().ToLong(), now.bottom - now.top);
    } else {
        call.Return(Variant(now.right - now.left));
    }
}

void FormObject::Height(Invocation& call) {
    const RECT now = Place();
    if (call.IsPut()) {
        Move(now.left, now.top, now.right - now.left, call.NewValue().ToLong());
    } else {
        call.Return(Variant(now.bottom - now.top));
    }
}

void FormObject::Name(Invocation& call) { call.Return(Variant(m_name)); }

void FormObject::Caption(Invocation& call) {
    if (call.IsPut()) {
        SetWindowTextW(m_window, call.NewValue().ToText().c_str());
    } else {
        call.Return(Variant(win::TextOf(m_window)));
    }
}

void FormObject::Handle(Invocation& call) {
    call.Return(Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(m_window))));
}

} // namespace tamvelo::objects
