// The selection panel with a new record: what it hands over, and that nothing typed is lost or stored twice.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "tests/dialogs/PanelFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;

// The boxes of the host's fields: Notas is the family, Grupo refers to the taxes.
enum Number { kCodigo = 1, kNombre, kPrecio, kNotas, kAlta, kActivo, kCantidad, kGrupo };

class AltaTest : public PanelTest {
protected:
    void SetUp() override {
        PanelTest::SetUp();
        host.set->Table().related = {{6, L"familias"}, {7, L"impuestos"}};
        host.data->On(L"NuevoCodigo_Fam",
                      [](Invocation& call) { call.Return(Variant(call[0].ToText() + L"001")); });
        host.data->On(
            L"InsertarArticulo",
            [this](Invocation& call) {
                std::wstring values;
                const SAFEARRAY* array = call[0].Get().parray;
                for (ULONG i = 0; i < array->rgsabound[0].cElements; ++i) {
                    const Variant value = Variant::CopyOf(static_cast<const VARIANT*>(array->pvData)[i]);
                    values +=
                        L"|" + (value.Type() == VT_BOOL ? value.ToBool() ? L"sí" : L"no" : value.ToText());
                }
                host.log.push_back(L"Insertar" + values);
            },
            true);
    }

    std::optional<com::Error> Open(Script script, short column = 0, short indx = 0) {
        VARIANT_BOOL find = VARIANT_TRUE;
        return Play(std::move(script), [&] {
            return server->ShowSelecAdd(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(), &column,
                                        &indx, &find);
        });
    }
    static HWND Box(int number) {
        return GetDlgItem(Item(IDC_RECORD_PANEL), IDC_RECORD_BOXES + number * 3 + 1);
    }
    static RECT PlaceOf(HWND control) {
        RECT place{};
        GetWindowRect(control, &place);
        return place;
    }
    static LONG WidthOf(HWND control) { return PlaceOf(control).right - PlaceOf(control).left; }
    /// The environment makes every class: the host's one, under that name.
    com::ComPtr<HostObject> MakeClasses() {
        auto classes = com::Make<HostObject>(L"Clases", host.log);
        classes->On(L"CrearClase", [this](Invocation& call) {
            host.className = call[0].ToText();
            call.Return(Variant(host.data.Get()));
        });
        return classes;
    }
    static Script Alta() {
        return Script().Key('N', VK_CONTROL).Until("the new record", [](HWND) {
            return IsShown(IDC_PICNEW) && GetFocus() == Box(kNotas);
        });
    }
    static Script At(int number) {
        return Script().Do([number] { SetFocus(Box(number)); });
    }
    static Script Write(int number, const wchar_t* text) { return At(number).Type(text); }
    /// A family, the code that it proposes, and a name.
    static Script Complete() {
        return Alta()
            .Type(L"12")
            .Key(VK_TAB)
            .Until("the lookup's button, and on", [](HWND) { return GetFocus() != Box(kNotas); })
            .Append(Write(kNombre, L"Corona"))
            .Do([] { EXPECT_EQ(TextOf(Box(kCodigo)), L"12001"); });
    }
    static Script Left() {
        return Script().Do([] {
            EXPECT_FALSE(IsShown(IDC_PICNEW));
            EXPECT_FALSE(IsWindowVisible(Box(kNombre)));
            EXPECT_EQ(TextOf(Box(kNombre)), L"");
            EXPECT_EQ(GetFocus(), Item(IDC_DATAGRID));
        });
    }
    static Script Question(int answer) {
        return Script()
            .Until("the question", [](HWND top) { return GetDlgItem(top, IDNO) != nullptr; })
            .Do([answer] { PostMessageW(GetDlgItem(TopWindow(), answer), BM_CLICK, 0, 0); });
    }
    static Script Back() {
        return Script().Until("the panel", [](HWND top) { return top == Panel(); });
    }
};

