// A host that ends in the middle of a save.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>

#include "frame/LayoutFile.h"

namespace tamvelo::testing {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t kFile[] = L"TAMVELO_SAVES"; // the file that the other process saves
constexpr int kKills = 25;                    // of one run; --gtest_repeat makes more
constexpr size_t kSize = 1 << 19;

TEST(Save, DISABLED_OneAfterTheOther) {
    const wchar_t* const file = _wgetenv(kFile);
    const ULONGLONG end = GetTickCount64() + 20'000; // nobody is left to end it if the test is ended
    for (char letter = 'a'; file && GetTickCount64() < end; letter = letter == 'a' ? 'b' : 'a') {
        frame::WriteLayoutFile(file, std::string(kSize, letter));
    }
}

TEST(Save, AProcessThatEndsInItLeavesTheOldFileOrTheNewOne) {
    const fs::path folder =
        fs::temp_directory_path() / (L"tamvelo-" + std::to_wstring(GetCurrentProcessId()));
    const fs::path file = folder / L"uno.grx";
    SetEnvironmentVariableW(kFile, file.c_str());
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::mt19937 random(static_cast<unsigned>(::testing::UnitTest::GetInstance()->random_seed()));
    size_t leftovers = 0;
    for (int i = 0; i < kKills && !HasFailure(); ++i) {
        frame::WriteLayoutFile(file, "before");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1) << "a save leaves nothing behind";
        std::wstring command = std::wstring(L"\"") + program +
                               L"\" --gtest_filter=Save.DISABLED* --gtest_also_run_disabled_tests";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION process{};
        ASSERT_TRUE(CreateProcessW(program, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                                   nullptr, nullptr, &start, &process));
        while (fs::file_size(file) != kSize && // without opening it: a save would fail then
               WaitForSingleObject(process.hProcess, 1) == WAIT_TIMEOUT) {
        }
        for (unsigned spin = random() % 200'000; spin > 0; --spin) {
            YieldProcessor();
        }
        EXPECT_TRUE(TerminateProcess(process.hProcess, 1)) << "it saves no more";
        WaitForSingleObject(process.hProcess, INFINITE);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        const std::string text = frame::ReadLayoutFile(file);
        EXPECT_TRUE(text == std::string(kSize, 'a') || text == std::string(kSize, 'b')) << text.size();
        leftovers += static_cast<size_t>(std::distance(fs::directory_iterator(folder), {})) - 1;
    }
    EXPECT_GT(leftovers, 0) << "no process ended between the beginning and the end of a save";
    fs::remove_all(folder);
}

} // namespace
} // namespace tamvelo::testing
