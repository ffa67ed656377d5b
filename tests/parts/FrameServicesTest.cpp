// Files, cursors, the trace, and components of the environment that a host puts in place of ours.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <thread>

#include "com/LateObject.h"
#include "com/Module.h"
#include "com/Trace.h"
#include "environment/Environment.h"
#include "environment/LayoutFile.h"
#include "environment/Registry.h"
#include "tests/support/Component.h"
#include "tests/support/FakeHost.h"
#include "win/BusyCursor.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;
using ::testing::ElementsAre;

class FrameServices : public ::testing::Test {
protected:
    FrameServices() { std::filesystem::create_directories(folder); }
    ~FrameServices() override { std::filesystem::remove_all(folder); }
    /// What is in the folder of a file.
    static std::set<std::wstring> Beside(const std::filesystem::path& file) {
        std::set<std::wstring> all;
        for (const auto& entry : std::filesystem::directory_iterator(file.parent_path())) {
            all.insert(entry.path().filename().wstring());
        }
        return all;
    }
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / (L"tamvelo-" + std::to_wstring(GetCurrentProcessId()));
};

TEST_F(FrameServices, ALayoutFileIsWrittenWholeOrNotAtAll) {
    const std::filesystem::path file = folder / L"AtbGrx" / L"año.grx";
    EXPECT_THROW(environment::ReadLayoutFile(file), com::Error);
    environment::WriteLayoutFile(file, "uno"); // and its folder
    environment::WriteLayoutFile(file, "dos");
    const HANDLE held =
        CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_THROW(environment::WriteLayoutFile(file, "tres"),
                 com::Error); // a reader is at work on the old one
    CloseHandle(held);
    EXPECT_EQ(environment::ReadLayoutFile(file), "dos");
    EXPECT_THAT(Beside(file), ElementsAre(L"año.grx")); // nothing left over
    // What hosts left that were ended in a save goes with the next one; not what may be of a save at work.
    for (const auto& [name, hours] :
         {std::pair{L"Tamvelo-1-1.tmp", 2}, {L"Tamvelo-2-9.tmp", 0}, {L"x.tmp", 2}}) {
        std::ofstream(file.parent_path() / name) << "tres";
        last_write_time(file.parent_path() / name,
                        std::filesystem::file_time_type::clock::now() - std::chrono::hours(hours));
    }
    // Hosts that save the same class at the same time have a name of their own each.
    std::vector<std::thread> hosts;
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        hosts.emplace_back([&file, letter] {
            for (int i = 0; i < 50; ++i) {
                EXPECT_NO_THROW(environment::WriteLayoutFile(file, std::string(20'000, letter)));
            }
        });
    }
    for (std::thread& host : hosts) {
        host.join();
    }
    const std::string text = environment::ReadLayoutFile(file);
    EXPECT_EQ(text, std::string(20'000, text[0]));
    EXPECT_THAT(Beside(file), ElementsAre(L"Tamvelo-2-9.tmp", L"año.grx", L"x.tmp"));
    std::ofstream(file) << std::string((1 << 20) + 1, 'x');
    EXPECT_THROW(environment::ReadLayoutFile(file), com::Error);
}

TEST_F(FrameServices, AProcessThatEndsInASaveLeavesTheOldFileOrTheNewOne) {
    constexpr wchar_t kFile[] = L"TAMVELO_SAVES"; // the file that the other process saves
    constexpr size_t kSize = 1 << 19;
    if (const wchar_t* const saved = _wgetenv(kFile)) {  // this is the other process
        const ULONGLONG end = GetTickCount64() + 20'000; // nobody is left to end it if the test is ended
        for (char letter = 'a'; GetTickCount64() < end; letter = letter == 'a' ? 'b' : 'a') {
            environment::WriteLayoutFile(saved, std::string(kSize, letter));
        }
        return;
    }
    const std::filesystem::path file = folder / L"uno.grx";
    SetEnvironmentVariableW(kFile, file.c_str());
    std::mt19937 random(static_cast<unsigned>(::testing::UnitTest::GetInstance()->random_seed()));
    size_t leftovers = 0;
    for (int i = 0; i < 25 && !HasFailure(); ++i) { // --gtest_repeat makes more
        environment::WriteLayoutFile(file, "before");
        EXPECT_THAT(Beside(file), ElementsAre(L"uno.grx")) << "a save leaves nothing behind";
        std::string command = _pgmptr + std::string(" --gtest_filter=*AProcessThatEndsInASave*");
        STARTUPINFOA start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION process{};
        ASSERT_TRUE(CreateProcessA(_pgmptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                                   nullptr, nullptr, &start, &process));
        while (file_size(file) != kSize && // without opening it: a save would fail then
               WaitForSingleObject(process.hProcess, 1) == WAIT_TIMEOUT) {
        }
        for (unsigned spin = random() % 200'000; spin > 0; --spin) {
            YieldProcessor();
        }
        EXPECT_TRUE(TerminateProcess(process.hProcess, 1)) << "it saves no more";
        WaitForSingleObject(process.hProcess, INFINITE);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        const std::string text = environment::ReadLayoutFile(file);
        EXPECT_TRUE(text == std::string(kSize, 'a') || text == std::string(kSize, 'b')) << text.size();
        leftovers += Beside(file).size() - 1;
    }
    SetEnvironmentVariableW(kFile, nullptr);
    EXPECT_GT(leftovers, 0) << "no process ended between the beginning and the end of a save";
}

TEST_F(FrameServices, AnimatedCursorsComeOffTwiceAndNeedNoPictures) {
    const HWND form = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                      nullptr, nullptr, nullptr);
    const HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    for (const wchar_t* kind : {L"open", L"SAVE", L"Wait", L"working", L"sort", L"otro"}) {
        win::AnimatedBusyCursor(form, true, kind);
        EXPECT_EQ(GetCapture(), form);
        EXPECT_TRUE(GetCursor() && GetCursor() != arrow);
        for (const int again : {1, 2}) {
            win::AnimatedBusyCursor(form, false, kind);
            EXPECT_EQ(GetCapture(), nullptr) << again;
            EXPECT_EQ(GetCursor(), arrow) << again;
        }
    }
    com::Module::Attach(
        GetModuleHandleW(L"user32.dll")); // in a folder without pictures: no cursor, no message
    win::AnimatedBusyCursor(form, true, L"save");
    EXPECT_EQ(GetCursor(), nullptr);
    win::AnimatedBusyCursor(form, false, L"save");
    com::Module::Attach(GetModuleHandleW(nullptr));
    DestroyWindow(form);
}

TEST_F(FrameServices, TheTraceTellsWhatWentOutAndWhatCameBack) {
    FakeHost host;
    host.data->On(L"Suma", [](Invocation& call) {
        call.WriteBack(0, Variant(short{7}));
        call.Return(Variant(true));
    });
    host.data->Raises(L"Falla");
    com::LateObject data(host.data.Get(), L"MyClase");
    short number = 5;
    com::Trace::WriteTo(folder / L"traza.txt");
    data.Call(L"Suma", {com::Argument::Ref(number), L"ñ", 3L, Variant::Missing()});
    EXPECT_THROW(data.Call(L"Falla"), com::Error);
    com::Trace::WriteTo(L"");
    data.Call(L"Suma", {short{1}});
    EXPECT_EQ(environment::ReadLayoutFile(folder / L"traza.txt"),
              "MyClase ? Suma\r\nMyClase.Suma(&Integer 5, \"ñ\", Long 3, (omitido))\r\n"
              "  Suma = Boolean -1, &Integer 7\r\nMyClase ? Falla\r\nMyClase.Falla()\r\n"
              "  Falla ! 800A0201 Gestión: La tabla está bloqueada.\r\n");
    com::Trace::WriteTo(folder / L"no" / L"hay"); // cannot be written: the host is not disturbed
    data.Call(L"Suma", {short{1}});
    EXPECT_FALSE(com::Trace::Enabled());
}

/// One component that plays every part; the environment's key is a private one.
class FrameEnvironment : public FrameServices {
protected:
    FrameEnvironment() {
        CoInitialize(nullptr);
        m_registered.emplace(component.Get());
        RegCreateKeyW(HKEY_CURRENT_USER, kRoot, &m_root);
        RegOverridePredefKey(HKEY_CURRENT_USER, m_root);
    }
    ~FrameEnvironment() override {
        environment::Environment::Release();
        EXPECT_EQ(component->References(), 2); // ours and the factory's
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(m_root);
        RegDeleteTreeW(HKEY_CURRENT_USER, kRoot);
        m_registered.reset();
        CoUninitialize();
    }
    static void Store(const wchar_t* key, const wchar_t* name, const std::wstring& value) {
        RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }

    Log log;
    com::ComPtr<HostObject> component = com::Make<HostObject>(L"componente", log);

private:
    static constexpr wchar_t kRoot[] = L"SOFTWARE\\TamveloPruebasPartes";
    HKEY m_root = nullptr;
    std::optional<Component> m_registered;
};

class PlacedAnywhere final : public environment::PlacedForm {
public:
    base::Rect Place() const override { return {1, 2, 3, 4}; }
    void SetPlace(const base::Rect&) override { ADD_FAILURE() << "the component has not asked for it"; }
    bool IsMaximised() const override { return false; }
    void SetMaximised() override { ADD_FAILURE() << "nor for this"; }
    com::ComPtr<IDispatch> FormObject() override { return nullptr; }
};

TEST_F(FrameEnvironment, ComponentsOfTheHostAreCalledInPlaceOfOurs) {
    for (const wchar_t* part : {L"Configuracion", L"Archivos", L"Errores", L"Foco"}) {
        Store(L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Entorno", part, Component::Name());
    }
    component->Accepts({L"RestaurarPosicion", L"GuardarPosicion", L"GuardarValor", L"Mostrar", L"Recibir"});
    component->On(L"LeerValor", [](Invocation& call) { call.WriteBack(2, Variant(L"leído")); });
    component->Returns(L"RutaBarra", Variant(L"C:\\b.atb"));
    component->Returns(L"Existe", Variant(true));
    component->On(L"CarpetaCuadriculas", [](Invocation& call) {
        call.WriteBack(1, Variant(true));
        call.Return(Variant(L"C:\\g\\"));
    });
    environment::Environment& environment = environment::Environment::Get();
    PlacedAnywhere form;
    environment.GetSettings().RestorePlacement(L"k", form);
    environment.GetSettings().SavePlacement(L"k", form);
    EXPECT_EQ(environment.GetSettings().ReadValue(L"k", L"n", L"falta"), L"leído");
    environment.GetSettings().WriteValue(L"k", L"n", L"v");
    EXPECT_EQ(environment.GetFiles().ToolbarLayoutPath(L"frm"), L"C:\\b.atb");
    EXPECT_TRUE(environment.GetFiles().Exists(L"C:\\b.atb"));
    const environment::LayoutPlace place = environment.GetFiles().GridLayoutPlace(L"x.grx");
    EXPECT_EQ(place.folder, L"C:\\g\\");
    EXPECT_TRUE(place.saved);
    environment.GetErrors().Show(nullptr, {kHostErrorNumber, L"texto", L"origen"});
    environment.GetFocus().Receive(nullptr, component.Get());
    EXPECT_THAT(log, ElementsAre(L"RestaurarPosicion(\"k\", Nothing)", L"GuardarPosicion(\"k\", Nothing)",
                                 L"LeerValor(\"k\", \"n\", &\"falta\")", L"GuardarValor(\"k\", \"n\", \"v\")",
                                 L"RutaBarra(\"frm\")", L"Existe(\"C:\\b.atb\")",
                                 L"CarpetaCuadriculas(\"x.grx\", &False)",
                                 L"Mostrar(-2146827775L, \"origen\", \"texto\")", L"Recibir(componente)"));
}

TEST_F(FrameEnvironment, AValueOfAMegabyteIsNeitherWrittenNorRead) {
    const std::wstring huge(500'000, L'x');
    environment::WriteRegistryText(L"k", L"n", huge.substr(0, 32'000));
    EXPECT_EQ(environment::ReadRegistryText(L"k", L"n")->size(), 32'000U);
    EXPECT_THROW(environment::WriteRegistryText(L"k", L"n", huge), com::Error);
    Store(L"k", L"n", huge);
    EXPECT_FALSE(environment::ReadRegistryText(L"k", L"n"));
}

} // namespace
} // namespace tamvelo::testing