TEST_F(AltaTest, TheClassAndIndxDecideWhatARecordOfTheListSends) {
    const std::tuple<const wchar_t*, const wchar_t*> cases[] = {
        {L"HORDENES", L"AceptarSeleccionParam(&1, &ctl, \"f0c1\", \"f0c0\", \"f0c2\")"},
        {L"Articulos", L"AceptarSeleccion(&1, &ctl, \"f0c0\")"},
        {L"clientes", L"AceptarSeleccion(&1, &ctl, \"f0c3\")"},
    };
    for (const auto& [className, answer] : cases) {
        host.className = className;
        host.text = L"A-1";
        EXPECT_FALSE(Open(Keys({VK_INSERT, VK_RETURN}), 1, 3)); // Insert is the search, not a new record
        EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")",
                                           L"FindRecord(\"A-1\", 1)", answer, L"AplyFilter(\"\")"));
    }
}

TEST_F(AltaTest, ANewRecordIsStoredAndItsCodeHandedOver) {
    host.data->On(L"ValidaValue", [](Invocation& call) { call.Return(Variant::Null()); });
    EXPECT_FALSE(Open(Forget()
                          .Append(Complete())
                          .Append(Write(kPrecio, L"1.234,50"))
                          .Append(Write(kAlta, L"21/11/2026"))
                          .Append(At(kActivo))
                          .Key(VK_SPACE)
                          .Key(VK_RETURN),
                      2, 3));
    EXPECT_THAT(TakeLog(), ElementsAre(L"NuevoCodigo_Fam(\"12\")", L"ValidaValue(&TxtFields(4))",
                                       L"ValidaValue(&TxtFields(1))", L"ValidaValue(&TxtFields(2))",
                                       L"ValidaValue(&TxtFields(3))", L"ValidaValue(&TxtFields(5))",
                                       L"Insertar|12001|Corona|1.234,50|21/11/2026|sí||12|",
                                       L"AceptarSeleccion(&2, &ctl, \"12001\")", L"AplyFilter(\"\")"));
    // A code of the user's own stays, and Enter in the family asks for one before anything is checked.
    EXPECT_FALSE(Open(Forget()
                          .Append(Alta())
                          .Append(Write(kCodigo, L"7"))
                          .Append(Write(kNombre, L"Corona"))
                          .Append(Write(kNotas, L"13"))
                          .Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ::testing::Contains(L"Insertar|7|Corona|||no||13|"));
}

TEST_F(AltaTest, TheFirstWrongBoxIsNamedAndNothingTypedIsLost) {
    host.data->On(L"ValidaValue", [](Invocation& call) {
        const auto text = com::LateObject(call[0].ToObject().Get(), L"box").Call(L"Text").ToText();
        call.Return(Variant(text != L"malo"));
    });
    struct Case {
        int number;
        const wchar_t* text;
        const wchar_t* says;
    };
    const Case cases[] = {
        {kCodigo, L"", L"Falta «Código»"},
        {kNombre, L" ", L"Falta «Nombre»"},
        {kNotas, L"", L"Falta «Notas»"},
        {kNombre, L"malo", L"«Nombre»: «malo» no es un valor válido."},
        {kNombre, L"12345678901234567890123456789012345678901",
         L"«Nombre» admite 40 caracteres, y tiene 41."},
        {kPrecio, L"caro", L"«Precio»: «caro» no es un número."},
        {kAlta, L"31/02/2026", L"«Alta»: «31/02/2026» no es una fecha."},
    };
    for (const Case& each : cases) {
        EXPECT_FALSE(Open(Complete()
                              .Do([&] { SetWindowTextW(Box(each.number), each.text); })
                              .Append(At(kCantidad))
                              .Key(VK_RETURN)
                              .Box(each.says)
                              .Do([&] {
                                  EXPECT_EQ(GetFocus(), Box(each.number));
                                  EXPECT_EQ(TextOf(Box(each.number)), each.text);
                                  PostMessageW(Panel(), WM_CLOSE, 0, 0);
                              })
                              .Append(Question(IDYES))));
        EXPECT_THAT(TakeLog(), ::testing::Not(::testing::Contains(HasSubstr(L"Insertar"))));
    }
}

TEST_F(AltaTest, AHostThatFailsToStoreLeavesWhatWasTyped) {
    const auto works = [this](Invocation&) { host.log.emplace_back(L"Insertar"); };
    host.data->On(L"InsertarArticulo", [](Invocation&) { RaiseHostError(); });
    EXPECT_FALSE(Open(Complete().Key(VK_RETURN).Box(kHostErrorText).Do([&] {
        EXPECT_EQ(TextOf(Box(kNombre)), L"Corona");
        EXPECT_TRUE(IsShown(IDC_PICNEW));
        host.data->On(L"InsertarArticulo", works);
        host.log.clear();
        PostMessageW(Item(IDC_CMDGUARDAR), BM_CLICK, 0, 0);
    })));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"Insertar", L"AceptarSeleccion(&0, &ctl, \"12001\")", L"AplyFilter(\"\")"));
    // Once it is stored, a sink that fails must not have it stored again: the list stands on it.
    host.sink->On(L"AceptarSeleccion", [](Invocation&) {
        EXPECT_FALSE(IsWindowVisible(Panel()));
        RaiseHostError();
    });
    EXPECT_FALSE(Open(Complete()
                          .Append(Forget())
                          .Key(VK_RETURN)
                          .Box(kHostErrorText)
                          .Append(Left())
                          .Do([&] { host.sink->On(L"AceptarSeleccion", [](Invocation&) {}); })
                          .Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ElementsAre(L"Insertar", L"AceptarSeleccion(&0, &ctl, \"12001\")",
                                       L"AplyFilter(\"\")", L"Requery(\"selec\")", L"FindRecord(\"12001\")",
                                       L"AceptarSeleccion(&0, &ctl, \"f0c0\")", L"AplyFilter(\"\")"));
}

