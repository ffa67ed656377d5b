#include "frame/Resources.h"
#include "selection/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(CriteriosScript, EveryDialogFiltersByWhatWasTyped) {
    constexpr const wchar_t* kCaptions[] = {L"Criterios de ventas", L"Criterios de compras",
                                            L"Criterios de mínimos", L"Criterios de laboratorio",
                                            L"Criterios de recibos"};
    const std::string output = RunScript(L"criterios.vbs", [&] {
        for (const wchar_t* caption : kCaptions) {
            SCOPED_TRACE(::testing::PrintToString(std::wstring(caption)));
            const HWND dialog = tamvelo::testing::WindowOfAnyProcess(caption);
            ASSERT_TRUE(dialog);
            const Closing closing{dialog};
            ASSERT_TRUE(FocusReaches(GetDlgItem(dialog, IDC_CRITERIA), IDC_CRITERIA_FIELDS + 1));
            tamvelo::testing::PostTextTo(dialog, L"a1b");
            ASSERT_TRUE(Eventually([&] { return tamvelo::testing::FocusedText(dialog) == L"ab"; }));
            tamvelo::testing::PostKeyTo(dialog, VK_RETURN);
            ASSERT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
        }
    });
    std::string expected;
    for (size_t i = 0; i < std::size(kCaptions); ++i) {
        expected +=
            "CreateFilter TxtFields 0 Integer 0\r\n"
            "CreateFilter TxtFields 1 Integer 0\r\n"
            "SetFilter codigo=ab Filter\r\n"
            "AplyFilter codigo=ab\r\n"
            "Requery selec\r\n"
            "AceptarBuscar\r\n";
    }
    EXPECT_EQ(output, expected);
}

} // namespace
} // namespace tamvelo::hosts
