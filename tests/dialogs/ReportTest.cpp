// The report dialogs: what each hands over and what they keep.
#include "com/WinHeaders.h"

#include <dlgs.h>
#include <winspool.h>

#include "frame/Resources.h"
#include "tests/dialogs/ReportFixture.h"

namespace tamvelo::testing {
namespace {

/// A printer of this machine while it lives. The user's choice of it is kept in the test's own registry.
class Printer {
public:
    Printer() {
        wchar_t driver[] = L"PS Driver";
        wchar_t file[] = L"wineps.drv";
        wchar_t raw[] = L"RAW";
        DRIVER_INFO_3W information{};
        information.cVersion = 3;
        information.pName = driver;
        information.pDriverPath = information.pConfigFile = information.pDataFile = file;
        information.pDefaultDataType = raw;
        AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&information), // may be there already
                            APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY);
        wchar_t name[] = L"Prueba";
        wchar_t port[] = L"FILE:";
        wchar_t processor[] = L"winprint";
        PRINTER_INFO_2W printer{};
        printer.pPrinterName = name;
        printer.pPortName = port;
        printer.pDriverName = driver;
        printer.pPrintProcessor = processor;
        printer.pDatatype = raw;
        m_printer = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
        EXPECT_TRUE(m_printer) << GetLastError();
        EXPECT_TRUE(SetDefaultPrinterW(name));
    }
    ~Printer() {
        DeletePrinter(m_printer);
        ClosePrinter(m_printer);
    }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

private:
    HANDLE m_printer = nullptr;
};

TEST_F(Reports, EachDialogHandsOverItsOwnCall) {
    const std::wstring ticks = L"(&[True False False]";
    const std::wstring choice = ticks + L", &0, &1";
    const std::wstring dated = choice + L", " + Month();
    const struct {
        Operation operation;
        std::wstring call;
        const wchar_t* screen = L"Pedidos";
    } cases[] = {
        {&Server::ShowRpt, L"AceptarReports" + choice},
        {&Server::ShowSql, L"AceptarReports" + ticks + L", 0, 0"},
        {&Server::ShowEtiq, L"AceptarEtiqueta" + ticks},
        {&Server::ShowRptListas, L"AceptarListasParam" + choice + L", \"PRC\""},
        {&Server::ShowRptCond, L"AceptarReportsParam" + dated + L", \"\", &2, &2, \"\", &\"PRC\""},
        {&Server::ShowRptInfCond, L"AceptarReportsInformesParam" + dated + L", \"\", &2, &2, \"\""},
        {&Server::ShowRptMailCond, L"AceptarReportsParamMail" + dated + L", \"\", &2, &2, \"\", &\"PRC\""},
        {&Server::ShowRptBorrador,
         L"AceptarReportsParamMail" + dated + L", \"Borrador\", &2, &2, \"\", &\"PRC\"", L"Presupuestos"},
        {&Server::ShowRptCondHr,
         L"AceptarReportsParamHr" + dated + L", \"\", False, False, #1899-12-30 07:00#, #1899-12-30 23:59#"},
        {&Server::ShowRptFchAuto, L"AceptarReportsFchAuto" + dated + L", 0"},
        {&Server::ShowRptFchAuto, L"AceptarInformesFchAuto" + dated + L", 0",
         L"Articulos_Movimientos_ALMACEN"},
        {&Server::ShowRptFchAutoInf, L"AceptarInformesFchAuto" + dated + L", 0"},
        {&Server::ShowRptsInfFch, L"AceptarInformesFch" + dated + L", \"\""},
        {&Server::ShowRptFchCliDirec, L"AceptarInformesFchAuto" + dated},
        {&Server::ShowRptInfOrdenes, L"AceptarInformesFchAutoTipoTime" + dated +
                                         L", 0, \"\", #1899-12-30#, #1899-12-30 23:59#, 2, 2, \"\""},
        {&Server::ShowRptNumAut, L"AceptarDocNumAut" + choice + L", Empty, Empty, False"},
    };
    for (const auto& [operation, call, screen] : cases) {
        SCOPED_TRACE(::testing::PrintToString(call));
        EXPECT_FALSE(Show(operation, screen, Keys({VK_SPACE, VK_RETURN})));
        EXPECT_THAT(TakeLog(), ElementsAre(call + L")"));
        EXPECT_FALSE(Show(operation, screen, Keys({VK_SPACE, VK_ESCAPE})));
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
}

TEST_F(Reports, WhatTheUserChoseTravels) {
    // Places, not numbers; the third list before the first; texts where the host expects them.
    const std::wstring ticks = L"(&[False True True], &2, &7, ";
    const Script fill = Script()
                            .Key(VK_DOWN)
                            .Key(VK_SPACE)
                            .Key(VK_DOWN)
                            .Key(VK_SPACE)
                            .Do([] {
                                SendMessageW(Item(IDC_CMBSELEC), CB_SETCURSEL, 2, 0);
                                SetWindowTextW(Item(IDC_TXTCOPIAS), L"7");
                            })
                            .Append(TypeInto(0, L"C-1"))
                            .Append(TypeInto(1, L"A"))
                            .Do([] {
                                Choose(2, 0);                          // Repetición: Sí
                                SendMessageW(Part(5), BM_CLICK, 0, 0); // Solo los Facturados
                                Choose(6, 9);
                            });
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, Script(fill).Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReportsParamMail" + ticks + Month() +
                                       L", \"C-1\", &0, &0, \"A\", &\"TDS\")"));
    // Repetición and Facturado are the first and the third list: the third goes first.
    const Script swapped = Script(fill).Do([] { Choose(2, 1); });
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, L"Otra", Script(swapped).Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReportsParamMail" + ticks + Month() +
                                       L", \"C-1\", &0, &1, \"A\", &\"TDS\")"));
    // The conditions begin anew; what was ticked, the output and the copies come back.
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, Keys({VK_RETURN})));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReportsParamMail" + ticks + Month() +
                                       L", \"\", &2, &2, \"\", &\"PRC\")"));
}

