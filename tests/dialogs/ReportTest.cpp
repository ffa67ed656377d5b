// The report dialogs: what each hands over, what they keep, how they are used; the printer.
#include "com/WinHeaders.h"

#include <dlgs.h>
#include <winspool.h>

#include <memory>

#include "base/DateRanges.h"
#include "base/PeriodName.h"
#include "reports/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

constexpr wchar_t kLedger[] = L"Articulos_Movimientos_ALMACEN";

base::DateRange ThisMonth() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return base::WholeMonth(*base::ToDay({now.wYear, now.wMonth, now.wDay}));
}

/// A range as the log writes its dates.
std::wstring Logged(const base::DateRange& range) {
    const base::CalendarDate first = base::ToDate(range.first);
    const base::CalendarDate last = base::ToDate(range.last);
    wchar_t text[32];
    wsprintfW(text, L"#%04d-%02d-%02d#, #%04d-%02d-%02d#", first.year, first.month, first.day, last.year,
              last.month, last.day);
    return text;
}

/// The report dialogs over three reports.
class Reports : public DialogTest {
protected:
    Reports() { host.TextCells(); }
    std::optional<com::Error> Try(const wchar_t* operation, const Script& script = {},
                                  const std::wstring& screen = L"Pedidos",
                                  const Variant& showAuto = Variant::Missing()) {
        const com::ComPtr<IDispatch> list =
            reports ? reports : com::MakeCollection(std::vector<Variant>(titles.begin(), titles.end()));
        return showAuto.IsMissing() ? PlayLate(operation, {screen, sink.Get(), list.Get()}, script)
                                    : PlayLate(operation, {screen, sink.Get(), list.Get(), showAuto}, script);
    }
    void Show(const wchar_t* operation, const Script& script, const std::wstring& screen = L"Pedidos",
              const Variant& showAuto = Variant::Missing()) {
        EXPECT_FALSE(Try(operation, script, screen, showAuto));
    }
    /// The control of the dialog's condition of that place.
    static constexpr int Part(int condition) { return IDC_CONDITIONS + 4 * condition + 1; }
    // What the user does to it: chooses an entry, ticks.
    static Script Choose(int box, int entry) {
        return Do([box, entry] {
            SendMessageW(Item(box), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
            SendMessageW(Dialog(), WM_COMMAND, MAKEWPARAM(box, CBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(Item(box)));
        });
    }
    static Script Tick(int condition) { return Click(Part(condition)); }
    static Script Copies(const wchar_t* text) { return Set(IDC_TXTCOPIAS, text); }
    static Script ClickTick(int row) { return InList(row, -8, {WM_LBUTTONDOWN, WM_LBUTTONUP}); }
    /// What the mouse learns over a control.
    static std::wstring TipOf(int control) {
        std::wstring tip;
        for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, TOOLTIPS_CLASSW, nullptr));) {
            wchar_t text[80] = L"";
            TTTOOLINFOW tool{};
            tool.cbSize = sizeof tool;
            tool.hwnd = Dialog();
            tool.uId = static_cast<UINT_PTR>(control);
            tool.lpszText = text;
            SendMessageW(window, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
            tip += text;
        }
        return tip;
    }
    /// A choice as it is kept.
    static std::wstring Kept(const wchar_t* form, const std::wstring& screen, const wchar_t* name) {
        return GetValue(FormKey(form) + L"\\rpts" + screen, name);
    }

    const std::wstring month = Logged(ThisMonth());
    std::vector<std::wstring> titles{L"Listado", L"Resumen", L"Etiquetas"};
    com::ComPtr<IDispatch> reports; // in place of the titles
};

