// The record that is highlighted is the record that is delivered, whatever the host's record set can do.
#include "tests/dialogs/PanelFixture.h"
#include "tests/support/ShownGrid.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;
using Options = RecordSetOptions;

constexpr long kRecords = 12; // all on screen

struct Kind {
    const char* name;
    std::initializer_list<bool Options::*> without;
    std::initializer_list<bool Options::*> with = {};
};

const Kind kKinds[] = {
    {"full", {}},
    {"no Sort", {&Options::filterAndSort}},
    {"no Sort, no version", {&Options::filterAndSort, &Options::dataVersion}},
    {"no clone", {&Options::clone}},
    {"no clone, no Sort, no version", {&Options::clone, &Options::filterAndSort, &Options::dataVersion}},
    {"clone without GetRows", {&Options::getRows, &Options::filterAndSort}},
    {"clone that is a snapshot", {&Options::filterAndSort, &Options::dataVersion}, {&Options::snapshots}},
    {"minimal, positions",
     {&Options::filterAndSort, &Options::dataVersion, &Options::clone, &Options::getRows, &Options::bookmarks,
      &Options::fieldTypes}},
    {"minimal, bookmarks",
     {&Options::filterAndSort, &Options::dataVersion, &Options::clone, &Options::getRows,
      &Options::absolutePosition, &Options::fieldTypes}},
    {"minimal, the fields of a record",
     {&Options::filterAndSort, &Options::dataVersion, &Options::clone, &Options::getRows,
      &Options::bookmarks},
     {&Options::recordFields}},
    {"snapshot with the fields of a record",
     {&Options::filterAndSort, &Options::dataVersion, &Options::getRows},
     {&Options::snapshots, &Options::recordFields}},
    {"clone with bookmarks only",
     {&Options::absolutePosition, &Options::filterAndSort, &Options::dataVersion}},
    {"count unknown", {&Options::knowsCount, &Options::filterAndSort, &Options::dataVersion}},
    {"neither count nor end",
     {&Options::knowsCount, &Options::ends, &Options::clone, &Options::absolutePosition,
      &Options::filterAndSort, &Options::dataVersion}},
    {"neither count nor end, positions",
     {&Options::knowsCount, &Options::ends, &Options::clone, &Options::bookmarks, &Options::filterAndSort,
      &Options::dataVersion}},
};

class ShownTest : public PanelTest {
protected:
    ShownTest() : PanelTest(kRecords) {}

