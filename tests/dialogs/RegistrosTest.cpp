// The record browser: what it asks of the host, what each key and command leads to, and hosts that fail.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;

constexpr wchar_t kAnswer[] = L"AceptarSeleccion(&0, &ctl, \"1\")";

class RegistrosTest : public PanelTest {
protected:
    struct Call {
        short column = 0;
        short indx = 0;
        VARIANT_BOOL find = VARIANT_TRUE;
    };
    std::optional<com::Error> Show(Call call, Script script) {
        return Play(std::move(script), [&] {
            return server->ShowRegistros(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(),
                                         &call.column, &call.indx, &call.find);
        });
    }
    /// Plays after the opening, and compares what was asked since. A script that does not close ends in Esc.
    void ExpectAsked(const Script& script, const Log& asked, bool closes = false) {
        Script whole = Forget().Append(script);
        if (!closes) {
            whole.Do([this, asked] { EXPECT_THAT(host.log, ElementsAreArray(asked)); }).Key(VK_ESCAPE);
        }
        EXPECT_FALSE(Show({}, whole));
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
    /// The question before deleting, answered with a button or, for 0, with Enter.
    static Script Asks(int button) {
        return Question(button, L"¿Desea eliminar este registro?\n\nCódigo: 1\n");
    }
    void Offer() { host.sink->Accepts({L"AceptarNuevo", L"AceptarModificar", L"AceptarEliminar"}); }
};

TEST_F(RegistrosTest, OpeningLooksForTheControlsText) {
    struct Case {
        Call call;
        const wchar_t* text;
        Log asked;
    };
    const Case cases[] = {
        {{0}, L"A-1", {L"FindRecord(\"A-1\")"}}, {{1}, L"A-1", {L"FindRecord(\"A-1\", 1)"}},
        {{2}, L"ñ", {L"FindRecord(\"ñ\", 2)"}},  {{3}, L"A-1", {}},
        {{0, 0, VARIANT_FALSE}, L"A-1", {}},     {{1}, L"", {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        host.text = each.text;
        EXPECT_FALSE(Show(each.call, Says(IDC_LBLTABLE, L"prueba").Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(),
                    ElementsAreArray(Log{L"sClassName()", L"Requery(\"seleccion\")"} + each.asked));
    }
}

TEST_F(RegistrosTest, TheClassAndIndxDecideTheAnswer) {
    const std::tuple<const wchar_t*, short, const wchar_t*> cases[] = {
        {L"hordenes", 3, L"AceptarSeleccionParam(&3, &ctl, \"1/1/2000\", \"1\", \"1,23\")"},
        {L"EMPLEADOS", 2, L"AceptarSeleccionParam(&2, &ctl, \"1,23\", \"1\", \"Artículo 1\")"},
        {L"ordenes", 4, L"AceptarSeleccion(&4, &ctl, \"Sí\")"},
    };
    for (const auto& [className, indx, asked] : cases) {
        host.className = className;
        EXPECT_FALSE(Show({1, indx}, Forget().Key(VK_F4)));
        EXPECT_THAT(TakeLog(), ElementsAre(asked));
    }
    host.className = L"prueba";
    host.sink->On(L"AceptarSeleccion", [this](Invocation&) { // the form is hidden by then
        EXPECT_FALSE(IsWindowVisible(Panel()));
        EXPECT_TRUE(IsWindowEnabled(owner));
    });
    for (const Script& way :
         {Tool(L"Aceptar"), DoubleClick(), Script(InBox()).Key(VK_RETURN), Script(InBox()).Key(VK_F4)}) {
        ExpectAsked(way, {kAnswer}, true);
    }
}

TEST_F(RegistrosTest, KeysAndToolsAsk) {
    const Log ascending{L"SetOrder(&0, \"\", \"seleccion\")"};
    const Log descending{L"SetOrder(&0, \" DESC\", \"seleccion\")"};
    const std::pair<Script, Log> cases[] = {
        {Keys({VK_DOWN, VK_HOME}).Append(Says(IDC_STATUS, L"Registro 1 de 20")), {}},
        {Keys({VK_END}).Append(Says(IDC_STATUS, L"Registro 20 de 20")), {}},
        {Keys({VK_F9}), ascending},
        {Script().Key(VK_F9, VK_SHIFT), descending},
        {Tool(L"Orden ascendente"), ascending},
        {Tool(L"Orden descendente"), descending},
        {Tool(L"Primer registro"), {L"MoveFirst()"}},
        {Tool(L"Registro anterior"), {L"MovePrevious()"}},
        {Tool(L"Registro siguiente"), {L"MoveNext()"}},
        {Tool(L"Último registro"), {L"MoveLast()"}},
        {Keys({VK_F5}).Append(Elsewhere()).Key(VK_ESCAPE), {}},
        {Keys({VK_INSERT}).Do([] { EXPECT_EQ(GetFocus(), Item(IDC_TXTFIELDS0)); }), {}},
        {InBox().Key(VK_DOWN).Do([] { EXPECT_EQ(GetFocus(), Item(IDC_DATAGRID)); }), {}},
        {InBox().Type(L"xma").Key(VK_HOME).Key(VK_DELETE).Append(OnButton()).Key(VK_RETURN), kSearch},
    };
    for (const auto& [script, asked] : cases) {
        SCOPED_TRACE(&asked - &cases[0].second);
        ExpectAsked(script, asked);
    }
    ExpectAsked(Tool(L"Cancelar"), {}, true);
}

TEST_F(RegistrosTest, EnterOnSomethingTypedSearchesAndAcceptsTheOnlyRecord) {
    // Also an asterisk is a text, and the host's to make sense of.
    const Log everything{L"CreateFilter(&TxtFields(0))", L"SetFilter(&\"\", \"FilterSelec\")",
                         L"GetFilter(\"FilterSelec\")",  L"AplyFilter(\"\")",
                         L"Requery(\"selec\")",          L"GetFilter(\"FilterSelec\")",
                         L"existenregistros()"};
    host.data->Returns(L"CreateFilter", com::Variant(L""));
    ExpectAsked(InBox().Type(L"*").Key(VK_RETURN), everything);
    host.data->Returns(L"CreateFilter", com::Variant(L"campo=ma"));
    const Script typed = InBox().Type(L"ma").Key(VK_RETURN);
    ExpectAsked(Script(typed).Append(Says(IDC_LBLTABLE, L"prueba   ·   Filtro: campo=ma")), kSearch);
    host.set->Table().records = 2;                    // of which the filter leaves one
    ExpectAsked(typed, kSearch + Log{kAnswer}, true); // and the filter stays
}

TEST_F(RegistrosTest, TheFilterToolAppliesTheHostsFilterAndTakesItAway) {
    host.stored = L"campo=z";
    const Log on{L"GetFilter(\"Filter\")", L"AplyFilter(\"campo=z\")", L"Requery()"};
    const Script pressed = Keys({VK_F7}).Append(Says(IDC_LBLTABLE, L"prueba   ·   Filtro: campo=z"));
    ExpectAsked(Script(pressed).Append(Says(IDC_STATUS, L"Registro 1 de 10")), on);
    ExpectAsked(Script(pressed)
                    .Append(Tool(L"Aplicar o quitar el filtro"))
                    .Append(Says(IDC_LBLTABLE, L"prueba"))
                    .Append(Says(IDC_STATUS, L"Registro 1 de 20")),
                on + Log{L"AplyFilter(\"\")"});
    host.stored.clear();
    ExpectAsked(Keys({VK_F7}).Append(Says(IDC_STATUS, L"No hay ningún filtro que aplicar.")),
                {on[0], L"AplyFilter(\"\")", on[2]});
}

TEST_F(RegistrosTest, NewModifyAndDeleteAreTheHostsWhereItOffersThem) {
    const auto refusal = [](const wchar_t* what) {
        return Script().Do([what] { EXPECT_THAT(ItemText(IDC_STATUS), HasSubstr(what)); });
    };
    struct Case {
        Script script;
        const wchar_t* refusal;
        Log asked; // of a host that offers them
    };
    const Case cases[] = {
        {Keys({VK_RETURN}), L"modificar registros", {L"AceptarModificar(&0, &ctl)"}},
        {Tool(L"Modificar el registro"), L"modificar registros", {L"AceptarModificar(&0, &ctl)"}},
        {Script().Key('N', VK_CONTROL), L"de alta registros", {L"AceptarNuevo(&0, &ctl)"}},
        {InBox().Key(VK_INSERT), L"de alta registros", {L"AceptarNuevo(&0, &ctl)"}},
        {Keys({VK_DELETE}).Append(Asks(IDYES)), L"eliminar registros", {L"AceptarEliminar(&0, &ctl)"}},
        {OnButton().Key(VK_DELETE).Append(Asks(IDNO)), L"Registro 1 de 20", {}},
        {Keys({VK_DELETE}).Append(Asks(0)), L"Registro 1 de 20", {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        ExpectAsked(Script(each.script).Append(refusal(each.refusal)), {});
    }
    Offer();
    host.sink->On(L"AceptarEliminar", [this](Invocation&) { --host.set->Table().records; });
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        host.set->Table().records = 20;
        const wchar_t* status =
            each.asked == Log{L"AceptarEliminar(&0, &ctl)"} ? L"Registro 1 de 19" : L"Registro 1 de 20";
        ExpectAsked(Script(each.script).Append(Says(IDC_STATUS, status)), each.asked);
    }
    host.set->Table().records = 0; // nothing to modify or to delete
    ExpectAsked(Keys({VK_RETURN, VK_DELETE, VK_F4}).Append(Says(IDC_STATUS, L"Sin registros")), {});
}

TEST_F(RegistrosTest, AFailingHostLeavesItOpen) {
    Offer();
    const std::tuple<HostObject*, const wchar_t*, Script> cases[] = {
        {host.sink.Get(), L"AceptarSeleccion", Keys({VK_F4})},
        {host.sink.Get(), L"AceptarModificar", Keys({VK_RETURN})},
        {host.sink.Get(), L"AceptarEliminar", Keys({VK_DELETE}).Append(Asks(IDYES))},
        {host.data.Get(), L"GetFilter", Keys({VK_F7})},
        {host.data.Get(), L"AplyFilter", Keys({VK_F7})},
        {host.data.Get(), L"Requery", Keys({VK_F7})},
    };
    for (const auto& [object, member, script] : cases) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(member)));
        HostObject& owned = *object;
        const wchar_t* const name = member;
        EXPECT_FALSE(
            Show({}, Script()
                         .Do([&owned, name] { owned.On(name, [](Invocation&) { RaiseHostError(); }); })
                         .Append(script)
                         .Box(kHostErrorText)
                         .Do([this, &owned, name] {
                             EXPECT_TRUE(IsWindowVisible(Panel()));
                             EXPECT_EQ(GetFocus(), Item(IDC_DATAGRID));
                             EXPECT_FALSE(IsWindowEnabled(owner));
                             owned.On(name, [](Invocation&) {});
                         })
                         .Key(VK_ESCAPE)));
    }
    const Script outOfRange = Script().Key(VK_F4).Box(L"Error").Key(VK_ESCAPE);
    EXPECT_FALSE(Show({0, MemoryRecordSet::kColumns}, outOfRange));
}

class RegistrosClosedByHost : public RegistrosTest,
                              public ::testing::WithParamInterface<std::pair<const wchar_t*, UINT>> {};

TEST_P(RegistrosClosedByHost, GoesAlongWithTheHostsForm) {
    const auto [member, key] = GetParam();
    Offer();
    host.sink->On(member, [this](Invocation&) { DestroyWindow(owner); });
    EXPECT_FALSE(Show({}, Keys({key})));
    EXPECT_EQ(Panel(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(InACall, RegistrosClosedByHost,
                         ::testing::Values(std::pair{L"AceptarSeleccion", UINT{VK_F4}},
                                           std::pair{L"AceptarModificar", UINT{VK_RETURN}}));

} // namespace
} // namespace tamvelo::testing
