#include "tests/hosts/ScriptRun.h"

#include <thread>

#include "Programs.h"

namespace tamvelo::hosts {

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

::testing::AssertionResult FocusReaches(HWND dialog, int id) {
    const auto there = [&] {                                  // the control may be still to be made
        const HWND focus = tamvelo::testing::FocusIn(dialog); // in a panel of the dialog's, perhaps
        return focus && GetDlgCtrlID(focus) == id;
    };
    if (Eventually(there)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "control " << id << " did not get the focus";
}

} // namespace tamvelo::hosts
