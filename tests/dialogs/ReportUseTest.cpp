// The report dialogs in use: what the user types and clicks, look-ups, and choices that cannot be accepted
// yet.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "base/PeriodName.h"
#include "tests/dialogs/ReportFixture.h"

namespace tamvelo::testing {
namespace {

constexpr wchar_t kSeriesKey[] = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\Clientes";

class ReportsInUse : public Reports {
protected:
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
};

TEST_F(ReportsInUse, TheSeriesBelongsToTheEleventhReport) {
    titles.assign(12, L"Informe");
    SetValue(kSeriesKey, L"Serie", L"A");
    Script script;
    for (int i = 0; i < 12; ++i) {
        script.Append({Enabled(0, i == 10), Key(VK_DOWN)});
    }
    // A click on the tick alone makes its entry the one that all of this is about.
    script.Append(
        {ClickTick(2), Enabled(0, false), ClickTick(10), Enabled(0, true), Holds(0, L"A"), Set(0, L"B")});
    EXPECT_FALSE(Show(&Server::ShowSql, {script, Key(VK_ESCAPE)}));
    EXPECT_EQ(GetValue(kSeriesKey, L"Serie"), L"A");
    EXPECT_FALSE(Show(&Server::ShowSql, {script, Key(VK_RETURN)}));
    EXPECT_EQ(GetValue(kSeriesKey, L"Serie"), L"B");
    titles.clear(); // no entry was ever selected: nothing is lost
    EXPECT_FALSE(Show(&Server::ShowSql, Key(VK_RETURN)));
    EXPECT_EQ(GetValue(kSeriesKey, L"Serie"), L"B");
}

TEST_F(ReportsInUse, WhatIsNoHourIsRefusedBeforeAnythingHappens) {
    Script script;
    for (const auto& [box, text] : {std::pair{1, L"7,30"}, {2, L"25"}, {2, L""}}) {
        script.Append({Set(1, L"7"), Set(box, text), Key(VK_RETURN),
                       Box(std::wstring(L"«") + text + L"» no es una hora. Se escribe"),
                       Focused([box] { return Part(box); }), Asked({})});
    }
    EXPECT_FALSE(Show(
        &Server::ShowRptCondHr,
        {script, Do([] { EXPECT_EQ(GetValue(ChoicesKey(L"frmRptsCondHr", L"Pedidos"), L"Copias"), L""); }),
         Set(2, L"9:15"), Key(VK_RETURN)}));
    EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(L"#1899-12-30 07:00#, #1899-12-30 09:15#)")));
}

TEST_F(ReportsInUse, ThePeriodIsTheDatesOfTheSelectedReport) {
    titles = {L"Facturas & abonos", L"Resumen de todos los meses, " + std::wstring(200, L'x')};
    const auto shows = [](const base::DateRange& range, base::PeriodParts parts,
                          const std::wstring& title) -> Script {
        return {Says(IDC_LBLPERIODO, base::PeriodName(range, parts) + L": " + title),
                Says(IDC_LBLNOTE, L"Sólo para los informes que aceptan parámetros."), Do([] {
                    for (const int id : {IDC_LBLPERIODO, IDC_LBLNOTE}) {
                        EXPECT_TRUE(IsShown(id));
                        EXPECT_NE(GetWindowLongW(Item(id), GWL_STYLE) & SS_NOPREFIX, 0)
                            << "the & is a shortcut";
                    }
                })};
    };
    for (const auto& [operation, parts] :
         {std::pair{&Server::ShowRptInfCond, base::PeriodParts::MonthAndYear},
          {&Server::ShowRptMailCond, base::PeriodParts::Year}}) {
        EXPECT_FALSE(Show(operation, {shows(ThisMonth(), parts, titles[0]), ClickTick(1),
                                      shows(ThisMonth(), parts, titles[1]), Key(VK_NEXT, VK_CONTROL),
                                      shows(base::Step(ThisMonth(), 1), parts, titles[1]), Key(VK_ESCAPE)}));
    }
}

TEST_F(ReportsInUse, AReportWithoutATitleIsCalledByItsPlace) {
    com::ComPtr<HostObject> bare = com::Make<HostObject>(L"informe", host.log);
    com::ComPtr<HostObject> named = com::Make<HostObject>(L"informe", host.log);
    named->Returns(L"Titulo", com::Variant(L"Ventas"), true);
    reports = com::MakeCollection({com::Variant(static_cast<IDispatch*>(nullptr)), com::Variant(named.Get()),
                                   com::Variant(bare.Get()), com::Variant::Null()});
    std::vector<std::wstring> shown;
    EXPECT_FALSE(Show(&Server::ShowRpt, {Do([&] {
                                             for (const WPARAM place : {0, 1, 2, 3}) {
                                                 wchar_t text[32] = L"";
                                                 SendMessageW(Item(IDC_LIST1), LB_GETTEXT, place,
                                                              reinterpret_cast<LPARAM>(text));
                                                 shown.emplace_back(text);
                                             }
                                         }),
                                         Keys({VK_SPACE, VK_RETURN})}));
    EXPECT_THAT(shown, ElementsAre(L"Informe 1", L"Ventas", L"Informe 3", L"Informe 4"));
    EXPECT_EQ(GetValue(ChoicesKey(L"frmRpts", L"Pedidos"), L"Informes"), L"Informe 1|");
    reports.Reset();
}

