// The criteria dialogs: what each asks of the host, in which order, and what its boxes let through.
#include "selection/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

using ::testing::EndsWith;

// The fields of the host's record set; in a dialog with lists the short way to "Sí" stands in between.
constexpr int Field(int number) { return IDC_CRITERIA_FIELDS + 4 * number + 1; }
constexpr int kCodigo = Field(0), kNombre = Field(1), kPrecio = Field(2), kAlta = Field(3),
              kActivo = Field(4), kCantidad = Field(5), kNotas = Field(6), kGrupo = Field(7),
              kSoloActivo = Field(5);

class Criterios : public DialogTest {
protected:
    Criterios() {
        other.className = L"clientes";
        other.TextCells();
        environment->Returns(L"CrearClase", Variant(other.data.Get()));
        environment->On(L"ClaseRelacionada", [](Invocation& call) {
            constexpr std::wstring_view kRelated = L"Codigo Nombre Cantidad Grupo";
            const bool related = kRelated.find(call[1].ToText()) != kRelated.npos;
            call.Return(Variant(call[0].ToText() == L"prueba" && related ? L"clientes" : L""));
        });
        host.data->On(L"ValidaKey", [](Invocation& call) { // refuses one key and changes another
            const long key = call[1].ToLong();
            call.WriteBack(1, Variant(static_cast<short>(key == 'y' ? 'b' : key)));
            call.Return(Variant(key != 'x'));
        });
        host.data->Returns(L"ValidaDefinedSize", Variant(8L));
        host.data->On(L"ValidaValue", [](Invocation& call) {
            com::LateObject box(call[0].ToObject().Get(), L"box");
            call.Return(Variant(box.Call(L"Text").ToText() != L"mal"));
        });
    }
    void Show(const wchar_t* operation, const Script& script) {
        Offer({L"Clases"});
        other.log.clear();
        EXPECT_FALSE(PlayLate(operation, {sink.Get(), data.Get()}, script));
    }
    static Script LookUp(int field) { return {Into(field), L"F4", Showing(IDC_DATAGRID)}; }
    FakeHost other; // of the class that fields are related to
};

TEST_F(Criterios, EachDialogLooksUpWithItsOwnSelectionsAndAppliesInOrder) {
    // The selections of kCodigo, kNombre, kCantidad and kGrupo; the options; whether yes and no have a box.
    const std::tuple<const wchar_t*, std::wstring, const wchar_t*, int> cases[] = {
        {L"ShowSeleccionar", L"_m__", L"--", 1},       {L"ShowSeleccionarComp", L"m___", L"--", 1},
        {L"ShowSelecMinim", L"__c_", L"x-", 1},        {L"ShowSelecLab", L"_mc_", L"x-", 0},
        {L"ShowSeleccionarRecibo", L"____", L"x-", 1},
    };
    const std::map<wchar_t, const wchar_t*> looked{{L'_', L"Requery(\"seleccion\")"},
                                                   {L'm', L"Requery(\"seleccionmixta\")"},
                                                   {L'c', L"Requery(\"selecc\")"}};
    for (const auto& [operation, selections, options, boxes] : cases) {
        Script script{Focused(kCodigo), Says(IDC_LBLBUSCAR, L"Criterios para «prueba»:"),
                      Looks({IDC_FRMCOMPARISON, kPrecio + 2}, options)}; // no related class, no button
        Log asked;
        const int behind = boxes == 0 ? Field(1) - Field(0) : 0;
        for (const int field : {kCodigo, kNombre, kCantidad + behind, kGrupo + behind}) {
            script.Append({LookUp(field), L"Esc", Focused(field)});
            asked = asked +
                    Log{looked.at(selections[asked.size() / 3]), L"sClassName()", L"Requery(\"seleccion\")"};
        }
        Show(operation, {script, Forget(), L"Enter"});
        EXPECT_THAT(other.log, ElementsAreArray(asked));
        EXPECT_THAT(TakeLog(), Contains(EndsWith(L"Fields(4), 0)")).Times(boxes));
    }
}

