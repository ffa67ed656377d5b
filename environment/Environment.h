#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Appointment.h"
#include "base/Placement.h"
#include "com/ComPtr.h"
#include "com/Error.h"

/// The components of the host's environment that every dialog uses. Each is an interface here, created once
/// per thread on first use. The library brings its own; an environment puts its own component in place of one
/// by naming a ProgID in the registry, and is then called late-bound (docs/environment.md lists the members).
namespace tamvelo::environment {

/// A form as the settings component sees it: a rectangle in screen pixels, and an automation object with
/// `Left`, `Top`, `Width`, `Height`, `Name`, `Caption`, `hWnd`.
class PlacedForm {
public:
    virtual base::Rect Place() const = 0;
    virtual void SetPlace(const base::Rect& place) = 0;
    /// Its place is then the one that it goes back to.
    virtual bool IsMaximised() const = 0;
    virtual void SetMaximised() = 0;
    virtual com::ComPtr<IDispatch> FormObject() = 0;

protected:
    ~PlacedForm() = default;
};

/// What is chosen in a report dialog, as it is kept.
struct ListChoices {
    std::vector<std::wstring> titles = {};
    std::vector<bool> ticks = {};
    std::span<const wchar_t* const> outputs = {}; // that all dialogs have, when it is loaded
    std::wstring output = {};
    std::wstring copies = {};
};

/// The same as the control objects that a host's component works on; a dialog without an output list and a
/// copies box has the first alone.
struct ChoiceControls {
    com::ComPtr<IDispatch> reports;
    com::ComPtr<IDispatch> outputs;
    com::ComPtr<IDispatch> copies;
};

class Settings {
public:
    virtual ~Settings() = default;
    /// Leaves the form where it is when nothing sensible is stored.
    virtual void RestorePlacement(const std::wstring& key, PlacedForm& form) = 0;
    virtual void SavePlacement(const std::wstring& key, PlacedForm& form) = 0;
    /// The stored text, or `fallback`.
    virtual std::wstring ReadValue(const std::wstring& key, const std::wstring& name,
                                   std::wstring fallback) = 0;
    virtual void WriteValue(const std::wstring& key, const std::wstring& name, const std::wstring& value) = 0;
    /// The host's reports with what was chosen under the key; nothing from a component that has put it into
    /// the controls itself.
    virtual std::optional<ListChoices> LoadListChoices(const std::wstring& key, IDispatch* reports,
                                                       const ChoiceControls& controls) = 0;
    /// The same for a list of labels; a host may render its labels another way than its reports.
    virtual std::optional<ListChoices> LoadLabelChoices(const std::wstring& key, IDispatch* labels,
                                                        const ChoiceControls& controls) = 0;
    virtual void SaveListChoices(const std::wstring& key, const ListChoices& choices,
                                 const ChoiceControls& controls) = 0;
};

struct LayoutPlace {
    std::wstring folder; // with a backslash at the end
    bool saved = false;  // whether the class has a layout file there
};

class FileService {
public:
    virtual ~FileService() = default;
    /// Where a form keeps its own toolbar layout.
    virtual std::wstring ToolbarLayoutPath(std::wstring_view form) = 0;
    virtual bool Exists(const std::wstring& path) = 0;
    /// Where grid layouts are, and whether `fileName` is among them.
    virtual LayoutPlace GridLayoutPlace(const std::wstring& fileName) = 0;
};

class ErrorReport {
public:
    virtual ~ErrorReport() = default;
    virtual void Show(HWND owner, const com::Error& error) = 0;
};

class FocusUtility {
public:
    virtual ~FocusUtility() = default;
    /// A text box or combo that got the focus.
    virtual void Receive(HWND window, IDispatch* control) = 0;
};

class DataClasses {
public:
    virtual ~DataClasses() = default;
    /// A data class of the host by its name, for a look-up that a dialog makes on its own.
    virtual com::ComPtr<IDispatch> Create(const std::wstring& className) = 0;
    /// The data class whose codes a field of `className` holds; "" for a field that holds values of its own.
    virtual std::wstring Related(const std::wstring& className, const std::wstring& field) = 0;
};

struct Appointment {
    base::Day day = 0;
    int minute = 0; // of the day
    base::AppointmentTexts texts;
};

/// Keeps appointments. The library has no place for them of its own.
class Appointments {
public:
    virtual ~Appointments() = default;
    virtual void Save(const Appointment& appointment) = 0;
};

class Environment {
public:
    /// The calling thread's components.
    static Environment& Get();
    /// Lets go of the calling thread's components; the next use creates them anew. For when the library is
    /// unused.
    static void Release() noexcept;

    Settings& GetSettings();
    FileService& GetFiles();
    ErrorReport& GetErrors();
    FocusUtility& GetFocus();
    DataClasses& GetDataClasses();
    /// Whether there is a component that makes data classes: without one no look-up works.
    static bool OffersDataClasses();
    /// A new component each time. Throws com::Error when the environment names none.
    static std::unique_ptr<Appointments> NewAppointments();

private:
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<FileService> m_files;
    std::unique_ptr<ErrorReport> m_errors;
    std::unique_ptr<FocusUtility> m_focus;
    std::unique_ptr<DataClasses> m_dataClasses;
};

/// A value of the environment's own key (HKCU\SOFTWARE\<company>\Global\Configuracion\Entorno): the ProgIDs
/// of replaced components, the folder of layout files ("Carpeta") and the trace file ("Traza"). "" when not
/// set.
std::wstring EnvironmentValue(const wchar_t* name);

/// Starts the trace when the environment names a file for it; asked once per thread's first use.
void StartTraceIfAsked();

} // namespace tamvelo::environment
