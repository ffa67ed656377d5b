// The criteria dialogs: what each asks of the host, in which order, and what its boxes let through.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include <map>

#include "base/Text.h"
#include "frame/Resources.h"
#include "selection/Resources.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;

// The fields of the host's record set.
enum Field { Codigo, Nombre, Precio, Alta, Activo, Cantidad, Notas, Grupo, Fields };

class Criterios : public DialogTest {
protected:
    Criterios() {
        gdiSlack = 16; // of a window that is hidden before it goes
        other.className = L"clientes";
        other.TextCells();
        classes->Returns(L"CrearClase", Variant(other.data.Get()), true);
        classes->On(
            L"ClaseRelacionada",
            [](Invocation& call) {
                constexpr std::wstring_view kRelated = L"Codigo Nombre Cantidad Grupo";
                const bool related = kRelated.find(call[1].ToText()) != kRelated.npos;
                call.Return(Variant(call[0].ToText() == L"prueba" && related ? L"clientes" : L""));
            },
            true);
        host.data->On(
            L"ValidaKey",
            [](Invocation& call) { // refuses one key and changes another
                call.WriteBack(1,
                               Variant(static_cast<short>(call[1].ToLong() == 'y' ? 'b' : call[1].ToLong())));
                call.Return(Variant(call[1].ToLong() != 'x'));
            },
            true);
        host.data->Returns(L"ValidaDefinedSize", Variant(8L));
        host.data->On(L"ValidaValue", [](Invocation& call) {
            com::LateObject box(call[0].ToObject().Get(), L"box");
            call.Return(Variant(box.Call(L"Text").ToText() != L"mal"));
        });
    }
    void WarmUp() override {
        host.sink->Raises(L"AceptarBuscar");
        Show(L"ShowSelecLab",
             {LookUp(Codigo), Key(VK_F12), Showing(IDC_LIST1), Key(VK_ESCAPE), Showing(IDC_DATAGRID),
              Key(VK_RETURN), In(Codigo), Key(VK_RETURN), Box(kHostErrorText), Key(VK_ESCAPE)});
        host.sink->Accepts({L"AceptarBuscar"});
    }
    std::optional<com::Error> Show(const wchar_t* operation, Script script) {
        SetValue(kEnvironmentKey, L"Clases", Component::Name());
        other.log.clear();
        return PlayLate(operation, {sink.Get(), data.Get()}, std::move(script));
    }
    static HWND Part(int field, int part) {
        return GetDlgItem(Item(IDC_CRITERIA), IDC_CRITERIA_FIELDS + 4 * field + part);
    }
    static bool IsMarked(int field) {
        LOGFONTW font{};
        const LRESULT used = SendMessageW(Part(field, 0), WM_GETFONT, 0, 0);
        GetObjectW(reinterpret_cast<HFONT>(used), sizeof font, &font);
        return font.lfWeight == FW_BOLD;
    }
    static Script Holds(int field, const std::wstring& text) {
        return Do([=] { EXPECT_EQ(TextOf(Part(field, 1)), text) << field; });
    }
    // The focus in the box of a field; a text there; its look-up.
    static Script In(int field) {
        return Focused([field] { return Part(field, 1); });
    }
    static Script Write(int field, const wchar_t* text = L"") {
        return {Do([field] { SetFocus(Part(field, 1)); }), In(field), Type(text)};
    }
    static Script LookUp(int field) { return {Write(field), Key(VK_F4), Showing(IDC_DATAGRID)}; }
    FakeHost other; // of the class that fields are related to
    com::ComPtr<HostObject> classes = com::Make<HostObject>(L"Clases", host.log);
    const Component component{classes.Get()};
};

