// The check list: what it answers and how marks are made; the record browser: what its keys lead to.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

constexpr wchar_t kRequery[] = L"Requery(\"seleccion\")";
constexpr wchar_t kList[] = L"ShowSelecTrueFalse";
constexpr short kMark = 4;

/// Twenty records of which the first three are marked. The column of marks is the first on screen.
class CasillasTest : public PanelTest {
protected:
    CasillasTest() {
        host.set->Table().names = {{kMark, L"Planificar"}};
        MarkFirst(3);
        host.data->Returns(L"GetConnection", Variant(L"conexión"));
        host.data->On(L"Aceptar_todos", [this](Invocation&) { MarkFirst(20); });
        host.data->On(L"Denegar_todos", [this](Invocation&) { MarkFirst(0); });
        host.sink->Accepts({L"clsEvents_AceptaSeleccion"});
    }
    void MarkFirst(long records) {
        host.set->Table().written.clear();
        host.set->Table().value = [records](long record, short column) {
            return column == kMark ? Variant(record < records)
                                   : Variant(L"f" + std::to_wstring(record) + L"c" + std::to_wstring(column));
        };
        ++host.set->Table().version;
    }
    static Script Counts(const std::wstring& marked, int row = 1) {
        return Says(L"Registro " + std::to_wstring(row) + L" de 20   ·   " + marked);
    }
};

TEST_F(CasillasTest, TheEventFollowsTheAnswerWithThreeTexts) {
    host.text = L"A-1";
    host.className = L"hordenes";
    Show({kList, 1, 5}, L"Enter");
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"sClassName()", kRequery, L"FindRecord(\"A-1\", 1)",
                            LR"(AceptarSeleccionParam(&1, &ctl, "f0c1", "f0c0", "f0c2"))",
                            LR"(clsEvents_AceptaSeleccion(&1, &ctl, "f0c1", "f0c0", "f0c2"))", kClear));
    host.className = L"Familias";
    const std::wstring event = L"clsEvents_AceptaSeleccion(&";
    Expect(
        {kList, 0, 3}, L"Enter",
        {LR"(AceptarSeleccion(&3, &ctl, "f0c0"))", event + LR"(3, &ctl, "f0c0", "f0c0", "f0c1"))", kClear});
    host.className = L"tipos_producto";
    Expect(
        {kList, 9, 2}, L"Enter",
        {LR"(AceptarSeleccion(&0, &ctl, "f0c2"))", event + LR"(0, &ctl, "f0c2", "f0c0", "f0c1"))", kClear});
    host.sink->Without(L"clsEvents_AceptaSeleccion"); // as the library's own relay
    Expect({kList, 9, 2}, L"Enter", {LR"(AceptarSeleccion(&0, &ctl, "f0c2"))", kClear});
}

TEST_F(CasillasTest, MarksAreMadeOneByOneAndAllAtOnce) {
    const auto all = [this](const wchar_t* count, const wchar_t* member) {
        return Script{Counts(count),
                      Asked({L"GetConnection()", member + std::wstring(L"(&\"conexión\")"), kRequery})};
    };
    const Script every = all(L"20 marcadas", L"Aceptar_todos");
    const Script none = all(L"0 marcadas", L"Denegar_todos");
    const Script two = Counts(L"2 marcadas");
    const Script three = Counts(L"3 marcadas");
    const auto reach = [](const wchar_t* shown) { return Looks({IDC_LBLALCANCE}, shown); };
    // While a search hides rows the links say that they reach them; then every record is there.
    Show({kList},
         {{Forget(), three, L"Space", two, L"Space", three, Mouse({WM_LBUTTONDOWN}), two,
           Mouse({WM_LBUTTONDBLCLK}), three, Mouse({WM_RBUTTONDOWN}), three, // that is for the menu
           L"Down Down Space Up Space", Counts(L"1 marcada", 2), Asked({})},
          {Click(IDC_LBLTODOS), every, Click(IDC_LBLNINGUNO), none, Into(IDC_LBLTODOS), L"Space", every,
           Into(IDC_LBLNINGUNO), L"Enter", none, Into(IDC_LBLTODOS), L"Enter", every, L"^U", none, L"^T",
           every},
          {Says(IDC_LBLTODOS, L"    Selec. Todos"), Says(IDC_LBLNINGUNO, L"Selec. Ninguno"), reach(L"-"),
           Into(IDC_TXTFIELDS0, L"ma"), Click(IDC_CMDBUSCAR), reach(L"x"),
           Says(IDC_LBLTABLE, L"Filtro: campo=ma"), Says(L"Registro 1 de 10   ·   10 marcadas"), Forget(),
           Do([this] { host.data->On(L"Requery", [this](Invocation&) { host.set->SetFilter(L""); }); }),
           Click(IDC_LBLTODOS), every, reach(L"-"), Says(IDC_LBLTABLE, L""), L"Esc"}});
}

