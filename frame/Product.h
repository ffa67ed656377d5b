#pragma once

#include <string>
#include <string_view>

namespace tamvelo::frame {

/// What the library was built as, from its own version resource.
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

/// The folder that the library was loaded from, without a backslash at the end.
std::wstring LibraryFolder();

} // namespace tamvelo::frame