TEST_F(Criterios, EachDialogLooksUpWithItsOwnSelectionsAndAppliesInOrder) {
    const struct {
        const wchar_t* operation;
        const wchar_t* caption;
        std::wstring selections; // of Codigo, Nombre, Cantidad and Grupo
        bool options;
        bool list = false; // for yes and no
    } cases[] = {
        {L"ShowSeleccionar", L"Criterios de ventas", L"_m__", false},
        {L"ShowSeleccionarComp", L"Criterios de compras", L"m___", false},
        {L"ShowSelecMinim", L"Criterios de mínimos", L"__c_", true},
        {L"ShowSelecLab", L"Criterios de laboratorio", L"_mc_", true, true},
        {L"ShowSeleccionarRecibo", L"Criterios de recibos", L"____", true},
    };
    const std::map<wchar_t, const wchar_t*> looked{{L'_', L"Requery(\"seleccion\")"},
                                                   {L'm', L"Requery(\"seleccionmixta\")"},
                                                   {L'c', L"Requery(\"selecc\")"}};
    for (const auto& row : cases) {
        SCOPED_TRACE(base::ToUtf8(row.caption));
        Script script{In(Codigo), Says(IDC_LBLBUSCAR, L"Criterios para «prueba»:"), Do([&] {
                          EXPECT_EQ(TextOf(Dialog()), row.caption);
                          EXPECT_EQ(IsShown(IDC_FRMCOMPARISON), row.options);
                          EXPECT_EQ(Part(Precio, 3), nullptr); // no related class, no button
                      })};
        Log asked;
        for (const int field : {Codigo, Nombre, Cantidad, Grupo}) {
            script.Append({LookUp(field), Key(VK_ESCAPE), In(field)});
            asked.insert(asked.end(), {looked.at(row.selections[asked.size() / 3]), L"sClassName()",
                                       L"Requery(\"seleccion\")"});
        }
        EXPECT_FALSE(Show(row.operation, {script, Forget(), Key(VK_RETURN)}));
        EXPECT_THAT(other.log, ElementsAreArray(asked));
        EXPECT_EQ(std::ranges::count(TakeLog(), L"CreateFilter(&TxtFields(4), 0)"), row.list ? 0 : 1);
        EXPECT_FALSE(Show(row.operation, {In(Codigo), Key(VK_ESCAPE)}));
        EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()"));
    }
}

TEST_F(Criterios, BoxesAreCheckedAndBecomeOneFilter) {
    wchar_t day[32] = L"";
    const SYSTEMTIME date{2026, 2, 0, 3, 0, 0, 0, 0};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, day, ARRAYSIZE(day));
    const auto ticked = [](bool is) {
        return Do(
            [is] { EXPECT_EQ(SendMessageW(Part(Activo, 2), BM_GETCHECK, 0, 0), is ? BST_CHECKED : 0); });
    };
    const auto pressed = [](bool is) {
        return Do([is] {
            const auto tool = static_cast<WPARAM>(ToolCommand(L"Limpiar los criterios"));
            EXPECT_EQ(SendMessageW(Bar(), TB_ISBUTTONCHECKED, tool, 0) != 0, is);
        });
    };
    const auto tick = Do([] { SendMessageW(Part(Activo, 2), BM_CLICK, 0, 0); });
    const auto from = Do([] { SendMessageW(Item(IDC_OPTCOMPARISON1), BM_CLICK, 0, 0); });
    const auto none = Do([] { SetWindowTextW(Part(Alta, 1), L""); });
    const Script fill =
        Script({Write(Nombre, L"axy"), Key(VK_TAB), Holds(Nombre, L"ab"), Write(Alta, L"8:30"), Key(VK_TAB),
                Holds(Alta, L"8:30"), none, Write(Alta, L"2026-2-3"), Key(VK_TAB), In(Activo), Key(VK_HOME),
                Holds(Alta, day), Holds(Activo, L"-1 - Sí"), ticked(true), Key(VK_DOWN),
                Holds(Activo, L" 0 - No"), ticked(false)});
    EXPECT_FALSE(Show(L"ShowSelecLab", {pressed(false), fill, from,
                                        Says(L"20 Registros   ·   3 criterios: Nombre, Alta, Activo"),
                                        pressed(true), Forget(), Key(VK_RETURN)}));
    const std::wstring filter = L"campo=ab And campo=" + std::wstring(day) + L" And campo= 0 - No";
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"GetFilter(\"Filter\")", L"CreateFilter(&TxtFields(0), 1)",
                            L"CreateFilter(&TxtFields(1), 0)", L"CreateFilter(&TxtFields(2), 1)",
                            L"CreateFilter(&TxtFields(3), 1)", L"CreateFilter(&CmbFields(4), 0)",
                            L"CreateFilter(&TxtFields(5), 1)", L"CreateFilter(&TxtFields(6), 0)",
                            L"CreateFilter(&TxtFields(7), 1)", L"SetFilter(&\"" + filter + L"\", \"Filter\")",
                            L"GetFilter(\"Filter\")", L"AplyFilter(\"" + filter + L"\")",
                            L"Requery(\"selec\")", L"AceptarBuscar()"));
    // Everything goes at once, and " 2 - Todos" is no condition; the tick is a short way to the entry.
    EXPECT_FALSE(Show(L"ShowSelecLab", {fill, Do([] { EXPECT_TRUE(IsMarked(Nombre)); }), Key(VK_F7),
                                        In(Codigo), Holds(Alta, L""), Holds(Activo, L" 2 - Todos"),
                                        Do([] { EXPECT_FALSE(IsMarked(Nombre)); }), tick,
                                        Holds(Activo, L"-1 - Sí"), tick, Holds(Activo, L" 2 - Todos"),
                                        Says(L"10 Registros   ·   Sin criterios"), Key(VK_ESCAPE)}));
}

