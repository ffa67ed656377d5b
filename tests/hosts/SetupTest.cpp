// The setup program as users run it: what it leaves, what an update meets, what is left after it.
#include <windows.h>

#include <gmock/gmock.h>
#include <shellapi.h>
#include <shlobj.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

#include "ProductVersion.h"
#include "RegistryView.h"
#include "Server.h"
#include "base/Text.h"

namespace tamvelo::hosts {
namespace {

using ::testing::ContainerEq;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using ::testing::Not;
namespace fs = std::filesystem;

const std::wstring kUninstall = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
const std::wstring kRunOnce = L"Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
constexpr bool kBoth = sizeof(void*) == 8; // a Windows of 64 bits runs both kinds of program
constexpr wchar_t kServer[] =
    L"Software\\Classes\\CLSID\\{043d9058-66c9-47c8-b6b5-86e743af173d}\\InprocServer32";
constexpr wchar_t kSettings[] = L"Software\\Tamvelo\\Tamvelo\\1.0\\Configuracion\\frmSeleccion";

fs::path SystemFolder(int which) {
    wchar_t path[MAX_PATH] = L"";
    SHGetFolderPathW(nullptr, which | CSIDL_FLAG_CREATE, nullptr, 0, path);
    return path;
}

/// The exit code of a program; `person` is asked again and again meanwhile.
DWORD ExitOf(std::wstring command, const std::function<void(DWORD process)>& person = {}) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        return ~GetLastError();
    }
    for (int i = 0; WaitForSingleObject(process.hProcess, 100) == WAIT_TIMEOUT; ++i) {
        if (i == 300) {
            TerminateProcess(process.hProcess, 99);
        } else if (person) {
            person(process.dwProcessId);
        }
    }
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

/// Somebody who reads each page of a setup program, and goes on once it says the same twice: it stands then.
class Reader {
public:
    void operator()(DWORD process) {
        m_process = process;
        m_page.clear();
        EnumWindows(
            [](HWND window, LPARAM self) __attribute__((stdcall))->BOOL {
                return reinterpret_cast<Reader*>(self)->Look(window);
            },
            reinterpret_cast<LPARAM>(this));
        if (m_page == m_before && m_window) {
            read.insert(m_page.begin(), m_page.end());
            if (HWND start = std::exchange(m_start, nullptr)) {
                SendMessageW(start, BM_CLICK, 0, 0); // not now
            } else if (IsWindowEnabled(GetDlgItem(m_window, IDOK))) {
                PostMessageW(m_window, WM_COMMAND, IDOK, 0);
            }
        }
        m_before = m_page;
    }
    /// The texts of all controls, of what is chosen with a mark before it.
    std::set<std::wstring> read;

private:
    BOOL Look(HWND window) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == m_process && IsWindowVisible(window)) {
            m_window = window;
            EnumChildWindows(
                window, [](HWND control, LPARAM self) __attribute__((stdcall))->BOOL {
                    return reinterpret_cast<Reader*>(self)->Read(control);
                },
                reinterpret_cast<LPARAM>(this));
        }
        return TRUE;
    }
    BOOL Read(HWND control) {
        wchar_t text[256] = L"";
        SendMessageW(control, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text));
        const bool chosen = SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
        m_page.insert((chosen ? L"(x)" : L"") + std::wstring(text));
        if (chosen && std::wstring_view(text).starts_with(L"Abrir")) {
            m_start = control;
        }
        return TRUE;
    }
    DWORD m_process = 0;
    HWND m_window = nullptr;
    HWND m_start = nullptr; // a box that says that the program is to be started
    std::set<std::wstring> m_page;
    std::set<std::wstring> m_before;
};

bool Becomes(const std::function<bool()>& so) {
    for (int i = 0; i < 200 && !so(); ++i) {
        Sleep(50);
    }
    return so();
}

