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
constexpr int Entry(int number) { return IDC_RECORD_BOXES + number * 3 + 1; }

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
    static Script Alta() {
        return Script().Key('N', VK_CONTROL).Until("the new record", [](HWND) {
            return IsShown(IDC_PICNEW) && GetFocus() == Item(Entry(kNotas));
        });
    }
    static Script At(int number) {
        return Script().Do([number] { SetFocus(Item(Entry(number))); });
    }
    static Script Write(int number, const wchar_t* text) { return At(number).Type(text); }
    /// A family, the code that it proposes, and a name.
    static Script Complete() {
        return Alta()
            .Type(L"12")
            .Key(VK_TAB)
            .Until("the lookup's button, and on", [](HWND) { return GetFocus() != Item(Entry(kNotas)); })
            .Append(Write(kNombre, L"Corona"))
            .Do([] { EXPECT_EQ(ItemText(Entry(kCodigo)), L"12001"); });
    }
    static Script Left() {
        return Script().Do([] {
            EXPECT_FALSE(IsShown(IDC_PICNEW));
            EXPECT_FALSE(IsShown(Entry(kNombre)));
            EXPECT_EQ(ItemText(Entry(kNombre)), L"");
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
                              .Do([&] { SetWindowTextW(Item(Entry(each.number)), each.text); })
                              .Append(At(kCantidad))
                              .Key(VK_RETURN)
                              .Box(each.says)
                              .Do([&] {
                                  EXPECT_EQ(GetFocus(), Item(Entry(each.number)));
                                  EXPECT_EQ(ItemText(Entry(each.number)), each.text);
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
        EXPECT_EQ(ItemText(Entry(kNombre)), L"Corona");
        EXPECT_TRUE(IsShown(IDC_PICNEW));
        host.data->On(L"InsertarArticulo", works);
        host.log.clear();
        PostMessageW(Item(IDC_CMDGUARDAR), BM_CLICK, 0, 0);
    })));
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"Insertar", L"AceptarSeleccion(&0, &ctl, \"12001\")", L"AplyFilter(\"\")"));
    // Once it is stored, a sink that fails must not have it stored again: the list stands on it.
    host.sink->On(L"AceptarSeleccion", [](Invocation&) { RaiseHostError(); });
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
    const Script kept = Script().Do([] { EXPECT_EQ(ItemText(Entry(kNombre)), L"Corona"); });
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
    const com::ComPtr<HostObject> classes = com::Make<HostObject>(L"Clases", host.log);
    classes->On(L"CrearClase", [this](Invocation& call) {
        host.className = call[0].ToText();
        call.Return(Variant(host.data.Get()));
    });
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
                              EXPECT_EQ(ItemText(Entry(kNotas)), L"100");
                              EXPECT_EQ(ItemText(Entry(kGrupo)), L"100 - 101");
                              host.className = L"articulos";
                          })
                          .Key(VK_RETURN)));
    EXPECT_THAT(TakeLog(), ::testing::IsSupersetOf(
                               {L"NuevoCodigo_Fam(\"100\")", L"Insertar|100001|Corona|||no||100|100"}));
    host.set->Table().records = 101; // too many for a list: a box with a look-up of its own
    EXPECT_FALSE(Open(Alta()
                          .Append(At(kGrupo))
                          .Key(VK_DOWN)
                          .Do([] { EXPECT_EQ(SendMessageW(Item(Entry(kGrupo)), CB_GETCOUNT, 0, 0), 0); })
                          .Key(VK_ESCAPE)
                          .Key(VK_ESCAPE)));
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
