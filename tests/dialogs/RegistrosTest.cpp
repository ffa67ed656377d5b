// The record browser: what it asks of the host, and what each key and command leads to.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

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
        Show({L"ShowRegistros", 1, indx}, {Says(IDC_LBLTABLE, className), L"F4"});
        EXPECT_THAT(TakeLog(),
                    ElementsAre(L"sClassName()", L"Requery(\"seleccion\")", L"FindRecord(\"ñ\", 1)", asked));
    }
    Show({L"ShowRegistros", 0, MemoryRecordSet::kColumns, false}, {L"F4", Box(L"Error"), L"Esc"});
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")"));
}

TEST_F(RegistrosTest, KeysAndToolsAsk) {
    const Log ascending{L"SetOrder(&0, \"\", \"seleccion\")"};
    const Log descending{L"SetOrder(&0, \" DESC\", \"seleccion\")"};
    Expect({{L"End", Says(L"Registro 20 de 20"), L"Home", Says(L"Registro 1 de 20"), Asked({})},
            {L"F9", Asked(ascending), L"+F9", Asked(descending), Tool(L"Orden ascendente"), Asked(ascending),
             Tool(L"Orden descendente"), Asked(descending)},
            {Tool(L"Último registro"), Asked({L"MoveLast()"}), Tool(L"Registro anterior"),
             Asked({L"MovePrevious()"}), Tool(L"Registro siguiente"), Asked({L"MoveNext()"}),
             Tool(L"Primer registro"), Asked({L"MoveFirst()"})},
            {L"F5", Elsewhere(), L"Esc", Back(), L"Insert", Focused(IDC_TXTFIELDS0), L"Down",
             Focused(IDC_DATAGRID)},
            {InBox(), L"'xma Home Delete", OnButton(), L"Enter", Asked(kSearch), Tool(L"Cancelar")}},
           {});
    for (const Script& way :
         {Tool(L"Aceptar"), DoubleClick(), Script{InBox(), L"Enter"}, Script{InBox(), L"F4"}}) {
        Expect(way, {kAnswer});
    }
}

TEST_F(RegistrosTest, FiltersAreTypedOrTheHosts) {
    // Also an asterisk is a text, and the host's to make sense of.
    Log starred = kSearch;
    starred[1] = L"SetFilter(&\"campo=*\", \"FilterSelec\")";
    starred[3] = L"AplyFilter(\"campo=*\")";
    const Script typed{InGrid(), InBox(), L"'ma Enter"};
    Expect({InBox(), L"'* Enter", Asked(starred), typed, Says(IDC_LBLTABLE, L"prueba   ·   Filtro: campo=ma"),
            L"Esc"},
           kSearch);
    host.set->Table().records = 2;         // of which the filter leaves one
    Expect(typed, kSearch + Log{kAnswer}); // and the filter stays
    host.set->Table().records = 20;
    host.stored = L"campo=z";
    const Log on{L"GetFilter(\"Filter\")", L"AplyFilter(\"campo=z\")", L"Requery()"};
    Expect(
        {{L"F7", Says(IDC_LBLTABLE, L"prueba   ·   Filtro: campo=z"), Says(L"Registro 1 de 10"), Asked(on)},
         {Tool(L"Aplicar o quitar el filtro"), Says(IDC_LBLTABLE, L"prueba"), Says(L"Registro 1 de 20"),
          Asked({L"AplyFilter(\"\")"})},
         {Do([this] { host.stored.clear(); }), L"F7", Says(L"No hay ningún filtro que aplicar."), L"Esc"}},
        {on[0], L"AplyFilter(\"\")", on[2]});
}

TEST_F(RegistrosTest, NewModifyAndDeleteAreTheHostsWhereItOffersThem) {
    const struct {
        Script script;
        const wchar_t* refusal;
        Log asked; // of a host that offers them
    } cases[] = {
        {{OnButton(), L"Delete", Asks(IDNO)}, L"Registro 1 de 20", {}},
        {{L"Delete", Asks(0)}, L"Registro 1 de 20", {}},
        {L"Enter", L"modificar registros", {L"AceptarModificar(&0, &ctl)"}},
        {Tool(L"Modificar el registro"), L"modificar registros", {L"AceptarModificar(&0, &ctl)"}},
        {L"^N", L"de alta registros", {L"AceptarNuevo(&0, &ctl)"}},
        {{InBox(), L"Insert"}, L"de alta registros", {L"AceptarNuevo(&0, &ctl)"}},
        {{L"Delete", Asks(IDYES)}, L"eliminar registros", {L"AceptarEliminar(&0, &ctl)"}},
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
    Expect({refused, L"Esc"}, {});
    host.sink->Accepts({L"AceptarNuevo", L"AceptarModificar"});
    host.sink->On(L"AceptarEliminar", [this](Invocation&) { --host.set->Table().records; });
    Expect({passed, L"Esc"}, {});
    host.set->Table().records = 0; // nothing to modify or to delete
    Expect({L"Enter Delete F4", Says(L"Sin registros"), L"Esc"}, {});
}

} // namespace
} // namespace tamvelo::testing
