// The report dialogs in use: what the user types and clicks, look-ups, and what fails.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "base/PeriodName.h"
#include "frame/Resources.h"
#include "tests/dialogs/ReportFixture.h"

namespace tamvelo::testing {
namespace {

constexpr wchar_t kSeriesKey[] = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\Clientes";

class ReportsInUse : public Reports {
protected:
    static Script ClickTick(int row) {
        return Script().Do([row] {
            const HWND list = Item(IDC_LIST1);
            RECT label{LVIR_LABEL, 0, 0, 0};
            SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
            SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&label));
            const LPARAM at = MAKELPARAM(label.left - 8, (label.top + label.bottom) / 2);
            PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
            PostMessageW(list, WM_LBUTTONUP, 0, at);
        });
    }
    /// The environment's data classes, over the second host.
    void OfferClasses(const HostObject::Behaviour& create) {
        com::ComPtr<HostObject> classes = com::Make<HostObject>(L"Clases", host.log);
        classes->On(L"CrearClase", create);
        component.emplace(classes.Get());
        SetValue(kEnvironmentKey, L"Clases", component->Name());
    }
    void TearDown() override {
        component.reset();
        Reports::TearDown();
    }

    std::optional<Component> component;
};

TEST_F(ReportsInUse, TheSeriesBelongsToTheEleventhReport) {
    titles.assign(12, L"Informe");
    SetValue(kSeriesKey, L"Serie", L"A");
    Script script;
    for (int i = 0; i < 12; ++i) {
        script.Do([i] { EXPECT_EQ(IsWindowEnabled(Part(0)) != FALSE, i == 10) << i; }).Key(VK_DOWN);
    }
    script.Key(VK_UP).Do([] {
        EXPECT_EQ(TextOf(Part(0)), L"A");
        SetWindowTextW(Part(0), L"B");
    });
    EXPECT_FALSE(Show(&Server::ShowSql, Script(script).Key(VK_ESCAPE)));
    EXPECT_EQ(GetValue(kSeriesKey, L"Serie"), L"A");
    EXPECT_FALSE(Show(&Server::ShowSql, Script(script).Key(VK_RETURN)));
    EXPECT_EQ(GetValue(kSeriesKey, L"Serie"), L"B");
    // A click on the tick alone makes its entry the one that all of this is about.
    const auto series = [](bool on) {
        return Script().Do([on] { EXPECT_EQ(IsWindowEnabled(Part(0)) != FALSE, on); });
    };
    EXPECT_FALSE(Show(&Server::ShowSql, ClickTick(10)
                                            .Append(series(true))
                                            .Append(ClickTick(2))
                                            .Append(series(false))
                                            .Append(ClickTick(10))
                                            .Append(series(true))
                                            .Key(VK_ESCAPE)));
    titles.clear(); // no entry was ever selected: nothing is lost
    EXPECT_FALSE(Show(&Server::ShowSql, Keys({VK_RETURN})));
    EXPECT_EQ(GetValue(kSeriesKey, L"Serie"), L"B");
}

TEST_F(ReportsInUse, AHostMayCloseTheDialogWhenASelectionAsksIt) {
    titles.assign(12, L"Informe");
    com::ComPtr<HostObject> settings = com::Make<HostObject>(L"Configuracion", host.log);
    for (const wchar_t* quiet : {L"RestaurarPosicion", L"GuardarPosicion"}) {
        settings->On(
            quiet, [](com::Invocation&) {}, true);
    }
    settings->On(L"CargarLista", [](com::Invocation& call) {
        com::LateObject list(call[2].ToObject().Get(), L"List1");
        for (const wchar_t* title : {L"Uno", L"Dos"}) {
            list.Call(L"AddItem", {title});
        }
    });
    int asked = 0;
    settings->On(L"LeerValor", [&](com::Invocation&) {
        if (++asked == 3) { // at opening, for the first entry, for the second
            DestroyWindow(owner);
        }
    });
    component.emplace(settings.Get());
    SetValue(kEnvironmentKey, L"Configuracion", component->Name());
    EXPECT_FALSE(Show(&Server::ShowSql, Keys({VK_DOWN})));
    EXPECT_EQ(asked, 3);
    EXPECT_THAT(TakeLog().back(), HasSubstr(L"LeerValor"));
}