TEST_F(Reports, ChoicesAreKeptPerScreenAndFollowTheReports) {
    EXPECT_FALSE(Show(&Server::ShowRpt, L"Pedidos", Keys({VK_DOWN, VK_SPACE, VK_RETURN})));
    EXPECT_EQ(GetValue(ChoicesKey(L"frmRpts", L"Pedidos"), L"Informes"), L"Resumen|");
    host.log.clear();
    titles = {L"Nuevo", L"Resumen", L"Listado"};
    EXPECT_FALSE(Show(&Server::ShowRpt, L"Pedidos", Keys({VK_RETURN})));
    EXPECT_FALSE(Show(&Server::ShowRpt, L"Facturas", Keys({VK_RETURN})));
    EXPECT_FALSE(Show(&Server::ShowRpt, L"Pedidos", Keys({VK_SPACE, VK_ESCAPE}))); // keeps nothing
    titles.clear();
    EXPECT_FALSE(Show(&Server::ShowRpt, L"Pedidos", Keys({VK_RETURN})));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarReports(&[False True False], &0, &1)",
                            L"AceptarReports(&[False False False], &0, &1)", L"AceptarReports(&[], &0, &1)"));
    // A screen's name is part of a key: only what would be another key, or none, is refused.
    for (const std::wstring& screen :
         {std::wstring(L"Pedidos/Clientes"), std::wstring(L"Pedidos: abiertos"), std::wstring(L"Pedidos."),
          std::wstring(L"Pedidos "), std::wstring(L".."), std::wstring(L"¿Año 2026? *"),
          std::wstring(251, L'x')}) {
        SCOPED_TRACE(::testing::PrintToString(screen));
        titles = {L"Uno"};
        EXPECT_FALSE(Show(&Server::ShowRpt, screen, Keys({VK_SPACE, VK_RETURN})));
        EXPECT_EQ(GetValue(ChoicesKey(L"frmRpts", screen), L"Informes"), L"Uno|");
    }
    for (const std::wstring& screen :
         {std::wstring(L"..\\Otra"), std::wstring(L"a\0b", 3), std::wstring(252, L'x')}) {
        EXPECT_TRUE(Show(&Server::ShowRpt, screen, Script()));
    }
}

