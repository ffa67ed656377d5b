#include <windows.h>

#include <shellapi.h>

#include <filesystem>
#include <optional>

#include "com/Error.h"
#include "com/Module.h"
#include "demo/app/CommandLine.h"
#include "demo/app/Components.h"
#include "demo/app/Console.h"
#include "demo/app/Describe.h"
#include "demo/app/Diagnosis.h"
#include "demo/app/MainWindow.h"
#include "demo/app/PrivateSettings.h"
#include "demo/app/SampleFile.h"
#include "demo/app/Soak.h"
#include "demo/app/Tour.h"
#include "demo/check/Checker.h"
#include "demo/host/HostObjects.h"

namespace tamvelo::demo {

namespace {

constexpr CLSID kClases = {0x5be1f9a4, 0x0c57, 0x4f0e, {0x9c, 0x1d, 0x3e, 0x52, 0x77, 0x60, 0xa8, 0x4b}};
constexpr CLSID kCitas = {0x8c0d7e12, 0x4b6a, 0x4d35, {0xa3, 0x5e, 0x90, 0x1f, 0x2c, 0xd4, 0x66, 0x71}};

constexpr long kFewRows = 2000;

enum Exit { Good, Failed, UsageError };

/// The thread's automation, from the first object to the last.
class Apartment {
public:
    Apartment() { com::Check(OleInitialize(nullptr)); }
    ~Apartment() { OleUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

/// Sharp on every monitor where Windows can; 96 asks for what it does to programs that know nothing of it.
/// Looked up, for older versions of Windows do not have it.
void UseResolution(long dpi) {
    using SetContext = BOOL WINAPI(DPI_AWARENESS_CONTEXT);
    const auto set = reinterpret_cast<SetContext*>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetProcessDpiAwarenessContext")));
    if (set == nullptr) {
        SetProcessDPIAware();
    } else if (dpi == USER_DEFAULT_SCREEN_DPI) {
        set(DPI_AWARENESS_CONTEXT_UNAWARE);
    } else if (!set(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2)) {
        set(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE);
    }
    const HDC screen = GetDC(nullptr);
    const int real = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    if (dpi != 0 && real != dpi) {
        throw com::Error(
            E_INVALIDARG,
            L"La pantalla tiene " + std::to_wstring(real) + L" ppp, no " + std::to_wstring(dpi) + L'.',
            L"Pedidos");
    }
}

/// For the data of a tour or a soak, and a soak's layouts: each begins with the same.
std::wstring EmptyFolder() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / L"TamveloMuestra";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    return folder.wstring();
}

/// The program over its data, as it is wanted. `findings`: for whom the operations are tried.
int Use(const CommandLine& wanted, Findings* findings = nullptr) {
    std::optional<PrivateSettings> unchanged;
    const bool same = wanted.soak > 0 || !wanted.tour.empty() || findings != nullptr;
    const std::wstring own = same ? EmptyFolder() : std::wstring();
    const std::wstring& folder = wanted.soak > 0 ? own : wanted.tour;
    if (!folder.empty()) {
        unchanged.emplace(folder);
        CreateDirectoryW(folder.c_str(), nullptr);
    }
    const std::shared_ptr<Database> database =
        OpenSampleFile(same && wanted.database.empty() ? own + L"\\datos.sqlite" : wanted.database,
                       wanted.soak > 0 || findings != nullptr ? kFewRows : wanted.rows);
    Components components;
    components.Add(L"Clases", kClases, [database] { return MakeDataClasses(database); });
    components.Add(L"Citas", kCitas, [database] { return MakeAppointments(database); });
    MainWindow window(database);
    window.Show();
    if (findings != nullptr) {
        TryOperations(window, *findings, wanted.only);
    } else if (!wanted.tour.empty()) {
        return TakeTour(window, wanted.tour, wanted.only) ? Good : Failed;
    } else if (wanted.soak > 0) {
        return Soak(window, wanted.from, wanted.soak, wanted.seed) ? Good : Failed;
    } else {
        window.Run();
    }
    return Good;
}

int Diagnose(const CommandLine& wanted) {
    Findings findings;
    if (LookAtInstallation(findings)) {
        try {
            Use(wanted, &findings);
        } catch (...) {
            findings.Add(Findings::Verdict::Bad, L"El programa", Describe(AnyCurrentError()));
        }
    }
    const bool good = findings.End();
    if (!Say(findings.Path())) {
        ShellExecuteW(nullptr, L"open", findings.Path().c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    }
    return good ? Good : Failed;
}

int Run(const CommandLine& wanted) {
    UseResolution(wanted.dpi);
    const Apartment apartment;
    if (!wanted.check.empty()) {
        return CheckHost({wanted.check, wanted.only, wanted.write}, Say) ? Good : Failed;
    }
    return wanted.diagnosis ? Diagnose(wanted) : Use(wanted);
}

} // namespace

} // namespace tamvelo::demo

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    using namespace tamvelo;
    com::Module::Attach(instance);
    const auto wanted = demo::ReadCommandLine();
    std::wstring complaint = demo::kUsage;
    int exit = demo::UsageError;
    if (wanted) {
        try {
            return demo::Run(*wanted);
        } catch (...) {
            complaint = demo::Describe(demo::AnyCurrentError());
            exit = demo::Failed;
        }
    }
    // A box that nobody sees would wait for ever: only where nobody reads what we say either.
    if (!demo::Say(complaint)) {
        MessageBoxW(nullptr, complaint.c_str(), L"TamveloDemo", MB_ICONERROR);
    }
    return exit;
}
