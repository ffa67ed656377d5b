// The report dialogs: what each hands over, what they keep, and how they are used.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "base/DateRanges.h"
#include "base/PeriodName.h"
#include "com/Collection.h"
#include "frame/Resources.h"
#include "reports/Resources.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {
namespace {

const std::wstring kSession = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\";
const std::wstring kLedger = L"Articulos_Movimientos_ALMACEN";

base::DateRange ThisMonth() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return base::WholeMonth(*base::ToDay({now.wYear, now.wMonth, now.wDay}));
}

/// A range as the log writes its dates.
std::wstring Logged(const base::DateRange& range) {
    std::wstring text;
    for (const base::Day day : {range.first, range.last}) {
        wchar_t one[16];
        const base::CalendarDate date = base::ToDate(day);
        wsprintfW(one, L"#%04d-%02d-%02d#", date.year, date.month, date.day);
        text += (text.empty() ? L"" : L", ") + std::wstring(one);
    }
    return text;
}

/// The report dialogs over three reports.
class Reports : public DialogTest {
protected:
    Reports() {
        host.TextCells();
        gdiSlack = 16; // a hidden window leaves pictures that the system keeps for others
    }
    void WarmUp() override {
        for (const wchar_t* screen : {L"Pedidos", L"Otra", L"Pedidos"}) {
            Show(L"ShowRptCond", {Copies(L""), Key(VK_RETURN), Box(L"copias")}, screen);
        }
        Show(L"ShowRptCond", Key(VK_ESCAPE));
    }
    std::optional<com::Error> Show(const wchar_t* operation, const Script& script,
                                   const std::wstring& screen = L"Pedidos",
                                   const com::Variant& showAuto = com::Variant::Missing()) {
        std::vector<com::Variant> texts;
        for (const std::wstring& title : titles) {
            texts.emplace_back(title);
        }
        const com::ComPtr<IDispatch> list = reports ? reports : com::MakeCollection(std::move(texts));
        return showAuto.IsMissing() ? PlayLate(operation, {screen, sink.Get(), list.Get()}, script)
                                    : PlayLate(operation, {screen, sink.Get(), list.Get(), showAuto}, script);
    }
    /// The control of the dialog's condition of that place.
    static constexpr int Part(int condition) { return IDC_CONDITIONS + 4 * condition + 1; }
    // What the user does to it: writes a text, chooses an entry, ticks.
    static Script Set(int condition, const wchar_t* text) { return DialogTest::Set(Part(condition), text); }
    static Script Choose(int condition, int entry) {
        return Do([box = Part(condition), entry] {
            SendMessageW(Item(box), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
            SendMessageW(Dialog(), WM_COMMAND, MAKEWPARAM(box, CBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(Item(box)));
        });
    }
    static Script Tick(int condition) { return Click(Part(condition)); }
    static Script Enabled(int condition, bool enabled) {
        return Do([=] { EXPECT_EQ(IsWindowEnabled(Item(Part(condition))) != FALSE, enabled) << condition; });
    }
    static Script Copies(const wchar_t* text) { return DialogTest::Set(IDC_TXTCOPIAS, text); }
    static Script Output(int entry) {
        return Do([=] { SendMessageW(Item(IDC_CMBSELEC), CB_SETCURSEL, static_cast<WPARAM>(entry), 0); });
    }
    static Script ClickTick(int row) {
        return Do([row] {
            const HWND list = Item(IDC_LIST1);
            RECT label{LVIR_LABEL, 0, 0, 0};
            SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
            SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&label));
            const LPARAM at = MAKELPARAM(label.left - 8, (label.top + label.bottom) / 2);
            PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
            PostMessageW(list, WM_LBUTTONUP, 0, at);
        });
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
    const Script written{Set(0, L"C-1"), Set(1, L"A"), Choose(2, 1),
                         Tick(5)}; // Repetición: No, Facturado: Sí
    const Script priced{written, Choose(6, 9)};
    const Script draft{Enabled(0, false), Set(1, L"A")};
    const Script hours{Set(0, L"C-1"), Set(1, L"7.05"), Set(2, L"2130"), Tick(4)};
    const Script complaint{Enabled(0, false), Tick(0)}; // never printed unseen
    const Script orders{Set(0, L"C-1"), Set(1, L"T"), Set(2, L"8"), Set(3, L"9"),
                        Choose(4, 0),   Choose(5, 1), Tick(6)};
    const Script numbers{Click(IDC_CMDMARCAS), InMenu(),       Key(VK_ESCAPE), Focused(IDC_LIST1),
                         Set(0, L"100"),       Set(1, L"200"), Tick(2)};
    // Something in every condition: places, not numbers; the third list before the first.
    const struct {
        const wchar_t* operation;
        const wchar_t* member;
        bool dates;
        Script fill;
        const wchar_t* filled;
        std::wstring screen = L"Pedidos";
    } cases[] = {
        {L"ShowRpt", L"AceptarReports", false, {}, L""},
        {L"ShowRptListas", L"AceptarListasParam", false, Choose(0, 4), L", \"SL4\""},
        {L"ShowRptCond", L"AceptarReportsParam", true, priced, L", \"C-1\", &0, &1, \"A\", &\"TDS\""},
        {L"ShowRptInfCond", L"AceptarReportsInformesParam", true, written, L", \"C-1\", &0, &1, \"A\""},
        {L"ShowRptMailCond", L"AceptarReportsParamMail", true, priced, L", \"C-1\", &0, &1, \"A\", &\"TDS\""},
        {L"ShowRptBorrador", L"AceptarReportsParamMail", true, draft,
         L", \"Borrador\", &2, &2, \"A\", &\"PRC\"", L"Presupuestos"},
        {L"ShowRptCondHr", L"AceptarReportsParamHr", true, hours,
         L", \"C-1\", False, True, #1899-12-30 07:05#, #1899-12-30 21:30#"},
        {L"ShowRptFchAuto", L"AceptarReportsFchAuto", true, Tick(0), L", 1"},
        {L"ShowRptFchAuto", L"AceptarInformesFchAuto", true, Tick(0), L", 1", kLedger},
        {L"ShowRptFchAutoInf", L"AceptarInformesFchAuto", true, Tick(0), L", 1"},
        {L"ShowRptFchAutoInf", L"AceptarInformesFchAuto", true, complaint, L", 0", L"Pedidos_Reclamaciones"},
        {L"ShowRptFchAutoInf", L"AceptarInformesFchAuto", true, Tick(0), L", 1", L"pedidos_reclamaciones"},
        {L"ShowRptsInfFch", L"AceptarInformesFch", true, Set(0, L"A"), L", \"A\""},
        {L"ShowRptFchCliDirec", L"AceptarInformesFchAuto", true, {}, L""},
        {L"ShowRptInfOrdenes", L"AceptarInformesFchAutoTipoTime", true, orders,
         L", 1, \"T\", #1899-12-30 08:00#, #1899-12-30 09:00#, 0, 1, \"C-1\""},
        {L"ShowRptNumAut", L"AceptarDocNumAut", false, numbers, L", \"100\", \"200\", True"},
    };
    const std::wstring next = L", " + Logged(base::Step(ThisMonth(), 1));
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::PrintToString(row.member + row.screen));
        EXPECT_FALSE(Show(row.operation,
                          {Key('A', VK_CONTROL), Key(VK_NEXT, VK_CONTROL), row.fill, Output(1), Copies(L" 7"),
                           Key(VK_RETURN)},
                          row.screen));
        EXPECT_THAT(TakeLog(),
                    ElementsAre(row.member + (L"(&[True True True], &1, &7" + (row.dates ? next : L"")) +
                                row.filled + L")"));
    }
    EXPECT_FALSE(Show(L"ShowSql", Keys({VK_SPACE, VK_RETURN})));
    EXPECT_FALSE(Show(L"ShowRptFchAuto", {Do([] { EXPECT_FALSE(IsShown(Part(0))); }), Key(VK_RETURN)},
                      L"Otra", com::Variant(false)));
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
    EXPECT_FALSE(Show(L"ShowRptCond",
                      {chosen(2, false), Tick(5), chosen(0, true), Tick(5), chosen(2, false), Choose(4, 0),
                       chosen(0, true), Choose(4, 1), chosen(1, false), Key(VK_ESCAPE)}));
}