std::wstring Text(HKEY hive, const std::wstring& key, const wchar_t* name) {
    wchar_t text[1024] = L"";
    DWORD size = sizeof text;
    RegGetValueW(hive, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

std::string Bytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::wstring VersionOf(const fs::path& path) {
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data());
    std::wstring texts;
    for (const wchar_t* name : {L"CompanyName", L"ProductName", L"ProductVersion"}) {
        wchar_t none[] = L"";
        wchar_t* text = none;
        UINT length = 0;
        for (const wchar_t* language : {L"0C0A04B0", L"040A04E4"}) { // ours, and the setup program's
            VerQueryValueW(block.data(),
                           (std::wstring(L"\\StringFileInfo\\") + language + L'\\' + name).c_str(),
                           reinterpret_cast<void**>(&text), &length);
        }
        texts += (texts.empty() ? L"" : L"|") + std::wstring(text);
    }
    return texts;
}

/// The files of a folder with what they hold.
std::map<std::wstring, std::string> Files(const fs::path& folder) {
    std::map<std::wstring, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files[entry.path().lexically_relative(folder)] = Bytes(entry.path());
        }
    }
    return files;
}

/// Where an installation might leave something: what Windows keeps of programs, the classes by their names,
/// all of the user's; and all folders that are not the system's own.
struct Machine {
    Snapshot all;
    Snapshot user;
    std::set<std::wstring> files;

    Machine() {
        for (const wchar_t* key : {L"", L"\\CLSID", L"\\Interface", L"\\TypeLib", L"\\Wow6432Node\\CLSID",
                                   L"\\Wow6432Node\\Interface"}) {
            Read(HKEY_LOCAL_MACHINE, std::wstring(L"Software\\Classes") + key, all, 1);
        }
        for (const wchar_t* key : {L"App Paths", L"Run", L"RunOnce", L"SharedDLLs", L"Uninstall"}) {
            Read(HKEY_LOCAL_MACHINE, std::wstring(L"Software\\Microsoft\\Windows\\CurrentVersion\\") + key,
                 all);
        }
        Read(HKEY_CURRENT_USER, L"Software", user);
        std::erase_if(user, [](const auto& entry) { return entry.first.starts_with(L"Software\\Wine"); });
        for (const auto& folder : {SystemFolder(CSIDL_PROFILE), SystemFolder(CSIDL_COMMON_APPDATA),
                                   SystemFolder(CSIDL_PROGRAM_FILES)}) {
            for (const auto& entry : fs::recursive_directory_iterator(folder)) {
                files.insert(entry.path());
            }
        }
        // The uninstaller's copy of itself goes with the next start.
        std::erase_if(files, [](const auto& file) { return file.find(L"\\~nsu") != file.npos; });
    }
};

