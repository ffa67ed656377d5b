// What the selection panel asks of the host when it opens, and what it answers.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

using entry::IClsShowSerch;

constexpr wchar_t kClear[] = L"AplyFilter(\"\")";

TEST_F(PanelTest, OpeningAsksForTheSelectionAndLooksForTheControlsText) {
    struct Case {
        PanelCall call;
        std::wstring text;
        Log asked;
    };
    const Case cases[] = {
        {{&IClsShowSerch::ShowSelec}, L"A-1", {L"Requery(\"seleccion\")", L"FindRecord(\"A-1\")"}},
        {{&IClsShowSerch::ShowSelec, 1}, L"A-1", {L"Requery(\"seleccion\")", L"FindRecord(\"A-1\", 1)"}},
        {{&IClsShowSerch::ShowSelec, 2}, L"A-1", {L"Requery(\"seleccion\")", L"FindRecord(\"A-1\", 2)"}},
        {{&IClsShowSerch::ShowSelec, 3}, L"A-1", {L"Requery(\"seleccion\")"}},
        {{&IClsShowSerch::ShowSelec, -1}, L"A-1", {L"Requery(\"seleccion\")"}},
        {{&IClsShowSerch::ShowSelec}, L"", {L"Requery(\"seleccion\")"}},
        {{&IClsShowSerch::ShowSelec, 0, 0, VARIANT_FALSE}, L"A-1", {L"Requery(\"seleccion\")"}},
        {{&IClsShowSerch::ShowSelec, 0, 0, VARIANT_FALSE, VARIANT_TRUE},
         L"A-1",
         {L"Requery(\"seleccion_stock\")"}},
        {{&IClsShowSerch::ShowSelecNoVerif, 0, 0, VARIANT_TRUE, VARIANT_TRUE},
         L"A-1",
         {L"Requery(\"seleccion\")"}},
        {{&IClsShowSerch::ShowSelecVerif, 0, 0, VARIANT_FALSE}, L"A-1", {L"Requery(\"seleccionar\")"}},
        {{&IClsShowSerch::ShowSelecVerif, 1, 0, VARIANT_TRUE, VARIANT_TRUE},
         L"A-1",
         {L"Requery(\"seleccion_stock\")", L"FindRecord(\"A-1\", 1)"}},
        {{&IClsShowSerch::ShowSelecControlVerif, 2},
         L"ñ",
         {L"Requery(\"seleccionar\")", L"FindRecord(\"ñ\", 2)"}},
        {{&IClsShowSerch::ShowSelecDirecta, 0, 0, VARIANT_TRUE, 1}, L"", {L"Requery(\"seleccion\")"}},
        {{&IClsShowSerch::ShowSelecDirecta, 1, 0, VARIANT_TRUE, 1},
         L"A-1",
         {L"Requery(\"seleccion\")", L"FindRecord(\"A-1\", 1)", L"CreateFilter(&TxtFields(0))",
          L"SetFilter(&\"campo=*A-1\", \"FilterSelec\")", L"GetFilter(\"FilterSelec\")",
          L"AplyFilter(\"campo=*A-1\")", L"Requery(\"selec\")", L"GetFilter(\"FilterSelec\")",
          L"existenregistros()"}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        host.text = each.text;
        host.stored.clear();
        PanelCall call = each.call;
        EXPECT_FALSE(Show(call, Keys({VK_ESCAPE})));
        EXPECT_THAT(TakeLog(), ElementsAreArray(Log{L"sClassName()"} + each.asked));
        EXPECT_EQ(call.column, each.call.column);
    }
}

TEST_F(PanelTest, AMissingArgumentReadsAsItsDefault) {
    host.text = L"A-1";
    for (const wchar_t* operation : {L"ShowSelec", L"ShowSelecDirecta", L"ShowSelecInDirecta"}) {
        EXPECT_FALSE(ShowLate(operation, Keys({VK_ESCAPE})));
        const Log log = TakeLog();
        ASSERT_GE(log.size(), 3U);
        EXPECT_EQ(log[2], L"FindRecord(\"A-1\")");
    }
}

TEST_F(PanelTest, TheIndirectOneHasItsTextTypedButNotSearched) {
    Script script;
    script.Do([] { EXPECT_EQ(ItemText(IDC_TXTFIELDS0), L"ma"); }).Key(VK_ESCAPE);
    EXPECT_FALSE(ShowIndirect(L"ma", 1, script));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")"));
}

