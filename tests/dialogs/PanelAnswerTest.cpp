// The selection panel and its host: what it asks when it opens, what it answers, and how both live meanwhile;
// the record that is highlighted is the record that is delivered, whatever the host's record set can do.
#include "tests/dialogs/PanelFixture.h"
#include "tests/support/RecordKinds.h"
#include "tests/support/ShownGrid.h"

namespace tamvelo::testing {
namespace {

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190);

TEST_F(PanelTest, OpeningAsksForTheSelectionAndLooksForTheControlsText) {
    host.text = L"ñ";
    Show({L"ShowSelec", 2}, L"Esc");
    Show({L"ShowSelecVerif", 3, 0, true, short{1}}, L"Esc");
    host.text.clear();
    Show({L"ShowSelecDirecta", 1}, L"Esc");
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")", L"FindRecord(\"ñ\", 2)",
                                       L"sClassName()", L"Requery(\"seleccion_stock\")", L"sClassName()",
                                       L"Requery(\"seleccion\")"));
}

TEST_F(PanelTest, EachClassWantsItsOwnAnswer) {
    const std::tuple<const wchar_t*, short, short, Script, Log> cases[] = {
        {L"fases", 4, 3, L"Enter", {LR"(AceptarSeleccionParam(&4, &ctl, "Sí", "1", "Artículo 1"))", kClear}},
        {L"Ordenes", 5, 3, L"Enter", {LR"(AceptarSeleccionParam(0, &ctl, "1", "1", "Artículo 1"))", kClear}},
        {L"tipos_producto", 9, 3, L"Enter", {L"AceptarSeleccion(&0, &ctl, \"1/1/2000\")", kClear}},
        {L"otra", 2, 0, DoubleClick(), {L"AceptarSeleccion(&2, &ctl, \"1,23\")", kClear}},
        // The host wants its code for these.
        {L"Ordenes", 5, 3, DoubleClick(), {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        {L"Articulos_Lotes", 0, 0, DoubleClick(), {L"AceptarSeleccion(2000, &ctl, 1L)"}},
        // Only a column greater than the count becomes 0; one equal to it is an error, and the panel stays.
        {L"prueba", MemoryRecordSet::kColumns, 0, {L"Enter", Box(L"Error"), L"Esc"}, {}},
    };
    for (const auto& [className, column, indx, answer, asked] : cases) {
        host.className = className;
        Expect({L"ShowSelec", column, indx}, answer, asked);
    }
    host.data->Raises(L"AplyFilter"); // the record is delivered all the same
    Expect({L"Enter", Box(kHostErrorText)}, kAccept);
    host.data->Accepts({L"AplyFilter"});
    ctl.Reset(); // Nothing is a control without text
    Show(L"Enter");
    EXPECT_THAT(TakeLog(), ElementsAre(L"sClassName()", L"Requery(\"seleccion\")",
                                       L"AceptarSeleccion(&0, &Nothing, \"1\")", kClear));
    EXPECT_EQ(ctl.Get(), nullptr);
}

TEST_F(PanelTest, VerificationHasButtonsInPlaceOfTheSearchStrip) {
    const std::tuple<Opening, std::wstring, int, Log> cases[] = {
        {{L"ShowSelec"}, L"----x", IDCANCEL, {}},
        {{L"ShowSelecVerif", 8}, L"-xxx-", IDC_CMD3, {L"AceptarSeleccion(&8, &ctl, False)"}},
        {{L"ShowSelecVerif"}, L"-xxx-", IDC_CMD2, {}},
        {{L"ShowSelecControlVerif", 9}, L"x-ox-", IDC_CMD3, {L"AceptarSeleccion(&0, &ctl, False)"}},
        {{L"ShowSelecControlVerif"}, L"x-ox-", IDC_CMD0, {}},
    };
    for (const auto& [how, shown, button, asked] : cases) {
        const Script look{Looks({IDC_CMD0, IDC_CMD1, IDC_CMD2, IDC_CMD3, IDC_TXTFIELDS0}, shown),
                          Do([searches = shown.back() == L'x'] {
                              const auto tool = static_cast<WPARAM>(ToolCommand(L"Buscar"));
                              EXPECT_EQ(SendMessageW(Bar(), TB_ISBUTTONENABLED, tool, 0) != 0, searches);
                          })};
        Expect(how, {look, L"Insert", look, button == IDCANCEL ? L"Esc" : Click(button)}, asked);
    }
}

// By then it is hidden and the host's windows take input; the host may open the same panel again, and put
// another control in place of its own. If the sink fails the panel is back as it was.
TEST_F(PanelTest, IsHiddenWhileTheHostTakesTheAnswer) {
    const auto other = com::Make<HostObject>(L"otro", host.log);
    const std::tuple<const wchar_t*, const wchar_t*, Script, int> cases[] = {
        {L"ShowSelec", L"prueba", L"Enter", IDC_DATAGRID},
        {L"ShowSelec", L"ordenes", DoubleClick(), IDC_DATAGRID},
        {L"ShowSelecVerif", L"prueba", {Into(IDC_CMD1), L"Space"}, IDC_CMD1},
        {L"ShowSelecTrueFalse", L"prueba", L"Enter", IDC_DATAGRID},
        {L"ShowSelecAdd", L"prueba", L"Enter", IDC_DATAGRID},
        {L"ShowRegistros", L"prueba", L"F4", IDC_DATAGRID},
    };
    for (const auto& [operation, className, answer, focus] : cases) {
        host.className = className;
        int answers = 0;
        host.sink->On(L"AceptarSeleccion", [&, op = operation](Invocation& call) {
            EXPECT_FALSE(IsWindowVisible(Dialog()));
            EXPECT_TRUE(IsWindowEnabled(owner));
            if (answers++ == 0) {
                RaiseHostError();
            }
            com::LateObject(server.Get(), L"servidor").Call(op, {sink.Get(), data.Get(), host.ctl.Get()});
            call.WriteBack(1, Variant(static_cast<IDispatch*>(other.Get())));
        });
        ctl = com::ComPtr<IDispatch>(host.ctl.Get());
        Show({operation}, {answer, Box(kHostErrorText), Focused(focus), Do([&] {
                               EXPECT_TRUE(IsWindowVisible(Dialog()));
                               EXPECT_FALSE(IsWindowEnabled(owner));
                           }),
                           answer, L"Esc"});
        EXPECT_EQ(answers, 2);
        EXPECT_EQ(ctl.Get(), other.Get());
        EXPECT_EQ(Dialog(), nullptr);
    }
    ctl.Reset();
    EXPECT_EQ(other->References(), 1);
}

TEST_F(PanelTest, InsideACallNeitherAnotherShowNorAnotherCommandStarts) {
    const auto again = [&](Invocation&) {
        EXPECT_EQ(server->ShowSelec(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(), nullptr,
                                    nullptr, nullptr, nullptr),
                  kAlreadyShown);
        if (Dialog()) {
            ClickTool(L"Último registro");
        }
        for (MSG message; PeekMessageW(&message, Dialog(), WM_COMMAND, WM_COMMAND, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
    };
    host.data->On(L"MoveFirst", again);
    Expect(L"Home Esc", {L"MoveFirst()"});
    // While it is being opened just the same: the half-made panel has taken the first caller's objects.
    host.data->On(L"Requery", again);
    Expect(L"Enter", kAccept);
}

TEST_F(PanelTest, TheHostsWindowsWaitForAModalOneAndItsLoopServesAnother) {
    Show({Do([this] {
              EXPECT_FALSE(IsWindowEnabled(owner));
              EXPECT_FALSE(library.MayUnload());
          }),
          L"Esc"});
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), ownerBox);
    Show(Do([] { PostQuitMessage(7); })); // the end of the program is passed on
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
    const Log moved{L"MoveFirst()"};
    for (const auto& [last, asked] : {std::pair{VK_RETURN, moved + kAccept}, {VK_ESCAPE, moved}}) {
        Show({L"ShowSelecDirecta", 0, 0, false, short{0}}, {});
        EXPECT_TRUE(Dialog() && IsWindowEnabled(owner));
        EXPECT_FALSE(library.MayUnload());
        EXPECT_EQ(Try({}, {})->number, kAlreadyShown);
        const Player player({Forget(), InGrid(), L"Home", Key(last)}, [this] { return Notes(); });
        TurnLoop();
        EXPECT_THAT(TakeLog(), ElementsAreArray(asked));
    }
}

constexpr long kRecords = 10; // all on screen

/// The forms with a grid, and what accepts there.
constexpr std::pair<const wchar_t*, const wchar_t*> kForms[] = {{L"ShowSelec", L"Enter"},
                                                                {L"ShowSelecAdd", L"Enter"},
                                                                {L"ShowSelecTrueFalse", L"Enter"},
                                                                {L"ShowRegistros", L"F4"}};

class ShownTest : public PanelTest {
protected:
    ShownTest() : PanelTest(kRecords) {}

    void Use(std::string_view kind) {
        host.set = com::Make<MemoryRecordSet>(OptionsOf(kind, kRecords));
        host.set->Table().names = {{short{4}, L"Planificar"}};
        Fill(L"fila ");
        host.data->On(L"Recordset", [this, kind](Invocation& call) {
            call.Return(Variant(Reach(kind, host.set.Get()).Get()));
        });
        host.stored.clear();
    }
    /// Codes that begin so; the other columns keep values of their own types.
    void Fill(std::wstring code) {
        host.set->Table().value = [code = std::move(code)](long record, short column) {
            return column == 0 ? Variant(code + std::to_wstring(record))
                               : RecordTable::TypedValue(record, column);
        };
    }
    /// What the host's rows say now, in its order.
    std::vector<std::wstring> HostRows() const {
        const long place = host.set->Position();
        std::vector<std::wstring> rows;
        for (long row = 0; row < host.set->Count(); ++row) {
            host.set->SetPosition(row);
            rows.push_back(host.set->ValueAt(0).ToText());
        }
        host.set->SetPosition(place);
        return rows;
    }
    /// The code in a row, wherever its column stands.
    static std::wstring Code(const std::wstring& row) {
        const size_t at = row.find(L"fila ");
        return at == row.npos ? row : row.substr(at, row.find(L';', at) - at);
    }
    Script Rows(const char* when) {
        return Do([this, when] {
            ShownGrid shown = ReadGrid(Grid());
            for (std::wstring& row : shown.rows) {
                row = Code(row);
            }
            EXPECT_THAT(shown.rows, ElementsAreArray(HostRows())) << when;
            EXPECT_EQ(shown.selected, host.set->Position()) << when;
        });
    }
    /// Does that behind the form's back, then the command, and expects that nothing comes of it but a note.
    Script Refused(const Script& command, const std::function<void()>& change) {
        return {Forget(), Do(change), command,
                Back(),   Asked({}),  Mentions(IDC_STATUS, L"se ha leído de nuevo")};
    }
};

TEST_F(ShownTest, WhatIsHighlightedIsDeliveredByEveryFormFromEveryKindOfRecordSet) {
    host.data->Returns(L"GetConnection", Variant(), true);
    const auto place = [this](const wchar_t* sort, long position) {
        host.set->SetSort(sort);
        host.set->SetPosition(position);
    };
    for (const auto& [operation, accept] : kForms) {
        for (const std::string_view kind : kRecordSetKinds) {
            SCOPED_TRACE(base::ToUtf8(operation) + ", " + std::string(kind));
            Use(kind);
            std::wstring highlighted;
            // A sink that fails, after it has turned everything round.
            host.sink->On(L"AceptarSeleccion", [&](Invocation&) {
                host.sink->Accepts({L"AceptarSeleccion"});
                place(L"x DESC", 1);
                RaiseHostError();
            });
            const auto filtered = [&] {
                host.set->SetFilter(L"pares");
                place(L"", 1);
            };
            Show({operation},
                 {{Rows("opened"), L"Down Down", Rows("moved"), L"+F9", Rows("sorted")},
                  {L"Home Down", Rows("moved where sorted"), L"F9", Rows("sorted back")},
                  {Refused(accept, [&] { host.set->SetPosition(5); }), Rows("moved by the host")},
                  {Refused(accept, [&] { place(L"x DESC", 0); }), Rows("sorted by the host")},
                  {Refused(accept, [this] { Fill(L"fila otra "); }), Rows("changed by the host")},
                  {Refused(accept, filtered), Rows("filtered by the host")},
                  {L"F7", InBox(), L"'x Enter", Rows("filtered"), InGrid(), L"Down",
                   Rows("moved where filtered")},
                  {Do([this] { Fill(L"fila nueva "); }), Tool(L"Último registro"), Rows("last"), L"Up"},
                  {accept, Box(kHostErrorText), Rows("after the failure"), Forget(),
                   Do([&] { highlighted = Code(ReadGrid(Grid()).Selected()); }), accept}});
            EXPECT_TRUE(highlighted.starts_with(L"fila nueva "));
            EXPECT_EQ(TakeLog().at(0), L"AceptarSeleccion(&0, &ctl, \"" + highlighted + L"\")");
        }
    }
}

TEST_F(ShownTest, EveryCommandLooksBeforeItDoesAnythingWithTheRecord) {
    const std::tuple<const wchar_t*, const wchar_t*, std::vector<Script>> cases[] = {
        {L"ShowSelec", L"prueba", {L"F5", L"^C", L"^L"}},
        {L"ShowSelec", L"ordenes", {DoubleClick()}},
        {L"ShowSelec", L"hordenes", {DoubleClick()}},
        {L"ShowSelecAdd", L"prueba", {L"Enter"}},
        {L"ShowSelecTrueFalse", L"prueba", {L"Enter", L"Space"}},
        {L"ShowRegistros", L"prueba", {L"F4", L"Enter", L"Delete"}},
    };
    host.sink->Accepts({L"AceptarModificar", L"AceptarEliminar", L"clsEvents_AceptaSeleccion"});
    for (const auto& [operation, className, commands] : cases) {
        Use("full");
        host.className = className;
        Script script;
        for (const Script& command : commands) {
            const auto change = [this] { host.set->SetPosition((host.set->Position() + 5) % kRecords); };
            script.Append({Refused(command, change), L"Down"});
        }
        Show({operation}, {script, L"Esc"});
        EXPECT_THAT(host.set->Table().written, IsEmpty());
    }
}

} // namespace
} // namespace tamvelo::testing
