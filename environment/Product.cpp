#include "environment/Product.h"

#include "ProductVersion.h"
#include "base/SettingsKeys.h"

namespace tamvelo::environment {

const Product& Product::Own() {
    static const Product own{L"" TAMVELO_COMPANY, L"" TAMVELO_PRODUCT, TAMVELO_MAJOR, TAMVELO_MINOR};
    return own;
}

std::wstring Product::FormKey(std::wstring_view form) const {
    return base::FormKey(company, name, major, minor, form);
}

std::wstring Product::SesionKey(std::wstring_view path) const { return base::SesionKey(company, path); }

} // namespace tamvelo::environment