struct AnswerCase {
    const wchar_t* className;
    short column;
    short indx;
    const wchar_t* call;
};

TEST_F(PanelTest, EachClassWantsItsOwnAnswer) {
    const AnswerCase cases[] = {
        {L"hordenes", 1, 3, L"AceptarSeleccionParam(&1, &ctl, \"Artículo 1\", \"1\", \"1,23\")"},
        {L"fases", 2, 3, L"AceptarSeleccionParam(&2, &ctl, \"1,23\", \"1\", \"Artículo 1\")"},
        {L"pruebas", 0, 3, L"AceptarSeleccionParam(&0, &ctl, \"1\", \"1\", \"Artículo 1\")"},
        {L"rutas", 1, 3, L"AceptarSeleccionParam(&1, &ctl, \"Artículo 1\", \"1\", \"Artículo 1\")"},
        {L"empleados", 4, 3, L"AceptarSeleccionParam(&4, &ctl, \"Sí\", \"1\", \"Artículo 1\")"},
        {L"Clientes_Direcciones", 1, 3,
         L"AceptarSeleccionParam(&1, &ctl, \"Artículo 1\", \"1\", \"Artículo 1\")"},
        {L"Ordenes", 5, 3, L"AceptarSeleccionParam(0, &ctl, \"1\", \"1\", \"Artículo 1\")"},
        {L"familias", 1, 3, L"AceptarSeleccion(&3, &ctl, \"1\")"},
        {L"secciones", 1, 0, L"AceptarSeleccion(&0, &ctl, \"1\")"},
        {L"IMPUESTOS", 1, 2, L"AceptarSeleccion(&2, &ctl, \"1\")"},
        {L"clientes", 1, 3, L"AceptarSeleccion(&1, &ctl, \"1\")"},
        {L"proveedores", 2, 3, L"AceptarSeleccion(&2, &ctl, \"1\")"},
        {L"cuentas", 9, 3, L"AceptarSeleccion(&0, &ctl, \"1\")"},
        {L"productos", 2, 3, L"AceptarSeleccion(&2, &ctl, \"Artículo 1\")"},
        {L"tipos_producto", 1, 3, L"AceptarSeleccion(&1, &ctl, \"1/1/2000\")"},
        {L"ordenes_lineas", 0, 2, L"AceptarSeleccion(&0, &ctl, \"1,23\")"},
        {L"articulos", 2, 4, L"AceptarSeleccion(&2, &ctl, \"Sí\")"},
        {L"otra", 3, 1, L"AceptarSeleccion(&3, &ctl, \"1/1/2000\")"},
        {L"", 9, 1, L"AceptarSeleccion(&0, &ctl, \"1\")"},
    };
    for (const AnswerCase& each : cases) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(each.className)));
        host.className = each.className;
        EXPECT_FALSE(Show({&IClsShowSerch::ShowSelec, each.column, each.indx}, Forget().Key(VK_RETURN)));
        EXPECT_THAT(TakeLog(), ElementsAre(each.call, kClear));
    }
}

TEST_F(PanelTest, AColumnOneAboveTheLastHasNoText) {
    // Only a column greater than the count becomes 0; one equal to it is a subscript error, and the panel
    // stays.
    const Script script =
        Forget().Key(VK_RETURN).Box(L"Error").Do([this] { EXPECT_THAT(host.log, IsEmpty()); });
    EXPECT_FALSE(Show({&IClsShowSerch::ShowSelec, MemoryRecordSet::kColumns}, Script(script).Key(VK_ESCAPE)));
}

