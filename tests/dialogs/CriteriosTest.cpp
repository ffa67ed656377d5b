// The criteria dialogs: what each asks of the host, in which order, and what its boxes let through.
#include <iterator>

#include "base/Text.h"
#include "frame/Resources.h"
#include "selection/Resources.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;
using Server = entry::IClsShowSerch;

// The fields of the host's record set.
enum Field { Codigo, Nombre, Precio, Alta, Activo, Cantidad, Notas, Grupo, Fields };

class Criterios : public DialogTest {
protected:
    using Operation = decltype(&Server::ShowSeleccionar);

    Criterios() {
        gdiSlack = 16; // of a window that is hidden before it goes
        other.className = L"clientes";
        classes->On(
            L"CrearClase", [this](Invocation& call) { call.Return(Variant(other.data.Get())); }, true);
        classes->On(
            L"ClaseRelacionada",
            [](Invocation& call) {
                constexpr std::wstring_view kRelated = L"Codigo Nombre Cantidad Grupo";
                const bool related = kRelated.find(call[1].ToText()) != kRelated.npos;
                call.Return(Variant(call[0].ToText() == L"prueba" && related ? L"clientes" : L""));
            },
            true);
        host.data->On(
            L"ValidaKey", [](Invocation& call) { call.Return(Variant(call[1].ToLong() != 'x')); }, true);
        host.data->On(L"ValidaDefinedSize", [](Invocation& call) { call.Return(Variant(8L)); });
        host.data->On(L"ValidaValue", [](Invocation& call) {
            call.Return(
                Variant(com::LateObject(call[0].ToObject().Get(), L"box").Call(L"Text").ToText() != L"mal"));
        });
    }
    void SetUp() override {
        component.emplace(classes.Get());
        DialogTest::SetUp();
        SetValue(kEnvironmentKey, L"Clases", component->Name());
        other.log.clear();
    }
    void WarmUp() override {
        SetValue(kEnvironmentKey, L"Clases", component->Name());
        host.sink->On(L"AceptarBuscar", [](Invocation&) { RaiseHostError(); });
        Show(&Server::ShowSelecLab, LookUp(Codigo)
                                        .Key(VK_F12)
                                        .Until("the columns", [](HWND) { return Item(IDC_LIST1) != nullptr; })
                                        .Key(VK_ESCAPE)
                                        .Append(InPanel())
                                        .Key(VK_RETURN)
                                        .Append(Focused(Codigo))
                                        .Key(VK_RETURN)
                                        .Box(kHostErrorText)
                                        .Key(VK_ESCAPE));
        host.sink->On(L"AceptarBuscar", [](Invocation&) {});
    }
    std::optional<com::Error> Show(Operation operation, Script script) {
        return Play(std::move(script),
                    [&] { return (server.Get()->*operation)(sink.GetAddressOf(), data.GetAddressOf()); });
    }
    static HWND Part(int field, int part) {
        return GetDlgItem(Item(IDC_CRITERIA), IDC_CRITERIA_FIELDS + 4 * field + part);
    }
    static HWND Box(int field) { return Part(field, 1); }
    static std::wstring Text(int field) { return TextOf(Box(field)); }
    static bool IsMarked(int field) {
        LOGFONTW font{};
        const LRESULT used = SendMessageW(Part(field, 0), WM_GETFONT, 0, 0);
        GetObjectW(reinterpret_cast<HFONT>(used), sizeof font, &font);
        return font.lfWeight == FW_BOLD;
    }
    static Script Focused(int field) {
        return Script().Until("the focus in field " + std::to_string(field),
                              [field](HWND) { return Dialog() && GetFocus() == Box(field); });
    }
    static Script Into(int field, const wchar_t* text = L"") {
        return Script().Do([field] { SetFocus(Box(field)); }).Append(Focused(field)).Type(text);
    }
    static Script InPanel() {
        return Script().Until("the panel", [](HWND) { return Item(IDC_DATAGRID) != nullptr; });
    }
    static Script LookUp(int field) { return Into(field).Key(VK_F4).Append(InPanel()); }
    static Script Says(std::wstring status) {
        return Script().Do([status = std::move(status)] { EXPECT_EQ(ItemText(IDC_STATUS), status); });
    }
    /// What the first applying asks: the filter of before, then as below.
    static Log AppliedFirst(const std::wstring& filter, int without = -1) {
        return With({L"GetFilter(\"Filter\")"}, Applied(filter, without));
    }
    /// What applying asks: one call for each box, then the filter.
    static Log Applied(const std::wstring& filter, int without = -1, const std::wstring& compared = L"0") {
        Log log;
        for (int i = 0; i < Fields; ++i) {
            const bool text = i == Nombre || i == Activo || i == Notas;
            if (i != without) {
                log.push_back(L"CreateFilter(&TxtFields(" + std::to_wstring(i) + L"), " +
                              (text ? L"0" : compared) + L")");
            }
        }
        log.insert(log.end(), {L"SetFilter(&\"" + filter + L"\", \"Filter\")", L"GetFilter(\"Filter\")",
                               L"AplyFilter(\"" + filter + L"\")", L"Requery(\"selec\")"});
        return log;
    }
    static Log With(Log log, const Log& more) {
        log.insert(log.end(), more.begin(), more.end());
        return log;
    }