TEST_F(Reports, ChoicesAreKeptPerScreenAndFollowTheReports) {
    // Ticks by title, the output by its text, the copies; the conditions begin anew.
    EXPECT_FALSE(Show(L"ShowRptMailCond",
                      {Keys({VK_DOWN, VK_SPACE}), Output(2), Copies(L"7"), Set(0, L"C-1"), Key(VK_RETURN)}));
    EXPECT_EQ(Kept(L"frmRptsMailCond", L"Pedidos", L"Informes"), L"Resumen|");
    host.log.clear();
    titles = {L"Nuevo", L"Listado", L"Resumen"};
    EXPECT_FALSE(Show(L"ShowRptMailCond", Key(VK_RETURN)));
    EXPECT_FALSE(Show(L"ShowRptMailCond", Key(VK_RETURN), L"Facturas"));
    EXPECT_FALSE(Show(L"ShowRptMailCond", Keys({VK_SPACE, VK_ESCAPE}))); // keeps nothing
    titles.clear();
    EXPECT_FALSE(Show(L"ShowRptMailCond", Key(VK_RETURN)));
    const std::wstring start = L"AceptarReportsParamMail(&[";
    const std::wstring rest = month + L", \"\", &2, &2, \"\", &\"PRC\")";
    EXPECT_THAT(TakeLog(),
                ElementsAre(start + L"False False True], &2, &7, " + rest,
                            start + L"False False False], &0, &1, " + rest, start + L"], &2, &7, " + rest));
    // Some conditions are remembered too, where the host looks for them.
    const std::wstring ledger = L"articulos_movimientos_almacen";
    const struct {
        const wchar_t* operation;
        std::wstring screen;
        int condition;
        std::wstring key;
        const wchar_t* name;
    } remembered[] = {
        {L"ShowRptInfCond", L"CLIENTES", 0, kSession + L"Personal\\Clientes", L"Cliente"},
        {L"ShowRptFchAuto", kLedger, 1, FormKey(L"frmRptsFchAuto") + L"\\rpts" + kLedger, L"Seccion"},
        {L"ShowRptInfOrdenes", L"Ordenes", 1, kSession + L"Ordenes\\Informes", L"Tipo"},
    };
    for (const auto& row : remembered) {
        EXPECT_FALSE(Show(row.operation, {Set(row.condition, L"Norte"), Key(VK_RETURN)}, row.screen));
        EXPECT_EQ(GetValue(row.key, row.name), L"Norte");
        EXPECT_FALSE(Show(row.operation, {Says(Part(row.condition), L"Norte"), Key(VK_ESCAPE)}, row.screen));
    }
    // A screen's name is part of a key: only what would be another key is refused.
    const std::wstring odd = L"Pedidos/Clientes: ¿Año? *.";
    EXPECT_TRUE(Show(L"ShowRpt", {}, L"..\\Otra"));
    // A report without a title is called by its place.
    const auto bare = com::Make<HostObject>(L"informe", host.log);
    const auto named = com::Make<HostObject>(L"informe", host.log);
    named->Returns(L"Titulo", com::Variant(L"Ventas"), true);
    reports = com::MakeCollection({com::Variant(static_cast<IDispatch*>(nullptr)), com::Variant(named.Get()),
                                   com::Variant(bare.Get()), com::Variant::Null()});
    EXPECT_FALSE(Show(L"ShowRpt", {Key('A', VK_CONTROL), Key(VK_RETURN)}, odd));
    EXPECT_EQ(Kept(L"frmRpts", odd, L"Informes"), L"Informe 1|Ventas|Informe 3|Informe 4|");
    reports.Reset();
}

