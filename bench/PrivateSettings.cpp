#include "bench/PrivateSettings.h"

#include "com/Error.h"

namespace tamvelo::bench {

namespace {

constexpr wchar_t kCorner[] = L"Software\\TamveloBench";

} // namespace

PrivateSettings::PrivateSettings() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kCorner); // of a run that did not end well
    com::Check(HRESULT_FROM_WIN32(static_cast<DWORD>(RegCreateKeyExW(
        HKEY_CURRENT_USER, kCorner, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_corner, nullptr))));
    com::Check(HRESULT_FROM_WIN32(static_cast<DWORD>(RegOverridePredefKey(HKEY_CURRENT_USER, m_corner))));
}

PrivateSettings::~PrivateSettings() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(m_corner);
    RegDeleteTreeW(HKEY_CURRENT_USER, kCorner);
}

} // namespace tamvelo::bench