    void Use(const Kind& kind) {
        Options options;
        options.rows = kRecords;
        for (const auto without : kind.without) {
            options.*without = false;
        }
        for (const auto with : kind.with) {
            options.*with = true;
        }
        const auto value = [generation = ++m_generation](long record, short column) {
            return Variant(L"g" + std::to_wstring(generation) + L"f" + std::to_wstring(record) + L"c" +
                           std::to_wstring(column));
        };
        host.set = com::Make<MemoryRecordSet>(options);
        host.set->Table().value = value;
        host.stored.clear();
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
    static std::wstring Code(const std::wstring& row) { return row.substr(0, row.find(L';')); }
    void ExpectRowsAreTheHosts(const char* when) const {
        ShownGrid shown = ReadGrid(Item(IDC_DATAGRID));
        for (std::wstring& row : shown.rows) {
            row = Code(row);
        }
        EXPECT_THAT(shown.rows, ElementsAreArray(HostRows())) << when;
        EXPECT_EQ(shown.selected, host.set->Position()) << when;
    }
    Script Rows(const char* when) {
        return Script().Do([this, when] { ExpectRowsAreTheHosts(when); });
    }
    /// Notes what is highlighted, accepts it, and expects the sink to get just that, once.
    Script Accept() {
        Script script = Forget();
        script.Do([this] { m_highlighted = Code(ReadGrid(Item(IDC_DATAGRID)).Selected()); }).Key(VK_RETURN);
        return script;
    }
    void ExpectDelivered() {
        EXPECT_FALSE(m_highlighted.empty());
        EXPECT_THAT(TakeLog(), ElementsAre(L"AceptarSeleccion(&0, &ctl, \"" + m_highlighted + L"\")",
                                           L"AplyFilter(\"\")"));
    }
    /// Accepts, expects that nothing goes out but a note, and accepts again.
    Script AcceptTwice() {
        Script script = Forget();
        script.Key(VK_RETURN).Do([this] {
            EXPECT_THAT(host.log, IsEmpty()) << "delivered something that was not highlighted";
            EXPECT_THAT(ItemText(IDC_STATUS), HasSubstr(L"se ha leído de nuevo"));
        });
        return script.Append(Rows("read again")).Append(Accept());
    }

    int m_generation = 0;
    std::wstring m_highlighted;
};

TEST_F(ShownTest, WhatIsHighlightedIsDeliveredFromEveryKindOfRecordSet) {
    const auto toGrid = [] { SetFocus(Item(IDC_DATAGRID)); };
    const auto other = [this](long record, short column) {
        return Variant(L"otro" + std::to_wstring(record) + L"c" + std::to_wstring(column));
    };
    struct Scenario {
        const char* name;
        Script script;
    };
    const Scenario scenarios[] = {
        {"opened", Rows("opened").Key(VK_DOWN).Key(VK_DOWN).Append(Rows("moved")).Append(Accept())},
        {"sorted", Script()
                       .Key(VK_F9, VK_SHIFT)
                       .Append(Rows("sorted"))
                       .Key(VK_HOME)
                       .Append(Rows("first"))
                       .Key(VK_DOWN)
                       .Append(Rows("down"))
                       .Append(Accept())},
        {"sorted there and back", Script()
                                      .Key(VK_F9, VK_SHIFT)
                                      .Key(VK_F9)
                                      .Append(Rows("back"))
                                      .Key(VK_DOWN)
                                      .Append(Rows("down"))
                                      .Append(Accept())},
        {"filtered", Script()
                         .Key(VK_INSERT)
                         .Type(L"x")
                         .Key(VK_RETURN)
                         .Append(Rows("filtered"))
                         .Do(toGrid)
                         .Key(VK_DOWN)
                         .Append(Rows("down"))
                         .Append(Accept())},
        {"changed behind our back, moved by the host's member",
         Script()
             .Do([this, other] { host.set->Table().value = other; })
             .Key(VK_END)
             .Append(Rows("last"))
             .Key(VK_UP)
             .Append(Accept())},
        {"moved behind our back", Script().Do([this] { host.set->SetPosition(5); }).Append(AcceptTwice())},
        {"sorted behind our back", Script()
                                       .Do([this] {
                                           host.set->SetSort(L"x DESC");
                                           host.set->SetPosition(0);
                                       })
                                       .Append(AcceptTwice())},
        {"filtered behind our back", Script()
                                         .Key(VK_DOWN)
                                         .Do([this] {
                                             host.set->SetFilter(L"pares");
                                             host.set->SetPosition(1);
                                         })
                                         .Append(AcceptTwice())},
        {"changed behind our back",
         Script().Do([this, other] { host.set->Table().value = other; }).Append(AcceptTwice())},
        {"changed in a sink that fails", Script()
                                             .Do([this] {
                                                 host.sink->On(L"AceptarSeleccion", [this](Invocation&) {
                                                     host.sink->On(L"AceptarSeleccion", [](Invocation&) {});
                                                     host.set->SetSort(L"x DESC");
                                                     host.set->SetPosition(1);
                                                     RaiseHostError();
                                                 });
                                             })
                                             .Key(VK_RETURN)
                                             .Box(kHostErrorText)
                                             .Append(Rows("after the failure"))
                                             .Append(Accept())},
    };
    for (const Kind& kind : kKinds) {
        for (const Scenario& scenario : scenarios) {
            SCOPED_TRACE(std::string(kind.name) + ", " + scenario.name);
            Use(kind);
            EXPECT_FALSE(Show(scenario.script));
            ExpectDelivered();
        }
    }
}

TEST_F(ShownTest, EveryCommandLooksBeforeItDoesAnythingWithTheRecord) {
    const auto doubleClick = [] {
        PostMessageW(Item(IDC_DATAGRID), WM_LBUTTONDBLCLK, MK_LBUTTON, FirstRow());
    };
    struct Case {
        const wchar_t* operation;
        const wchar_t* className;
        Script press;
    };
    const Case cases[] = {
        {L"ShowSelec", L"prueba", Keys({VK_F5})},
        {L"ShowSelec", L"prueba", Script().Key('C', VK_CONTROL)},
        {L"ShowSelec", L"prueba", Script().Key('L', VK_CONTROL)},
        {L"ShowSelec", L"ordenes", Script().Do(doubleClick)},
        {L"ShowSelec", L"hordenes", Script().Do(doubleClick)},
        {L"ShowSelecAdd", L"prueba", Keys({VK_RETURN})},
        {L"ShowSelecTrueFalse", L"prueba", Keys({VK_RETURN})},
        {L"ShowSelecTrueFalse", L"prueba", Keys({VK_SPACE})},
        {L"ShowRegistros", L"prueba", Keys({VK_F4})},
        {L"ShowRegistros", L"prueba", Keys({VK_RETURN})},
        {L"ShowRegistros", L"prueba", Keys({VK_DELETE})},
    };
    for (const wchar_t* member : {L"AceptarModificar", L"AceptarEliminar", L"clsEvents_AceptaSeleccion"}) {
        host.sink->On(member, [](Invocation&) {});
    }
    gdiSlack = 4; // the first opening of each of four forms
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        Use(kKinds[0]);
        host.set->Table().names = {{short{4}, L"Planificar"}};
        host.className = each.className;
        Script script = Forget();
        script.Do([this] { host.set->SetPosition(5); }).Append(each.press).Do([this] {
            EXPECT_EQ(TopWindow(), Panel());
            EXPECT_THAT(host.log, IsEmpty());
            EXPECT_THAT(host.set->Table().written, IsEmpty());
            EXPECT_THAT(ItemText(IDC_STATUS), HasSubstr(L"se ha leído de nuevo"));
        });
        EXPECT_FALSE(ShowLate(each.operation, script.Key(VK_ESCAPE)));
    }
}

} // namespace
} // namespace tamvelo::testing