TEST_F(Criterios, ARefusedValueHoldsTheUserButNotTheDialog) {
    const auto complains = [](HWND) { return ItemText(IDC_STATUS).find(L"«mal»") == 0; };
    const Script refused{Write(Nombre, L"mal"), Key(VK_TAB), Until("the complaint", complains)};
    const Script lookUp = Do([] { PostMessageW(Part(Nombre, 3), BM_CLICK, 0, 0); });
    for (const Script& act : {Key(VK_RETURN), Key(VK_F5), Click(IDC_CMDBUSCAR), lookUp}) { // none happens
        EXPECT_FALSE(Show(L"ShowSeleccionar",
                          {refused, In(Nombre), Forget(), act,
                           Asked({L"ValidaDefinedSize(&TxtFields(1))", L"ValidaValue(&TxtFields(1))"}),
                           Do([] { SetWindowTextW(Part(Nombre, 1), L""); }), Write(Nombre, L"b"), Key(VK_TAB),
                           Says(L"20 Registros   ·   1 criterio: Nombre"), Forget(), Key(VK_ESCAPE)}));
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
}

TEST_F(Criterios, SearchingShowsTheCountAndIsUndoneByCancelling) {
    host.stored = L"antes";
    const Log before{L"SetFilter(&\"antes\", \"Filter\")", L"AplyFilter(\"antes\")", L"Requery(\"selec\")"};
    const Script search{Write(Nombre, L"a"), Key(VK_TAB), Forget(), Key(VK_F5)};
    const std::wstring rest = L"   ·   1 criterio: Nombre";
    EXPECT_FALSE(
        Show(L"ShowSeleccionar", {search, Says(L"10 Registros" + rest), Key(VK_END, VK_CONTROL),
                                  Tool(L"Primer registro"), Do([this] { host.set->Table().records = 2; }),
                                  Click(IDC_CMDBUSCAR), Says(L"1 Registro" + rest), Close()}));
    Log log = TakeLog();
    std::erase_if(log, [](const std::wstring& line) { return line.starts_with(L"CreateFilter"); });
    const Log applied{L"SetFilter(&\"campo=a\", \"Filter\")", L"GetFilter(\"Filter\")",
                      L"AplyFilter(\"campo=a\")", L"Requery(\"selec\")"};
    Log asked{L"GetFilter(\"Filter\")"}; // only the first time
    for (const Log& part : {applied, {L"MoveLast()", L"MoveFirst()"}, applied, before}) {
        std::ranges::copy(part, std::back_inserter(asked));
    }
    EXPECT_EQ(log, asked);
    // Accepting has replaced it too: after a sink that failed there is still a way back.
    host.stored = L"antes";
    host.sink->Raises(L"AceptarBuscar");
    EXPECT_FALSE(Show(L"ShowSeleccionar", {Write(Nombre, L"a"), Key(VK_RETURN), Box(kHostErrorText),
                                           In(Nombre), Holds(Nombre, L"a"), Forget(), Key(VK_ESCAPE)}));
    EXPECT_THAT(TakeLog(), ElementsAreArray(before));
}

TEST_F(Criterios, ALookUpAnswersThroughTheRelayThreeLevelsDown) {
    classes->On(L"CrearClase", [&](Invocation& call) { // meanwhile the user presses a tool
        ClickTool(L"Aceptar");
        for (MSG message; PeekMessageW(&message, nullptr, WM_COMMAND, WM_COMMAND, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
        call.Return(Variant(other.data.Get()));
    });
    for (const wchar_t* className : {L"clientes", L"hordenes"}) { // one value, and three
        other.className = className;
        EXPECT_FALSE(Show(L"ShowSelecMinim", {LookUp(Cantidad), Key(VK_F12), Showing(IDC_LIST1),
                                              Keys({VK_DOWN, VK_SPACE, VK_RETURN}), Showing(IDC_DATAGRID),
                                              Keys({VK_DOWN, VK_RETURN}), In(Cantidad),
                                              Holds(Cantidad, L"f1c0"), Key(VK_ESCAPE)}));
    }
    EXPECT_THAT(host.log, ::testing::Not(::testing::Contains(HasSubstr(L"Aceptar"))));
    classes->Without(L"CrearClase");
}

TEST_F(Criterios, TheFocusAndTheWheelScrollTheRowsOrThereAreNone) {
    const auto inView = [](int field, bool is) {
        return Do([=] {
            RECT panel{};
            RECT box{};
            GetWindowRect(Item(IDC_CRITERIA), &panel);
            GetWindowRect(Part(field, 1), &box);
            EXPECT_EQ(box.top >= panel.top && box.bottom <= panel.bottom, is) << field;
        });
    };
    EXPECT_FALSE(
        Show(L"ShowSeleccionarRecibo",
             {In(Codigo),
              Do([] { SetWindowPos(Item(IDC_CRITERIA), nullptr, 0, 0, 300, 90, SWP_NOMOVE | SWP_NOZORDER); }),
              Write(Grupo), inView(Grupo, true), Write(Codigo), inView(Codigo, true), Write(Notas),
              inView(Notas, true), inView(Codigo, false),
              Do([] { SendMessageW(Item(IDC_CRITERIA), WM_MOUSEWHEEL, MAKEWPARAM(0, 1200), 0); }),
              inView(Codigo, true), Key(VK_ESCAPE)}));
    host.set->Table().open = false;
    EXPECT_FALSE(Show(L"ShowSelecLab",
                      {Showing(IDC_CRITERIA), Says(IDC_LBLBUSCAR, L"La clase «prueba» no tiene campos."),
                       Forget(), Tool(L"Aceptar")}));
    EXPECT_THAT(TakeLog(), ElementsAre(L"GetFilter(\"Filter\")", L"SetFilter(&\"\", \"Filter\")",
                                       L"GetFilter(\"Filter\")", L"AplyFilter(\"\")", L"Requery(\"selec\")",
                                       L"AceptarBuscar()"));
}

} // namespace
} // namespace tamvelo::testing