    FakeHost other; // of the class that fields are related to
    com::ComPtr<HostObject> classes = com::Make<HostObject>(L"Clases", host.log);
    std::optional<Component> component;
};

TEST_F(Criterios, EachDialogLooksUpWithItsOwnSelectionsAndAppliesInOrder) {
    const struct {
        Operation operation;
        const wchar_t* caption;
        Log selections; // of Codigo, Nombre, Cantidad and Grupo
        bool options;
        int list = -1;
    } cases[] = {
        {&Server::ShowSeleccionar,
         L"Criterios de ventas",
         {L"seleccion", L"seleccionmixta", L"seleccion", L"seleccion"},
         false},
        {&Server::ShowSeleccionarComp,
         L"Criterios de compras",
         {L"seleccionmixta", L"seleccion", L"seleccion", L"seleccion"},
         false},
        {&Server::ShowSelecMinim,
         L"Criterios de mínimos",
         {L"seleccion", L"seleccion", L"selecc", L"seleccion"},
         true},
        {&Server::ShowSelecLab,
         L"Criterios de laboratorio",
         {L"seleccion", L"seleccionmixta", L"selecc", L"seleccion"},
         true,
         Activo},
        {&Server::ShowSeleccionarRecibo,
         L"Criterios de recibos",
         {L"seleccion", L"seleccion", L"seleccion", L"seleccion"},
         true},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(base::ToUtf8(row.caption));
        Script script = Focused(Codigo).Do([&] {
            EXPECT_EQ(TextOf(Dialog()), row.caption);
            EXPECT_EQ(IsShown(IDC_FRMCOMPARISON), row.options);
            EXPECT_EQ(Part(Precio, 3), nullptr); // no related class, no button
        });
        Log asked;
        for (const int field : {Codigo, Nombre, Cantidad, Grupo}) {
            script.Append(LookUp(field)).Key(VK_ESCAPE).Append(Focused(field));
            asked.push_back(L"Requery(\"" + row.selections[asked.size() / 3] + L"\")");
            asked.insert(asked.end(), {L"sClassName()", L"Requery(\"seleccion\")"});
        }
        EXPECT_FALSE(Show(row.operation, script.Append(Forget()).Key(VK_RETURN)));
        EXPECT_THAT(std::exchange(other.log, {}), ElementsAreArray(asked));
        EXPECT_THAT(TakeLog(), ElementsAreArray(With(AppliedFirst(L"", row.list), {L"AceptarBuscar()"})));
        EXPECT_FALSE(Show(row.operation, Focused(Codigo).Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()"));
    }
}

TEST_F(Criterios, BoxesAreCheckedAndBecomeOneFilter) {
    wchar_t day[32] = L"";
    const SYSTEMTIME date{2026, 2, 0, 3, 0, 0, 0, 0};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, day, ARRAYSIZE(day));
    const Script fill = Into(Nombre, L"axb")
                            .Key(VK_TAB) // to the button
                            .Do([] { EXPECT_EQ(Text(Nombre), L"ab"); })
                            .Append(Into(Alta, L"2026-2-3"))
                            .Key(VK_TAB)
                            .Append(Focused(Activo))
                            .Key(VK_HOME)
                            .Do([&] {
                                EXPECT_EQ(Text(Alta), day);
                                EXPECT_EQ(Text(Activo), L"-1 - Sí");
                                EXPECT_EQ(SendMessageW(Part(Activo, 2), BM_GETCHECK, 0, 0), BST_CHECKED);
                                SendMessageW(Item(IDC_OPTCOMPARISON1), BM_CLICK, 0, 0);
                            });
    EXPECT_FALSE(
        Show(&Server::ShowSelecLab, Script(fill)
                                        .Append(Says(L"20 Registros   ·   3 criterios: Nombre, Alta, Activo"))
                                        .Append(Forget())
                                        .Key(VK_RETURN)));
    Log asked = Applied(L"campo=ab And campo=" + std::wstring(day) + L" And campo=-1 - Sí", -1, L"1");
    asked[Activo] = L"CreateFilter(&CmbFields(4), 0)";
    asked.insert(asked.begin(), L"GetFilter(\"Filter\")");
    EXPECT_THAT(TakeLog(), ElementsAreArray(With(asked, {L"AceptarBuscar()"})));
    // Everything goes at once, and " 2 - Todos" is no condition; the tick is a short way to the entry.
    EXPECT_FALSE(Show(&Server::ShowSelecLab, Script(fill)
                                                 .Do([] { EXPECT_TRUE(IsMarked(Nombre)); })
                                                 .Key(VK_F7)
                                                 .Append(Focused(Codigo))
                                                 .Do([] {
                                                     EXPECT_EQ(Text(Alta) + Text(Activo), L" 2 - Todos");
                                                     EXPECT_FALSE(IsMarked(Nombre));
                                                     SendMessageW(Part(Activo, 2), BM_CLICK, 0, 0);
                                                     EXPECT_EQ(Text(Activo), L"-1 - Sí");
                                                     SendMessageW(Part(Activo, 2), BM_CLICK, 0, 0);
                                                 })
                                                 .Append(Says(L"10 Registros   ·   Sin criterios"))
                                                 .Key(VK_ESCAPE)));
}

TEST_F(Criterios, ARefusedValueHoldsTheUserButNotTheDialog) {
    const Script refused = Into(Nombre, L"mal").Key(VK_TAB).Append(Script().Until("the complaint", [](HWND) {
        return ItemText(IDC_STATUS).find(L"«mal»") == 0;
    }));
    for (const UINT key : {VK_RETURN, VK_F5}) { // nor is it applied, also when it has not been left
        EXPECT_FALSE(Show(&Server::ShowSeleccionar,
                          Script(refused)
                              .Append(Focused(Nombre))
                              .Append(Forget())
                              .Key(key)
                              .Do([this] {
                                  EXPECT_THAT(TakeLog(), ElementsAre(L"ValidaDefinedSize(&TxtFields(1))",
                                                                     L"ValidaValue(&TxtFields(1))"));
                              })
                              .Key(VK_ESCAPE)));
        EXPECT_THAT(TakeLog(), IsEmpty());
    }
}

TEST_F(Criterios, SearchingShowsTheCountAndIsUndoneByCancelling) {
    host.stored = L"antes";
    const Log before{L"SetFilter(&\"antes\", \"Filter\")", L"AplyFilter(\"antes\")", L"Requery(\"selec\")"};
    const Log searched = AppliedFirst(L"campo=a");
    const Script search = Into(Nombre, L"a").Key(VK_TAB).Append(Forget()).Key(VK_F5);
    const std::wstring rest = L"   ·   1 criterio: Nombre";
    EXPECT_FALSE(
        Show(&Server::ShowSeleccionar, Script(search)
                                           .Append(Says(L"10 Registros" + rest))
                                           .Key(VK_END, VK_CONTROL)
                                           .Do([this] { host.set->Table().records = 2; })
                                           .Do([] { PostMessageW(Item(IDC_CMDBUSCAR), BM_CLICK, 0, 0); })
                                           .Append(Says(L"1 Registro" + rest))
                                           .Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); })));
    EXPECT_THAT(TakeLog(),
                ElementsAreArray(With(With(With(searched, {L"MoveLast()"}), Applied(L"campo=a")), before)));
    EXPECT_FALSE(Show(&Server::ShowSeleccionar, Script(search).Append(Into(Nombre)).Key(VK_RETURN)));
    EXPECT_THAT(host.log.back(), L"AceptarBuscar()");
    // Accepting has replaced it too: after a sink that failed there is still a way back.
    host.stored = L"antes";
    host.sink->On(L"AceptarBuscar", [](Invocation&) { RaiseHostError(); });
    EXPECT_FALSE(Show(&Server::ShowSeleccionar, Into(Nombre, L"a")
                                                    .Key(VK_RETURN)
                                                    .Box(kHostErrorText)
                                                    .Append(Focused(Nombre))
                                                    .Do([] { EXPECT_EQ(Text(Nombre), L"a"); })
                                                    .Append(Forget())
                                                    .Key(VK_ESCAPE)));
    EXPECT_THAT(TakeLog(), ElementsAreArray(before));
}

