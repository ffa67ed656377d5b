#include "base/SettingsKeys.h"

namespace tamvelo::base {

namespace {

std::wstring CompanyKey(std::wstring_view company) { return L"SOFTWARE\\" + std::wstring(company) + L"\\"; }

} // namespace

std::wstring FormKey(std::wstring_view company, std::wstring_view product, int major, int minor,
                     std::wstring_view form) {
    std::wstring key = CompanyKey(company);
    key.append(product)
        .append(L"\\")
        .append(std::to_wstring(major))
        .append(L".")
        .append(std::to_wstring(minor));
    return key.append(L"\\Configuracion\\").append(form).append(L"\\");
}

std::wstring SesionKey(std::wstring_view company, std::wstring_view path) {
    return CompanyKey(company).append(L"Global\\Configuracion\\Sesion\\").append(path);
}

bool IsKeyName(std::wstring_view text) {
    constexpr size_t kLongest = 255; // the registry's own limit
    constexpr std::wstring_view kSeparators(L"\\\0", 2);
    return !text.empty() && text.size() <= kLongest &&
           text.find_first_of(kSeparators) == std::wstring_view::npos;
}

} // namespace tamvelo::base
