// The record browser: what it asks of the host, and what each key and command leads to.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;

constexpr Opening kBrowser{L"ShowRegistros"};
constexpr wchar_t kAnswer[] = L"AceptarSeleccion(&0, &ctl, \"1\")";

class RegistrosTest : public PanelTest {
protected:
    using PanelTest::Expect;
    void Expect(const Script& script, const Log& asked) { Expect(kBrowser, script, asked); }
    /// The question before deleting, answered with a button or, for 0, with Enter.
    static Script Asks(int button) {
        return Question(button, L"¿Desea eliminar este registro?\n\nCódigo: 1\n");
    }
};

TEST_F(RegistrosTest, TheClassAndIndxDecideTheAnswerToARecordThatWasFound) {
    const std::tuple<const wchar_t*, short, const wchar_t*> cases[] = {
        {L"hordenes", 3, L"AceptarSeleccionParam(&3, &ctl, \"1/1/2000\", \"1\", \"1,23\")"},
        {L"EMPLEADOS", 2, L"AceptarSeleccionParam(&2, &ctl, \"1,23\", \"1\", \"Artículo 1\")"},
        {L"ordenes", 4, L"AceptarSeleccion(&4, &ctl, \"Sí\")"},
    };
    host.text = L"ñ";
    for (const auto& [className, indx, asked] : cases) {
        host.className = className;
        EXPECT_FALSE(Show({L"ShowRegistros", 1, indx}, {Says(IDC_LBLTABLE, className), Key(VK_F4)}));
        EXPECT_THAT(TakeLog(),
                    ElementsAre(L"sClassName()", L"Requery(\"seleccion\")", L"FindRecord(\"ñ\", 1)", asked));
    }
    EXPECT_FALSE(Show({L"ShowRegistros", 0, MemoryRecordSet::kColumns, false},
                      {Key(VK_F4), Box(L"Error"), Key(VK_ESCAPE)}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")"));
}

TEST_F(RegistrosTest, KeysAndToolsAsk) {
    const Log ascending{L"SetOrder(&0, \"\", \"seleccion\")"};
    const Log descending{L"SetOrder(&0, \" DESC\", \"seleccion\")"};
    Expect({{Key(VK_END), Says(L"Registro 20 de 20"), Key(VK_HOME), Says(L"Registro 1 de 20"), Asked({})},
            {Key(VK_F9), Asked(ascending), Key(VK_F9, VK_SHIFT), Asked(descending), Tool(L"Orden ascendente"),
             Asked(ascending), Tool(L"Orden descendente"), Asked(descending)},
            {Tool(L"Último registro"), Asked({L"MoveLast()"}), Tool(L"Registro anterior"),
             Asked({L"MovePrevious()"}), Tool(L"Registro siguiente"), Asked({L"MoveNext()"}),
             Tool(L"Primer registro"), Asked({L"MoveFirst()"})},
            {Key(VK_F5), Elsewhere(), Key(VK_ESCAPE), Back(), Key(VK_INSERT), Focused(IDC_TXTFIELDS0),
             Key(VK_DOWN), Focused(IDC_DATAGRID)},
            {InBox(), Type(L"xma"), Keys({VK_HOME, VK_DELETE}), OnButton(), Key(VK_RETURN), Asked(kSearch),
             Tool(L"Cancelar")}},
           {});
    for (const Script& way :
         {Tool(L"Aceptar"), DoubleClick(), Script{InBox(), Key(VK_RETURN)}, Script{InBox(), Key(VK_F4)}}) {
        Expect(way, {kAnswer});
    }
}

TEST_F(RegistrosTest, FiltersAreTypedOrTheHosts) {
    // Also an asterisk is a text, and the host's to make sense of.
    Log starred = kSearch;
    starred[1] = L"SetFilter(&\"campo=*\", \"FilterSelec\")";
    starred[3] = L"AplyFilter(\"campo=*\")";
    const Script typed{InGrid(), InBox(), Type(L"ma"), Key(VK_RETURN)};
    Expect({InBox(), Type(L"*"), Key(VK_RETURN), Asked(starred), typed,
            Says(IDC_LBLTABLE, L"prueba   ·   Filtro: campo=ma"), Key(VK_ESCAPE)},
           kSearch);
    host.set->Table().records = 2;         // of which the filter leaves one
    Expect(typed, kSearch + Log{kAnswer}); // and the filter stays
    host.set->Table().records = 20;
    host.stored = L"campo=z";
    const Log on{L"GetFilter(\"Filter\")", L"AplyFilter(\"campo=z\")", L"Requery()"};
    Expect({{Key(VK_F7), Says(IDC_LBLTABLE, L"prueba   ·   Filtro: campo=z"), Says(L"Registro 1 de 10"),
             Asked(on)},
            {Tool(L"Aplicar o quitar el filtro"), Says(IDC_LBLTABLE, L"prueba"), Says(L"Registro 1 de 20"),
             Asked({L"AplyFilter(\"\")"})},
            {Do([this] { host.stored.clear(); }), Key(VK_F7), Says(L"No hay ningún filtro que aplicar."),
             Key(VK_ESCAPE)}},
           {on[0], L"AplyFilter(\"\")", on[2]});
}

TEST_F(RegistrosTest, NewModifyAndDeleteAreTheHostsWhereItOffersThem) {
    const struct {
        Script script;
        const wchar_t* refusal;
        Log asked; // of a host that offers them
    } cases[] = {
        {{OnButton(), Key(VK_DELETE), Asks(IDNO)}, L"Registro 1 de 20", {}},
        {{Key(VK_DELETE), Asks(0)}, L"Registro 1 de 20", {}},
        {Key(VK_RETURN), L"modificar registros", {L"AceptarModificar(&0, &ctl)"}},
        {Tool(L"Modificar el registro"), L"modificar registros", {L"AceptarModificar(&0, &ctl)"}},
        {Key('N', VK_CONTROL), L"de alta registros", {L"AceptarNuevo(&0, &ctl)"}},
        {{InBox(), Key(VK_INSERT)}, L"de alta registros", {L"AceptarNuevo(&0, &ctl)"}},
        {{Key(VK_DELETE), Asks(IDYES)}, L"eliminar registros", {L"AceptarEliminar(&0, &ctl)"}},
    };
    Script refused;
    Script passed;
    for (const auto& each : cases) {
        refused.Append(
            {InGrid(), each.script, Do([&] { EXPECT_THAT(ItemText(IDC_STATUS), HasSubstr(each.refusal)); })});
        const bool goes = each.asked == Log{L"AceptarEliminar(&0, &ctl)"};
        passed.Append({InGrid(), each.script, Says(goes ? L"Registro 1 de 19" : L"Registro 1 de 20"),
                       Asked(each.asked)});
    }
    Expect({refused, Key(VK_ESCAPE)}, {});
    host.sink->Accepts({L"AceptarNuevo", L"AceptarModificar"});
    host.sink->On(L"AceptarEliminar", [this](Invocation&) { --host.set->Table().records; });
    Expect({passed, Key(VK_ESCAPE)}, {});
    host.set->Table().records = 0; // nothing to modify or to delete
    Expect({Keys({VK_RETURN, VK_DELETE, VK_F4}), Says(L"Sin registros"), Key(VK_ESCAPE)}, {});
}

} // namespace
} // namespace tamvelo::testing
