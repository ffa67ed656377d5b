#include "frame/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(RegistrosScript, DeletesWhatTheHostOffersToDeleteAndPicksTheNext) {
    const std::string output = RunScript(L"registros.vbs", [] {
        const HWND browser = tamvelo::testing::WindowOfAnyProcess(L"Registros de Articulos");
        ASSERT_TRUE(browser) << "the browser did not open";
        const Closing closing{browser};
        ASSERT_TRUE(FocusReaches(browser, IDC_DATAGRID));
        tamvelo::testing::PostKeyTo(browser, VK_DELETE);
        HWND question = nullptr;
        ASSERT_TRUE(Eventually([&] {
            question = GetLastActivePopup(browser);
            return GetDlgItem(question, IDYES) != nullptr && IsWindowVisible(question);
        })) << "no question";
        PostMessageW(question, WM_COMMAND, IDYES, 0);
        ASSERT_TRUE(FocusReaches(browser, IDC_DATAGRID));
        tamvelo::testing::PostKeyTo(browser, VK_F4);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(browser); }));
    });
    EXPECT_EQ(output,
              "Requery seleccion\r\n"
              "FindRecord A-2 Integer 1\r\n"
              "AceptarEliminar 0, A-2: A-2\r\n"
              "AceptarSeleccion 0, A-2, A-3\r\n"
              "En el campo: A-3\r\n");
}

} // namespace
} // namespace tamvelo::hosts
