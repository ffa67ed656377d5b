#include "frame/Resources.h"
#include "search/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(ScriptHost, ChecksWhatIsTypedAndFiltersByAListOfValues) {
    const std::string output = RunScript(L"buscar.vbs", [] {
        const HWND panel = tamvelo::testing::WindowOfAnyProcess(L"Buscar Registros");
        ASSERT_TRUE(panel) << "the panel did not open";
        const Closing closing{panel};
        ASSERT_TRUE(FocusReaches(panel, IDC_TXTFIELDS0));
        PostMessageW(GetDlgItem(panel, IDC_OPTBUSCAR4), BM_CLICK, 0, 0);
        const HWND list = GetDlgItem(panel, IDC_LIST2);
        ASSERT_TRUE(Eventually([&] { return IsWindowVisible(list) != FALSE; }));
        ASSERT_TRUE(FocusReaches(panel, IDC_TXTFIELDS0));
        for (const wchar_t* value : {L"li7ma", L"pera"}) {
            tamvelo::testing::PostTextTo(panel, value);
            tamvelo::testing::PostKeyTo(panel, VK_RETURN);
        }
        ASSERT_TRUE(Eventually([&] { return SendMessageW(list, LB_GETCOUNT, 0, 0) == 2; }));
        tamvelo::testing::PostKeyTo(panel, VK_RETURN);
        tamvelo::testing::PostKeyTo(panel, VK_TAB);
        ASSERT_TRUE(FocusReaches(panel, IDC_CMDBUSCAR)); // where Enter would search again
        tamvelo::testing::PostKeyTo(panel, VK_TAB);
        ASSERT_TRUE(FocusReaches(panel, IDC_LIST2));
        tamvelo::testing::PostKeyTo(panel, VK_RETURN);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(panel); }));
    });
    EXPECT_EQ(output,
              "ValidaValue TxtFields 0 []\r\n"
              "ValidaValue TxtFields 0 [lima]\r\n"
              "ValidaValue TxtFields 0 [pera]\r\n"
              "CreateFilter List2 Integer 0\r\n"
              "SetFilter nombre in (lima, pera) Filter\r\n"
              "AplyFilter [nombre in (lima, pera)]\r\n"
              "ValidaValue TxtFields 0 []\r\n"
              "AceptarBuscar\r\n");
}

} // namespace
} // namespace tamvelo::hosts