TEST_F(Criterios, ALookUpAnswersThroughTheRelayThreeLevelsDown) {
    for (const wchar_t* className : {L"clientes", L"empleados"}) { // one value, and three
        other.className = className;
        EXPECT_FALSE(Show(&Server::ShowSelecMinim,
                          LookUp(Cantidad)
                              .Key(VK_F12)
                              .Until("the columns", [](HWND) { return Item(IDC_LIST1) != nullptr; })
                              .Key(VK_DOWN)
                              .Key(VK_SPACE)
                              .Key(VK_RETURN)
                              .Append(InPanel())
                              .Key(VK_DOWN)
                              .Key(VK_RETURN)
                              .Append(Focused(Cantidad))
                              .Do([] { EXPECT_EQ(Text(Cantidad), L"f1c0"); })
                              .Key(VK_ESCAPE)));
    }
    EXPECT_THAT(host.log, ::testing::Not(::testing::Contains(HasSubstr(L"AceptarSeleccion"))));
}

TEST_F(Criterios, TheHostMayDestroyItsWindowInsideALookUp) {
    const auto crear = [this](Invocation& call) { call.Return(Variant(other.data.Get())); };
    const auto nothing = [](Invocation&) {};
    const auto name = [](Invocation& call) { call.Return(Variant(L"clientes")); };
    const struct {
        HostObject& object;
        const wchar_t* member;
        HostObject::Behaviour usual;
    } cases[] = {
        {*classes.Get(), L"CrearClase", crear},
        {*other.data.Get(), L"Requery", nothing},
        {*other.data.Get(), L"sClassName", name},
    };
    for (const auto& row : cases) {
        for (const bool key : {true, false}) {
            SCOPED_TRACE(base::ToUtf8(row.member));
            const HWND before = owner;
            owner = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 300,
                                    nullptr, nullptr, nullptr, nullptr);
            SetActiveWindow(owner);
            row.object.On(row.member, [&](Invocation& call) {
                row.object.On(row.member, row.usual);
                DestroyWindow(owner);
                row.usual(call);
            });
            const Script press = Script().Do([] { PostMessageW(Part(Codigo, 3), BM_CLICK, 0, 0); });
            EXPECT_FALSE(
                Show(&Server::ShowSeleccionar, Focused(Codigo).Append(key ? Script().Key(VK_F4) : press)));
            EXPECT_EQ(Dialog(), nullptr);
            owner = before;
            SetActiveWindow(owner);
        }
    }
    EXPECT_THAT(host.log, ::testing::Not(::testing::Contains(L"AceptarBuscar()")));
}