TEST_F(ReportsInUse, HoursAreTypedAsPeopleWriteThem) {
    const auto type = [](const wchar_t* text) {
        return Script().Do([text] { SetWindowTextW(Part(1), text); }).Key(VK_RETURN);
    };
    for (const auto& [text, hour] :
         {std::pair{L"7", L"07:00#"}, {L"0830", L"08:30#"}, {L"7.05", L"07:05#"}}) {
        EXPECT_FALSE(Show(&Server::ShowRptCondHr, type(text)));
        EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(std::wstring(L"#1899-12-30 ") + hour)));
    }
    Script script;
    for (const wchar_t* none : {L"7,30", L"12/5/2026", L""}) {
        script.Append(type(none)).Box(std::wstring(L"«") + none + L"» no es una hora. Se escribe").Do([this] {
            EXPECT_EQ(GetFocus(), Part(1));
            EXPECT_TRUE(IsWindowVisible(Dialog()));
            EXPECT_THAT(host.log, IsEmpty());
            EXPECT_EQ(GetValue(ChoicesKey(L"frmRptsCondHr", L"Otra"), L"Copias"), L"");
        });
    }
    EXPECT_FALSE(Show(&Server::ShowRptCondHr, L"Otra", script.Append(type(L"9:15"))));
    EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(L"#1899-12-30 09:15#")));
}

TEST_F(ReportsInUse, ThePeriodIsTheDatesOfTheSelectedReport) {
    titles = {L"Facturas & abonos", L"Resumen de todos los meses, " + std::wstring(200, L'x')};
    SYSTEMTIME now;
    GetLocalTime(&now);
    const base::DateRange month = base::WholeMonth(*base::ToDay({now.wYear, now.wMonth, now.wDay}));
    const auto shows = [](const base::DateRange& range, base::PeriodParts parts, const std::wstring& title) {
        return Script().Do([=] {
            EXPECT_EQ(ItemText(IDC_LBLPERIODO), base::PeriodName(range, parts) + L": " + title);
            for (const int id : {IDC_LBLPERIODO, IDC_LBLNOTE}) {
                EXPECT_TRUE(IsShown(id));
                EXPECT_NE(GetWindowLongW(Item(id), GWL_STYLE) & SS_NOPREFIX, 0) << "the & is a shortcut";
            }
            EXPECT_EQ(ItemText(IDC_LBLNOTE), L"Sólo para los informes que aceptan parámetros.");
        });
    };
    for (const auto& [operation, parts] :
         {std::pair{&Server::ShowRptInfCond, base::PeriodParts::MonthAndYear},
          {&Server::ShowRptMailCond, base::PeriodParts::Year}}) {
        EXPECT_FALSE(Show(operation, shows(month, parts, titles[0])
                                         .Append(ClickTick(1))
                                         .Append(shows(month, parts, titles[1]))
                                         .Key(VK_NEXT, VK_CONTROL)
                                         .Append(shows(base::Step(month, 1), parts, titles[1]))
                                         .Key(VK_ESCAPE)));
    }
}

TEST_F(ReportsInUse, TabGoesThroughTheConditionsBeforeTheOutput) {
    const auto order = [](std::vector<HWND> (*expected)()) {
        return Script().Do([expected] {
            HWND at = Item(IDC_CMDPERIODO);
            for (const HWND next : expected()) {
                at = GetNextDlgTabItem(Dialog(), at, FALSE);
                EXPECT_EQ(at, next) << GetDlgCtrlID(at);
            }
        });
    };
    EXPECT_FALSE(
        Show(&Server::ShowRptInfOrdenes,
             order([] {
                 std::vector<HWND> all{Part(0), Item(IDC_CONDITIONS + 3)};
                 for (const int part : {1, 2, 3, 4, 5, 6}) {
                     all.push_back(Part(part));
                 }
                 all.insert(all.end(), {Item(IDC_CMBSELEC), Item(IDC_TXTCOPIAS), Item(IDC_CMDPRINTER)});
                 return all;
             }).Key(VK_ESCAPE)));
    EXPECT_FALSE(Show(&Server::ShowEtiq,
                      Script().Do([] { EXPECT_EQ(ItemText(IDC_LBLLIST1), L"&Etiquetas:"); }).Key(VK_ESCAPE)));
}