TEST_F(Criterios, BoxesAreCheckedAndBecomeOneFilter) {
    wchar_t day[32] = L"";
    const SYSTEMTIME date{2026, 2, 0, 3, 0, 0, 0, 0};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, day, ARRAYSIZE(day));
    const auto ticked = [](bool is) {
        return Do([is] { EXPECT_EQ(IsDlgButtonChecked(Item(IDC_CRITERIA), kSoloActivo), is ? 1U : 0U); });
    };
    const auto pressed = [](bool is) {
        return Do([is] {
            const auto tool = static_cast<WPARAM>(ToolCommand(L"Limpiar los criterios"));
            EXPECT_EQ(SendMessageW(Bar(), TB_ISBUTTONCHECKED, tool, 0) != 0, is);
        });
    };
    const auto marked = [](LONG weight) {
        return Do([weight] {
            LOGFONTW font{};
            const LRESULT used = SendMessageW(Item(kNombre - 1), WM_GETFONT, 0, 0);
            GetObjectW(reinterpret_cast<HFONT>(used), sizeof font, &font);
            EXPECT_EQ(font.lfWeight, weight);
            EXPECT_EQ(ItemText(kNombre - 1), weight == FW_BOLD ? L"Nombre: •" : L"Nombre:");
        });
    };
    const Script tick = Click(kSoloActivo);
    const Script fill =
        Script({Into(kNombre, L"axy"), L"Tab", Says(kNombre, L"ab"), Into(kAlta, L"8:30"), L"Tab",
                Says(kAlta, L"8:30"), Set(kAlta, L""), Into(kAlta, L"2026-2-3"), L"Tab", Focused(kActivo),
                L"Home", Says(kAlta, day), Says(kActivo, L"-1 - Sí"), ticked(true), L"Down",
                Says(kActivo, L" 0 - No"), ticked(false)});
    Show(L"ShowSelecLab",
         {pressed(false), fill, Click(IDC_OPTCOMPARISON1),
          Says(L"20 Registros   ·   3 criterios: Nombre, Alta, Activo"), pressed(true), Forget(), L"Enter"});
    const std::wstring filter = L"campo=ab And campo=" + std::wstring(day) + L" And campo= 0 - No";
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"GetFilter(\"Filter\")", L"CreateFilter(&TxtFields(0), 1)",
                            L"CreateFilter(&TxtFields(1), 0)", L"CreateFilter(&TxtFields(2), 1)",
                            L"CreateFilter(&TxtFields(3), 1)", L"CreateFilter(&CmbFields(4), 0)",
                            L"CreateFilter(&TxtFields(5), 1)", L"CreateFilter(&TxtFields(6), 0)",
                            L"CreateFilter(&TxtFields(7), 1)", L"SetFilter(&\"" + filter + L"\", \"Filter\")",
                            L"GetFilter(\"Filter\")", L"AplyFilter(\"" + filter + L"\")",
                            L"Requery(\"selec\")", L"AceptarBuscar()"));
    // Everything goes at once, and " 2 - Todos" is no condition; the tick is a short way to the entry, also
    // where the field has a look-up.
    environment->On(L"ClaseRelacionada", [](Invocation& call) {
        call.Return(Variant(call[1].ToText() == L"Activo" ? L"clientes" : L""));
    });
    Show(L"ShowSelecLab",
         {fill, marked(FW_BOLD), L"F7", Focused(kCodigo), Says(kAlta, L""), Says(kActivo, L" 2 - Todos"),
          marked(FW_NORMAL), tick, Says(kActivo, L"-1 - Sí"), tick, Says(kActivo, L" 2 - Todos"),
          Says(L"10 Registros   ·   Sin criterios"), L"Esc"});
}

