#pragma once

#include <string>

#include "com/Object.h"

namespace tamvelo::testing {

/// While it lives, the object can be had as a component of this process under `Name`.
class Component {
public:
    explicit Component(IDispatch* object);
    ~Component();
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    /// The class identifier, in braces.
    static std::wstring Name();

private:
    DWORD m_cookie = 0;
};

} // namespace tamvelo::testing