TEST_F(Reports, CopiesAndPrinterBelongToThePrinter) {
    const auto enabled = [](bool printer) {
        return Script().Do([printer] {
            for (const int id : {IDC_LBLCOPIAS, IDC_TXTCOPIAS, IDC_CMDPRINTER}) {
                EXPECT_EQ(IsWindowEnabled(Item(id)) != FALSE, printer) << id;
            }
        });
    };
    EXPECT_FALSE(
        Show(&Server::ShowRpt, L"Tercera",
             Script().Do([] { SetFocus(Item(IDC_TXTCOPIAS)); }).Key(VK_UP).Key(VK_UP).Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &3)"));
    const Script away = Script().Do([] { SetFocus(Item(IDC_CMBSELEC)); }).Key(VK_DOWN);
    EXPECT_FALSE(Show(&Server::ShowRpt, enabled(true).Append(away).Append(enabled(false)).Key(VK_RETURN)));
    // The copies travel all the same, and the choice is there again.
    EXPECT_FALSE(Show(&Server::ShowRpt, enabled(false).Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &1, &1)"));
    EXPECT_FALSE(Show(&Server::ShowRpt, L"Otra",
                      Script()
                          .Do([] { PostMessageW(Item(IDC_CMDPRINTER), BM_CLICK, 0, 0); })
                          .Box(L"No hay ninguna impresora")
                          .Do([] { EXPECT_TRUE(IsWindowVisible(Dialog())); })
                          .Key(VK_ESCAPE)));
}

TEST_F(Reports, ThePrinterIsNamedAndChosenInTheSystemsDialog) {
    const Printer printer;
    const Script choose = Script()
                              .Do([] { PostMessageW(Item(IDC_CMDPRINTER), BM_CLICK, 0, 0); })
                              .Until("the printer dialog", [](HWND top) { return top != Dialog(); })
                              .Do([] { // only what is kept
                                  EXPECT_TRUE(IsWindowVisible(GetDlgItem(TopWindow(), cmb1)));
                                  for (const int id : {psh2, cmb2, cmb3, rad1, rad2}) {
                                      EXPECT_FALSE(IsWindowVisible(GetDlgItem(TopWindow(), id))) << id;
                                  }
                              });
    const Script back = Script().Until("the dialog", [](HWND top) { return top == Dialog(); }).Do([] {
        EXPECT_EQ(ItemText(IDC_LBLPRINTER), L"Prueba");
    });
    EXPECT_FALSE(Show(&Server::ShowRpt, Script(choose)
                                            .Key(VK_ESCAPE)
                                            .Append(back)
                                            .Append(choose)
                                            .Key(VK_RETURN)
                                            .Append(back)
                                            .Do([] { SetFocus(Item(IDC_LIST1)); })
                                            .Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &1)"));
}

TEST_F(Reports, AutomaticPrintingCanBeKeptFromTheUser) {
    const auto tick = [] { SendMessageW(Part(0), BM_CLICK, 0, 0); };
    const auto off = [] { EXPECT_FALSE(IsWindowEnabled(Part(0))); };
    EXPECT_FALSE(Show(&Server::ShowRptFchAuto, L"Pedidos", Script().Do(tick).Key(VK_RETURN)));
    EXPECT_FALSE(Show(&Server::ShowRptFchAuto, L"Pedidos",
                      Script().Do([] { EXPECT_FALSE(IsWindowVisible(Part(0))); }).Key(VK_RETURN),
                      VARIANT_FALSE));
    EXPECT_FALSE(Show(&Server::ShowRptFchAutoInf, L"Pedidos", Script().Do(tick).Key(VK_RETURN)));
    EXPECT_FALSE(Show(&Server::ShowRptFchAutoInf, L"Pedidos_Reclamaciones", Script().Do(off).Key(VK_RETURN)));
    const std::wstring start = L"(&[False False False], &0, &1, " + Month();
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReportsFchAuto" + start + L", 1)",
                                       L"AceptarReportsFchAuto" + start + L", 0)",
                                       L"AceptarInformesFchAuto" + start + L", 1)",
                                       L"AceptarInformesFchAuto" + start + L", 0)"));
}

