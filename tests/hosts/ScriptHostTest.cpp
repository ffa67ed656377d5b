#include "frame/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(ScriptHost, OpensThePanelOnTheFieldsRecordSearchesAndGetsTheExactAnswer) {
    const std::string output = RunScript(L"panel.vbs", [] {
        const HWND panel = tamvelo::testing::WindowOfAnyProcess(L"Selección de Clientes");
        ASSERT_TRUE(panel) << "the panel did not open";
        const Closing closing{panel};
        // The system gives the focus to the first control before the form gives it to the grid.
        ASSERT_TRUE(FocusReaches(panel, IDC_DATAGRID));
        tamvelo::testing::PostKeyTo(panel, VK_INSERT); // from the grid to the search box
        ASSERT_TRUE(FocusReaches(panel, IDC_TXTFIELDS0));
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
        ASSERT_TRUE(FocusReaches(panel, IDC_DATAGRID));
        tamvelo::testing::PostKeyTo(panel, VK_DOWN);
        tamvelo::testing::PostKeyTo(panel, VK_ESCAPE);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(panel); }));
    });
    // No answer: Wine's engine for this language takes no arguments by reference, and the sink's are.
    EXPECT_EQ(output, "Requery seleccion\r\nQueda en 2\r\n");
}

} // namespace
} // namespace tamvelo::hosts
