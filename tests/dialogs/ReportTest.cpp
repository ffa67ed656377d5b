// The report dialogs: what each hands over and what they keep.
#include "com/WinHeaders.h"

#include <dlgs.h>
#include <winspool.h>

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
    const std::wstring ledger = L"Articulos_Movimientos_ALMACEN";
    const Script written{Set(0, L"C-1"), Set(1, L"A"), Choose(2, 1),
                         Tick(5)}; // Repetición: No, Facturado: Sí
    const Script priced{written, Choose(6, 9)};
    const Script draft{Enabled(0, false), Set(1, L"A")};
    const Script hours{Set(0, L"C-1"), Set(1, L"7.05"), Set(2, L"2130"), Tick(4)};
    const Script complaint{Enabled(0, false), Tick(0)}; // never printed unseen
    const Script orders{Set(0, L"C-1"), Set(1, L"T"), Set(2, L"8"), Set(3, L"9"),
                        Choose(4, 0),   Choose(5, 1), Tick(6)};
    const Script numbers{Set(0, L"100"), Set(1, L"200"), Tick(2)};
    // Each as it opens, and with something in every condition: places, not numbers; the third list before the
    // first.
    const struct {
        Operation operation;
        const wchar_t* member;
        bool dates;
        const wchar_t* opening;
        Script fill;
        const wchar_t* filled;
        std::wstring screen = L"Pedidos";
    } cases[] = {
        {&Server::ShowRpt, L"AceptarReports", false, L"", {}, L""},
        {&Server::ShowRptListas, L"AceptarListasParam", false, L", \"PRC\"", Choose(0, 4), L", \"SL4\""},
        {&Server::ShowRptCond, L"AceptarReportsParam", true, L", \"\", &2, &2, \"\", &\"PRC\"", priced,
         L", \"C-1\", &0, &1, \"A\", &\"TDS\""},
        {&Server::ShowRptInfCond, L"AceptarReportsInformesParam", true, L", \"\", &2, &2, \"\"", written,
         L", \"C-1\", &0, &1, \"A\""},
        {&Server::ShowRptMailCond, L"AceptarReportsParamMail", true, L", \"\", &2, &2, \"\", &\"PRC\"",
         priced, L", \"C-1\", &0, &1, \"A\", &\"TDS\""},
        {&Server::ShowRptBorrador, L"AceptarReportsParamMail", true,
         L", \"Borrador\", &2, &2, \"\", &\"PRC\"", draft, L", \"Borrador\", &2, &2, \"A\", &\"PRC\"",
         L"Presupuestos"},
        {&Server::ShowRptCondHr, L"AceptarReportsParamHr", true,
         L", \"\", False, False, #1899-12-30 07:00#, #1899-12-30 23:59#", hours,
         L", \"C-1\", False, True, #1899-12-30 07:05#, #1899-12-30 21:30#"},
        {&Server::ShowRptFchAuto, L"AceptarReportsFchAuto", true, L", 0", Tick(0), L", 1"},
        {&Server::ShowRptFchAuto, L"AceptarInformesFchAuto", true, L", 0", Tick(0), L", 1", ledger},
        {&Server::ShowRptFchAutoInf, L"AceptarInformesFchAuto", true, L", 0", Tick(0), L", 1"},
        {&Server::ShowRptFchAutoInf, L"AceptarInformesFchAuto", true, L", 0", complaint, L", 0",
         L"Pedidos_Reclamaciones"},
        {&Server::ShowRptsInfFch, L"AceptarInformesFch", true, L", \"\"", Set(0, L"A"), L", \"A\""},
        {&Server::ShowRptFchCliDirec, L"AceptarInformesFchAuto", true, L"", {}, L""},
        {&Server::ShowRptInfOrdenes, L"AceptarInformesFchAutoTipoTime", true,
         L", 0, \"\", #1899-12-30#, #1899-12-30 23:59#, 2, 2, \"\"", orders,
         L", 1, \"T\", #1899-12-30 08:00#, #1899-12-30 09:00#, 0, 1, \"C-1\""},
        {&Server::ShowRptNumAut, L"AceptarDocNumAut", false, L", Empty, Empty, False", numbers,
         L", \"100\", \"200\", True"},
    };
    const std::wstring next = Logged(base::Step(ThisMonth(), 1));
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::PrintToString(row.member + row.screen));
        const std::wstring call = row.member + std::wstring(L"(&[True False False], ");
        EXPECT_FALSE(Show(row.operation, Keys({VK_SPACE, VK_RETURN}), row.screen));
        EXPECT_FALSE(Show(row.operation,
                          {row.dates ? Key(VK_NEXT, VK_CONTROL) : Script(), row.fill, Output(1),
                           Copies(L" 7"), Key(VK_RETURN)},
                          row.screen));
        EXPECT_THAT(TakeLog(),
                    ElementsAre(call + L"&0, &1" + (row.dates ? L", " + month : L"") + row.opening + L")",
                                call + L"&1, &7" + (row.dates ? L", " + next : L"") + row.filled + L")"));
    }
    EXPECT_FALSE(Show(&Server::ShowRptFchAutoInf, {Tick(0), Key(VK_RETURN)}, L"pedidos_reclamaciones"));
    EXPECT_FALSE(Show(&Server::ShowSql, Keys({VK_SPACE, VK_RETURN})));
    EXPECT_FALSE(Show(&Server::ShowEtiq, {Says(IDC_LBLLIST1, L"&Etiquetas:"), Keys({VK_SPACE, VK_RETURN})}));
    EXPECT_FALSE(Show(&Server::ShowRptFchAuto,
                      {Do([] { EXPECT_FALSE(IsWindowVisible(Part(0))); }), Key(VK_RETURN)}, L"Otra",
                      VARIANT_FALSE));
    EXPECT_FALSE(Show(&Server::ShowRpt, Keys({VK_SPACE, VK_ESCAPE})));
    EXPECT_THAT(
        TakeLog(),
        ElementsAre(L"AceptarInformesFchAuto(&[True False False], &1, &7, " + month + L", 1)",
                    L"AceptarReports(&[True False False], 0, 0)", L"AceptarEtiqueta(&[True False False])",
                    L"AceptarReportsFchAuto(&[False False False], &0, &1, " + month + L", 0)"));
}