TEST_F(Reports, WhatIsPrintedWithoutADialogIsWhatWasTickedLast) {
    const auto nothingShown = Script();
    EXPECT_FALSE(Show(&Server::PrintEtiq, nothingShown));
    EXPECT_FALSE(Show(&Server::ShowEtiq, Keys({VK_DOWN, VK_SPACE, VK_F8, VK_RETURN})));
    EXPECT_FALSE(Show(&Server::PrintEtiq, nothingShown));
    EXPECT_FALSE(Show(&Server::PrintRptNumAut, nothingShown));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarEtiqueta(&[False False False])", L"AceptarEtiqueta(&[False True False])",
                            L"AceptarEtiqueta(&[False True False])",
                            L"AceptarDocNumAut(&[False False False], &0, &1, Empty, Empty, False)"));
}

TEST_F(Reports, AComponentOfTheEnvironmentFillsAndKeepsTheLists) {
    com::ComPtr<HostObject> settings = com::Make<HostObject>(L"Configuracion", host.log);
    for (const wchar_t* quiet : {L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor", L"GuardarValor"}) {
        settings->On(
            quiet, [](com::Invocation&) {}, true);
    }
    settings->On(L"GuardarLista", [](com::Invocation&) {});
    const auto fill = [](com::Invocation& call) {
        com::LateObject list(call[2].ToObject().Get(), L"List1");
        for (const wchar_t* title : {L"Uno", L"Dos"}) {
            list.Call(L"AddItem", {title});
        }
        list.Put(L"ListIndex", 1L);
        if (call.Count() > 3) {
            com::LateObject outputs(call[3].ToObject().Get(), L"CmbSelec");
            outputs.Call(L"AddItem", {L"Impresora"});
            outputs.Put(L"ListIndex", 0L);
            com::LateObject(call[4].ToObject().Get(), L"TxtFields").Put(L"Text", L"3");
        }
    };
    settings->On(L"CargarLista", fill);
    settings->On(L"CargarEtiquetas", fill);
    const Component component(settings.Get());
    SetValue(kEnvironmentKey, L"Configuracion", component.Name());
    const std::wstring key = L"(\"" + FormKey(L"frmRptsMailCond") + L"\\rptsPedidos\", ";
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, Script()
                                                    .Do([] {
                                                        const HWND list = Item(IDC_CMBSELEC);
                                                        EXPECT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), 2);
                                                    })
                                                    .Key(VK_SPACE)
                                                    .Key(VK_RETURN)));
    EXPECT_THAT(
        TakeLog(),
        ElementsAre(L"CargarLista" + key +
                        L"[\"Listado\" \"Resumen\" \"Etiquetas\"], List1(0), CmbSelec(0), TxtFields(0), "
                        L"False, False)",
                    L"GuardarLista" + key + L"List1(0), CmbSelec(0), TxtFields(0))",
                    L"AceptarReportsParamMail(&[False True], &0, &3, " + Month() +
                        L", \"\", &2, &2, \"\", &\"PRC\")"));
    EXPECT_FALSE(Show(&Server::PrintEtiq, Script()));
    EXPECT_THAT(host.log[0], HasSubstr(L"CargarEtiquetas"));
    EXPECT_THAT(host.log[0], HasSubstr(L", List1(0))"));
}

} // namespace
} // namespace tamvelo::testing
