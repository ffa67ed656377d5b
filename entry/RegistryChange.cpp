#include "entry/RegistryChange.h"

#include <utility>

#include "com/Error.h"

namespace tamvelo::entry {

namespace {

void CheckRegistry(LSTATUS status) { com::Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status))); }

} // namespace

RegistryChange::~RegistryChange() {
    while (!m_steps.empty()) { // last first
        const Step step = std::move(m_steps.back());
        m_steps.pop_back();
        const wchar_t* path = step.path.c_str();
        if (step.keyMade) {
            RegDeleteKeyW(m_root, path);
        } else if (step.before) {
            RegSetKeyValueW(m_root, path, step.name.c_str(), step.type, step.before->data(),
                            static_cast<DWORD>(step.before->size()));
        } else {
            RegDeleteKeyValueW(m_root, path, step.name.c_str());
        }
    }
}

void RegistryChange::Set(const std::wstring& path, const std::wstring& name, const std::wstring& text) {
    // One level at a time: the system does not tell which parents it made.
    for (size_t end = path.find(L'\\'); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
        MakeKey(path.substr(0, end));
    }
    MakeKey(path);

    Step step{path, false, name, {}, REG_SZ};
    DWORD size = 0;
    if (RegGetValueW(m_root, path.c_str(), name.c_str(), RRF_RT_ANY | RRF_NOEXPAND, &step.type, nullptr,
                     &size) == ERROR_SUCCESS) {
        step.before.emplace(size);
        CheckRegistry(RegGetValueW(m_root, path.c_str(), name.c_str(), RRF_RT_ANY | RRF_NOEXPAND, &step.type,
                                   step.before->data(), &size));
        step.before->resize(size);
    }
    m_steps.push_back(std::move(step));
    CheckRegistry(RegSetKeyValueW(m_root, path.c_str(), name.c_str(), REG_SZ, text.c_str(),
                                  static_cast<DWORD>(text.size() + 1) * sizeof(wchar_t)));
}

void RegistryChange::MakeKey(const std::wstring& path) {
    m_steps.push_back({path, true, {}, {}, REG_NONE}); // before the act, so that memory cannot fail after it
    HKEY key = nullptr;
    DWORD made = REG_OPENED_EXISTING_KEY;
    LSTATUS status = RegOpenKeyExW(m_root, path.c_str(), 0, KEY_QUERY_VALUE, &key);
    if (status == ERROR_FILE_NOT_FOUND) {
        status = RegCreateKeyExW(m_root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, &made);
    }
    if (key) {
        RegCloseKey(key);
    }
    if (made != REG_CREATED_NEW_KEY) {
        m_steps.pop_back();
    }
    CheckRegistry(status);
}

} // namespace tamvelo::entry