TEST_F(PanelTest, ADoubleClickAcceptsExceptWhereTheHostWantsItsCode) {
    const std::pair<const wchar_t*, Log> cases[] = {
        {L"Ordenes", {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        {L"articulos_lotes", {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        {L"clientes", {L"AceptarSeleccion(&1, &ctl, \"1\")", kClear}},
    };
    for (const auto& [className, asked] : cases) {
        host.className = className;
        EXPECT_FALSE(Show({&IClsShowSerch::ShowSelec, 1}, {Forget(), DoubleClick()}));
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
}

TEST_F(PanelTest, VerificationHasButtonsInPlaceOfTheSearchStrip) {
    struct Case {
        PanelCall::Operation operation;
        std::array<bool, 4> shown;
        bool cancelEnabled;
    };
    const Case cases[] = {
        {&IClsShowSerch::ShowSelec, {false, false, false, false}, false},
        {&IClsShowSerch::ShowSelecVerif, {false, true, true, true}, true},
        {&IClsShowSerch::ShowSelecControlVerif, {true, false, true, true}, false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        Script script;
        script.Do([&] {
            for (const int button : {0, 1, 2, 3}) {
                EXPECT_EQ(IsShown(IDC_CMD0 + button), each.shown[static_cast<size_t>(button)]) << button;
            }
            EXPECT_EQ(
                SendMessageW(Bar(), TB_ISBUTTONENABLED, static_cast<WPARAM>(ToolCommand(L"Buscar")), 0) != 0,
                !each.shown[3]); // it would do nothing there
            EXPECT_EQ(IsWindowEnabled(Item(IDC_CMD2)) != FALSE, each.cancelEnabled);
            EXPECT_EQ(IsShown(IDC_TXTFIELDS0), !each.shown[3]);
        });
        EXPECT_FALSE(
            Show({each.operation}, script.Key(VK_INSERT)
                                       .Do([&] { EXPECT_EQ(IsShown(IDC_TXTFIELDS0), !each.shown[3]); })
                                       .Key(VK_ESCAPE)));
    }
}

TEST_F(PanelTest, AVerificationButtonAnswersTrueOrFalse) {
    struct Case {
        PanelCall::Operation operation;
        int button;
        short column;
        Log asked;
    };
    const Case cases[] = {
        {&IClsShowSerch::ShowSelecVerif, IDC_CMD1, 2, {L"AceptarSeleccion(&2, &ctl, True)"}},
        {&IClsShowSerch::ShowSelecVerif, IDC_CMD3, 8, {L"AceptarSeleccion(&8, &ctl, False)"}},
        {&IClsShowSerch::ShowSelecControlVerif, IDC_CMD3, 9, {L"AceptarSeleccion(&0, &ctl, False)"}},
        {&IClsShowSerch::ShowSelecVerif, IDC_CMD2, 0, {}},
        {&IClsShowSerch::ShowSelecControlVerif, IDC_CMD0, 0, {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        EXPECT_FALSE(Show({each.operation, each.column}, {Forget(), Click(each.button)}));
        EXPECT_THAT(TakeLog(), ElementsAreArray(each.asked));
    }
}

TEST_F(PanelTest, AControlThatTheSinkPutsInPlaceComesBackToTheCaller) {
    const auto other = com::Make<HostObject>(L"otro", host.log);
    host.sink->On(L"AceptarSeleccion", [&](com::Invocation& call) {
        call.WriteBack(1, com::Variant(static_cast<IDispatch*>(other.Get())));
    });
    for (const auto operation : {&IClsShowSerch::ShowSelec, &IClsShowSerch::ShowSelecVerif}) {
        ctl = com::ComPtr<IDispatch>(host.ctl.Get());
        const bool verify = operation == &IClsShowSerch::ShowSelecVerif;
        EXPECT_FALSE(Show({operation}, verify
                                           ? Script().Do([] { PostMessageW(Item(IDC_CMD1), BM_CLICK, 0, 0); })
                                           : Keys({VK_RETURN})));
        EXPECT_EQ(ctl.Get(), other.Get());
    }
    ctl.Reset();
    EXPECT_EQ(other->References(), 1);
}

TEST_F(PanelTest, NothingIsAControlWithoutText) {
    ctl.Reset();
    EXPECT_FALSE(Show(Keys({VK_RETURN})));
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")",
                                       L"AceptarSeleccion(&0, &Nothing, \"1\")", kClear));
    EXPECT_EQ(ctl.Get(), nullptr);
}

} // namespace
} // namespace tamvelo::testing