TEST_F(AltaTest, EscAsksBeforeItThrowsAwayWhatWasTyped) {
    const Script kept = Script().Do([] { EXPECT_EQ(TextOf(Box(kNombre)), L"Corona"); });
    EXPECT_FALSE(Open(Alta()
                          .Key(VK_ESCAPE)
                          .Append(Left())
                          .Append(Complete())
                          .Key(VK_ESCAPE)
                          .Append(Question(IDNO))
                          .Append(Back())
                          .Append(kept)
                          .Do([] { PostMessageW(Item(IDC_CMDDESCARTAR), BM_CLICK, 0, 0); })
                          .Append(Question(IDYES))
                          .Append(Back())
                          .Append(Left())
                          .Key(VK_ESCAPE)));
    EXPECT_FALSE(Panel());
}

TEST_F(AltaTest, LookupsFillTheBoxesAndTheFamilyTheCode) {
    host.set->Table().value = [](long record, short column) {
        return Variant(std::to_wstring(100 * record + column)); // codes are numbers in this table
    };
    const com::ComPtr<HostObject> classes = MakeClasses();
    const Component component(classes.Get());
    SetValue(kEnvironmentKey, L"Clases", component.Name());
    EXPECT_FALSE(Open(Alta()
                          .Key(VK_F4)
                          .Until("the families", [](HWND) { return !Item(IDC_PICNEW); })
                          .Key(VK_DOWN)
                          .Key(VK_RETURN)
                          .Until("the new record", [](HWND) { return Item(IDC_PICNEW) != nullptr; })
                          .Append(Write(kNombre, L"Corona"))
                          .Append(At(kGrupo)) // a list: twenty taxes
                          .Key(VK_DOWN)
                          .Key(VK_DOWN)
                          .Do([this] {
                              EXPECT_EQ(TextOf(Box(kNotas)), L"100");
                              EXPECT_EQ(TextOf(Box(kGrupo)), L"100 - 101");
                              host.className = L"articulos";
                          })
                          .Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ::testing::IsSupersetOf(
                               {L"NuevoCodigo_Fam(\"100\")", L"Insertar|100001|Corona|||no||100|100"}));
    host.set->Table().records = 101; // too many for a list: a box with a look-up of its own
    EXPECT_FALSE(Open(Alta()
                          .Append(At(kGrupo))
                          .Key(VK_DOWN)
                          .Do([] { EXPECT_EQ(SendMessageW(Box(kGrupo), CB_GETCOUNT, 0, 0), 0); })
                          .Key(VK_ESCAPE)
                          .Key(VK_ESCAPE)));
}

TEST_F(AltaTest, ALookupWritesTheCodeIntoTheBoxThatAsked) {
    host.set->Table().value = [](long record, short column) {
        return Variant(std::to_wstring(100 * record + column));
    };
    host.set->Table().records = 101; // too many for a list
    const com::ComPtr<HostObject> classes = MakeClasses();
    const Component component(classes.Get());
    SetValue(kEnvironmentKey, L"Clases", component.Name());
    const auto making = [this](Invocation& call) {
        // A host that lets the user act meanwhile: no second command may start.
        const HWND save = Item(IDC_CMDGUARDAR);
        SendMessageW(Dialog(), WM_COMMAND, IDC_CMDGUARDAR, reinterpret_cast<LPARAM>(save));
        host.className = call[0].ToText();
        call.Return(Variant(host.data.Get()));
    };
    classes->On(L"CrearClase", making);
    for (const wchar_t* className : {L"articulos", L"tipos_producto", L"clientes", L"ordenes", L"hordenes",
                                     L"fases", L"pruebas", L"rutas", L"empleados", L"clientes_direcciones"}) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(className)));
        host.className = L"prueba";
        host.set->Table().related = {{3, className}}; // box 4, but no family
        EXPECT_FALSE(Open(Forget()
                              .Key('N', VK_CONTROL)
                              .Until("the new record", [](HWND) { return GetFocus() == Box(1); })
                              .Type(L"7")
                              .Append(Write(4, L"37"))
                              .Key(VK_F4)
                              .Until("the list", [](HWND) { return !Item(IDC_PICNEW); })
                              .Key(VK_DOWN)
                              .Key(VK_RETURN)
                              .Until("the new record", [](HWND) { return Item(IDC_PICNEW) != nullptr; })
                              .Do([] {
                                  EXPECT_EQ(TextOf(Box(4)), L"100");
                                  EXPECT_EQ(TextOf(Box(1)), L"7");
                                  EXPECT_EQ(TextOf(Box(2)) + TextOf(Box(3)), L"");
                                  EXPECT_EQ(GetFocus(), Box(4));
                              })
                              .Key(VK_ESCAPE)
                              .Append(Question(IDYES))
                              .Append(Back())
                              .Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), ::testing::Not(::testing::Contains(HasSubstr(L"NuevoCodigo_Fam"))));
    }
}