/// A collection whose walk breaks off after the first item.
class HalfWay final : public com::Automation {
    struct Walk final : com::Object<IEnumVARIANT> {
        HRESULT STDMETHODCALLTYPE Next(ULONG, VARIANT* out, ULONG*) override {
            *out = com::Variant(L"Ventas").Detach();
            return given++ == 0 ? S_OK : E_ACCESSDENIED;
        }
        HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }
        int given = 0;
    };
    std::span<const com::Member> Members() const override {
        static constexpr com::Member kMembers[] = {
            {L"_NewEnum", DISPID_NEWENUM, com::Member::Get, 0, 0, com::Run<&HalfWay::NewEnum>}};
        return kMembers;
    }
    void NewEnum(com::Invocation& call) {
        com::Variant walk;
        walk.Address()->punkVal = com::Make<Walk>().Detach();
        walk.Address()->vt = VT_UNKNOWN;
        call.Return(std::move(walk));
    }
};

TEST_F(ReportsInUse, AListThatBreaksOffIsTheHostsErrorAndKeepsTheTicks) {
    const std::wstring key = ChoicesKey(L"frmRpts", L"Pedidos");
    SetValue(key, L"Informes", L"Ventas|Compras|");
    reports = com::Make<HalfWay>();
    const auto error = Show(&Server::ShowRpt, Script());
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, E_ACCESSDENIED);
    EXPECT_EQ(error->source, L"«cReports».Next");
    EXPECT_EQ(GetValue(key, L"Informes"), L"Ventas|Compras|");
}

