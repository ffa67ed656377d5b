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
    static Script ClickMark(UINT message) {
        return Do([message] {
            RECT mark{};
            SendMessageW(Heading(), HDM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&mark));
            PostMessageW(Item(IDC_DATAGRID), message, MK_LBUTTON,
                         MAKELPARAM((mark.left + mark.right) / 2, HIWORD(FirstRow())));
        });
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
    const Log all{L"GetConnection()", L"Aceptar_todos(&\"conexión\")", kRequery};
    const Log none{L"GetConnection()", L"Denegar_todos(&\"conexión\")", kRequery};
    const Script every = Counts(L"20 marcadas");
    const Script no = Counts(L"0 marcadas");
    const Script two = Counts(L"2 marcadas");
    const Script three = Counts(L"3 marcadas");
    const std::pair<Script, Log> cases[] = {
        {{three, Key(VK_SPACE), two, Key(VK_SPACE), three}, {}},
        {{ClickMark(WM_LBUTTONDOWN), two, ClickMark(WM_LBUTTONDBLCLK), three}, {}},
        {{ClickMark(WM_RBUTTONDOWN), three}, {}}, // that is for the menu
        {{Keys({VK_DOWN, VK_DOWN, VK_SPACE, VK_UP, VK_SPACE}), Counts(L"1 marcada", 2)}, {}},
        {{Click(IDC_LBLTODOS), every}, all},
        {{Into(IDC_LBLTODOS), Key(VK_SPACE), every}, all},
        {{Into(IDC_LBLTODOS), Key(VK_RETURN), every}, all},
        {{Key('T', VK_CONTROL), every}, all},
        {{Into(IDC_LBLNINGUNO), Key(VK_RETURN), no}, none},
        {{Key('U', VK_CONTROL), no}, none},
        // While a search hides rows the links say that they reach them; then every record is there.
        {{Says(IDC_LBLTODOS, L"    Selec. Todos"), Says(IDC_LBLNINGUNO, L"Selec. Ninguno"),
          Do([] { EXPECT_FALSE(IsShown(IDC_LBLALCANCE)); }), Into(IDC_TXTFIELDS0, L"ma"),
          Click(IDC_CMDBUSCAR), Do([] { EXPECT_TRUE(IsShown(IDC_LBLALCANCE)); }),
          Says(IDC_LBLTABLE, L"Filtro: campo=ma"), Says(L"Registro 1 de 10   ·   2 marcadas"), Forget(),
          Do([this] { host.data->On(L"Requery", [this](Invocation&) { host.set->SetFilter(L""); }); }),
          Click(IDC_LBLTODOS), every, Do([] { EXPECT_FALSE(IsShown(IDC_LBLALCANCE)); }),
          Says(IDC_LBLTABLE, L"")},
         all},
    };
    for (const auto& [script, asked] : cases) {
        SCOPED_TRACE((&asked - &cases[0].second) / 2);
        MarkFirst(3);
        EXPECT_FALSE(Show(0, 0, {Forget(), script, Key(VK_ESCAPE)}));
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
}

TEST_F(CasillasTest, SpaceMarksTheCurrentColumnOrTheFirstToPlanNeverOtherData) {
    constexpr short kActivo = 4;
    constexpr short kPlanificar = 6;
    RecordTable& table = host.set->Table();
    table.options.fieldTypes = false; // what is a mark shows in the values
    table.value = [](long, short column) {
        return column == kActivo || column == kPlanificar ? Variant(false) : Variant(L"x");
    };
    const Script toActivo = Keys({VK_HOME, VK_LEFT, VK_LEFT, VK_LEFT, VK_LEFT});
    const struct {
        std::map<short, const wchar_t*> names;
        Script keys;
        std::vector<short> written;
        Script says;
    } cases[] = {
        {{{kPlanificar, L"PLANIFICAR_2"}}, {}, {kPlanificar}, Counts(L"0 y 1 marcadas")},
        {{{kPlanificar, L"Planificar"}}, toActivo, {kActivo}, Counts(L"1 y 0 marcadas")},
        {{}, {}, {}, Says(L"Para marcar, vaya antes a la columna de la casilla.")},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        table.names = each.names;
        table.written.clear();
        ++table.version;
        EXPECT_FALSE(Show(0, 0, {each.keys, Key(VK_SPACE), each.says, Key(VK_ESCAPE)}));
        std::vector<short> written;
        for (const auto& [cell, value] : table.written) {
            written.push_back(cell.second);
        }
        EXPECT_EQ(written, each.written);
    }
}

TEST_F(CasillasTest, TheLookIsKeptForTheClassAndItsNumber) {
    host.set->Table().names = {{kMark, L"Planificar"}, {6, L"Planificar_2"}};
    host.set->Table().options.fieldTypes = false;
    host.set->Table().value = [](long, short column) {
        return column == kMark || column == 6 ? Variant(false) : Variant(L"x");
    };
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
