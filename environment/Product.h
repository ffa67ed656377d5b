#pragma once

#include <string>
#include <string_view>

namespace tamvelo::environment {

/// What the library was built as: its version resource says the same.
struct Product {
    std::wstring company;
    std::wstring name;
    int major = 0;
    int minor = 0;

    static const Product& Own();
    /// The registry key of one form's placement and choices; ends in a backslash.
    std::wstring FormKey(std::wstring_view form) const;
    /// A key that all products of the company share.
    std::wstring SesionKey(std::wstring_view path) const;
};

} // namespace tamvelo::environment
