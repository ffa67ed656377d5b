#include "demo/app/PrivateSettings.h"

#include "ProductVersion.h"
#include "com/Error.h"

namespace tamvelo::demo {

namespace {

constexpr wchar_t kCorner[] = L"Software\\TamveloDemo";
constexpr wchar_t kEnvironment[] = L"Software\\" TAMVELO_COMPANY L"\\Global\\Configuracion\\Entorno";

void CheckKey(LSTATUS status) { com::Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status))); }

} // namespace

PrivateSettings::PrivateSettings(const std::wstring& layoutFolder) {
    RegDeleteTreeW(HKEY_CURRENT_USER, kCorner); // of a run that did not end well
    CheckKey(RegCreateKeyExW(HKEY_CURRENT_USER, kCorner, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_corner,
                             nullptr));
    const DWORD bytes = static_cast<DWORD>(layoutFolder.size() + 1) * sizeof(wchar_t);
    CheckKey(RegSetKeyValueW(m_corner, kEnvironment, L"Carpeta", REG_SZ, layoutFolder.c_str(), bytes));
    CheckKey(RegOverridePredefKey(HKEY_CURRENT_USER, m_corner));
}

PrivateSettings::~PrivateSettings() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(m_corner);
    RegDeleteTreeW(HKEY_CURRENT_USER, kCorner);
}

} // namespace tamvelo::demo
