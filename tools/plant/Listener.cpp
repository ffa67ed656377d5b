// In every test program that tools/plant.py builds: with TAMVELO_REACHED=<file> it adds a line for each case,
// its name and the places that this process and those it started reached meanwhile.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace {

constexpr DWORD kPlaces = 4096;

class Listener final : public testing::EmptyTestEventListener {
public:
    Listener(const char* file, char* reached) : m_file(file, std::ios::app), m_reached(reached) {}

private:
    void OnTestEnd(const testing::TestInfo& test) override {
        Write(std::string(test.test_suite_name()) + "." + test.name());
    }
    void OnTestProgramEnd(const testing::UnitTest& /*program*/) override { Write("program"); }
    void Write(const std::string& name) {
        m_file << name;
        for (DWORD place = 0; place < kPlaces; ++place) {
            if (std::exchange(m_reached[place], '\0')) {
                m_file << ' ' << place;
            }
        }
        m_file << std::endl;
    }

    std::ofstream m_file;
    char* m_reached;
};

// Before anything of the product runs: a static object of the program's own.
[[maybe_unused]] const bool g_listening = [] {
    char file[MAX_PATH];
    if (GetEnvironmentVariableA("TAMVELO_REACHED", file, sizeof file)) {
        const HANDLE section =
            CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kPlaces, "TamveloPlanted");
        auto* reached = static_cast<char*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 0));
        testing::UnitTest::GetInstance()->listeners().Append(new Listener(file, reached));
    }
    return true;
}();

} // namespace