TEST_F(AltaTest, DiscardingWinsOverAFamilyThatTheHostDoesNotKnow) {
    host.data->On(L"NuevoCodigo_Fam", [](Invocation&) { RaiseHostError(); });
    const auto mouse = [](UINT message) {
        return Script().Do(
            [message] { PostMessageW(Item(IDC_CMDDESCARTAR), message, MK_LBUTTON, MAKELPARAM(9, 9)); });
    };
    EXPECT_FALSE(Open(Forget()
                          .Append(Alta())
                          .Type(L"ZZ")
                          .Append(mouse(WM_LBUTTONDOWN))
                          .Append(mouse(WM_LBUTTONUP))
                          .Append(Question(IDYES))
                          .Append(Back())
                          .Append(Left())
                          .Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(AltaTest, TheListKeepsItsRoomBesideAnyNumberOfBoxes) {
    const auto quiet = [this](const wchar_t* name,
                              std::initializer_list<std::pair<const wchar_t*, Variant>> members) {
        auto object = com::Make<HostObject>(name, host.log);
        for (const auto& [member, value] : members) {
            object->On(
                member, [value](Invocation& call) { call.Return(value); }, true);
        }
        return object;
    };
    for (const short count : {short{8}, short{12}, short{22}}) {
        SCOPED_TRACE(count);
        const auto fields = quiet(L"Fields", {{L"Count", Variant(count)}});
        fields->On(
            L"Item",
            [&](Invocation& call) {
                const std::wstring name = L"Dirección de envío " + call[0].ToText();
                call.Return(
                    Variant(quiet(L"Field", {{L"Name", Variant(name)}, {L"Value", Variant()}}).Get()));
            },
            true);
        const auto set = quiet(L"Recordset", {{L"RecordCount", Variant(0L)},
                                              {L"AbsolutePosition", Variant(-1L)},
                                              {L"MoveFirst", Variant()},
                                              {L"MoveNext", Variant()},
                                              {L"BOF", Variant(true)},
                                              {L"EOF", Variant(true)},
                                              {L"Fields", Variant(fields.Get())}});
        host.data->On(L"Recordset", [&](Invocation& call) { call.Return(Variant(set.Get())); });
        const auto look = [&] {
            constexpr LONG kUsable = 60;
            const RECT form = PlaceOf(Panel());
            const RECT frame = PlaceOf(Item(IDC_PICNEW));
            const RECT rows = PlaceOf(Item(IDC_RECORD_PANEL));
            EXPECT_GE(WidthOf(Item(IDC_TXTFIELDS0)), kUsable);
            EXPECT_LE(PlaceOf(Item(IDC_DATAGRID)).right, frame.left);
            EXPECT_LE(PlaceOf(Item(IDC_CMDNUEVO)).right, frame.left);
            EXPECT_LE(frame.right, form.right);
            EXPECT_LE(PlaceOf(Item(IDC_CMDGUARDAR)).bottom, frame.bottom);
            for (short number = 1; number <= count; ++number) {
                SetFocus(Box(number)); // which scrolls to it
                const RECT place = PlaceOf(Box(number));
                EXPECT_TRUE(place.top >= rows.top && place.bottom <= rows.bottom && place.right <= rows.right)
                    << number;
                EXPECT_GE(WidthOf(Box(number)), kUsable);
            }
        };
        EXPECT_FALSE(Open(Script()
                              .Key('N', VK_CONTROL)
                              .Until("the new record", [](HWND) { return GetFocus() == Box(1); })
                              .Do(look)
                              .Key(VK_ESCAPE)
                              .Key(VK_ESCAPE)));
    }
}

class AltaClosedByHost : public AltaTest, public ::testing::WithParamInterface<const wchar_t*> {};

TEST_P(AltaClosedByHost, GoesAlongWithTheHostsForm) {
    const std::wstring member = GetParam();
    const bool sinks = member == L"AceptarSeleccion";
    (sinks ? host.sink : host.data)->On(member, [this](Invocation&) { DestroyWindow(owner); });
    Script script = Alta().Append(Write(kNombre, L"Corona"));
    if (member != L"NuevoCodigo_Fam") {
        script.Append(Write(kCodigo, L"7"));
    }
    EXPECT_FALSE(Open(script.Append(Write(kNotas, L"13")).Key(VK_RETURN)));
    EXPECT_EQ(Panel(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(InACall, AltaClosedByHost,
                         ::testing::Values(L"NuevoCodigo_Fam", L"InsertarArticulo", L"AceptarSeleccion",
                                           L"AplyFilter"));

} // namespace
} // namespace tamvelo::testing
