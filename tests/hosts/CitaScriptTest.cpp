#include "dates/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

TEST(ScriptHost, WaitsWhileAnAppointmentIsMade) {
    const std::string output = RunScript(L"cita.vbs", [] {
        for (const auto& [caption, key] :
             {std::pair{L"Nueva Cita :  21/11/2026", VK_ESCAPE}, {L"Nueva Cita :  22/11/2026", VK_RETURN}}) {
            const HWND form = tamvelo::testing::WindowOfAnyProcess(caption);
            ASSERT_TRUE(form) << "the form did not open";
            const Closing closing{form};
            const Closing ending{tamvelo::testing::WindowOfAnyProcess(L"Agenda")};
            ASSERT_TRUE(ending.dialog) << "the script does not wait";
            SetForegroundWindow(form);
            ASSERT_TRUE(FocusReaches(form, IDC_DTPICHORA));
            tamvelo::testing::PostKeyTo(form, static_cast<UINT>(key));
            if (key == VK_RETURN) { // there is nothing to save with: said, and the form stays
                HWND box = nullptr;
                ASSERT_TRUE(Eventually([&] { return (box = GetLastActivePopup(form)) != form; }));
                PostMessageW(box, WM_COMMAND, IDOK, 0);
                ASSERT_TRUE(Eventually([&] { return !IsWindow(box) && IsWindowEnabled(form); }));
                PostMessageW(form, WM_CLOSE, 0, 0);
            }
            ASSERT_TRUE(Eventually([&] { return !IsWindow(form); }));
            PostMessageW(ending.dialog, WM_COMMAND, IDOK, 0);
            ASSERT_TRUE(Eventually([&] { return !IsWindow(ending.dialog); }));
        }
    });
    EXPECT_EQ(output, "Abierta\r\nAvisos: 1\r\nAbierta\r\nAvisos: 2\r\n");
}

} // namespace
} // namespace tamvelo::hosts