TEST_F(Reports, EachDialogHandsOverItsOwnCall) {
    const Script off = Looks({Part(0)}, L"o");
    const Script written{Set(Part(0), L"C-1"), Set(Part(1), L"A"), Choose(Part(2), 1), Tick(5)}; // No, Sí
    const Script priced{written, Choose(Part(6), 9)};
    const Script draft{off, Set(Part(1), L"A")};
    const Script hours{Set(Part(0), L"C-1"), Set(Part(1), L"7.05"), Set(Part(2), L"2130"), Tick(4)};
    const Script complaint{off, Tick(0)}; // never printed unseen
    const Script orders{{Set(Part(0), L"C-1"), Set(Part(1), L"T"), Set(Part(2), L"8"), Set(Part(3), L"9")},
                        {Choose(Part(4), 0), Choose(Part(5), 1), Tick(6)}};
    const Script numbers{Click(IDC_CMDMARCAS), InMenu(), L"Esc", Focused(IDC_LIST1), Set(Part(0), L"100"),
                         Set(Part(1), L"200"), Tick(2)};
    // Something in every condition: places, not numbers; the third list before the first. "@" are ticks,
    // output, copies and dates, "*" those without dates.
    const std::tuple<const wchar_t*, const wchar_t*, Script, std::wstring> cases[] = {
        {L"ShowRpt", L"Pedidos", {}, L"AceptarReports(*)"},
        {L"ShowRptListas", L"Pedidos", Choose(Part(0), 4), LR"(AceptarListasParam(*, "SL4"))"},
        {L"ShowRptCond", L"Pedidos", priced, LR"(AceptarReportsParam(@, "C-1", &0, &1, "A", &"TDS"))"},
        {L"ShowRptInfCond", L"Pedidos", written, LR"(AceptarReportsInformesParam(@, "C-1", &0, &1, "A"))"},
        {L"ShowRptMailCond", L"Pedidos", priced,
         LR"(AceptarReportsParamMail(@, "C-1", &0, &1, "A", &"TDS"))"},
        {L"ShowRptBorrador", L"Presupuestos", draft,
         LR"(AceptarReportsParamMail(@, "Borrador", &2, &2, "A", &"PRC"))"},
        {L"ShowRptCondHr", L"Pedidos", hours,
         LR"(AceptarReportsParamHr(@, "C-1", False, True, #1899-12-30 07:05#, #1899-12-30 21:30#))"},
        {L"ShowRptFchAuto", L"Pedidos", Tick(0), L"AceptarReportsFchAuto(@, 1)"},
        {L"ShowRptFchAuto", kLedger, Tick(0), L"AceptarInformesFchAuto(@, 1)"},
        {L"ShowRptFchAutoInf", L"Pedidos", Tick(0), L"AceptarInformesFchAuto(@, 1)"},
        {L"ShowRptFchAutoInf", L"Pedidos_Reclamaciones", complaint, L"AceptarInformesFchAuto(@, 0)"},
        {L"ShowRptFchAutoInf", L"pedidos_reclamaciones", Tick(0), L"AceptarInformesFchAuto(@, 1)"},
        {L"ShowRptsInfFch", L"Pedidos", Set(Part(0), L"A"), LR"(AceptarInformesFch(@, "A"))"},
        {L"ShowRptFchCliDirec", L"Pedidos", {}, L"AceptarInformesFchAuto(@)"},
        {L"ShowRptInfOrdenes", L"Pedidos", orders,
         LR"(AceptarInformesFchAutoTipoTime(@, 1, "T", #1899-12-30 08:00#, #1899-12-30 09:00#, 0, 1, "C-1"))"},
        {L"ShowRptNumAut", L"Pedidos", numbers, LR"(AceptarDocNumAut(*, "100", "200", True))"},
    };
    const std::wstring next = L", " + Logged(base::Step(ThisMonth(), 1));
    for (auto [operation, screen, fill, call] : cases) {
        Show(operation, {L"^A ^Next", fill, Choose(IDC_CMBSELEC, 1), Copies(L" 7"), L"Enter"}, screen);
        const size_t mark = call.find(L'(') + 1;
        call.replace(mark, 1, L"&[True True True], &1, &7" + (call[mark] == L'@' ? next : L""));
        EXPECT_THAT(TakeLog(), ElementsAre(call));
    }
    Show(L"ShowSql", L"Space Enter");
    Show(L"ShowRptFchAuto", {Looks({Part(0)}, L"-"), L"Enter"}, L"Otra", Variant(false));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarReports(&[True False False], 0, 0)",
                            L"AceptarReportsFchAuto(&[False False False], &0, &1, " + month + L", 0)"));
    // A box is a short way to "Sí" of its list.
    const auto chosen = [](LRESULT entry, bool ticked) {
        return Do([=] {
            EXPECT_EQ(SendMessageW(Item(Part(4)), CB_GETCURSEL, 0, 0), entry);
            EXPECT_EQ(SendMessageW(Item(Part(5)), BM_GETCHECK, 0, 0) != 0, ticked);
        });
    };
    Show(L"ShowRptCond", {chosen(2, false), Tick(5), chosen(0, true), Tick(5), chosen(2, false),
                          Choose(Part(4), 0), chosen(0, true), Choose(Part(4), 1), chosen(1, false), L"Esc"});
}

