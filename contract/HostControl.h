#pragma once

#include <string>

#include "com/LateObject.h"

namespace tamvelo::contract {

/// The host's own control (`ctl`) that asks for a record and gets it back with the answer.
class HostControl {
public:
    HostControl() = default;
    /// Takes any automation object that looks like a control: one that answers `Text`, `Caption`, `Value` or
    /// `hWnd`. Null is the absent control. Throws a type mismatch for anything else.
    explicit HostControl(IDispatch* object);

    /// The control's text; "" when there is none.
    std::wstring Text();
    /// The reference that sink calls carry: the host may put another control there.
    com::ComPtr<IDispatch>& Reference() { return m_reference; }
    void Reset();

private:
    com::ComPtr<IDispatch> m_reference;
};

} // namespace tamvelo::contract
