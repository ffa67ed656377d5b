// The record that is highlighted is the record that is delivered, whatever the host's record set can do.
#include "tests/dialogs/PanelFixture.h"
#include "tests/support/RecordKinds.h"
#include "tests/support/ShownGrid.h"

namespace tamvelo::testing {
namespace {

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
        host.data->On(
            L"Recordset",
            [this, kind](Invocation& call) { call.Return(Variant(Reach(kind, host.set.Get()).Get())); },
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