TEST_F(ReportsInUse, ABoxIsFilledFromTheSelectionPanelThroughTheRelay) {
    com::ComPtr<HostObject> classes = com::Make<HostObject>(L"Clases", host.log);
    classes->Returns(L"CrearClase", com::Variant(host.data.Get()));
    Offer(L"Clases", *classes.Get());
    host.className = L"clientes";
    const Script chosen{Showing(IDC_DATAGRID), Keys({VK_DOWN, VK_RETURN}), Showing(IDC_CMBSELEC),
                        Holds(0, L"f1c0")};
    const Script f4{Do([] { SetFocus(Part(0)); }), Key(VK_F4)};
    EXPECT_FALSE(Show(&Server::ShowRptInfOrdenes,
                      {f4, chosen, Set(0, L""), Click(IDC_CONDITIONS + 3), chosen, Tool(L"Aceptar")}));
    EXPECT_EQ(host.log[0], L"CrearClase(\"clientes\")");
    EXPECT_THAT(host.log.back(), HasSubstr(L", \"f1c0\")"));
    host.className = L"tipos_producto"; // of which the marks count, and no answer
    host.log.clear();
    EXPECT_FALSE(
        Show(&Server::ShowRptFchAutoInf,
             {Do([] { PostMessageW(Part(1), BM_CLICK, 0, 0); }), Showing(IDC_DATAGRID), Key(VK_RETURN),
              Showing(IDC_CMBSELEC), Holds(1, L"Fiitrar Tipos Producto"), Key(VK_ESCAPE)}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"CrearClase(\"Tipos_Producto\")", L"Requery(\"selec_plan\")",
                                       L"sClassName()", L"Requery(\"seleccion\")", L"AplyFilter(\"\")"));
    classes->Without(L"CrearClase");
}

TEST_F(ReportsInUse, CopiesThatAreNoNumberAreReportedAndTheChoicesKept) {
    for (const wchar_t* copies : {L"", L"40000", L"3 4"}) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(copies)));
        const long before = host.References();
        EXPECT_FALSE(Show(&Server::ShowRpt, {Copies(copies), Key(VK_RETURN), Box(L"número de copias")}));
        EXPECT_EQ(host.References(), before); // what is left holds nothing of the host's
        EXPECT_THAT(TakeLog(), IsEmpty());
        EXPECT_FALSE(IsWindowVisible(Dialog()));
        EXPECT_EQ(GetValue(ChoicesKey(L"frmRpts", L"Pedidos"), L"Copias"), copies);
    }
    EXPECT_FALSE(Show(&Server::ShowRpt, {Copies(L" 2"), Key(VK_RETURN)}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &2)"));
    // The next operation finds the form that was left hidden, with its choices: if it is the same one.
    // Another way to show it, another screen, another permission: nothing of what was chosen is there.
    const Script fails{Set(0, L"100"), Tick(2), Copies(L""), Key(VK_RETURN), Box(L"número de copias")};
    const struct {
        Operation operation;
        const wchar_t* screen;
        VARIANT_BOOL showAuto;
        const wchar_t* call;
    } others[] = {
        {&Server::PrintRptNumAut, L"Otra", VARIANT_TRUE, L"Empty, Empty, False)"},
        {&Server::ShowRptNumAut, L"Otra", VARIANT_TRUE, L"Empty, Empty, False)"},
        {&Server::ShowRptNumAut, L"Pedidos", VARIANT_FALSE, L"Empty, Empty, False)"},
        {&Server::ShowRptNumAut, L"Pedidos", VARIANT_TRUE, L"\"100\", Empty, True)"},
    };
    for (const auto& [operation, screen, showAuto, call] : others) {
        SCOPED_TRACE(&call - &others[0].call);
        EXPECT_FALSE(Show(&Server::ShowRptNumAut, fails));
        const bool unseen = operation == Operation(&Server::PrintRptNumAut);
        EXPECT_FALSE(
            Show(operation, unseen ? Script() : Script{Copies(L"1"), Key(VK_RETURN)}, screen, showAuto));
        EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(call)));
    }
    EXPECT_FALSE(
        Show(&Server::ShowRptMailCond, {Set(0, L"C-1"), Copies(L""), Key(VK_RETURN), Box(L"número")}));
    EXPECT_FALSE(Show(&Server::ShowRptBorrador, {Copies(L""), Key(VK_RETURN), Box(L"número")}));
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, {Holds(0, L""), Key(VK_ESCAPE)}));
}

} // namespace
} // namespace tamvelo::testing