TEST_F(Reports, ChoicesAreKeptPerScreenAndFollowTheReports) {
    // Ticks by title, the output by its text, the copies; the conditions begin anew.
    Show(L"ShowRptMailCond",
         {L"Down Space", Choose(IDC_CMBSELEC, 2), Copies(L"7"), Set(Part(0), L"C-1"), L"Enter"});
    EXPECT_EQ(Kept(L"frmRptsMailCond", L"Pedidos", L"Informes"), L"Resumen|");
    host.log.clear();
    titles = {L"Nuevo", L"Listado", L"Resumen"};
    Show(L"ShowRptMailCond", L"Enter");
    Show(L"ShowRptMailCond", L"Enter", L"Facturas");
    Show(L"ShowRptMailCond", L"Space Esc"); // keeps nothing
    titles.clear();
    Show(L"ShowRptMailCond", L"Enter");
    const std::wstring start = L"AceptarReportsParamMail(&[";
    const std::wstring rest = month + LR"(, "", &2, &2, "", &"PRC"))";
    EXPECT_THAT(TakeLog(),
                ElementsAre(start + L"False False True], &2, &7, " + rest,
                            start + L"False False False], &0, &1, " + rest, start + L"], &2, &7, " + rest));
    // Some conditions are remembered too, where the host looks for them.
    const std::tuple<const wchar_t*, std::wstring, int, std::wstring, const wchar_t*> remembered[] = {
        {L"ShowRptInfCond", L"CLIENTES", Part(0), Session(L"Personal\\Clientes"), L"Cliente"},
        {L"ShowRptFchAuto", kLedger, Part(1), FormKey(L"frmRptsFchAuto") + L"\\rpts" + kLedger, L"Seccion"},
        {L"ShowRptInfOrdenes", L"Ordenes", Part(1), Session(L"Ordenes\\Informes"), L"Tipo"},
    };
    for (const auto& [operation, screen, box, key, name] : remembered) {
        Show(operation, {Set(box, L"Norte"), L"Enter"}, screen);
        EXPECT_EQ(GetValue(key, name), L"Norte");
        Show(operation, {Says(box, L"Norte"), L"Esc"}, screen);
    }
    Show(L"ShowRptInfCond", {Says(Part(0), L""), Set(Part(0), L"Sur"), L"Enter"}); // no screen of customers
    EXPECT_EQ(GetValue(Session(L"Personal\\Clientes"), L"Cliente"), L"Norte");
    // A screen's name is part of a key: only what would be another key is refused.
    const std::wstring odd = L"Pedidos/Clientes: ¿Año? *.";
    EXPECT_TRUE(Try(L"ShowRpt", {}, L"..\\Otra"));
    // A report without a title is called by its place.
    const auto bare = com::Make<HostObject>(L"informe", host.log);
    const auto named = com::Make<HostObject>(L"informe", host.log);
    named->Returns(L"Titulo", Variant(L"Ventas"), true);
    reports = com::MakeCollection({Variant(static_cast<IDispatch*>(nullptr)), Variant(named.Get()),
                                   Variant(bare.Get()), Variant::Null()});
    Show(L"ShowRpt", {L"^A Enter"}, odd);
    EXPECT_EQ(Kept(L"frmRpts", odd, L"Informes"), L"Informe 1|Ventas|Informe 3|Informe 4|");
    reports.Reset();
}

