// The check list: what it answers, how marks are made, and a record set that refuses one.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;

constexpr wchar_t kClear[] = L"AplyFilter(\"\")";
constexpr wchar_t kRequery[] = L"Requery(\"seleccion\")";
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
    std::optional<com::Error> Show(short column, short indx, Script script) {
        VARIANT_BOOL find = VARIANT_TRUE;
        return Play(std::move(script), [&] {
            return server->ShowSelecTrueFalse(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(),
                                              &column, &indx, &find);
        });
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
        EXPECT_FALSE(Show(each.column, each.indx, Key(VK_RETURN)));
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
    host.sink->Without(L"clsEvents_AceptaSeleccion"); // as the library's own relay
    EXPECT_FALSE(Show(0, 0, {Forget(), Key(VK_RETURN)}));
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
                     Key(VK_SPACE),
                     two,
                     Key(VK_SPACE),
                     three,
                     Mouse({WM_LBUTTONDOWN}),
                     two,
                     Mouse({WM_LBUTTONDBLCLK}),
                     three,
                     Mouse({WM_RBUTTONDOWN}),
                     three, // that is for the menu
                     Keys({VK_DOWN, VK_DOWN, VK_SPACE, VK_UP, VK_SPACE}),
                     Counts(L"1 marcada", 2),
                     Asked({})};
    const Script all{Click(IDC_LBLTODOS),
                     every,
                     Click(IDC_LBLNINGUNO),
                     none,
                     Into(IDC_LBLTODOS),
                     Key(VK_SPACE),
                     every,
                     Into(IDC_LBLNINGUNO),
                     Key(VK_RETURN),
                     none,
                     Into(IDC_LBLTODOS),
                     Key(VK_RETURN),
                     every,
                     Key('U', VK_CONTROL),
                     none,
                     Key('T', VK_CONTROL),
                     every};
    const auto reach = [](bool shown) { return Do([=] { EXPECT_EQ(IsShown(IDC_LBLALCANCE), shown); }); };
    // While a search hides rows the links say that they reach them; then every record is there.
    EXPECT_FALSE(Show(
        0, 0,
        {Forget(), one, all, Says(IDC_LBLTODOS, L"    Selec. Todos"), Says(IDC_LBLNINGUNO, L"Selec. Ninguno"),
         reach(false), Into(IDC_TXTFIELDS0, L"ma"), Click(IDC_CMDBUSCAR), reach(true),
         Says(IDC_LBLTABLE, L"Filtro: campo=ma"), Says(L"Registro 1 de 10   ·   10 marcadas"), Forget(),
         Do([this] { host.data->On(L"Requery", [this](Invocation&) { host.set->SetFilter(L""); }); }),
         Click(IDC_LBLTODOS), every, reach(false), Says(IDC_LBLTABLE, L""), Key(VK_ESCAPE)}));
}

TEST_F(CasillasTest, SpaceMarksTheCurrentColumnOrTheFirstToPlanNeverOtherData) {
    RecordTable& table = host.set->Table();
    table.options.fieldTypes = false; // what is a mark shows in the values
    table.names = {{6, L"PLANIFICAR_2"}};
    table.value = [](long, short column) {
        return column == kMark || column == 6 ? Variant(false) : Variant(L"x");
    };
    EXPECT_FALSE(Show(0, 0,
                      {Key(VK_SPACE), Counts(L"0 y 1 marcadas"),
                       Keys({VK_HOME, VK_LEFT, VK_LEFT, VK_LEFT, VK_LEFT, VK_SPACE}),
                       Counts(L"1 y 1 marcadas"), Key(VK_ESCAPE)}));
    table.written.clear();
    table.names.clear();
    const wchar_t* const hint = L"Para marcar, vaya antes a la columna de la casilla.";
    EXPECT_FALSE(Show(0, 0, {Key(VK_SPACE), Says(hint), Key(VK_ESCAPE)}));
    EXPECT_TRUE(table.written.empty());
    // The look is kept for the class and its number.
    table.names = {{kMark, L"Planificar"}, {6, L"Planificar_2"}};
    EXPECT_FALSE(Show(0, 7, {Key(VK_ADD, VK_CONTROL), Key(VK_ESCAPE)}));
    EXPECT_THAT(ReadText(File(L"frmSelecTFprueba_7.grx")), HasSubstr("[columna Planificar]"));
    const auto searched = [](const wchar_t* caption) {
        return Do([=] { EXPECT_THAT(ItemText(IDC_LBLBUSCAR), HasSubstr(caption)); });
    };
    EXPECT_FALSE(Show(0, 7,
                      {Key(VK_LEFT), searched(L"Planificar 2 ?"), Key(VK_LEFT), searched(L"Planificar 1 ?"),
                       Key(VK_ESCAPE)}));
}

} // namespace
} // namespace tamvelo::testing