class SetupTest : public testing::TestWithParam<bool> {
protected:
    SetupTest() {
        for (const std::wstring& key :
             {kUninstall, kRunOnce, std::wstring(L"Software\\Classes")}) { // as users have them
            RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), L"prueba", REG_SZ, L"", 2);
        }
        fs::create_directories(Installed().parent_path());
        Clean();
        if (GetParam()) { // also because the script engine of some systems registers itself on first use
            EXPECT_THAT(HostScript(), Not(HasSubstr("hay")));
        }
        m_before = std::make_unique<Machine>();
    }
    ~SetupTest() override {
        Clean();
        for (const std::wstring& key : {kUninstall, kRunOnce, std::wstring(L"Software\\Classes")}) {
            RegDeleteKeyValueW(HKEY_CURRENT_USER, key.c_str(), L"prueba");
        }
    }

    HKEY Hive() const { return GetParam() ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }
    fs::path Installed() const {
        return GetParam() ? SystemFolder(CSIDL_PROGRAM_FILES) / L"Tamvelo"
                          : SystemFolder(CSIDL_LOCAL_APPDATA) / L"Programs" / L"Tamvelo";
    }
    fs::path Menu() const {
        return SystemFolder(GetParam() ? CSIDL_COMMON_PROGRAMS : CSIDL_PROGRAMS) / L"Tamvelo";
    }
    fs::path Aside() const { return Installed().wstring() + L".viejo"; }
    std::wstring Setup() const {
        return L'"' + m_package + L"\\out\\Tamvelo-" TAMVELO_VERSION L"-instalar.exe\"";
    }
    DWORD Install() const {
        return ExitOf(Setup() + L" /S " + (GetParam() ? L"/AllUsers" : L"/CurrentUser"));
    }
    /// What scripts of both kinds of process find, where there are both.
    std::string HostScript() const {
        const std::wstring script = m_package + L"\\prueba.vbs";
        std::ofstream(fs::path(script))
            << "WScript.Echo \"hay \" & TypeName(CreateObject(\"Tamvelo.ClsShowSerch\"))";
        std::string said;
        for (const wchar_t* engine : {L"system32", L"syswow64"}) {
            const fs::path program = SystemFolder(CSIDL_WINDOWS) / engine / L"cscript.exe";
            said += fs::exists(program)
                        ? RunProgram(program.wstring() + L" //nologo \"" + script + L"\"").output
                        : "";
        }
        return said;
    }
    /// It goes on in a copy of itself.
    bool Uninstall(const std::wstring& more = {}) const {
        ExitOf(L'"' + (Installed() / L"Desinstalar.exe").wstring() + L"\" /S " + more);
        return Becomes([&] { return !fs::exists(Installed() / L"Desinstalar.exe"); }) &&
               Becomes([&] { return Text(Hive(), kUninstall + L"\\Tamvelo", L"DisplayName").empty(); });
    }
    std::string Reason() const {
        return base::ToUtf8(reinterpret_cast<const wchar_t*>(Bytes(m_reason).c_str()));
    }
    /// What an earlier run left that was ended.
    void Clean() const {
        if (fs::exists(Installed() / L"Desinstalar.exe")) {
            Uninstall();
        }
        std::error_code ignored;
        fs::remove_all(Installed(), ignored);
        fs::remove_all(Aside(), ignored);
        fs::remove(m_reason, ignored);
        // And what a demo host of somebody else left here: the uninstaller takes all that is its.
        fs::remove_all(SystemFolder(CSIDL_LOCAL_APPDATA) / L"Tamvelo", ignored);
        fs::remove_all(fs::temp_directory_path() / L"TamveloMuestra", ignored);
        fs::remove(fs::temp_directory_path() / L"TamveloDiagnostico.txt", ignored);
        RegDeleteKeyValueW(Hive(), kRunOnce.c_str(), L"Tamvelo");
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Tamvelo");
    }
    void ExpectAllAsBefore() const {
        Becomes([&] { return Machine().files == m_before->files; }); // an uninstaller may still be at its own
        const Machine now;
        EXPECT_THAT(now.all, ContainerEq(m_before->all));
        EXPECT_THAT(now.user, ContainerEq(m_before->user));
        EXPECT_THAT(now.files, ContainerEq(m_before->files));
    }

    const std::wstring m_package = Folder() + L"\\package";
    const fs::path m_reason = fs::temp_directory_path() / L"Tamvelo-instalar.txt";
    std::unique_ptr<Machine> m_before;
};

TEST_P(SetupTest, BringsWhatTheZipHoldsAndTakesItAwayAgain) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kSettings, L"Left", REG_SZ, L"1", 4);
    ASSERT_EQ(Install(), 0U);
    auto files = Files(Installed());
    EXPECT_EQ(files.erase(L"Desinstalar.exe"), 1U);
    const auto zipped = Files(m_package + L"\\zip\\Tamvelo-" TAMVELO_VERSION);
    EXPECT_GT(zipped.size(), 20U);
    EXPECT_TRUE(files == zipped); // a megabyte of library is no message
    EXPECT_EQ(Text(Hive(), kServer, nullptr), Installed() / TAMVELO_LIBRARY);
    EXPECT_EQ(Text(Hive(), kUninstall + L"\\Tamvelo", L"DisplayVersion"), L"" TAMVELO_VERSION);
    EXPECT_EQ(std::distance(fs::directory_iterator(Menu()), {}), 2);
    for (const wchar_t* name : {TAMVELO_LIBRARY, L"TamveloDemo" TAMVELO_SUFFIX L".exe", L"Desinstalar.exe"}) {
        EXPECT_EQ(VersionOf(Installed() / name),
                  L"" TAMVELO_COMPANY L"|" TAMVELO_PRODUCT L"|" TAMVELO_VERSION);
        EXPECT_EQ(ExtractIconExW((Installed() / name).c_str(), -1, nullptr, nullptr, 0), 1U)
            << base::ToUtf8(name);
    }
    if (GetParam()) { // not every system that the tests run on looks for the user's own classes
        EXPECT_EQ(HostScript(),
                  kBoth ? "hay _ClsShowSerch\r\nhay _ClsShowSerch\r\n" : "hay _ClsShowSerch\r\n");
    }
    fs::create_directories(Installed() / L"AtbGrx"); // what a user of the demonstration has arranged
    EXPECT_TRUE(Uninstall(L"/AJUSTES"));
    EXPECT_TRUE(Becomes([&] { return !fs::exists(Installed()); }));
    ExpectAllAsBefore();
}