TEST_F(ReportsInUse, AReportWithoutATitleIsCalledByItsPlace) {
    com::ComPtr<HostObject> bare = com::Make<HostObject>(L"informe", host.log);
    com::ComPtr<HostObject> named = com::Make<HostObject>(L"informe", host.log);
    named->On(
        L"Titulo", [](com::Invocation& call) { call.Return(com::Variant(L"Ventas")); }, true);
    std::vector<com::Variant> items;
    items.emplace_back(static_cast<IDispatch*>(nullptr));
    items.emplace_back(named.Get());
    items.emplace_back(bare.Get());
    items.emplace_back(com::Variant::Null());
    reports = com::MakeCollection(std::move(items));
    const auto shown = [] {
        std::vector<std::wstring> all;
        for (int i = 0; i < 4; ++i) {
            wchar_t text[32] = L"";
            SendMessageW(Item(IDC_LIST1), LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            all.emplace_back(text);
        }
        EXPECT_THAT(all, ElementsAre(L"Informe 1", L"Ventas", L"Informe 3", L"Informe 4"));
    };
    EXPECT_FALSE(Show(&Server::ShowRpt, Script().Do(shown).Key(VK_SPACE).Key(VK_RETURN)));
    EXPECT_EQ(GetValue(ChoicesKey(L"frmRpts", L"Pedidos"), L"Informes"), L"Informe 1|");
    // A title that the host cannot give is the host's error.
    named->On(L"Titulo", [](com::Invocation&) { RaiseHostError(); });
    const std::optional<com::Error> error = Show(&Server::ShowRpt, Script());
    ASSERT_TRUE(error);
    EXPECT_EQ(error->description, kHostErrorText);
    reports.Reset();
}

TEST_F(ReportsInUse, ABoxIsFilledFromTheSelectionPanelThroughTheRelay) {
    host.className = L"clientes";
    OfferClasses([&](com::Invocation& call) { call.Return(com::Variant(host.data.Get())); });
    EXPECT_FALSE(
        Show(&Server::ShowRptInfOrdenes,
             Script()
                 .Do([] { SetFocus(Part(0)); })
                 .Key(VK_F4)
                 .Until("the panel", [](HWND) { return GetDlgItem(Dialog(), IDC_DATAGRID) != nullptr; })
                 .Key(VK_DOWN)
                 .Key(VK_RETURN)
                 .Until("the dialog", [](HWND) { return GetDlgItem(Dialog(), IDC_CMBSELEC) != nullptr; })
                 .Do([] { EXPECT_EQ(TextOf(Part(0)), L"f1c0"); })
                 .Key(VK_RETURN)));
    EXPECT_EQ(host.log[0], L"CrearClase(\"clientes\")");
    EXPECT_THAT(host.log.back(), HasSubstr(L", \"f1c0\")"));

    host.className = L"tipos_producto"; // of which the marks count, and no answer
    host.log.clear();
    EXPECT_FALSE(
        Show(&Server::ShowRptFchAutoInf,
             Script()
                 .Do([] { PostMessageW(Part(1), BM_CLICK, 0, 0); })
                 .Until("the list", [](HWND) { return GetDlgItem(Dialog(), IDC_DATAGRID) != nullptr; })
                 .Key(VK_RETURN)
                 .Until("the dialog", [](HWND) { return GetDlgItem(Dialog(), IDC_CMBSELEC) != nullptr; })
                 .Do([] { EXPECT_EQ(TextOf(Part(1)), L"Fiitrar Tipos Producto"); })
                 .Key(VK_ESCAPE)));
    EXPECT_THAT(host.log, ElementsAre(L"CrearClase(\"Tipos_Producto\")", L"Requery(\"selec_plan\")",
                                      L"sClassName()", L"Requery(\"seleccion\")", L"AplyFilter(\"\")"));
}

TEST_F(ReportsInUse, ALookUpIsACommandLikeAnyOther) {
    // A host that pumps inside the look-up: what the user presses meanwhile starts nothing.
    const auto pump = [] {
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
    };
    bool closing = false;
    OfferClasses([&](com::Invocation& call) {
        if (closing) {
            DestroyWindow(owner);
            call.Return(com::Variant(host.data.Get()));
            return;
        }
        ClickTool(L"Aceptar");
        PostMessageW(Item(IDC_CONDITIONS + 3), BM_CLICK, 0, 0);
        pump();
        RaiseHostError();
    });
    const Script ways[] = {
        Script().Do([] { SetFocus(Part(0)); }).Key(VK_F4),
        Script().Do([] { PostMessageW(Item(IDC_CONDITIONS + 3), BM_CLICK, 0, 0); }),
    };
    for (const Script& way : ways) {
        EXPECT_FALSE(Show(&Server::ShowRptInfOrdenes, Script(way).Box(kHostErrorText).Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), ElementsAre(L"CrearClase(\"clientes\")"));
    }
    EXPECT_FALSE(
        Show(&Server::ShowRptFchAutoInf,
             Script().Do([] { PostMessageW(Part(1), BM_CLICK, 0, 0); }).Box(kHostErrorText).Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"CrearClase(\"Tipos_Producto\")"));
    // A host that closes its window inside one: the dialog goes with it, and nothing else happens.
    closing = true;
    EXPECT_FALSE(Show(&Server::ShowRptInfOrdenes, Script(ways[0])));
}

TEST_F(ReportsInUse, CopiesThatAreNoNumberAreReportedAndTheChoicesKept) {
    for (const wchar_t* copies : {L"", L"dos", L"40000", L"3 4"}) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(copies)));
        const long before = host.References();
        EXPECT_FALSE(Show(&Server::ShowRpt, Copies(copies).Key(VK_RETURN).Box(L"número de copias")));
        EXPECT_EQ(host.References(), before); // what is left holds nothing of the host's
        EXPECT_THAT(TakeLog(), IsEmpty());
        EXPECT_FALSE(IsWindowVisible(Dialog()));
        EXPECT_EQ(GetValue(ChoicesKey(L"frmRpts", L"Pedidos"), L"Copias"), copies);
        // The next operation finds the form that was left hidden.
        EXPECT_FALSE(Show(&Server::ShowRpt, Copies(L" 2").Key(VK_RETURN)));
        EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &2)"));
    }
    // A sink that fails is no reason to lose the dialog either.
    host.sink->On(L"AceptarReports", [](com::Invocation&) { RaiseHostError(); });
    EXPECT_FALSE(Show(&Server::ShowRpt, Script()
                                            .Key(VK_SPACE)
                                            .Key(VK_RETURN)
                                            .Box(kHostErrorText)
                                            .Do([] { EXPECT_TRUE(IsWindowVisible(Dialog())); })
                                            .Key(VK_RETURN)
                                            .Box(kHostErrorText)
                                            .Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog().back(), HasSubstr(L"[True False False]"));
}