TEST_F(Reports, WhatIsPrintedWithoutADialogIsWhatWasTickedLast) {
    Show(L"PrintEtiq", {});
    Show(L"ShowEtiq", {Says(IDC_LBLLIST1, L"&Etiquetas:"), L"Down Space F8 Enter"});
    // A list that breaks off is the caller's error, and no reason to forget the ticks.
    const auto broken = com::Make<HostObject>(L"cReports", host.log);
    broken->Returns(L"Count", Variant(3L), true);
    broken->On(
        L"Item",
        [](Invocation& call) { call[0].ToLong() > 1 ? RaiseHostError() : call.Return(Variant(L"Listado")); },
        true);
    reports = com::ComPtr<IDispatch>(broken.Get());
    for (const wchar_t* operation : {L"ShowEtiq", L"PrintEtiq"}) {
        EXPECT_EQ(Try(operation)->description, kHostErrorText);
    }
    reports.Reset();
    Show(L"PrintEtiq", {});
    Show(L"PrintRptNumAut", {});
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarEtiqueta(&[False False False])", L"AceptarEtiqueta(&[False True False])",
                            L"AceptarEtiqueta(&[False True False])",
                            L"AceptarDocNumAut(&[False False False], &0, &1, Empty, Empty, False)"));
    // There is no dialog to mend them in: the caller is told.
    SetValue(FormKey(L"frmRptNumAut") + L"\\rptsPedidos", L"Copias", L"muchas");
    EXPECT_THAT(Try(L"PrintRptNumAut")->description, HasSubstr(L"El número de copias «muchas»"));
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(Reports, AComponentOfTheEnvironmentFillsAndKeepsTheLists) {
    Offer({L"Configuracion"});
    Show(L"ShowRptMailCond",
         {Do([] { EXPECT_EQ(SendMessageW(Item(IDC_CMBSELEC), CB_GETCOUNT, 0, 0), 2); }), L"Space Enter"});
    const std::wstring key = L"(\"" + FormKey(L"frmRptsMailCond") + L"\\rptsPedidos\", ";
    const std::wstring boxes = L"List1(0), CmbSelec(0), TxtFields(0)";
    EXPECT_THAT(
        TakeLog(),
        IsSupersetOf(
            {L"CargarLista" + key + LR"(["Listado" "Resumen" "Etiquetas"], )" + boxes + L", False, False)",
             L"GuardarLista" + key + boxes + L")",
             L"AceptarReportsParamMail(&[False True], &0, &3, " + month + LR"(, "", &2, &2, "", &"PRC"))"}));
    Show(L"PrintEtiq", {});
    EXPECT_THAT(host.log,
                Contains(::testing::AllOf(HasSubstr(L"CargarEtiquetas"), HasSubstr(L", List1(0))"))));
}

TEST_F(Reports, TheSeriesBelongsToTheEleventhReport) {
    titles.assign(12, L"Informe");
    SetValue(Session(L"Clientes"), L"Serie", L"A");
    const auto tells = [](const wchar_t* tip) { return Do([tip] { EXPECT_EQ(TipOf(Part(0)), tip); }); };
    const Script on{Looks({Part(0) - 1, Part(0)}, L"xx"), tells(L"")}; // its label, too
    const Script off{Looks({Part(0) - 1, Part(0)}, L"oo"), tells(L"Sólo para el informe 11 de la lista")};
    Script script;
    for (int i = 0; i < 12; ++i) {
        script.Append({i == 10 ? on : off, L"Down"});
    }
    // A click on the tick alone makes its entry the one that all of this is about.
    script.Append({ClickTick(2), off, ClickTick(10), on, Says(Part(0), L"A"), Set(Part(0), L"B")});
    Show(L"ShowSql", {script, L"Esc"});
    EXPECT_EQ(GetValue(Session(L"Clientes"), L"Serie"), L"A");
    Show(L"ShowSql", {script, L"Enter"});
    EXPECT_EQ(GetValue(Session(L"Clientes"), L"Serie"), L"B");
    titles.clear(); // no entry was ever selected: nothing is lost
    Show(L"ShowSql", L"Enter");
    EXPECT_EQ(GetValue(Session(L"Clientes"), L"Serie"), L"B");
}