TEST_P(SetupTest, UpdatesAndRemovesALibraryThatAHostHasLoadedAndKeepsSettings) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kSettings, L"Left", REG_SZ, L"1", 4);
    m_before = std::make_unique<Machine>();
    ASSERT_EQ(Install(), 0U);
    const fs::path arranged = Installed() / L"AtbGrx";
    fs::create_directories(arranged);
    {
        Server host(Installed());
        com::ComPtr<entry::IClsShowSerch> used = host.Create();
        ASSERT_EQ(Install(), 0U);
        EXPECT_FALSE(host.MayUnload()); // goes on with what it has
        EXPECT_TRUE(fs::exists(Installed() / TAMVELO_LIBRARY));
        EXPECT_EQ(Text(Hive(), kServer, nullptr), Installed() / TAMVELO_LIBRARY);
        EXPECT_EQ(Files(Aside()).size(), 1U);
        EXPECT_TRUE(fs::exists(arranged));
        fs::remove(arranged);
        EXPECT_TRUE(Uninstall());
        EXPECT_TRUE(Becomes([&] { return !fs::exists(Installed()); }));
        used.Reset();
        EXPECT_TRUE(host.Unload());
    }
    EXPECT_EQ(ExitOf(Text(Hive(), kRunOnce, L"Tamvelo")), 0U); // as Windows does when it starts next,
    RegDeleteKeyValueW(Hive(), kRunOnce.c_str(), L"Tamvelo");  // having taken it out first
    ExpectAllAsBefore();
}

class SetupForUser : public SetupTest {};

TEST_P(SetupForUser, SaysWhyItFails) {
    // A volatile key refuses lasting children: the registry does not take the registration.
    HKEY obstacle = nullptr;
    const std::wstring key = std::wstring(kServer).substr(0, std::wstring(kServer).rfind(L'\\'));
    RegCreateKeyExW(Hive(), key.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &obstacle,
                    nullptr);
    RegCloseKey(obstacle);
    EXPECT_EQ(Install(), 4U);
    EXPECT_THAT(Reason(), HasSubstr("registrar"));
    EXPECT_TRUE(Uninstall()); // takes the obstacle away as well
    EXPECT_TRUE(Becomes([&] { return !fs::exists(Installed()); }));
    // A folder that cannot be made, named as a shell passes on what has blanks.
    const fs::path file = fs::temp_directory_path() / L"Año nuevo";
    std::ofstream(file) << "un fichero";
    EXPECT_EQ(ExitOf(Setup() + L" /S \"/D=" + (file / L"Tamvelo").wstring() + L'"'), 3U);
    EXPECT_THAT(Reason(), HasSubstr("Año nuevo"));
    fs::remove(file);
    fs::remove(m_reason);
    ExpectAllAsBefore();
}

TEST_P(SetupForUser, AsksPageByPage) {
    Reader reader;
    EXPECT_EQ(ExitOf(Setup(), std::ref(reader)), 0U);
    EXPECT_THAT(reader.read, IsSupersetOf({L"(x)Solo para &mí (no hacen falta permisos)",
                                           L"Para &todos los usuarios (pide permisos de administrador)",
                                           L"(x)Abrir el programa de demostración"}));
    EXPECT_EQ(Text(Hive(), kServer, nullptr), Installed() / TAMVELO_LIBRARY);
    reader.read.clear();
    const std::wstring program =
        Installed() / L"Desinstalar.exe"; // here, and not in a copy that goes on alone
    EXPECT_EQ(ExitOf(L'"' + program + L"\" _?=" + Installed().wstring(), std::ref(reader)), 0U);
    fs::remove_all(Installed());
    ExpectAllAsBefore();
}

std::string ForWhom(const testing::TestParamInfo<bool>& given) {
    return given.param ? "AllUsers" : "CurrentUser";
}
INSTANTIATE_TEST_SUITE_P(Installs, SetupTest, testing::Bool(), ForWhom);
INSTANTIATE_TEST_SUITE_P(Installs, SetupForUser, testing::Values(false), ForWhom);

} // namespace
} // namespace tamvelo::hosts