TEST_F(ReportsInUse, ChoicesComeBackForTheSameOperationOnly) {
    const std::wstring ledger = L"articulos_movimientos_almacen";
    const Script fail = Copies(L"").Key(VK_RETURN).Box(L"número de copias");
    const auto numbers = [&](const wchar_t* first) {
        return Script().Do([first] {
            SetWindowTextW(Part(0), first);
            SendMessageW(Part(2), BM_CLICK, 0, 0);
        });
    };
    // Another way to show it, another screen, another permission: nothing of what was chosen is there.
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
        SCOPED_TRACE(::testing::PrintToString(std::wstring(screen)));
        EXPECT_FALSE(Show(&Server::ShowRptNumAut, numbers(L"100").Append(fail)));
        const bool unseen = operation == Operation(&Server::PrintRptNumAut);
        EXPECT_FALSE(Show(operation, screen, unseen ? Script() : Copies(L"1").Key(VK_RETURN), showAuto));
        EXPECT_THAT(TakeLog(), ElementsAre(HasSubstr(call)));
    }
    SetValue(ChoicesKey(L"frmRptsFchAuto", ledger), L"Seccion", L"Norte");
    EXPECT_FALSE(Show(&Server::ShowRptFchAuto, fail));
    EXPECT_FALSE(Show(&Server::ShowRptFchAuto, ledger,
                      Script().Do([] { EXPECT_EQ(TextOf(Part(1)), L"Norte"); }).Key(VK_RETURN)));
    EXPECT_EQ(GetValue(ChoicesKey(L"frmRptsFchAuto", ledger), L"Seccion"), L"Norte");
    EXPECT_FALSE(Show(&Server::ShowRptMailCond, TypeInto(0, L"C-1").Append(fail)));
    EXPECT_FALSE(Show(&Server::ShowRptBorrador, Copies(L"1").Key(VK_RETURN)));
    EXPECT_FALSE(
        Show(&Server::ShowRptMailCond, Script().Do([] { EXPECT_EQ(TextOf(Part(0)), L""); }).Key(VK_ESCAPE)));
}

TEST_F(ReportsInUse, WhatFailsWithoutADialogIsTheCallersAndNothingStays) {
    const struct {
        Operation operation;
        const wchar_t* member;
        const wchar_t* form;
    } cases[] = {{&Server::PrintEtiq, L"AceptarEtiqueta", L"frmSelecEti"},
                 {&Server::PrintRptNumAut, L"AceptarDocNumAut", L"frmRptNumAut"}};
    for (const auto& [operation, member, form] : cases) {
        const long before = host.References();
        host.sink->On(member, [](com::Invocation&) { RaiseHostError(); });
        std::optional<com::Error> error = Show(operation, Script());
        ASSERT_TRUE(error);
        EXPECT_EQ(error->description, kHostErrorText);
        EXPECT_EQ(host.References(), before);
        EXPECT_EQ(Dialog(), nullptr);
        host.sink->On(member, [](com::Invocation&) {});
        EXPECT_FALSE(Show(operation, Script()));
    }
    SetValue(ChoicesKey(L"frmRptNumAut", L"Pedidos"), L"Copias", L"muchas");
    const std::optional<com::Error> error = Show(&Server::PrintRptNumAut, Script());
    ASSERT_TRUE(error);
    EXPECT_THAT(error->description, HasSubstr(L"El número de copias «muchas»"));
}

TEST_F(ReportsInUse, TheHostMayShowTheDialogAgainFromItsSink) {
    int calls = 0;
    host.sink->On(L"AceptarReports", [&](com::Invocation&) {
        if (calls++ == 0) {
            com::Bstr cls(L"Pedidos");
            com::ComPtr<IDispatch> list = Titles(titles);
            EXPECT_EQ(server->ShowRpt(cls.Address(), sink.GetAddressOf(), list.GetAddressOf()), S_OK);
        }
    });
    EXPECT_FALSE(Show(&Server::ShowRpt, Keys({VK_RETURN, VK_SPACE, VK_RETURN})));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarReports(&[False False False], &0, &1)",
                                       L"AceptarReports(&[True False False], &0, &1)"));
}

} // namespace
} // namespace tamvelo::testing