TEST_F(Reports, ABoxIsAShortWayToYesOfItsList) {
    const auto chosen = [](LRESULT entry, bool ticked) {
        return Do([=] {
            EXPECT_EQ(SendMessageW(Part(4), CB_GETCURSEL, 0, 0), entry);
            EXPECT_EQ(SendMessageW(Part(5), BM_GETCHECK, 0, 0) != 0, ticked);
        });
    };
    EXPECT_FALSE(Show(&Server::ShowRptCond,
                      {chosen(2, false), Tick(5), chosen(0, true), Tick(5), chosen(2, false), Choose(4, 0),
                       chosen(0, true), Choose(4, 1), chosen(1, false), Key(VK_ESCAPE)}));
}

TEST_F(Reports, ChoicesAreKeptPerScreenAndFollowTheReports) {
    // Ticks by title, the output by its text, the copies; the conditions begin anew.
    EXPECT_FALSE(Show(&Server::ShowRptMailCond,
                      {Keys({VK_DOWN, VK_SPACE}), Output(2), Copies(L"7"), Set(0, L"C-1"), Key(VK_RETURN)}));
    EXPECT_EQ(GetValue(ChoicesKey(L"frmRptsMailCond", L"Pedidos"), L"Informes"), L"Resumen|");
    host.log.clear();
    titles = {L"Nuevo", L"Listado", L"Resumen"};
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, Key(VK_RETURN)));
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, Key(VK_RETURN), L"Facturas"));
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, Keys({VK_SPACE, VK_ESCAPE}))); // keeps nothing
    titles.clear();
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, Key(VK_RETURN)));
    const std::wstring start = L"AceptarReportsParamMail(&[";
    const std::wstring rest = month + L", \"\", &2, &2, \"\", &\"PRC\")";
    EXPECT_THAT(TakeLog(),
                ElementsAre(start + L"False False True], &2, &7, " + rest,
                            start + L"False False False], &0, &1, " + rest, start + L"], &2, &7, " + rest));
    // Some conditions are remembered too, where the host looks for them.
    const std::wstring session = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\";
    const std::wstring ledger = L"articulos_movimientos_almacen";
    const struct {
        Operation operation;
        std::wstring screen;
        int condition;
        std::wstring key;
        const wchar_t* name;
    } remembered[] = {
        {&Server::ShowRptInfCond, L"CLIENTES", 0, session + L"Personal\\Clientes", L"Cliente"},
        {&Server::ShowRptFchAuto, ledger, 1, ChoicesKey(L"frmRptsFchAuto", ledger), L"Seccion"},
        {&Server::ShowRptInfOrdenes, L"Ordenes", 1, session + L"Ordenes\\Informes", L"Tipo"},
    };
    for (const auto& row : remembered) {
        EXPECT_FALSE(Show(row.operation, {Set(row.condition, L"Norte"), Key(VK_RETURN)}, row.screen));
        EXPECT_EQ(GetValue(row.key, row.name), L"Norte");
        EXPECT_FALSE(Show(row.operation, {Holds(row.condition, L"Norte"), Key(VK_ESCAPE)}, row.screen));
    }
    // A screen's name is part of a key: only what would be another key, or none, is refused.
    titles = {L"Uno"};
    for (const std::wstring& screen :
         {std::wstring(L"Pedidos/Clientes: ¿Año? *."), std::wstring(L".."), std::wstring(251, L'x')}) {
        EXPECT_FALSE(Show(&Server::ShowRpt, Keys({VK_SPACE, VK_RETURN}), screen));
        EXPECT_EQ(GetValue(ChoicesKey(L"frmRpts", screen), L"Informes"), L"Uno|");
    }
    for (const std::wstring& screen :
         {std::wstring(L"..\\Otra"), std::wstring(L"a\0b", 3), std::wstring(252, L'x')}) {
        EXPECT_TRUE(Show(&Server::ShowRpt, {}, screen));
    }
}

