#include "environment/Environment.h"

#include <map>
#include <mutex>

#include "base/NeverDestroyed.h"
#include "com/ApartmentEnd.h"
#include "com/LateObject.h"
#include "com/Trace.h"
#include "environment/DefaultEnvironment.h"
#include "environment/Product.h"
#include "environment/Registry.h"

namespace tamvelo::environment {

namespace {

using com::Argument;

// The same interfaces over a component of the environment. Its members carry Spanish names like the rest of a
// host.
class LateSettings final : public Settings {
public:
    explicit LateSettings(IDispatch* object) : m_object(object, L"Configuracion") {}
    void RestorePlacement(const std::wstring& key, PlacedForm& form) override {
        m_object.Call(L"RestaurarPosicion", {key, form.FormObject().Get()});
    }
    void SavePlacement(const std::wstring& key, PlacedForm& form) override {
        m_object.Call(L"GuardarPosicion", {key, form.FormObject().Get()});
    }
    std::wstring ReadValue(const std::wstring& key, const std::wstring& name,
                           std::wstring fallback) override {
        m_object.Call(L"LeerValor", {key, name, Argument::Ref(fallback)});
        return fallback;
    }
    void WriteValue(const std::wstring& key, const std::wstring& name, const std::wstring& value) override {
        m_object.Call(L"GuardarValor", {key, name, value});
    }
    std::optional<ListChoices> LoadListChoices(const std::wstring& key, IDispatch* reports,
                                               const ChoiceControls& controls) override {
        if (controls.outputs) {
            m_object.Call(L"CargarLista", {key, reports, controls.reports.Get(), controls.outputs.Get(),
                                           controls.copies.Get(), false, false});
        } else {
            m_object.Call(L"CargarLista", {key, reports, controls.reports.Get()});
        }
        return std::nullopt;
    }
    std::optional<ListChoices> LoadLabelChoices(const std::wstring& key, IDispatch* labels,
                                                const ChoiceControls& controls) override {
        m_object.Call(L"CargarEtiquetas", {key, labels, controls.reports.Get()});
        return std::nullopt;
    }
    void SaveListChoices(const std::wstring& key, const ListChoices& /*choices*/,
                         const ChoiceControls& controls) override {
        if (controls.outputs) {
            m_object.Call(L"GuardarLista",
                          {key, controls.reports.Get(), controls.outputs.Get(), controls.copies.Get()});
        } else {
            m_object.Call(L"GuardarLista", {key, controls.reports.Get()});
        }
    }

private:
    com::LateObject m_object;
};

class LateFiles final : public FileService {
public:
    explicit LateFiles(IDispatch* object) : m_object(object, L"Archivos") {}
    std::wstring ToolbarLayoutPath(std::wstring_view form) override {
        return m_object.Call(L"RutaBarra", {form}).ToText();
    }
    bool Exists(const std::wstring& path) override { return m_object.Call(L"Existe", {path}).ToBool(); }
    LayoutPlace GridLayoutPlace(const std::wstring& fileName) override {
        LayoutPlace place;
        place.folder = m_object.Call(L"CarpetaCuadriculas", {fileName, Argument::Ref(place.saved)}).ToText();
        return place;
    }

private:
    com::LateObject m_object;
};

class LateErrors final : public ErrorReport {
public:
    explicit LateErrors(IDispatch* object) : m_object(object, L"Errores") {}
    void Show(HWND owner, const com::Error& error) override {
        try {
            m_object.Call(L"Mostrar",
                          {static_cast<long>(error.number), error.source, com::DescriptionWithCall(error)});
        } catch (const com::Error&) {
            MessageBoxErrors().Show(owner, error); // an error must not be lost with its reporter
        }
    }

private:
    com::LateObject m_object;
};

class LateFocus final : public FocusUtility {
public:
    explicit LateFocus(IDispatch* object) : m_object(object, L"Foco") {}
    void Receive(HWND /*window*/, IDispatch* control) override { m_object.Call(L"Recibir", {control}); }

private:
    com::LateObject m_object;
};

class LateDataClasses final : public DataClasses {
    static constexpr wchar_t kRelated[] = L"ClaseRelacionada";

public:
    explicit LateDataClasses(IDispatch* object) : m_object(object, L"Clases") {}
    com::ComPtr<IDispatch> Create(const std::wstring& className) override {
        com::ComPtr<IDispatch> made = m_object.Call(L"CrearClase", {className}).ToObject();
        return made ? made : NoDataClasses().Create(className);
    }
    std::wstring Related(const std::wstring& className, const std::wstring& field) override {
        // Components may only make classes.
        return m_object.Answers(kRelated) ? m_object.Call(kRelated, {className, field}).ToText() : L"";
    }

private:
    com::LateObject m_object;
};

class LateAppointments final : public Appointments {
public:
    explicit LateAppointments(IDispatch* object) : m_object(object, L"Citas") {}
    void Save(const Appointment& appointment) override {
        constexpr double kMinutesPerDay = 24 * 60;
        const base::AppointmentTexts& texts = appointment.texts;
        IDispatch* const connection = nullptr; // the component opens its own
        m_object.Call(
            L"GuardarCita",
            {com::Variant::Date(appointment.day), com::Variant::Date(appointment.minute / kMinutesPerDay),
             texts.customerCode, texts.customerName, texts.comment, texts.employeeCode, texts.employeeName,
             texts.box, texts.type, connection});
    }

private:
    com::LateObject m_object;
};

com::ComPtr<IDispatch> CreateByName(const std::wstring& progId) {
    CLSID id;
    com::ComPtr<IDispatch> object;
    HRESULT result = CLSIDFromString(progId.c_str(), &id);
    if (SUCCEEDED(result)) {
        result = com::CallOut([&] {
            return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                    IID_PPV_ARGS(&object));
        });
    }
    com::Check(result, L"No se puede crear el componente del entorno «" + progId + L"».");
    return object;
}

/// The environment's component when it names one, else the library's own.
template <class Interface, class Late, class Own>
Interface& Resolve(std::unique_ptr<Interface>& slot, const wchar_t* setting) {
    if (!slot) {
        const std::wstring progId = EnvironmentValue(setting);
        if (progId.empty()) {
            slot = std::make_unique<Own>();
        } else {
            slot = std::make_unique<Late>(CreateByName(progId).Get());
        }
    }
    return *slot;
}

std::mutex g_lock;
std::map<DWORD, std::unique_ptr<Environment>>& Environments() {
    // At process end the components' own libraries may be gone before this one.
    static base::NeverDestroyed<std::map<DWORD, std::unique_ptr<Environment>>> environments;
    return *environments;
}

} // namespace

