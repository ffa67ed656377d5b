#include "environment/Product.h"

#include <cwchar>
#include <vector>

#include "base/SettingsKeys.h"
#include "com/Module.h"

namespace tamvelo::environment {

namespace {

/// The version resource as bytes that may be queried; the mapped one is read-only.
std::vector<BYTE> VersionBlock() {
    const HINSTANCE module = com::Module::Instance();
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const BYTE* bytes = loaded ? static_cast<const BYTE*>(LockResource(loaded)) : nullptr;
    return bytes ? std::vector<BYTE>(bytes, bytes + SizeofResource(module, found)) : std::vector<BYTE>();
}

std::wstring Text(const std::vector<BYTE>& block, const wchar_t* name) {
    constexpr wchar_t kSpanishUnicode[] = L"\\StringFileInfo\\0C0A04B0\\";
    void* text = nullptr;
    UINT length = 0;
    const std::wstring path = std::wstring(kSpanishUnicode) + name;
    return VerQueryValueW(block.data(), path.c_str(), &text, &length) && length > 0
               ? std::wstring(static_cast<const wchar_t*>(text))
               : std::wstring();
}

} // namespace

const Product& Product::Own() {
    static const Product own = [] {
        Product product{L"Tamvelo", L"Tamvelo", 1,
                        0}; // a program that links the storeys without the resource
        const std::vector<BYTE> block = VersionBlock();
        void* fixed = nullptr;
        UINT size = 0;
        if (!block.empty() && VerQueryValueW(block.data(), L"\\", &fixed, &size) &&
            size >= sizeof(VS_FIXEDFILEINFO)) {
            const auto* info = static_cast<const VS_FIXEDFILEINFO*>(fixed);
            const std::wstring ownCompany = Text(block, L"CompanyName");
            const std::wstring ownName = Text(block, L"ProductName");
            if (!ownCompany.empty() && !ownName.empty()) {
                product = {ownCompany, ownName, HIWORD(info->dwProductVersionMS),
                           LOWORD(info->dwProductVersionMS)};
            }
        }
        return product;
    }();
    return own;
}

std::wstring Product::FormKey(std::wstring_view form) const {
    return base::FormKey(company, name, major, minor, form);
}

std::wstring Product::SesionKey(std::wstring_view path) const { return base::SesionKey(company, path); }

} // namespace tamvelo::environment
