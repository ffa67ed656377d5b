#pragma once

#include "environment/Environment.h"

namespace tamvelo::environment {

/// Settings in the user's registry: placement as the text values "Left", "Top", "Width", "Height" in pixels.
class RegistrySettings final : public Settings {
public:
    void RestorePlacement(const std::wstring& key, PlacedForm& form) override;
    void SavePlacement(const std::wstring& key, PlacedForm& form) override;
    std::wstring ReadValue(const std::wstring& key, const std::wstring& name, std::wstring fallback) override;
    void WriteValue(const std::wstring& key, const std::wstring& name, const std::wstring& value) override;
    std::optional<ListChoices> LoadListChoices(const std::wstring& key, IDispatch* reports,
                                               const ChoiceControls& controls) override;
    std::optional<ListChoices> LoadLabelChoices(const std::wstring& key, IDispatch* labels,
                                                const ChoiceControls& controls) override {
        return LoadListChoices(key, labels, controls);
    }
    void SaveListChoices(const std::wstring& key, const ListChoices& choices,
                         const ChoiceControls& controls) override;
};

/// Layout files in the sub-folder "AtbGrx" of the host program's folder, or of the folder that the
/// environment names.
class HostFolderFiles final : public FileService {
public:
    std::wstring ToolbarLayoutPath(std::wstring_view form) override;
    bool Exists(const std::wstring& path) override;
    LayoutPlace GridLayoutPlace(const std::wstring& fileName) override;
};

/// A message box over the form.
class MessageBoxErrors final : public ErrorReport {
public:
    void Show(HWND owner, const com::Error& error) override;
};

/// Selects the text, so that typing replaces it.
class SelectAllOnFocus final : public FocusUtility {
public:
    void Receive(HWND window, IDispatch* control) override;
};

/// The library has no data: look-ups need a component of the environment.
class NoDataClasses final : public DataClasses {
public:
    com::ComPtr<IDispatch> Create(const std::wstring& className) override;
    std::wstring Related(const std::wstring& /*className*/, const std::wstring& /*field*/) override {
        return {};
    }
};

} // namespace tamvelo::environment
