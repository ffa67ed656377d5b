#include "Person.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>

#include "tests/support/ShownGrid.h"

namespace tamvelo::hosts {
namespace {

/// Waits until the condition holds; false after ten seconds.
bool Eventually(const std::function<bool()>& condition) {
    const ULONGLONG start = GetTickCount64();
    bool holds = false;
    while (!(holds = condition()) && GetTickCount64() - start < 10'000) {
        Sleep(10);
    }
    return holds;
}

/// The control that has the focus in the window's thread.
HWND FocusIn(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

bool Reads(const Step& step, HWND control) {
    if (step.key == kSays) {
        wchar_t text[128] = L"";
        SendMessageTimeoutW(control, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text),
                            SMTO_ABORTIFHUNG, 2000, nullptr);
        return text == step.text;
    }
    const auto shown = tamvelo::testing::ReadGrid(control);
    std::wstring rows;
    for (const std::wstring& row : shown.rows) {
        rows += &row == &shown.rows[0] + shown.selected ? L"[" + row + L"]" : L" " + row + L" ";
    }
    return rows == step.text;
}

/// True when it could be done.
bool Do(const Step& step, HWND& window) {
    if (step.key == kGoTo) {
        return Eventually([&] {
                   window = FindWindowW(nullptr, step.text.c_str());
                   return window && IsWindowVisible(window) && FocusIn(window);
               }) &&
               SetForegroundWindow(window);
    }
    const HWND control = GetDlgItem(window, step.control);
    if (step.key == kClick) {
        return PostMessageW(control, BM_CLICK, 0, 0);
    }
    if (step.key == kSays || step.key == kShows) {
        return Eventually(
            [&] { return Reads(step, step.key == kSays && !control ? FocusIn(window) : control); });
    }
    HWND focus = nullptr;
    const bool there = Eventually([&] { // it may be still to be made, in a panel of the dialog's
        focus = FocusIn(window);
        return focus && (step.control == 0 || GetDlgCtrlID(focus) == step.control);
    });
    for (const wchar_t letter : step.text) {
        PostMessageW(focus, WM_CHAR, letter, 1);
    }
    if (step.key != 0) {
        PostMessageW(focus, WM_KEYDOWN, step.key, 1);
        PostMessageW(focus, WM_KEYUP, step.key, static_cast<LPARAM>(0xC0000001));
    }
    return there;
}

/// Works through the dialogs from outside, as a person would; ends the program where that cannot go on.
void Work(std::span<const Visit> visits) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    for (const Visit& visit : visits) {
        if (visit.caption.empty()) {
            continue;
        }
        SCOPED_TRACE(::testing::PrintToString(visit.caption));
        HWND window = nullptr;
        bool well = Do({0, kGoTo, visit.caption}, window);
        for (const Step& step : visit.steps) {
            EXPECT_TRUE(well) << "before step " << &step - visit.steps.data();
            well = well && Do(step, window);
        }
        well = well && Eventually([&] { return !IsWindow(window); });
        EXPECT_TRUE(well) << "it stays open";
        if (!well) {
            DWORD script = 0; // it would wait for ever
            GetWindowThreadProcessId(window, &script);
            TerminateProcess(OpenProcess(PROCESS_TERMINATE, FALSE, script), 1);
            break;
        }
    }
    CoUninitialize();
}

} // namespace

void PersonTest::SetUp() {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\Tamvelo"); // what dialogs have kept
    ASSERT_EQ(RunRegsvr32(L""), 0U);
}

void PersonTest::Put(const wchar_t* script, const std::string& text) {
    std::ofstream(std::filesystem::path(Folder()) / script, std::ios::binary) << text;
}

std::string PersonTest::Run(const std::wstring& command, std::span<const Visit> visits) {
    std::thread person([visits] { Work(visits); });
    Finished finished = RunProgram(command);
    person.join();
    EXPECT_EQ(finished.code, 0U);
    std::erase(finished.output, '\r');
    return finished.output;
}

std::string Text(const std::string& file, const std::string& from, const std::string& to) {
    std::ostringstream all;
    all << std::ifstream(std::string(TAMVELO_HOSTS "/") + file, std::ios::binary).rdbuf();
    const std::string text = all.str();
    const size_t begin = text.find(from) + from.size();
    EXPECT_GE(begin, from.size()) << from;
    return text.substr(begin, to.empty() ? std::string::npos : text.find(to, begin) - begin);
}

} // namespace tamvelo::hosts