Environment& Environment::Get() {
    com::ApartmentEnd::Watch(com::ApartmentEnd::What::Components, Release);
    const std::scoped_lock lock(g_lock);
    std::unique_ptr<Environment>& slot = Environments()[GetCurrentThreadId()];
    if (!slot) {
        slot = std::make_unique<Environment>();
    }
    return *slot;
}

void Environment::Release() noexcept {
    std::unique_ptr<Environment> leaving;
    {
        const std::scoped_lock lock(g_lock);
        const auto found = Environments().find(GetCurrentThreadId());
        if (found == Environments().end()) {
            return;
        }
        leaving = std::move(found->second);
        Environments().erase(found);
    }
}

Settings& Environment::GetSettings() {
    return Resolve<Settings, LateSettings, RegistrySettings>(m_settings, L"Configuracion");
}

FileService& Environment::GetFiles() {
    return Resolve<FileService, LateFiles, HostFolderFiles>(m_files, L"Archivos");
}

ErrorReport& Environment::GetErrors() {
    return Resolve<ErrorReport, LateErrors, MessageBoxErrors>(m_errors, L"Errores");
}

FocusUtility& Environment::GetFocus() {
    return Resolve<FocusUtility, LateFocus, SelectAllOnFocus>(m_focus, L"Foco");
}

DataClasses& Environment::GetDataClasses() {
    return Resolve<DataClasses, LateDataClasses, NoDataClasses>(m_dataClasses, L"Clases");
}

bool Environment::OffersDataClasses() { return !EnvironmentValue(L"Clases").empty(); }

std::unique_ptr<Appointments> Environment::NewAppointments() {
    const std::wstring progId = EnvironmentValue(L"Citas");
    if (progId.empty()) {
        constexpr auto kCannotCreate = static_cast<HRESULT>(0x800A01AD); // automation's number 429
        throw com::Error(kCannotCreate,
                         L"El entorno de la aplicación no ofrece ningún componente que guarde "
                         L"citas. La cita no se ha guardado.");
    }
    return std::make_unique<LateAppointments>(CreateByName(progId).Get());
}

std::wstring EnvironmentValue(const wchar_t* name) {
    const std::wstring key = L"SOFTWARE\\" + Product::Own().company + L"\\Global\\Configuracion\\Entorno";
    return ReadRegistryText(key, name).value_or(L"");
}

void StartTraceIfAsked() { com::Trace::WriteTo(EnvironmentValue(L"Traza")); }

} // namespace tamvelo::environment
