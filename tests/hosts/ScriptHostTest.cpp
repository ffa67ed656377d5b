#include <gtest/gtest.h>

#include <thread>

#include "Programs.h"
#include "frame/Resources.h"
#include "tests/support/OtherProcess.h"

namespace tamvelo::hosts {
namespace {

using tamvelo::testing::Eventually;

/// Closes the panel at the end whatever failed, or the script would wait for ever.
struct Closing {
    HWND panel;
    ~Closing() { PostMessageW(panel, WM_CLOSE, 0, 0); }
};

/// Runs a script under the script host while `user` works its dialogs from outside, as a person would.
std::string RunScript(const wchar_t* name, const std::function<void()>& user) {
    EXPECT_EQ(RunRegsvr32(L""), 0U);
    wchar_t script[MAX_PATH]; // a slash at the start would be a switch
    GetFullPathNameW((std::wstring(L"" TAMVELO_HOSTS L"/") + name).c_str(), ARRAYSIZE(script), script,
                     nullptr);
    std::thread person(user);
    const Finished finished = RunProgram(L"cscript.exe //nologo \"" + std::wstring(script) + L"\"");
    person.join();
    EXPECT_EQ(finished.code, 0U);
    EXPECT_EQ(RunRegsvr32(L"/u"), 0U);
    return finished.output;
}

TEST(ScriptHost, OpensThePanelOnTheFieldsRecordSearchesAndGetsTheExactAnswer) {
    const std::string output = RunScript(L"panel.vbs", [] {
        const HWND panel = tamvelo::testing::WindowOfAnyProcess(L"Selección de Clientes");
        ASSERT_TRUE(panel) << "the panel did not open";
        const Closing closing{panel};
        // The system gives the focus to the first control before the form gives it to the grid.
        const HWND grid = GetDlgItem(panel, IDC_DATAGRID);
        ASSERT_TRUE(Eventually([&] { return tamvelo::testing::FocusIn(panel) == grid; }));
        tamvelo::testing::PostKeyTo(panel, VK_INSERT); // from the grid to the search box
        const HWND box = GetDlgItem(panel, IDC_TXTFIELDS0);
        ASSERT_TRUE(Eventually([&] { return tamvelo::testing::FocusIn(panel) == box; }));
        tamvelo::testing::PostTextTo(panel, L"-3");
        ASSERT_TRUE(Eventually([&] { return tamvelo::testing::FocusedText(panel) == L"-3"; }))
            << "typed: " << ::testing::PrintToString(tamvelo::testing::FocusedText(panel));
        tamvelo::testing::PostKeyTo(panel, VK_RETURN);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(panel); }));
    });
    EXPECT_EQ(output,
              "Requery seleccion\r\n"
              "FindRecord C-2\r\n"
              "CreateFilter TxtFields 0 Codigo -3\r\n"
              "SetFilter -3 FilterSelec\r\n"
              "AplyFilter [-3]\r\n"
              "Requery selec\r\n"
              "AceptarSeleccion Integer 0, C-2, String C-3\r\n"
              "AplyFilter []\r\n"
              "En el campo: C-3\r\n");
}

TEST(ScriptHost, ObjectsWithoutTypesServeToo) {
    const std::string output = RunScript(L"panel.js", [] {
        const HWND panel = tamvelo::testing::WindowOfAnyProcess(L"Selección de familias");
        ASSERT_TRUE(panel) << "the panel did not open";
        const Closing closing{panel};
        const HWND grid = GetDlgItem(panel, IDC_DATAGRID);
        ASSERT_TRUE(Eventually([&] { return tamvelo::testing::FocusIn(panel) == grid; }));
        tamvelo::testing::PostKeyTo(panel, VK_DOWN);
        tamvelo::testing::PostKeyTo(panel, VK_ESCAPE);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(panel); }));
    });
    // No answer: Wine's engine for this language takes no arguments by reference, and the sink's are.
    EXPECT_EQ(output, "Requery seleccion\r\nQueda en 2\r\n");
}

} // namespace
} // namespace tamvelo::hosts
