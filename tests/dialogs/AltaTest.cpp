// The selection panel with a new record: what it hands over, and that nothing typed is lost or stored twice.
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

// The boxes of the host's fields as they stand: Notas is the family, Grupo refers to the taxes.
constexpr int Field(int place) { return IDC_RECORD_BOXES + place * 4 + 1; }
constexpr int kNotas = Field(0), kCodigo = Field(1), kNombre = Field(2), kPrecio = Field(3), kAlta = Field(4),
              kActivo = Field(5), kCantidad = Field(6), kGrupo = Field(7);

class AltaTest : public PanelTest {
protected:
    AltaTest() {
        host.set->Table().related = {{6, L"familias"}, {7, L"impuestos"}};
        host.data->On(L"NuevoCodigo_Fam",
                      [](Invocation& call) { call.Return(Variant(call[0].ToText() + L"001")); });
        host.data->Accepts({L"InsertarArticulo"});
    }
    void Open(const Script& script, short column = 0, short indx = 0) {
        Show({L"ShowSelecAdd", column, indx}, script);
    }
    static Script Alta(int first = kNotas) {
        return {L"^N", Until("the new record",
                             [=](HWND) { return IsShown(IDC_PICNEW) && GetFocus() == Item(first); })};
    }
    /// A family, the code that it proposes, and a name.
    static Script Complete() {
        const Script onward = Until("the lookup's button", [](HWND) { return GetFocus() != Item(kNotas); });
        return {Alta(), L"'12 Tab", onward, Into(kNombre, L"Corona"), Says(kCodigo, L"12001")};
    }
    static Script Left() {
        return {Back(), Focused(IDC_DATAGRID), Says(kNombre, L""), Looks({IDC_PICNEW, kNombre}, L"--")};
    }
};

TEST_F(AltaTest, TheClassAndIndxDecideWhatARecordOfTheListSends) {
    const std::tuple<const wchar_t*, short, const wchar_t*> cases[] = {
        {L"HORDENES", 3, LR"(AceptarSeleccionParam(&1, &ctl, "Artículo 1", "1", ")"},
        {L"clientes", 3, L"AceptarSeleccion(&1, &ctl, #2000-01-01#)"},
        {L"clientes", 6, L"AceptarSeleccion(&1, &ctl, \"\")"}, // Null
    };
    host.text = L"A-1";
    for (const auto& [className, indx, answer] : cases) {
        host.className = className;
        Open(L"Insert Enter", 1, indx); // Insert is the search, not a new record
        EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")",
                                           L"FindRecord(\"A-1\", 1)", StartsWith(answer), kClear));
    }
}

TEST_F(AltaTest, ANewRecordIsStoredAndItsCodeHandedOver) {
    host.data->Returns(L"ValidaValue", Variant::Null());
    Expect(
        {L"ShowSelecAdd", 2, 3},
        {Complete(), Into(kPrecio, L"1.234,50"), Into(kAlta, L" 21/11/2026 "), Into(kActivo), L"Space Enter"},
        {L"NuevoCodigo_Fam(\"12\")", L"ValidaValue(&TxtFields(4))", L"ValidaValue(&TxtFields(1))",
         L"ValidaValue(&TxtFields(2))", L"ValidaValue(&TxtFields(3))", L"ValidaValue(&TxtFields(5))",
         LR"(InsertarArticulo({"12001", "Corona", "1.234,50", "21/11/2026", True, Empty, "12", Empty}))",
         L"AceptarSeleccion(&2, &ctl, \"12001\")", kClear});
    // A code of the user's own stays, and Enter in the family asks for one before anything is checked.
    Open({Forget(), Alta(), Into(kCodigo, L"7"), Into(kNombre, L"Corona"), Into(kNotas, L"13"), L"Enter"});
    EXPECT_THAT(TakeLog(),
                Contains(LR"(InsertarArticulo({"7", "Corona", Empty, Empty, False, Empty, "13", Empty}))"));
}