TEST_F(CasillasTest, SpaceMarksTheCurrentColumnOrTheFirstToPlanNeverOtherData) {
    RecordTable& table = host.set->Table();
    table.options.fieldTypes = false; // what is a mark shows in the values
    table.names = {{6, L"PLANIFICAR_2"}};
    table.value = [](long, short column) {
        return column == kMark || column == 6 ? Variant(false) : Variant(L"x");
    };
    Show({kList}, {L"Space", Counts(L"0 y 1 marcadas"), L"Home Left Left Left Left Space",
                   Counts(L"1 y 1 marcadas"), L"Esc"});
    table.written.clear();
    table.names.clear();
    Show({kList}, {L"Space", Says(L"Para marcar, vaya antes a la columna de la casilla."), L"Esc"});
    EXPECT_TRUE(table.written.empty());
    // The look is kept for the class and its number.
    table.names = {{kMark, L"Planificar"}, {6, L"Planificar_2"}};
    Show({kList, 0, 7}, L"^Plus Esc");
    EXPECT_THAT(ReadText(File(L"frmSelecTFprueba_7.grx")), HasSubstr("[columna Planificar]"));
    Show({kList, 0, 7}, {L"Left", Mentions(IDC_LBLBUSCAR, L"Planificar 2 ?"), L"Left",
                         Mentions(IDC_LBLBUSCAR, L"Planificar 1 ?"), L"Esc"});
}

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
    host.text = L"ñ";
    host.className = L"hordenes";
    Show({L"ShowRegistros", 1, 3}, {Says(IDC_LBLTABLE, L"hordenes"), L"F4"});
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", kRequery, L"FindRecord(\"ñ\", 1)",
                                       LR"(AceptarSeleccionParam(&3, &ctl, "1/1/2000", "1", "1,23"))"));
    host.className = L"ordenes";
    Expect({L"ShowRegistros", 1, 4}, L"F4", {LR"(AceptarSeleccion(&4, &ctl, "Sí"))"});
    Show({L"ShowRegistros", 0, MemoryRecordSet::kColumns, false}, {L"F4", Box(L"Error"), L"Esc"});
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")"));
}

TEST_F(RegistrosTest, KeysAndToolsAsk) {
    Expect({{L"End", Says(L"Registro 20 de 20"), L"Home", Says(L"Registro 1 de 20"), Asked({})},
            {Tool(L"Orden descendente"), Tool(L"Orden ascendente"), Tool(L"Último registro"),
             Tool(L"Registro anterior"), Tool(L"Registro siguiente"), Tool(L"Primer registro")},
            {L"F5", Elsewhere(), L"Esc", Back(), L"Insert", Focused(IDC_TXTFIELDS0), L"Down",
             Focused(IDC_DATAGRID)},
            {InBox(), L"'xma Home Delete", OnButton(), L"Enter", Tool(L"Cancelar")}},
           Log{kDescending, kAscending, L"MoveLast()", L"MovePrevious()", L"MoveNext()", L"MoveFirst()"} +
               kSearch);
    for (const Script& way :
         {Tool(L"Aceptar"), DoubleClick(), Script{InBox(), L"Enter"}, Script{InBox(), L"F4"}}) {
        Expect(way, {kAnswer});
    }
}

TEST_F(RegistrosTest, FiltersAreTypedOrTheHosts) {
    // Also an asterisk is a text, and the host's to make sense of.
    Log starred = kSearch;
    starred[1] = LR"(SetFilter(&"campo=*", "FilterSelec"))";
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
    const std::tuple<Script, const wchar_t*, Log> cases[] = {
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
    for (const auto& [script, refusal, asked] : cases) { // the last when the host offers it
        refused.Append({InGrid(), script, Mentions(IDC_STATUS, refusal)});
        const bool goes = asked == Log{L"AceptarEliminar(&0, &ctl)"};
        passed.Append(
            {InGrid(), script, Says(goes ? L"Registro 1 de 19" : L"Registro 1 de 20"), Asked(asked)});
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
