// The setup program as users run it: what it leaves, what an update meets, what is left after it.
#include <gmock/gmock.h>
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

DWORD ExitOf(std::wstring command) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        return ~GetLastError();
    }
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(process.hProcess, 60'000);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

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
    DWORD Install() const {
        return ExitOf(L'"' + m_package + L"\\out\\Tamvelo-" TAMVELO_VERSION L"-instalar.exe\" /S " +
                      (GetParam() ? L"/AllUsers" : L"/CurrentUser"));
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
    /// What an earlier run left that was ended.
    void Clean() const {
        if (fs::exists(Installed() / L"Desinstalar.exe")) {
            Uninstall();
        }
        std::error_code ignored;
        fs::remove_all(Installed(), ignored);
        fs::remove_all(Aside(), ignored);
        fs::remove(m_reason, ignored);
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Tamvelo");
    }
    void ExpectAllAsBefore() const {
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

class SetupFailure : public SetupTest {};

TEST_P(SetupFailure, IsSaidWithItsReason) {
    // A volatile key refuses lasting children: the registry does not take the registration.
    HKEY obstacle = nullptr;
    const std::wstring key = std::wstring(kServer).substr(0, std::wstring(kServer).rfind(L'\\'));
    RegCreateKeyExW(Hive(), key.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &obstacle,
                    nullptr);
    RegCloseKey(obstacle);
    EXPECT_EQ(Install(), 4U);
    EXPECT_THAT(base::ToUtf8(reinterpret_cast<const wchar_t*>(Bytes(m_reason).c_str())),
                HasSubstr("registrar"));
    EXPECT_TRUE(Uninstall()); // takes the obstacle away as well
    EXPECT_TRUE(Becomes([&] { return !fs::exists(Installed()); }));
    // A folder that cannot be made.
    std::ofstream(Installed()) << "un fichero";
    EXPECT_NE(Install(), 0U);
    fs::remove(Installed());
    fs::remove(m_reason);
    ExpectAllAsBefore();
}

std::string ForWhom(const testing::TestParamInfo<bool>& given) {
    return given.param ? "AllUsers" : "CurrentUser";
}
INSTANTIATE_TEST_SUITE_P(Installs, SetupTest, testing::Bool(), ForWhom);
INSTANTIATE_TEST_SUITE_P(Installs, SetupFailure, testing::Values(false), ForWhom);

} // namespace
} // namespace tamvelo::hosts