TEST_F(AltaTest, TheFirstWrongBoxIsNamedAndNothingTypedIsLost) {
    host.data->On(L"ValidaValue", [](Invocation& call) {
        com::LateObject box(call[0].ToObject().Get(), L"box");
        call.Return(
            Variant(box.Call(L"Text").ToText() != L"malo" && !box.Call(L"DataField").ToText().empty()));
    });
    const std::wstring longest(40, L'x');
    const std::tuple<int, std::wstring, const wchar_t*> cases[] = {
        {kCodigo, L"", L"Falta «Código»"},
        {kNombre, L" ", L"Falta «Nombre»"},
        {kNotas, L"", L"Falta «Notas»"},
        {kNombre, L"malo", L"«Nombre»: «malo» no es un valor válido."},
        {kNombre, longest + L"x", L"«Nombre» admite 40 caracteres, y tiene 41."},
        {kPrecio, L"caro", L"«Precio»: «caro» no es un número."},
        {kCantidad, L"tres", L"«Cantidad»: «tres» no es un número."},
        {kAlta, L"31/02/2026", L"«Alta»: «31/02/2026» no es una fecha."},
    };
    const std::map<int, const wchar_t*> right{{kCodigo, L"12001"}, {kNombre, L"Corona"},
                                              {kNotas, L"12"},     {kPrecio, L"1"},
                                              {kCantidad, L"2"},   {kAlta, L"3 enero 2026"}};
    Script script{Complete(), Mentions(kNombre - 1, L" *"), Set(kPrecio, right.at(kPrecio)),
                  Set(kCantidad, right.at(kCantidad)), Set(kAlta, right.at(kAlta))};
    for (const auto& [number, text, says] : cases) {
        script.Append({Set(number, text), Into(kGrupo), L"Enter", Box(says), Focused(number),
                       Says(number, text), Set(number, right.at(number))});
    }
    Open({script, Set(kNombre, L""), Into(kNombre, (longest + L"x")), Says(kNombre, longest), Close(),
          Question(IDNO), Back(), L"Enter"});
    EXPECT_THAT(TakeLog(), Contains(L"InsertarArticulo({\"12001\", \"" + longest +
                                    LR"(", "1", "3 enero 2026", False, "2", "12", Empty}))"));
}

TEST_F(AltaTest, WhatIsStoredIsNotStoredAgainWhenTheSinkFails) {
    host.sink->On(L"AceptarSeleccion", [](Invocation&) {
        EXPECT_FALSE(IsWindowVisible(Dialog()));
        RaiseHostError();
    });
    Expect({L"ShowSelecAdd"},
           {Complete(), Forget(), L"Enter", Box(kHostErrorText), Left(),
            Do([&] { host.sink->Accepts({L"AceptarSeleccion"}); }), L"Enter"},
           {LR"(InsertarArticulo({"12001", "Corona", Empty, Empty, False, Empty, "12", Empty}))",
            L"AceptarSeleccion(&0, &ctl, \"12001\")", kClear, L"Requery(\"selec\")", L"FindRecord(\"12001\")",
            L"AceptarSeleccion(&0, &ctl, 1L)", kClear});
}

TEST_F(AltaTest, EscAsksBeforeItThrowsAwayWhatWasTyped) {
    // "No" is what Enter answers. One that was thrown away leaves nothing to the next; a tick counts too.
    const Script away{Question(IDYES), Left()};
    Open({{Alta(), L"Esc", Left(), Complete(), L"Esc", Question(0), Back(), Says(kNombre, L"Corona")},
          {Click(IDC_CMDDESCARTAR), away, Complete(), L"Esc", away, Alta(), Into(kActivo), L"Space Esc", away,
           L"Esc"}});
    EXPECT_FALSE(Dialog());
}