TEST_F(Criterios, ARefusedValueHoldsTheUserButNotTheDialog) {
    const auto complains = [](HWND) { return ItemText(IDC_STATUS).find(L"«mal»") == 0; };
    const Script refused{Into(kNombre, L"mal"), L"Tab", Until("the complaint", complains)};
    const Script lookUp = Click(kNombre + 2);
    for (const Script& act :
         {Script(L"Enter"), Script(L"F5"), Click(IDC_CMDBUSCAR), lookUp}) { // none happens
        Show(L"ShowSeleccionar",
             {refused, Focused(kNombre), Forget(), act,
              Asked({L"ValidaDefinedSize(&TxtFields(1))", L"ValidaValue(&TxtFields(1))"}), Set(kNombre, L""),
              Into(kNombre, L"b"), L"Tab", Says(L"20 Registros   ·   1 criterio: Nombre"), Forget(), L"Esc"});
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
}

TEST_F(Criterios, SearchingShowsTheCountAndIsUndoneByCancelling) {
    host.stored = L"antes";
    const Log before{LR"(SetFilter(&"antes", "Filter"))", L"AplyFilter(\"antes\")", L"Requery(\"selec\")"};
    const Script search{Into(kNombre, L"a"), L"Tab", Forget(), L"F5"};
    const std::wstring rest = L"   ·   1 criterio: Nombre";
    Show(L"ShowSeleccionar", {search, Says(L"10 Registros" + rest), L"^End", Tool(L"Primer registro"),
                              Do([this] { host.set->Table().records = 2; }), Click(IDC_CMDBUSCAR),
                              Says(L"1 Registro" + rest), Close()});
    Log log = TakeLog();
    std::erase_if(log, [](const std::wstring& line) { return line.starts_with(L"CreateFilter"); });
    const Log applied{LR"(SetFilter(&"campo=a", "Filter"))", L"GetFilter(\"Filter\")",
                      L"AplyFilter(\"campo=a\")", L"Requery(\"selec\")"};
    const Log first{L"GetFilter(\"Filter\")"};
    const Log moves{L"MoveLast()", L"MoveFirst()"};
    EXPECT_EQ(log, first + applied + moves + applied + before);
    // Accepting has replaced it too: after a sink that failed there is still a way back.
    host.stored = L"antes";
    host.sink->Raises(L"AceptarBuscar");
    Show(L"ShowSeleccionar", {Into(kNombre, L"a"), L"Enter", Box(kHostErrorText), Focused(kNombre),
                              Says(kNombre, L"a"), Forget(), L"Esc"});
    EXPECT_THAT(TakeLog(), ElementsAreArray(before));
}

TEST_F(Criterios, ALookUpAnswersThroughTheRelayThreeLevelsDown) {
    environment->On(L"CrearClase", [&](Invocation& call) { // meanwhile the user presses a tool
        ClickTool(L"Aceptar");
        for (MSG message; PeekMessageW(&message, nullptr, WM_COMMAND, WM_COMMAND, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
        call.Return(Variant(other.data.Get()));
    });
    for (const wchar_t* className : {L"clientes", L"hordenes"}) { // one value, and three
        other.className = className;
        Show(L"ShowSelecMinim",
             {LookUp(kCantidad), L"F12", Showing(IDC_LIST1), L"Down Space Enter", Showing(IDC_DATAGRID),
              L"Down Enter", Focused(kCantidad), Says(kCantidad, L"f1c0"), L"Esc"});
    }
    EXPECT_THAT(host.log, Contains(HasSubstr(L"Aceptar")).Times(0));
}

TEST_F(Criterios, TheFocusAndTheWheelScrollTheRowsOrThereAreNone) {
    const auto inView = [](int field, bool is) {
        return Do([=] {
            const RECT panel = PlaceOf(Item(IDC_CRITERIA));
            const RECT box = PlaceOf(Item(field));
            EXPECT_EQ(box.top >= panel.top && box.bottom <= panel.bottom, is) << field;
        });
    };
    Show(L"ShowSeleccionarRecibo",
         {Focused(kCodigo),
          Do([] { SetWindowPos(Item(IDC_CRITERIA), nullptr, 0, 0, 300, 90, SWP_NOMOVE | SWP_NOZORDER); }),
          Into(kGrupo), inView(kGrupo, true), Into(kCodigo), inView(kCodigo, true), Into(kNotas),
          inView(kNotas, true), inView(kCodigo, false),
          Do([] { SendMessageW(Item(IDC_CRITERIA), WM_MOUSEWHEEL, MAKEWPARAM(0, 1200), 0); }),
          inView(kCodigo, true), L"Esc"});
    // Without look-ups, and without fields, there is still a dialog.
    environment->Raises(L"ClaseRelacionada");
    Show(L"ShowSelecLab", {Box(kHostErrorText), Focused(kCodigo), L"Esc"});
    host.set->Table().open = false;
    Show(L"ShowSelecLab", {Showing(IDC_CRITERIA), Says(IDC_LBLBUSCAR, L"La clase «prueba» no tiene campos."),
                           Forget(), Tool(L"Aceptar")});
    EXPECT_THAT(TakeLog(), ElementsAre(L"GetFilter(\"Filter\")", LR"(SetFilter(&"", "Filter"))",
                                       L"GetFilter(\"Filter\")", L"AplyFilter(\"\")", L"Requery(\"selec\")",
                                       L"AceptarBuscar()"));
}

TEST_F(Criterios, ACriterionLooksAtItsOwnBoxAndClearingAtEachOnce) {
    host.set->Table().columns = 3000;
    Counts box;
    Counts status;
    Show(L"ShowSeleccionar", {Focused(kCodigo), Mentions(IDC_LBLBUSCAR, L"2700 campos"), Do([&] {
                                  EXPECT_TRUE(Item(Field(299)) && !Item(Field(300))); // and the user is told
                                  for (int i = 0; i < 299; i += 2) {
                                      SetWindowTextW(Item(Field(i)), L"a");
                                  }
                                  Count(Item(Field(200)), box);
                                  Count(Item(IDC_STATUS), status);
                              }),
                              Mentions(IDC_STATUS, L"150 criterios: Código, Precio"), L"'b", Do([&] {
                                  EXPECT_EQ(box[WM_GETTEXT], 0U);
                                  EXPECT_EQ(status[WM_SETTEXT], 1U);
                              }),
                              L"F7", Says(L"20 Registros   ·   Sin criterios"), Do([&] {
                                  EXPECT_EQ(box[WM_GETTEXT], 1U);
                                  EXPECT_EQ(status[WM_SETTEXT], 2U);
                              }),
                              L"Esc"});
}

} // namespace
} // namespace tamvelo::testing
