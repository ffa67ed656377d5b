#include "environment/Registry.h"

#include "com/Error.h"

namespace tamvelo::environment {

namespace {

/// What a text box lets a user type is below it. The system's controls take seconds for more.
constexpr size_t kMostBytes = 1 << 16;

} // namespace

std::optional<std::wstring> ReadRegistryText(const std::wstring& key, const std::wstring& name) {
    DWORD bytes = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &bytes) !=
            ERROR_SUCCESS ||
        bytes > kMostBytes) {
        return {};
    }
    std::wstring value(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, value.data(),
                     &bytes) != ERROR_SUCCESS) {
        return {};
    }
    value.resize(wcsnlen(value.c_str(), value.size()));
    return value;
}

void WriteRegistryText(const std::wstring& key, const std::wstring& name, const std::wstring& value) {
    const size_t bytes = (value.size() + 1) * sizeof(wchar_t);
    const LSTATUS status = bytes > kMostBytes
                               ? LSTATUS{ERROR_BUFFER_OVERFLOW}
                               : RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name.c_str(), REG_SZ,
                                                 value.c_str(), static_cast<DWORD>(bytes));
    if (status != ERROR_SUCCESS) {
        const HRESULT number = HRESULT_FROM_WIN32(static_cast<DWORD>(status));
        throw com::Error(number, L"No se puede guardar «" + name + L"» en el registro de Windows.\n" +
                                     com::SystemText(number));
    }
}

} // namespace tamvelo::environment
