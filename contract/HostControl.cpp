#include "contract/HostControl.h"

#include <algorithm>
#include <iterator>

#include "com/Error.h"

namespace tamvelo::contract {

namespace {

constexpr const wchar_t* kMarksOfAControl[] = {L"Text", L"Caption", L"Value", L"hWnd"};

} // namespace

HostControl::HostControl(IDispatch* object) : m_reference(object) {
    if (object &&
        std::none_of(std::begin(kMarksOfAControl), std::end(kMarksOfAControl),
                     [&](const wchar_t* mark) { return com::FindMember(object, mark) != DISPID_UNKNOWN; })) {
        throw com::Error(DISP_E_TYPEMISMATCH, L"No coinciden los tipos: «ctl» no es un control.");
    }
}

std::wstring HostControl::Text() {
    return m_reference ? com::LateObject(m_reference.Get(), L"ctl").Call(L"Text").ToText() : std::wstring();
}

void HostControl::Reset() { const com::ComPtr<IDispatch> leaving = std::move(m_reference); }

} // namespace tamvelo::contract