TEST_F(Reports, CopiesAndPrinterBelongToThePrinter) {
    const auto enabled = [](bool printer) {
        return Do([printer] {
            for (const int id : {IDC_LBLCOPIAS, IDC_TXTCOPIAS, IDC_CMDPRINTER}) {
                EXPECT_EQ(IsWindowEnabled(Item(id)) != FALSE, printer) << id;
            }
        });
    };
    const Script away{Into(IDC_CMBSELEC), Key(VK_DOWN)};
    EXPECT_FALSE(Show(&Server::ShowRpt, {enabled(true), Into(IDC_TXTCOPIAS), Keys({VK_UP, VK_UP}), away,
                                         enabled(false), Key(VK_RETURN)}));
    // The copies travel all the same, and the choice is there again.
    EXPECT_FALSE(Show(&Server::ShowRpt, {enabled(false), Key(VK_ESCAPE)}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &1, &3)"));
    EXPECT_FALSE(Show(&Server::ShowRpt,
                      {Click(IDC_CMDPRINTER), Box(L"No hay ninguna impresora"),
                       Do([] { EXPECT_TRUE(IsWindowVisible(Dialog())); }), Key(VK_ESCAPE)},
                      L"Otra"));
}

TEST_F(Reports, ThePrinterIsNamedAndChosenInTheSystemsDialog) {
    const Printer printer;
    const Script choose{Click(IDC_CMDPRINTER),
                        Until("the printer dialog", [](HWND top) { return top != Dialog(); }),
                        Do([] { // only what is kept
                            EXPECT_TRUE(IsWindowVisible(GetDlgItem(TopWindow(), cmb1)));
                            for (const int id : {psh2, cmb2, cmb3, rad1, rad2}) {
                                EXPECT_FALSE(IsWindowVisible(GetDlgItem(TopWindow(), id))) << id;
                            }
                        })};
    const Script back{Showing(IDC_LBLPRINTER), Says(IDC_LBLPRINTER, L"Prueba")};
    EXPECT_FALSE(Show(&Server::ShowRpt, {choose, Key(VK_ESCAPE), back, choose, Key(VK_RETURN), back,
                                         Into(IDC_LIST1), Key(VK_RETURN)}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &1)"));
}

TEST_F(Reports, WhatIsPrintedWithoutADialogIsWhatWasTickedLast) {
    EXPECT_FALSE(Show(&Server::PrintEtiq, {}));
    EXPECT_FALSE(Show(&Server::ShowEtiq, Keys({VK_DOWN, VK_SPACE, VK_F8, VK_RETURN})));
    EXPECT_FALSE(Show(&Server::PrintEtiq, {}));
    EXPECT_FALSE(Show(&Server::PrintRptNumAut, {}));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarEtiqueta(&[False False False])", L"AceptarEtiqueta(&[False True False])",
                            L"AceptarEtiqueta(&[False True False])",
                            L"AceptarDocNumAut(&[False False False], &0, &1, Empty, Empty, False)"));
    // There is no dialog to mend them in: the caller is told.
    SetValue(ChoicesKey(L"frmRptNumAut", L"Pedidos"), L"Copias", L"muchas");
    const std::optional<com::Error> error = Show(&Server::PrintRptNumAut, {});
    ASSERT_TRUE(error);
    EXPECT_THAT(error->description, HasSubstr(L"El número de copias «muchas»"));
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(Reports, AComponentOfTheEnvironmentFillsAndKeepsTheLists) {
    com::ComPtr<HostObject> settings = com::Make<HostObject>(L"Configuracion", host.log);
    for (const wchar_t* quiet : {L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor", L"GuardarValor"}) {
        settings->Returns(quiet, {}, true);
    }
    settings->Accepts({L"GuardarLista"});
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
    Offer(L"Configuracion", *settings.Get());
    EXPECT_FALSE(Show(&Server::ShowRptMailCond,
                      {Do([] { EXPECT_EQ(SendMessageW(Item(IDC_CMBSELEC), CB_GETCOUNT, 0, 0), 2); }),
                       Keys({VK_SPACE, VK_RETURN})}));
    const std::wstring key = L"(\"" + FormKey(L"frmRptsMailCond") + L"\\rptsPedidos\", ";
    const std::wstring boxes = L"List1(0), CmbSelec(0), TxtFields(0)";
    EXPECT_THAT(TakeLog(), ElementsAre(L"CargarLista" + key + L"[\"Listado\" \"Resumen\" \"Etiquetas\"], " +
                                           boxes + L", False, False)",
                                       L"GuardarLista" + key + boxes + L")",
                                       L"AceptarReportsParamMail(&[False True], &0, &3, " + month +
                                           L", \"\", &2, &2, \"\", &\"PRC\")"));
    EXPECT_FALSE(Show(&Server::PrintEtiq, {}));
    EXPECT_THAT(host.log[0], ::testing::AllOf(HasSubstr(L"CargarEtiquetas"), HasSubstr(L", List1(0))")));
}

} // namespace
} // namespace tamvelo::testing
