// The check list: what it answers, how marks are made, and a record set that refuses one.
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
    const struct {
        const wchar_t* className;
        short column;
        short indx;
        const wchar_t* found; // of the column, by that number
        const wchar_t* answer;
        const wchar_t* more; // what the event has beyond the answer
    } cases[] = {
        {L"hordenes", 1, 5, L", 1", L"AceptarSeleccionParam(&1, &ctl, \"f0c1\", \"f0c0\", \"f0c2\"", L""},
        {L"Familias", 0, 3, L"", L"AceptarSeleccion(&3, &ctl, \"f0c0\"", L", \"f0c0\", \"f0c1\""},
        {L"tipos_producto", 9, 2, nullptr, L"AceptarSeleccion(&0, &ctl, \"f0c2\"", L", \"f0c0\", \"f0c1\""},
    };
    host.text = L"A-1";
    for (const auto& each : cases) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(each.className)));
        host.className = each.className;
        const std::wstring answer = each.answer;
        Log asked{L"sClassName()", kRequery};
        if (each.found) {
            asked.push_back(L"FindRecord(\"A-1\"" + std::wstring(each.found) + L")");
        }
        asked.insert(
            asked.end(),
            {answer + L")",
             L"clsEvents_AceptaSeleccion" + answer.substr(answer.find(L'(')) + each.more + L")", kClear});
        Show({kList, each.column, each.indx}, L"Enter");
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
    host.sink->Without(L"clsEvents_AceptaSeleccion"); // as the library's own relay
    Show({kList}, {Forget(), L"Enter"});
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarSeleccion(&0, &ctl, \"f0c0\")", kClear));
}

TEST_F(CasillasTest, MarksAreMadeOneByOneAndAllAtOnce) {
    const Script every{Counts(L"20 marcadas"),
                       Asked({L"GetConnection()", L"Aceptar_todos(&\"conexión\")", kRequery})};
    const Script none{Counts(L"0 marcadas"),
                      Asked({L"GetConnection()", L"Denegar_todos(&\"conexión\")", kRequery})};
    const Script two = Counts(L"2 marcadas");
    const Script three = Counts(L"3 marcadas");
    const Script one{three,
                     L"Space",
                     two,
                     L"Space",
                     three,
                     Mouse({WM_LBUTTONDOWN}),
                     two,
                     Mouse({WM_LBUTTONDBLCLK}),
                     three,
                     Mouse({WM_RBUTTONDOWN}),
                     three, // that is for the menu
                     L"Down Down Space Up Space",
                     Counts(L"1 marcada", 2),
                     Asked({})};
    const Script all{Click(IDC_LBLTODOS),
                     every,
                     Click(IDC_LBLNINGUNO),
                     none,
                     Into(IDC_LBLTODOS),
                     L"Space",
                     every,
                     Into(IDC_LBLNINGUNO),
                     L"Enter",
                     none,
                     Into(IDC_LBLTODOS),
                     L"Enter",
                     every,
                     L"^U",
                     none,
                     L"^T",
                     every};
    const auto reach = [](bool shown) { return Do([=] { EXPECT_EQ(IsShown(IDC_LBLALCANCE), shown); }); };
    // While a search hides rows the links say that they reach them; then every record is there.
    Show(
        {kList},
        {Forget(), one, all, Says(IDC_LBLTODOS, L"    Selec. Todos"), Says(IDC_LBLNINGUNO, L"Selec. Ninguno"),
         reach(false), Into(IDC_TXTFIELDS0, L"ma"), Click(IDC_CMDBUSCAR), reach(true),
         Says(IDC_LBLTABLE, L"Filtro: campo=ma"), Says(L"Registro 1 de 10   ·   10 marcadas"), Forget(),
         Do([this] { host.data->On(L"Requery", [this](Invocation&) { host.set->SetFilter(L""); }); }),
         Click(IDC_LBLTODOS), every, reach(false), Says(IDC_LBLTABLE, L""), L"Esc"});
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
    const wchar_t* const hint = L"Para marcar, vaya antes a la columna de la casilla.";
    Show({kList}, {L"Space", Says(hint), L"Esc"});
    EXPECT_TRUE(table.written.empty());
    // The look is kept for the class and its number.
    table.names = {{kMark, L"Planificar"}, {6, L"Planificar_2"}};
    Show({kList, 0, 7}, {L"^Plus Esc"});
    EXPECT_THAT(ReadText(File(L"frmSelecTFprueba_7.grx")), HasSubstr("[columna Planificar]"));
    const auto searched = [](const wchar_t* caption) {
        return Do([=] { EXPECT_THAT(ItemText(IDC_LBLBUSCAR), HasSubstr(caption)); });
    };
    Show({kList, 0, 7}, {L"Left", searched(L"Planificar 2 ?"), L"Left", searched(L"Planificar 1 ?"), L"Esc"});
}

} // namespace
} // namespace tamvelo::testing