TEST_F(Criterios, TheFocusScrollsTheRows) {
    const auto isInView = [](int field) {
        RECT panel{};
        RECT box{};
        GetWindowRect(Item(IDC_CRITERIA), &panel);
        GetWindowRect(Box(field), &box);
        return box.top >= panel.top && box.bottom <= panel.bottom;
    };
    Script script = Focused(Codigo).Do(
        [] { SetWindowPos(Item(IDC_CRITERIA), nullptr, 0, 0, 300, 90, SWP_NOMOVE | SWP_NOZORDER); });
    for (const int field : {Grupo, Codigo, Notas}) {
        script.Append(Into(field)).Do([=] { EXPECT_TRUE(isInView(field)) << field; });
    }
    const auto wheel = [] { SendMessageW(Item(IDC_CRITERIA), WM_MOUSEWHEEL, MAKEWPARAM(0, 1200), 0); };
    script.Do([=] { EXPECT_FALSE(isInView(Codigo)); }).Do(wheel).Do([=] { EXPECT_TRUE(isInView(Codigo)); });
    EXPECT_FALSE(Show(&Server::ShowSeleccionarRecibo, script.Key(VK_ESCAPE)));
}

TEST_F(Criterios, AFailingMemberIsReportedAndTheDialogStays) {
    const struct {
        const wchar_t* member;
        Script way;
        bool stored = false; // the filter, by then
    } cases[] = {
        {L"ValidaKey", Script().Type(L"a")},
        {L"ValidaDefinedSize", Script().Key(VK_TAB)},
        {L"ValidaValue", Script().Key(VK_TAB)},
        {L"CreateFilter", Script().Key(VK_F5)},
        {L"SetFilter", Script().Key(VK_RETURN)},
        {L"GetFilter", Script().Key(VK_F5)},
        {L"AplyFilter", Script().Key(VK_RETURN), true},
        {L"Requery", Script().Key(VK_RETURN), true},
        {L"MoveFirst", Script().Do([] { ClickTool(L"Primer registro"); })},
        {L"AceptarBuscar", Script().Key(VK_RETURN)},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(base::ToUtf8(row.member));
        HostObject& object =
            *(row.member == std::wstring_view(L"AceptarBuscar") ? host.sink : host.data).Get();
        object.On(row.member, [](Invocation&) { RaiseHostError(); });
        Script fails = Focused(Codigo)
                           .Append(row.way)
                           .Box(kHostErrorText)
                           .Until("the dialog", [](HWND top) { return top == Dialog(); })
                           .Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); });
        if (row.stored) {
            fails.Box(kHostErrorText); // nor does it take its filter of before
        }
        EXPECT_FALSE(Show(&Server::ShowSelecLab, fails));
        // The host closes the form that the dialog belongs to while it answers.
        object.On(row.member, [this](Invocation&) { DestroyWindow(owner); });
        const HWND before = owner;
        owner = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 300, nullptr,
                                nullptr, nullptr, nullptr);
        SetActiveWindow(owner);
        EXPECT_FALSE(Show(&Server::ShowSelecLab, Focused(Codigo).Append(row.way)));
        EXPECT_EQ(Dialog(), nullptr);
        owner = before;
        SetActiveWindow(owner);
        object.On(row.member, [](Invocation& call) { call.Return(Variant(L"1")); });
    }
    // Without look-ups, and without fields, there is still a dialog.
    classes->On(L"ClaseRelacionada", [](Invocation&) { RaiseHostError(); });
    EXPECT_FALSE(
        Show(&Server::ShowSelecLab, Script().Box(kHostErrorText).Append(Focused(Codigo)).Key(VK_ESCAPE)));
    host.set->Table().open = false;
    const Log none{L"GetFilter(\"Filter\")", L"SetFilter(&\"\", \"Filter\")", L"GetFilter(\"Filter\")",
                   L"AplyFilter(\"1\")",     L"Requery(\"selec\")",           L"AceptarBuscar()"};
    EXPECT_FALSE(
        Show(&Server::ShowSelecLab,
             Script().Until("the dialog", [](HWND) { return Dialog() != nullptr; }).Append(Forget()).Do([] {
                 ClickTool(L"Aceptar");
             })));
    EXPECT_THAT(TakeLog(), ElementsAreArray(none));
    host.data->Without(L"sClassName");
    EXPECT_EQ(Show(&Server::ShowSelecLab, Script())->number, DISP_E_UNKNOWNNAME);
}

} // namespace
} // namespace tamvelo::testing