TEST_F(Reports, WhatIsPrintedWithoutADialogIsWhatWasTickedLast) {
    EXPECT_FALSE(Show(L"PrintEtiq", {}));
    EXPECT_FALSE(
        Show(L"ShowEtiq", {Says(IDC_LBLLIST1, L"&Etiquetas:"), Keys({VK_DOWN, VK_SPACE, VK_F8, VK_RETURN})}));
    // A list that breaks off is the caller's error, and no reason to forget the ticks.
    const auto broken = com::Make<HostObject>(L"cReports", host.log);
    broken->Returns(L"Count", com::Variant(3L), true);
    broken->On(
        L"Item",
        [](com::Invocation& call) {
            call[0].ToLong() > 1 ? RaiseHostError() : call.Return(com::Variant(L"Listado"));
        },
        true);
    reports = com::ComPtr<IDispatch>(broken.Get());
    for (const wchar_t* operation : {L"ShowEtiq", L"PrintEtiq"}) {
        EXPECT_EQ(Show(operation, {})->description, kHostErrorText);
    }
    reports.Reset();
    EXPECT_FALSE(Show(L"PrintEtiq", {}));
    EXPECT_FALSE(Show(L"PrintRptNumAut", {}));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarEtiqueta(&[False False False])", L"AceptarEtiqueta(&[False True False])",
                            L"AceptarEtiqueta(&[False True False])",
                            L"AceptarDocNumAut(&[False False False], &0, &1, Empty, Empty, False)"));
    // There is no dialog to mend them in: the caller is told.
    SetValue(FormKey(L"frmRptNumAut") + L"\\rptsPedidos", L"Copias", L"muchas");
    EXPECT_THAT(Show(L"PrintRptNumAut", {})->description, HasSubstr(L"El número de copias «muchas»"));
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(Reports, AComponentOfTheEnvironmentFillsAndKeepsTheLists) {
    const auto settings = com::Make<HostObject>(L"Configuracion", host.log);
    settings->Accepts(
        {L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor", L"GuardarValor", L"GuardarLista"});
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
    SetValue(kEnvironmentKey, L"Configuracion", Component::Name());
    EXPECT_FALSE(Show(L"ShowRptMailCond",
                      {Do([] { EXPECT_EQ(SendMessageW(Item(IDC_CMBSELEC), CB_GETCOUNT, 0, 0), 2); }),
                       Keys({VK_SPACE, VK_RETURN})}));
    const std::wstring key = L"(\"" + FormKey(L"frmRptsMailCond") + L"\\rptsPedidos\", ";
    const std::wstring boxes = L"List1(0), CmbSelec(0), TxtFields(0)";
    EXPECT_THAT(TakeLog(),
                ::testing::IsSupersetOf({L"CargarLista" + key + L"[\"Listado\" \"Resumen\" \"Etiquetas\"], " +
                                             boxes + L", False, False)",
                                         L"GuardarLista" + key + boxes + L")",
                                         L"AceptarReportsParamMail(&[False True], &0, &3, " + month +
                                             L", \"\", &2, &2, \"\", &\"PRC\")"}));
    EXPECT_FALSE(Show(L"PrintEtiq", {}));
    EXPECT_THAT(host.log, ::testing::Contains(
                              ::testing::AllOf(HasSubstr(L"CargarEtiquetas"), HasSubstr(L", List1(0))"))));
}

TEST_F(Reports, TheSeriesBelongsToTheEleventhReport) {
    titles.assign(12, L"Informe");
    SetValue(kSession + L"Clientes", L"Serie", L"A");
    Script script;
    for (int i = 0; i < 12; ++i) {
        script.Append({Enabled(0, i == 10), Key(VK_DOWN)});
    }
    // A click on the tick alone makes its entry the one that all of this is about.
    script.Append({ClickTick(2), Enabled(0, false), ClickTick(10), Enabled(0, true), Says(Part(0), L"A"),
                   Set(0, L"B")});
    EXPECT_FALSE(Show(L"ShowSql", {script, Key(VK_ESCAPE)}));
    EXPECT_EQ(GetValue(kSession + L"Clientes", L"Serie"), L"A");
    EXPECT_FALSE(Show(L"ShowSql", {script, Key(VK_RETURN)}));
    EXPECT_EQ(GetValue(kSession + L"Clientes", L"Serie"), L"B");
    titles.clear(); // no entry was ever selected: nothing is lost
    EXPECT_FALSE(Show(L"ShowSql", Key(VK_RETURN)));
    EXPECT_EQ(GetValue(kSession + L"Clientes", L"Serie"), L"B");
}

TEST_F(Reports, WhatIsNoHourIsRefusedBeforeAnythingHappens) {
    EXPECT_FALSE(
        Show(L"ShowRptCondHr", {Set(2, L"7,30"), Key(VK_RETURN), Box(L"«7,30» no es una hora. Se escribe"),
                                Focused(Part(2)), Asked({}), Key(VK_ESCAPE)}));
    EXPECT_EQ(Kept(L"frmRptsCondHr", L"Pedidos", L"Copias"), L"");
}

TEST_F(Reports, ThePeriodIsTheDatesOfTheSelectedReport) {
    titles = {L"Facturas & abonos", L"Resumen de todos los meses, " + std::wstring(200, L'x')};
    const auto shows = [](const base::DateRange& range, base::PeriodParts parts, const std::wstring& title) {
        return Script{Says(IDC_LBLPERIODO, base::PeriodName(range, parts) + L": " + title), Do([] {
                          for (const int id : {IDC_LBLPERIODO, IDC_LBLNOTE}) {
                              EXPECT_TRUE(IsShown(id));
                              EXPECT_TRUE(GetWindowLongW(Item(id), GWL_STYLE) & SS_NOPREFIX) << "no shortcut";
                          }
                      })};
    };
    for (const auto& [operation, parts] : {std::pair{L"ShowRptInfCond", base::PeriodParts::MonthAndYear},
                                           {L"ShowRptMailCond", base::PeriodParts::Year}}) {
        EXPECT_FALSE(Show(operation, {shows(ThisMonth(), parts, titles[0]), ClickTick(1),
                                      shows(ThisMonth(), parts, titles[1]), Key(VK_NEXT, VK_CONTROL),
                                      shows(base::Step(ThisMonth(), 1), parts, titles[1]), Key(VK_ESCAPE)}));
    }
}

TEST_F(Reports, ABoxIsFilledFromTheSelectionPanelThroughTheRelay) {
    const auto classes = com::Make<HostObject>(L"Clases", host.log);
    classes->Returns(L"CrearClase", com::Variant(host.data.Get()));
    const Component component(classes.Get());
    SetValue(kEnvironmentKey, L"Clases", Component::Name());
    host.className = L"clientes";
    const Script chosen{Showing(IDC_DATAGRID), Keys({VK_DOWN, VK_RETURN}), Showing(IDC_CMBSELEC),
                        Says(Part(0), L"f1c0")};
    const Script f4{Into(Part(0)), Key(VK_F4)};
    EXPECT_FALSE(Show(L"ShowRptInfOrdenes",
                      {f4, chosen, Set(0, L""), Click(IDC_CONDITIONS + 3), chosen, Tool(L"Aceptar")}));
    EXPECT_EQ(host.log[0], L"CrearClase(\"clientes\")");
    EXPECT_THAT(host.log.back(), HasSubstr(L", \"f1c0\")"));
    host.className = L"tipos_producto"; // of which the marks count, and no answer
    host.log.clear();
    EXPECT_FALSE(
        Show(L"ShowRptFchAutoInf", {Tick(1), Showing(IDC_DATAGRID), Key(VK_RETURN), Showing(IDC_CMBSELEC),
                                    Says(Part(1), L"Fiitrar Tipos Producto"), Key(VK_ESCAPE)}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"CrearClase(\"Tipos_Producto\")", L"Requery(\"selec_plan\")",
                                       L"sClassName()", L"Requery(\"seleccion\")", L"AplyFilter(\"\")"));
    classes->Without(L"CrearClase");
}

TEST_F(Reports, CopiesThatAreNoNumberAreReportedAndTheChoicesKept) {
    for (const wchar_t* copies : {L"", L"40000", L"3 4"}) {
        const long before = host.References();
        EXPECT_FALSE(Show(L"ShowRpt", {Copies(copies), Key(VK_RETURN), Box(L"número de copias")}));
        EXPECT_EQ(host.References(), before); // what is left holds nothing of the host's
        EXPECT_THAT(TakeLog(), IsEmpty());
        EXPECT_FALSE(IsWindowVisible(Dialog()));
        EXPECT_EQ(Kept(L"frmRpts", L"Pedidos", L"Copias"), copies);
    }
    EXPECT_FALSE(Show(L"ShowRpt", {Copies(L" 2"), Key(VK_RETURN)}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &2)"));
    // The next operation finds the form that was left hidden, with its choices: if it is the same one.
    // Another way to show it, another screen, another permission: nothing of what was chosen is there.
    const Script fails{Set(0, L"100"), Tick(2), Copies(L""), Key(VK_RETURN), Box(L"número de copias")};
    const struct {
        const wchar_t* operation;
        const wchar_t* screen;
        bool showAuto;
        const wchar_t* call;
    } others[] = {
        {L"PrintRptNumAut", L"Otra", true, L"Empty, Empty, False)"},
        {L"ShowRptNumAut", L"Otra", true, L"Empty, Empty, False)"},
        {L"ShowRptNumAut", L"Pedidos", false, L"Empty, Empty, False)"},
        {L"ShowRptNumAut", L"Pedidos", true, L"\"100\", Empty, True)"},
    };
    for (const auto& [operation, screen, showAuto, call] : others) {
        SCOPED_TRACE(&call - &others[0].call);
        EXPECT_FALSE(Show(L"ShowRptNumAut", fails));
        const bool shows = std::wstring_view(operation).starts_with(L"Show");
        EXPECT_FALSE(Show(operation, shows ? Script{Copies(L"1"), Key(VK_RETURN)} : Script(), screen,
                          com::Variant(showAuto)));
        EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(call)));
    }
    EXPECT_FALSE(Show(L"ShowRptMailCond", {Set(0, L"C-1"), Copies(L""), Key(VK_RETURN), Box(L"número")}));
    EXPECT_FALSE(Show(L"ShowRptBorrador", {Copies(L""), Key(VK_RETURN), Box(L"número")}));
    EXPECT_FALSE(Show(L"ShowRptMailCond", {Says(Part(0), L""), Key(VK_ESCAPE)}));
}

} // namespace
} // namespace tamvelo::testing
