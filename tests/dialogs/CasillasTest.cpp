// The check list: what it asks of the host, how marks are made, and hosts that refuse or go.
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
        host.data->On(L"GetConnection", [](Invocation& call) { call.Return(Variant(L"conexión")); });
        host.data->On(L"Aceptar_todos", [this](Invocation&) { MarkFirst(20); });
        host.data->On(L"Denegar_todos", [this](Invocation&) { MarkFirst(0); });
        host.sink->On(L"clsEvents_AceptaSeleccion", [](Invocation&) {});
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
    void ExpectAsked(const Script& script, const Log& asked) {
        MarkFirst(3);
        host.set->SetFilter(L"");
        host.stored.clear();
        EXPECT_FALSE(Show(0, 0, Forget().Append(script).Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
    static Script Says(std::wstring status) {
        return Script().Do([status = std::move(status)] { EXPECT_EQ(ItemText(IDC_STATUS), status); });
    }
    static Script On(int control, UINT key) {
        return Script().Do([control] { SetFocus(Item(control)); }).Key(key);
    }
    static Script Click(int control) {
        return Script().Do([control] { PostMessageW(Item(control), BM_CLICK, 0, 0); });
    }
    static Script ClickMark(UINT message) {
        return Script().Do([message] {
            RECT mark{};
            SendMessageW(Heading(), HDM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&mark));
            PostMessageW(Item(IDC_DATAGRID), message, MK_LBUTTON,
                         MAKELPARAM((mark.left + mark.right) / 2, HIWORD(FirstRow())));
        });
    }
};

TEST_F(CasillasTest, TheClassDecidesTheAnswerAndTheEventFollowsIt) {
    const struct {
        const wchar_t* className;
        short column;
        short indx;
        Log asked;
    } cases[] = {
        {L"hordenes",
         1,
         5,
         {L"AceptarSeleccionParam(&1, &ctl, \"f0c1\", \"f0c0\", \"f0c2\")",
          L"clsEvents_AceptaSeleccion(&1, &ctl, \"f0c1\", \"f0c0\", \"f0c2\")"}},
        {L"Fases",
         2,
         0,
         {L"AceptarSeleccionParam(&2, &ctl, \"f0c2\", \"f0c0\", \"f0c1\")",
          L"clsEvents_AceptaSeleccion(&2, &ctl, \"f0c2\", \"f0c0\", \"f0c1\")"}},
        {L"Familias",
         0,
         3,
         {L"AceptarSeleccion(&3, &ctl, \"f0c0\")",
          L"clsEvents_AceptaSeleccion(&3, &ctl, \"f0c0\", \"f0c0\", \"f0c1\")"}},
        {L"tipos_producto",
         9,
         2,
         {L"AceptarSeleccion(&0, &ctl, \"f0c2\")",
          L"clsEvents_AceptaSeleccion(&0, &ctl, \"f0c2\", \"f0c0\", \"f0c1\")"}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(each.className)));
        host.className = each.className;
        host.text = L"A-1";
        EXPECT_FALSE(Show(each.column, each.indx, Keys({VK_RETURN})));
        Log expected{L"sClassName()", kRequery};
        if (each.column < 3) {
            expected.push_back(L"FindRecord(\"A-1\"" +
                               (each.column ? L", " + std::to_wstring(each.column) : std::wstring()) + L")");
        }
        expected.insert(expected.end(), each.asked.begin(), each.asked.end());
        expected.emplace_back(kClear);
        EXPECT_THAT(TakeLog(), ElementsAreArray(expected));
    }
    host.sink->Without(L"clsEvents_AceptaSeleccion"); // as the library's own relay
    EXPECT_FALSE(Show(0, 0, Forget().Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarSeleccion(&0, &ctl, \"f0c0\")", kClear));
}

TEST_F(CasillasTest, MarksAreMadeOneByOneAndAllAtOnce) {
    const Log all{L"GetConnection()", L"Aceptar_todos(&\"conexión\")", kRequery};
    const Log none{L"GetConnection()", L"Denegar_todos(&\"conexión\")", kRequery};
    const Script every = Says(L"Registro 1 de 20   ·   20 marcadas");
    const Script no = Says(L"Registro 1 de 20   ·   0 marcadas");
    const Script two = Says(L"Registro 1 de 20   ·   2 marcadas");
    const Script three = Says(L"Registro 1 de 20   ·   3 marcadas");
    const std::pair<Script, Log> cases[] = {
        {Script(three).Key(VK_SPACE).Append(two).Key(VK_SPACE).Append(three), {}},
        {ClickMark(WM_LBUTTONDOWN).Append(two).Append(ClickMark(WM_LBUTTONDBLCLK)).Append(three), {}},
        {ClickMark(WM_RBUTTONDOWN).Append(three), {}}, // that is for the menu
        {Keys({VK_DOWN, VK_DOWN, VK_SPACE, VK_UP, VK_SPACE})
             .Append(Says(L"Registro 2 de 20   ·   1 marcada")),
         {}},
        {Click(IDC_LBLTODOS).Append(every), all},
        {On(IDC_LBLTODOS, VK_SPACE).Append(every), all},
        {On(IDC_LBLTODOS, VK_RETURN).Append(every), all},
        {Script().Key('T', VK_CONTROL).Append(every), all},
        {Click(IDC_LBLNINGUNO).Append(no), none},
        {On(IDC_LBLNINGUNO, VK_RETURN).Append(no), none},
        {Script().Key('U', VK_CONTROL).Append(no), none},
    };
    for (const auto& [script, asked] : cases) {
        SCOPED_TRACE((&asked - &cases[0].second) / 2);
        ExpectAsked(script, asked);
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
    const struct {
        std::map<short, const wchar_t*> names;
        std::initializer_list<UINT> keys;
        std::vector<short> written;
        const wchar_t* says;
    } cases[] = {
        {{{kPlanificar, L"PLANIFICAR_2"}},
         {VK_SPACE},
         {kPlanificar},
         L"Registro 1 de 20   ·   0 y 1 marcadas"},
        {{{kPlanificar, L"Planificar"}},
         {VK_HOME, VK_LEFT, VK_LEFT, VK_LEFT, VK_LEFT, VK_SPACE},
         {kActivo},
         L"Registro 1 de 20   ·   1 y 0 marcadas"},
        {{}, {VK_SPACE}, {}, L"Para marcar, vaya antes a la columna de la casilla."},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        table.names = each.names;
        table.written.clear();
        ++table.version;
        EXPECT_FALSE(Show(0, 0, Keys(each.keys).Append(Says(each.says)).Key(VK_ESCAPE)));
        std::vector<short> written;
        for (const auto& [cell, value] : table.written) {
            written.push_back(cell.second);
        }
        EXPECT_EQ(written, each.written);
    }
}

TEST_F(CasillasTest, WhileASearchHidesRowsTheLinksSayThatTheyReachThem) {
    const Script search =
        Script()
            .Do([] {
                EXPECT_EQ(ItemText(IDC_LBLTODOS), L"    Selec. Todos");
                EXPECT_EQ(ItemText(IDC_LBLNINGUNO), L"Selec. Ninguno");
                EXPECT_FALSE(IsShown(IDC_LBLALCANCE));
                SetFocus(Item(IDC_TXTFIELDS0));
            })
            .Type(L"ma")
            .Append(Click(IDC_CMDBUSCAR))
            .Do([] {
                EXPECT_TRUE(IsShown(IDC_LBLALCANCE));
                EXPECT_EQ(ItemText(IDC_LBLTABLE), L"Filtro: campo=ma");
                EXPECT_EQ(ItemText(IDC_STATUS), L"Registro 1 de 10   ·   2 marcadas");
            })
            .Do([this] {
                host.log.clear();
                host.data->On(L"Requery", [this](Invocation&) { host.set->SetFilter(L""); });
            })
            .Append(Click(IDC_LBLTODOS))
            .Append(Says(L"Registro 1 de 20   ·   20 marcadas"))
            .Do([] { EXPECT_FALSE(IsShown(IDC_LBLALCANCE)); });
    ExpectAsked(search, {L"GetConnection()", L"Aceptar_todos(&\"conexión\")", kRequery});
}

TEST_F(CasillasTest, AFailingHostLeavesItOpenAndTheMarksAsTheyWere) {
    const auto fail = [](Invocation&) { RaiseHostError(); };
    host.set->Table().onCall = [](const std::wstring& member) {
        if (member == L"Value=") {
            RaiseHostError();
        }
    };
    const std::tuple<HostObject*, const wchar_t*, Script> cases[] = {
        {nullptr, L"", Keys({VK_SPACE})},
        {host.data.Get(), L"GetConnection", Click(IDC_LBLTODOS)},
        {host.data.Get(), L"Denegar_todos", Click(IDC_LBLNINGUNO)},
        {host.data.Get(), L"Requery", Click(IDC_LBLTODOS)},
        {host.sink.Get(), L"clsEvents_AceptaSeleccion", Keys({VK_RETURN})},
        {host.sink.Get(), L"AceptarSeleccion", Keys({VK_RETURN})},
    };
    for (const auto& [object, member, script] : cases) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(member)));
        MarkFirst(3);
        HostObject* const owned = object;
        const wchar_t* const name = member;
        EXPECT_FALSE(Show(0, 0,
                          Script()
                              .Do([=] { owned ? owned->On(name, fail) : void(); })
                              .Append(script)
                              .Box(kHostErrorText)
                              .Append(Says(L"Registro 1 de 20   ·   3 marcadas"))
                              .Do([=] { owned ? owned->On(name, [](Invocation&) {}) : void(); })
                              .Key(VK_ESCAPE)));
    }
}

TEST_F(CasillasTest, ItGoesAlongWithTheHostsForm) {
    host.set->Table().onCall = [this](const std::wstring& member) {
        if (member == L"Value=") {
            DestroyWindow(owner);
        }
    };
    EXPECT_FALSE(Show(0, 0, Keys({VK_SPACE})));
    EXPECT_EQ(Panel(), nullptr);
}

TEST_F(CasillasTest, TheLookIsKeptForTheClassAndItsNumber) {
    EXPECT_FALSE(Show(0, 7, Script().Key(VK_ADD, VK_CONTROL).Key(VK_ESCAPE)));
    EXPECT_THAT(ReadText(File(L"frmSelecTFprueba_7.grx")), HasSubstr("[columna Planificar]"));
    wchar_t caption[32] = L"";
    EXPECT_FALSE(Show(0, 7,
                      Script()
                          .Do([&] {
                              HDITEMW item{};
                              item.mask = HDI_TEXT;
                              item.pszText = caption;
                              item.cchTextMax = ARRAYSIZE(caption);
                              SendMessageW(Heading(), HDM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
                          })
                          .Key(VK_ESCAPE)));
    EXPECT_STREQ(caption, L"Planificar 1 ?");
}

} // namespace
} // namespace tamvelo::testing