TEST_F(AltaTest, LookupsFillTheBoxThatAskedAndTheFamilyTheCode) {
    Offer({L"Clases"});
    host.set->Table().records = 100;
    host.set->Table().value = [](long record, short column) { // codes are numbers
        return Variant(std::to_wstring(100 * record + column));
    };
    const Script elsewhere = Until("the list", [](HWND) { return !Item(IDC_PICNEW); });
    const Script first{elsewhere, L"Down Enter", Showing(IDC_PICNEW)};
    Open({Alta(), L"F4", first, Into(kNombre, L"Corona"), Into(kGrupo), // a list: a hundred taxes
          L"Down Down", Says(kNotas, L"100"), Says(kGrupo, L"100 - 101"), L"Enter"});
    const std::wstring stored =
        LR"(InsertarArticulo({"100001", "Corona", Empty, Empty, False, Empty, "100", "100"}))";
    EXPECT_THAT(TakeLog(), IsSupersetOf({L"CrearClase(\"impuestos\")", L"CrearClase(\"familias\")",
                                         L"NuevoCodigo_Fam(\"100\")", stored.c_str()}));
    host.set->Table().records = 101;                                               // too many for a list
    for (const std::wstring className : {L"articulos", L"hordenes", L"familia"}) { // each answers its own way
        host.className = L"prueba";
        host.set->Table().related = {{3, className}, {4, className}}; // box 4, but no family; and a tick
        Open({Forget(), Alta(Field(0)), L"'7", Into(Field(3), L"37"), Click(Field(3) + 2), first,
              Says(Field(3), L"100"), Says(Field(0), L"7"), Says(Field(1), L""), Says(Field(2), L""),
              Focused(Field(3)), Click(Field(4)), L"Esc", Question(IDYES), Back(), L"Esc"});
        EXPECT_THAT(host.log, Contains(L"CrearClase(\"" + className + L"\")").Times(3)); // counted, shown
        EXPECT_THAT(host.log, Contains(HasSubstr(L"NuevoCodigo_Fam")).Times(0));
    }
}

TEST_F(AltaTest, AFormThatIsClosedByItsLookupsFocusIsLeftAlone) {
    Offer({L"Clases", L"Foco"});
    bool asks = false;
    environment->On(L"Recibir", [&](Invocation&) {
        if (std::exchange(asks, false)) {
            DestroyWindow(owner);
        }
    });
    Open({Alta(), Into(kNombre, L"Corona"), Do([&] { asks = true; }), Click(kNotas + 2)});
    EXPECT_FALSE(Dialog());
    EXPECT_THAT(host.log, Contains(HasSubstr(L"familias")).Times(0));
}

TEST_F(AltaTest, DiscardingWinsOverAFamilyThatTheHostDoesNotKnow) {
    host.data->Raises(L"NuevoCodigo_Fam");
    const auto mouse = [](UINT message) {
        return Do([message] { PostMessageW(Item(IDC_CMDDESCARTAR), message, MK_LBUTTON, MAKELPARAM(9, 9)); });
    };
    Open({Forget(), Alta(), L"'ZZ", mouse(WM_LBUTTONDOWN), mouse(WM_LBUTTONUP), Question(IDYES), Left(),
          L"Esc"});
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(AltaTest, TheListKeepsItsRoomBesideAllTheBoxesThereMayBe) {
    constexpr short kBoxes = 22;
    RecordTable& table = host.set->Table();
    table.columns = kBoxes + 3;
    table.options.fieldTypes = false;
    table.related.clear();
    for (short column = 0; column < table.columns; ++column) {
        table.names[column] = L"Dirección de envío de los artículos";
    }
    const auto look = [&] {
        const auto place = [](int control) { return PlaceOf(Item(control)); };
        const auto usable = [&](int control) { return place(control).right - place(control).left >= 60; };
        const RECT frame = place(IDC_PICNEW);
        const RECT rows = place(IDC_RECORD_PANEL);
        EXPECT_TRUE(usable(IDC_TXTFIELDS0));
        EXPECT_LE(place(IDC_DATAGRID).right, frame.left);
        EXPECT_LE(place(IDC_CMDNUEVO).right, frame.left);
        EXPECT_LE(frame.right, PlaceOf(Dialog()).right);
        EXPECT_LE(place(IDC_CMDGUARDAR).bottom, frame.bottom);
        for (short number = 0; number < kBoxes; ++number) {
            SetFocus(Item(Field(number))); // which scrolls to it
            const RECT box = place(Field(number));
            EXPECT_TRUE(box.top >= rows.top && box.bottom <= rows.bottom && box.right <= rows.right)
                << number;
            EXPECT_TRUE(usable(Field(number)));
        }
        EXPECT_FALSE(Item(Field(kBoxes)));
    };
    Open({Alta(Field(0)), Do(look), L"Esc Esc"});
}

} // namespace
} // namespace tamvelo::testing