TEST_F(Reports, ThePeriodIsTheDatesOfTheSelectedReport) {
    titles = {L"Facturas & abonos", L"Resumen de todos los meses, " + std::wstring(200, L'x')};
    const auto shows = [](const base::DateRange& range, base::PeriodParts parts, const std::wstring& title) {
        return Script{Looks({IDC_LBLPERIODO, IDC_LBLNOTE}, L"xx"),
                      Says(IDC_LBLPERIODO, base::PeriodName(range, parts) + L": " + title), Do([] {
                          for (const int id : {IDC_LBLPERIODO, IDC_LBLNOTE}) {
                              EXPECT_TRUE(GetWindowLongW(Item(id), GWL_STYLE) & SS_NOPREFIX) << "no shortcut";
                          }
                      })};
    };
    for (const auto& [operation, parts] : {std::pair{L"ShowRptInfCond", base::PeriodParts::MonthAndYear},
                                           {L"ShowRptMailCond", base::PeriodParts::Year}}) {
        Show(operation,
             {shows(ThisMonth(), parts, titles[0]), ClickTick(1), shows(ThisMonth(), parts, titles[1]),
              L"^Next", shows(base::Step(ThisMonth(), 1), parts, titles[1]), L"Esc"});
    }
}

TEST_F(Reports, ABoxIsFilledFromTheSelectionPanelThroughTheRelay) {
    Offer({L"Clases", L"Archivos"});
    host.className = L"clientes";
    const Script chosen{Showing(IDC_DATAGRID), L"Down Enter", Showing(IDC_CMBSELEC), Says(Part(0), L"f1c0")};
    Show(L"ShowRptInfOrdenes", {Into(Part(0)), L"F4", chosen, Set(Part(0), L""), Click(IDC_CONDITIONS + 3),
                                chosen, Tool(L"Aceptar")});
    EXPECT_THAT(host.log, Contains(L"CrearClase(\"clientes\")"));
    EXPECT_THAT(host.log.back(), HasSubstr(L", \"f1c0\")"));
    host.className = L"tipos_producto"; // of which the marks count, and no answer
    host.log.clear();
    Show(L"ShowRptFchAutoInf", {Tick(1), Showing(IDC_DATAGRID), L"Enter", Showing(IDC_CMBSELEC),
                                Says(Part(1), L"Fiitrar Tipos Producto"), L"Esc"});
    const auto isBar = [](const std::wstring& line) {
        return line.starts_with(L"RutaBarra") || line.starts_with(L"Existe");
    };
    std::erase_if(host.log, isBar);
    EXPECT_THAT(
        TakeLog(), // the look of its columns is kept under the button's place
        ElementsAre(L"CrearClase(\"Tipos_Producto\")", L"Requery(\"selec_plan\")", L"sClassName()",
                    L"Requery(\"seleccion\")",
                    L"CarpetaCuadriculas(\"frmSelecTFTipos_Producto_1.grx\", &False)", L"AplyFilter(\"\")"));
}

