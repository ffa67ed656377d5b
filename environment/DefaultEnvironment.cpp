#include "environment/DefaultEnvironment.h"

#include <optional>

#include "base/ListChoices.h"
#include "base/MessageText.h"
#include "base/Text.h"
#include "contract/ReportCollection.h"
#include "environment/Registry.h"
#include "win/Message.h"

namespace tamvelo::environment {

namespace {

struct PlacementValue {
    const wchar_t* name;
    int base::Rect::*part;
};

constexpr PlacementValue kPlacement[] = {
    {L"Left", &base::Rect::left},
    {L"Top", &base::Rect::top},
    {L"Width", &base::Rect::width},
    {L"Height", &base::Rect::height},
};

constexpr wchar_t kWindowState[] = L"WindowState";
constexpr wchar_t kNormal[] = L"0";
constexpr wchar_t kMaximised[] = L"2";

constexpr wchar_t kTicks[] = L"Informes";
constexpr wchar_t kOutput[] = L"Salida";
constexpr wchar_t kCopies[] = L"Copias";
constexpr const wchar_t* kOutputs[] = {L"Impresora", L"Vista previa"};

std::wstring HostFolder() {
    std::wstring folder = EnvironmentValue(L"Carpeta");
    if (folder.empty()) {
        wchar_t path[MAX_PATH];
        const std::wstring_view file(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
        folder = file.substr(0, file.find_last_of(L'\\'));
    }
    if (folder.back() == L'\\') {
        folder.pop_back();
    }
    return folder + L"\\AtbGrx\\";
}

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

void RegistrySettings::RestorePlacement(const std::wstring& key, PlacedForm& form) {
    base::Rect place = form.Place();
    for (const PlacementValue& value : kPlacement) {
        const std::optional<std::wstring> text = ReadRegistryText(key, value.name);
        const std::optional<long> number = text ? base::ParseLong(*text) : std::nullopt;
        if (!number) {
            return;
        }
        place.*value.part = static_cast<int>(*number);
    }
    if (base::IsSanePlacement(place)) {
        form.SetPlace(place);
    }
    if (ReadRegistryText(key, kWindowState) == kMaximised) {
        form.SetMaximised();
    }
}

void RegistrySettings::SavePlacement(const std::wstring& key, PlacedForm& form) {
    const base::Rect place = form.Place();
    for (const PlacementValue& value : kPlacement) {
        WriteRegistryText(key, value.name, std::to_wstring(place.*value.part));
    }
    WriteRegistryText(key, kWindowState, form.IsMaximised() ? kMaximised : kNormal);
}

std::wstring RegistrySettings::ReadValue(const std::wstring& key, const std::wstring& name,
                                         std::wstring fallback) {
    return ReadRegistryText(key, name).value_or(std::move(fallback));
}

void RegistrySettings::WriteValue(const std::wstring& key, const std::wstring& name,
                                  const std::wstring& value) {
    WriteRegistryText(key, name, value);
}

std::optional<ListChoices> RegistrySettings::LoadListChoices(const std::wstring& key, IDispatch* reports,
                                                             const ChoiceControls& controls) {
    ListChoices choices{.titles = contract::ReportTitles(reports)};
    choices.ticks = base::RestoreTicks(choices.titles, ReadValue(key, kTicks, {}));
    if (controls.outputs) {
        choices.outputs = kOutputs;
        choices.output = ReadValue(key, kOutput, {});
        choices.copies = ReadValue(key, kCopies, L"1");
    }
    return choices;
}

void RegistrySettings::SaveListChoices(const std::wstring& key, const ListChoices& choices,
                                       const ChoiceControls& controls) {
    WriteValue(key, kTicks, base::RememberTicks(choices.titles, choices.ticks));
    if (controls.outputs) {
        WriteValue(key, kOutput, choices.output);
        WriteValue(key, kCopies, choices.copies);
    }
}

std::wstring HostFolderFiles::ToolbarLayoutPath(std::wstring_view form) {
    return HostFolder() + std::wstring(form) + L".atb";
}

bool HostFolderFiles::Exists(const std::wstring& path) { return IsFile(path); }

LayoutPlace HostFolderFiles::GridLayoutPlace(const std::wstring& fileName) {
    std::wstring folder = HostFolder();
    const bool saved = IsFile(folder + fileName);
    return {std::move(folder), saved};
}

void MessageBoxErrors::Show(HWND owner, const com::Error& error) {
    wchar_t code[64];
    // Automation's own numbers (0x800Annnn) read as the plain number that a host developer raised.
    const auto number = static_cast<unsigned long>(error.number);
    wsprintfW(code, (number & 0xFFFF0000UL) == 0x800A0000UL ? L"%lu" : L"0x%08lX",
              (number & 0xFFFF0000UL) == 0x800A0000UL ? number & 0xFFFFUL : number);
    std::wstring tail = L"\n\nOrigen: " + base::Named(error.source) + L"\nError: " + code;
    if (!error.call.empty() && error.source != error.call) {
        tail += L"\nLlamada: " + error.call;
    }
    win::ShowMessage(owner, error.description, L"Tamvelo", MB_OK | MB_ICONERROR | (owner ? 0U : MB_TASKMODAL),
                     tail);
}

void SelectAllOnFocus::Receive(HWND window, IDispatch* /*control*/) {
    // Edit controls and the edit part of combos answer one of these; each ignores the other's.
    wchar_t kind[16] = L"";
    GetClassNameW(window, kind, ARRAYSIZE(kind));
    const bool combo = lstrcmpiW(kind, L"ComboBox") == 0;
    SendMessageW(window, combo ? CB_SETEDITSEL : EM_SETSEL, 0, combo ? MAKELPARAM(0, -1) : -1);
}

com::ComPtr<IDispatch> NoDataClasses::Create(const std::wstring& className) {
    constexpr auto kCannotCreate = static_cast<HRESULT>(0x800A01AD); // automation's number 429
    throw com::Error(kCannotCreate,
                     L"El entorno de la aplicación no ofrece la clase de datos «" + className + L"».");
}

} // namespace tamvelo::environment
