#include "frame/Resources.h"
#include "tests/hosts/ScriptRun.h"

namespace tamvelo::hosts {
namespace {

/// Takes away what dialogs have kept for the script's screens, in this run or an earlier one.
void ForgetChoices() {
    HKEY forms = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"SOFTWARE\\Tamvelo\\Tamvelo\\1.0\\Configuracion", 0, KEY_ALL_ACCESS,
                      &forms) != ERROR_SUCCESS) {
        return;
    }
    wchar_t form[64];
    for (DWORD i = 0; RegEnumKeyW(forms, i, form, ARRAYSIZE(form)) == ERROR_SUCCESS; ++i) {
        for (const wchar_t* screen : {L"\\rptsPruebas", L"\\rptsPruebas2"}) {
            RegDeleteTreeW(forms, (std::wstring(form) + screen).c_str());
        }
    }
    RegCloseKey(forms);
}

TEST(InformesScript, EveryReportDialogAnswersWithItsOwnCall) {
    constexpr const wchar_t* kCaptions[] = {
        L"Selección de Documentos", // ShowRpt
        L"Selección de Informes",   // ShowSql
        L"Selección de Etiquetas",
        L"Selección de Listas",
        L"Selección de Documentos e informes", // ShowRptCond
        L"Selección de Documentos e informes",
        L"Selección de Documentos e informes",
        L"Selección de Documentos e informes",
        L"Selección de Documentos e informes",
        L"Selección de Documentos e informes", // ShowRptFchAuto
        L"Selección de Informes",
        L"Selección de informes",
        L"Selección de Informes", // ShowRptFchCliDirec
        L"Selección de Informes",
        L"Selección de Documentos", // ShowRptNumAut
    };
    ForgetChoices();
    const std::string output = RunScript(L"informes.vbs", [&] {
        for (const wchar_t* caption : kCaptions) {
            SCOPED_TRACE(::testing::PrintToString(std::wstring(caption)));
            const HWND dialog = tamvelo::testing::WindowOfAnyProcess(caption);
            ASSERT_TRUE(dialog);
            const Closing closing{dialog};
            ASSERT_TRUE(FocusReaches(dialog, IDC_LIST1));
            tamvelo::testing::PostKeyTo(dialog, VK_SPACE);
            tamvelo::testing::PostKeyTo(dialog, VK_RETURN);
            ASSERT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
        }
    });
    ForgetChoices();
    constexpr char kDated[] = " -1 0 Integer:0 Integer:1 Date Date";
    EXPECT_EQ(output, std::string("AceptarReports -1 0 Integer:0 Integer:1\r\n"
                                  "AceptarReports -1 0 Integer:0 Integer:0\r\n"
                                  "AceptarEtiqueta -1 0\r\n"
                                  "AceptarEtiqueta -1 0\r\n"
                                  "AceptarListasParam -1 0 Integer:0 Integer:1 String:PRC\r\n") +
                          "AceptarReportsParam" + kDated +
                          " String: Integer:2 Integer:2 String: String:PRC\r\n" +
                          "AceptarReportsInformesParam" + kDated +
                          " String: Integer:2 Integer:2 String:\r\n" + "AceptarReportsParamMail" + kDated +
                          " String: Integer:2 Integer:2 String: String:PRC\r\n" + "AceptarReportsParamMail" +
                          kDated + " String:Borrador Integer:2 Integer:2 String: String:PRC\r\n" +
                          "AceptarReportsParamHr" + kDated + " String: Boolean:0 Boolean:0 Date Date\r\n" +
                          "AceptarReportsFchAuto" + kDated + " Integer:0\r\n" + "AceptarInformesFchAuto" +
                          kDated + " Integer:0\r\n" + "AceptarInformesFch" + kDated + " String:\r\n" +
                          "AceptarInformesFchAuto" + kDated + "\r\n" + "AceptarInformesFchAutoTipoTime" +
                          kDated + " Integer:0 String: Date Date Integer:2 Integer:2 String:\r\n" +
                          "AceptarDocNumAut -1 0 Integer:0 Integer:1 Empty: Empty: Boolean:0\r\n" +
                          "AceptarDocNumAut -1 0 Integer:0 Integer:1 Empty: Empty: Boolean:0\r\n");
}

} // namespace
} // namespace tamvelo::hosts
