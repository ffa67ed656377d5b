// What the demonstration program tells of a computer on which something may be wrong with the library.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "ProductVersion.h"
#include "Server.h"
#include "base/Text.h"

namespace tamvelo::hosts {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;
namespace fs = std::filesystem;

constexpr wchar_t kEnvironment[] = L"Software\\Tamvelo\\Global\\Configuracion\\Entorno";
constexpr wchar_t kServer[] =
    L"Software\\Classes\\CLSID\\{043d9058-66c9-47c8-b6b5-86e743af173d}\\InprocServer32";
constexpr wchar_t kProgram[] = L"TamveloDemo" TAMVELO_SUFFIX L".exe";

class DiagnosisTest : public testing::Test {
protected:
    DiagnosisTest() {
        Clean();
        fs::create_directories(m_folder / L"Image");
        for (const wchar_t* name : {kProgram, TAMVELO_LIBRARY, L"KvSearchTool.atb", L"Image\\KvCur.ani"}) {
            Bring(name);
        }
    }
    ~DiagnosisTest() override { Clean(); }
    void Bring(const wchar_t* name) const {
        CopyFileW((Folder() + L"\\" + name).c_str(), (m_folder / name).c_str(), FALSE);
    }
    void Clean() const {
        RunRegsvr32(L"/u");
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Tamvelo");
        fs::remove_all(m_folder);
    }
    /// The exit code, and the file whose name is said.
    Finished Diagnose(const std::wstring& more = {}) const {
        Finished finished = RunProgram(std::wstring(L"diagnosis\\") + kProgram + L" diagnostico " + more);
        m_said = base::FromUtf8(finished.output).value_or(L"");
        std::ifstream file(fs::path(base::Trim(m_said)), std::ios::binary);
        finished.output.assign(std::istreambuf_iterator<char>(file), {});
        EXPECT_TRUE(base::FromUtf8(finished.output)) << finished.output;
        return finished;
    }

    const fs::path m_folder = Folder() + L"\\diagnosis";
    mutable std::wstring m_said;
};

TEST_F(DiagnosisTest, OfWhatIsInOrderNamesAllOperationsAndIsGood) {
    ASSERT_EQ(RunRegsvr32(L""), 0U);
    const Finished found = Diagnose();
    EXPECT_EQ(found.code, 0U);
    EXPECT_THAT(m_said, StartsWith(m_folder.wstring()));
    EXPECT_THAT(found.output,
                AllOf(StartsWith("\xEF\xBB\xBF"), HasSubstr("Resultado: todo bien."),
                      HasSubstr("Para todos, programas de " + std::to_string(8 * sizeof(void*)) + " bits: «" +
                                base::ToUtf8(Folder() + L"\\" TAMVELO_LIBRARY)),
                      HasSubstr("ShowNuevaCita: "), HasSubstr("PrintEtiq: sin diálogo, AceptarEtiqueta")));
    int operations = 0;
    for (std::size_t at = 0; (at = found.output.find("  bien    ", at)) != std::string::npos; ++at) {
        ++operations;
    }
    EXPECT_EQ(operations, 36 + 5) << found.output;
}

TEST_F(DiagnosisTest, SaysWhatIsWrong) {
    const struct {
        const char* says;
        std::function<void()> wrong;
    } cases[] = {
        {"Para todos, programas de", // what is registered is gone
         [] {
             RunRegsvr32(L"");
             constexpr wchar_t kGone[] = L"C:\\no\\hay.dll";
             RegSetKeyValueW(HKEY_LOCAL_MACHINE, kServer, nullptr, REG_SZ, kGone, sizeof kGone);
         }},
        {"«C:\\no\\hay.dll», que no existe", [] {}},
        {"está registrada, pero no se puede usar", [] {}},
        {"no está registrada y no se puede cargar",
         [this] {
             RunRegsvr32(L"/u");
             fs::remove(m_folder / TAMVELO_LIBRARY);
         }},
        {"FALLO   ShowSelec: mensaje: ", // a component of the environment that is not there
         [this] {
             Bring(TAMVELO_LIBRARY);
             RegSetKeyValueW(HKEY_CURRENT_USER, kEnvironment, L"Archivos", REG_SZ, L"No.Hay", 14);
         }},
    };
    for (const auto& [says, wrong] : cases) {
        wrong();
        const Finished found = Diagnose(L"--only ShowSelec");
        EXPECT_EQ(found.code, 1U) << says;
        EXPECT_THAT(found.output, AllOf(HasSubstr("FALLO"), HasSubstr(says), HasSubstr("Resultado: ")));
    }
}

// Where programs are installed for everybody nobody may write.
TEST_F(DiagnosisTest, IsWrittenElsewhereWhenItCannotBeBesideTheProgram) {
    fs::create_directory(m_folder / L"TamveloDiagnostico.txt");
    EXPECT_EQ(Diagnose(L"--only ShowOrder").code, 0U);
    EXPECT_THAT(m_said, StartsWith(fs::temp_directory_path().wstring()));
    EXPECT_EQ(Diagnose(L"--only ShowNada").code, 1U); // nothing tried is not all well
    fs::remove(fs::path(base::Trim(m_said)));
}

} // namespace
} // namespace tamvelo::hosts
