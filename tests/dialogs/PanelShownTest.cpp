// The record that is highlighted is the record that is delivered, whatever the host's record set can do.
#include "tests/dialogs/PanelFixture.h"
#include "tests/support/ShownGrid.h"

namespace tamvelo::testing {
namespace {

using com::Invocation;
using com::Variant;
using Options = RecordSetOptions;

constexpr long kRecords = 10; // all on screen

struct Kind {
    const char* name;
    std::initializer_list<bool Options::*> without;
    std::initializer_list<bool Options::*> with = {};
    bool script = false; // names through IDispatchEx only
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
      &Options::fieldTypes},
     {},
     true},
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

/// A form with a grid: how it is opened, what accepts there, and what stands around the answer.
struct Form {
    const wchar_t* operation;
    UINT accept;
    Log after;
};

const Form kForms[] = {
    {L"ShowSelec", VK_RETURN, {L"AplyFilter(\"\")"}},
    {L"ShowSelecAdd", VK_RETURN, {L"AplyFilter(\"\")"}},
    {L"ShowSelecTrueFalse", VK_RETURN, {L"AplyFilter(\"\")"}},
    {L"ShowRegistros", VK_F4, {}},
};

class ShownTest : public PanelTest {
protected:
    ShownTest() : PanelTest(kRecords) { gdiSlack = 16; } // the first opening of each of four forms

    void Use(const Kind& kind) {
        Options options;
        options.rows = kRecords;
        for (const auto without : kind.without) {
            options.*without = false;
        }
        for (const auto with : kind.with) {
            options.*with = true;
        }
        host.set = com::Make<MemoryRecordSet>(options);
        host.set->Table().names = {{short{4}, L"Planificar"}};
        Fill(L"fila ");
        host.data->On(
            L"Recordset",
            [this, script = kind.script](Invocation& call) {
                call.Return(Variant(script ? AsScript(host.set.Get()).Get() : host.set.Get()));
            },
            true);
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
            ShownGrid shown = ReadGrid(Item(IDC_DATAGRID));
            for (std::wstring& row : shown.rows) {
                row = Code(row);
            }
            EXPECT_THAT(shown.rows, ElementsAreArray(HostRows())) << when;
            EXPECT_EQ(shown.selected, host.set->Position()) << when;
        });
    }
    /// Does that behind the form's back, accepts, and expects that nothing goes out but a note.
    Script Refused(const Form& form, const char* when, const std::function<void()>& change) {
        return {Forget(), Do(change), Key(form.accept), Do([this, when] {
                    EXPECT_THAT(host.log, IsEmpty()) << when << ": delivered what was not highlighted";
                    EXPECT_THAT(ItemText(IDC_STATUS), HasSubstr(L"se ha leído de nuevo")) << when;
                }),
                Rows(when)};
    }
};

TEST_F(ShownTest, WhatIsHighlightedIsDeliveredByEveryFormFromEveryKindOfRecordSet) {
    host.data->Returns(L"GetConnection", Variant(), true);
    for (const Form& form : kForms) {
        for (const Kind& kind : kKinds) {
            SCOPED_TRACE(::testing::PrintToString(std::wstring(form.operation)) + ", " + kind.name);
            Use(kind);
            std::wstring highlighted;
            // A sink that fails, after it has turned everything round.
            host.sink->On(L"AceptarSeleccion", [this](Invocation&) {
                host.sink->Accepts({L"AceptarSeleccion"});
                host.set->SetSort(L"x DESC");
                host.set->SetPosition(1);
                RaiseHostError();
            });
            const Script scene = {Rows("opened"),
                                  Keys({VK_DOWN, VK_DOWN}),
                                  Rows("moved"),
                                  Key(VK_F9, VK_SHIFT),
                                  Rows("sorted"),
                                  Keys({VK_HOME, VK_DOWN}),
                                  Rows("moved where sorted"),
                                  Key(VK_F9),
                                  Rows("sorted back"),
                                  Refused(form, "moved", [this] { host.set->SetPosition(5); }),
                                  Refused(form, "sorted",
                                          [this] {
                                              host.set->SetSort(L"x DESC");
                                              host.set->SetPosition(0);
                                          }),
                                  Refused(form, "changed", [this] { Fill(L"fila otra "); }),
                                  Refused(form, "filtered",
                                          [this] {
                                              host.set->SetSort(L"");
                                              host.set->SetFilter(L"pares");
                                              host.set->SetPosition(1);
                                          }),
                                  Key(VK_F7),
                                  InBox(),
                                  Type(L"x"),
                                  Key(VK_RETURN),
                                  Rows("filtered"),
                                  InGrid(),
                                  Key(VK_DOWN),
                                  Rows("moved where filtered"),
                                  Do([this] { Fill(L"fila nueva "); }),
                                  Tool(L"Último registro"),
                                  Rows("last"),
                                  Key(VK_UP),
                                  Key(form.accept),
                                  Box(kHostErrorText),
                                  Rows("after the failure"),
                                  Forget(),
                                  Do([&] { highlighted = Code(ReadGrid(Item(IDC_DATAGRID)).Selected()); }),
                                  Key(form.accept)};
            EXPECT_FALSE(Show({form.operation}, scene));
            EXPECT_TRUE(highlighted.starts_with(L"fila nueva "));
            Log expected{L"AceptarSeleccion(&0, &ctl, \"" + highlighted + L"\")"};
            expected.insert(expected.end(), form.after.begin(), form.after.end());
            EXPECT_THAT(TakeLog(), ElementsAreArray(expected));
        }
    }
}

TEST_F(ShownTest, EveryCommandLooksBeforeItDoesAnythingWithTheRecord) {
    struct Case {
        const wchar_t* operation;
        const wchar_t* className;
        Script press;
    };
    const Case cases[] = {
        {L"ShowSelec", L"prueba", Keys({VK_F5})},
        {L"ShowSelec", L"prueba", Key('C', VK_CONTROL)},
        {L"ShowSelec", L"prueba", Key('L', VK_CONTROL)},
        {L"ShowSelec", L"ordenes", DoubleClick()},
        {L"ShowSelec", L"hordenes", DoubleClick()},
        {L"ShowSelecAdd", L"prueba", Keys({VK_RETURN})},
        {L"ShowSelecTrueFalse", L"prueba", Keys({VK_RETURN})},
        {L"ShowSelecTrueFalse", L"prueba", Keys({VK_SPACE})},
        {L"ShowRegistros", L"prueba", Keys({VK_F4})},
        {L"ShowRegistros", L"prueba", Keys({VK_RETURN})},
        {L"ShowRegistros", L"prueba", Keys({VK_DELETE})},
    };
    host.sink->Accepts({L"AceptarModificar", L"AceptarEliminar", L"clsEvents_AceptaSeleccion"});
    for (const Case& each : cases) {
        SCOPED_TRACE(&each - cases);
        Use(kKinds[0]);
        host.className = each.className;
        EXPECT_FALSE(Show({each.operation},
                          {Forget(), Do([this] { host.set->SetPosition(5); }), each.press, Do([this] {
                               EXPECT_EQ(TopWindow(), Panel());
                               EXPECT_THAT(host.log, IsEmpty());
                               EXPECT_THAT(host.set->Table().written, IsEmpty());
                               EXPECT_THAT(ItemText(IDC_STATUS), HasSubstr(L"se ha leído de nuevo"));
                           }),
                           Key(VK_ESCAPE)}));
    }
}

} // namespace
} // namespace tamvelo::testing