TEST_F(Reports, WhatIsNoHourIsRefusedAndCopiesThatAreNoNumberReportedTheChoicesKept) {
    Show(L"ShowRptCondHr", {Set(Part(2), L"7,30"), L"Enter", Box(L"«7,30» no es una hora. Se escribe"),
                            Focused(Part(2)), Asked({}), L"Esc"});
    EXPECT_EQ(Kept(L"frmRptsCondHr", L"Pedidos", L"Copias"), L""); // before anything happens
    for (const wchar_t* copies : {L"", L"40000", L"3 4"}) {
        const long before = host.References();
        Show(L"ShowRpt", {Copies(copies), L"Enter", Box(L"número de copias")});
        EXPECT_EQ(host.References(), before); // what is left holds nothing of the host's
        EXPECT_THAT(TakeLog(), IsEmpty());
        EXPECT_FALSE(IsWindowVisible(Dialog()));
        EXPECT_EQ(Kept(L"frmRpts", L"Pedidos", L"Copias"), copies);
    }
    Show(L"ShowRpt", {Copies(L" 2"), L"Enter"});
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &2)"));
    // The next operation finds the form that was left hidden, with its choices: if it is the same one.
    // Another way to show it, another screen, another permission: nothing of what was chosen is there.
    const Script fails{Set(Part(0), L"100"), Tick(2), Copies(L""), L"Enter", Box(L"número de copias")};
    const std::tuple<const wchar_t*, const wchar_t*, bool, const wchar_t*> others[] = {
        {L"PrintRptNumAut", L"Otra", true, L"Empty, Empty, False)"},
        {L"ShowRptNumAut", L"Otra", true, L"Empty, Empty, False)"},
        {L"ShowRptNumAut", L"Pedidos", false, L"Empty, Empty, False)"},
        {L"ShowRptNumAut", L"Pedidos", true, L"\"100\", Empty, True)"},
    };
    CountObjects();
    for (const auto& [operation, screen, showAuto, call] : others) {
        Show(L"ShowRptNumAut", fails);
        const bool prints = *operation == L'P';
        Show(operation, prints ? Script() : Script{Copies(L"1"), L"Enter"}, screen, Variant(showAuto));
        EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(call)));
    }
    Show(L"ShowRptMailCond", {Set(Part(0), L"C-1"), Copies(L""), L"Enter", Box(L"número")});
    Show(L"ShowRptBorrador", {Copies(L""), L"Enter", Box(L"número")});
    Show(L"ShowRptMailCond", {Says(Part(0), L""), L"Esc"});
}

struct PrinterRemoval {
    void operator()(HANDLE printer) const {
        DeletePrinter(printer);
        ClosePrinter(printer);
    }
};

/// A printer of this machine. The user's choice of it is kept in the test's own registry.
std::unique_ptr<void, PrinterRemoval> MakePrinter() {
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
    std::unique_ptr<void, PrinterRemoval> made(AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer)));
    EXPECT_TRUE(made && SetDefaultPrinterW(name)) << GetLastError();
    return made;
}

class Impresora : public DialogTest {
protected:
    Impresora() { gdiSlack = 80; } // what the system keeps of its printer dialog
    void Show(const Script& script) {
        const auto reports = com::MakeCollection({Variant(L"Listado")});
        EXPECT_FALSE(PlayLate(L"ShowRpt", {L"Pedidos", sink.Get(), reports.Get()}, script));
    }
};

TEST_F(Impresora, IsChosenInTheSystemsDialogAndCopiesAreItsOwn) {
    const auto copies = [](const wchar_t* shown) {
        return Looks({IDC_LBLCOPIAS, IDC_TXTCOPIAS, IDC_CMDPRINTER}, shown);
    };
    Show({copies(L"xxx"), Click(IDC_CMDPRINTER), Box(L"No hay ninguna impresora"), Set(IDC_TXTCOPIAS, L"9"),
          Into(IDC_TXTCOPIAS), L"Up Up", Into(IDC_CMBSELEC), L"Down", copies(L"ooo"), L"Enter"});
    const auto printer = MakePrinter();
    const Script choose{Click(IDC_CMDPRINTER),
                        Until("the printer dialog", [](HWND top) { return top != Dialog(); }),
                        Do([] { // only what is kept
                            EXPECT_TRUE(IsWindowVisible(GetDlgItem(TopWindow(), cmb1)));
                            for (const int id : {psh2, cmb2, cmb3, rad1, rad2}) {
                                EXPECT_FALSE(IsWindowVisible(GetDlgItem(TopWindow(), id))) << id;
                            }
                        })};
    const Script back{Showing(IDC_LBLPRINTER), Says(IDC_LBLPRINTER, L"Prueba")};
    // The choice is there again, and the copies travel also to where they do not belong.
    Show({copies(L"ooo"), Into(IDC_CMBSELEC), L"Up", copies(L"xxx"), choose, L"Esc", back, choose, L"Enter",
          back, Into(IDC_LIST1), L"Enter"});
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarReports(&[False], &1, &11)", L"AceptarReports(&[False], &0, &11)"));
}

} // namespace
} // namespace tamvelo::testing
