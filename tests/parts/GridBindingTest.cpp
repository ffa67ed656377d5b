#include <gtest/gtest.h>

#include <functional>

#include "com/Error.h"
#include "com/LateObject.h"
#include "tests/parts/GridFixture.h"

namespace tamvelo::testing {

namespace {

using com::ComPtr;
using com::LateObject;
using com::Variant;

RecordSetOptions Without(std::initializer_list<bool RecordSetOptions::*> abilities, long rows = 1000) {
    RecordSetOptions options;
    options.rows = rows;
    for (const auto ability : abilities) {
        options.*ability = false;
    }
    return options;
}

RecordSetOptions Of(RecordSetOptions options, bool RecordSetOptions::*quirk) {
    options.*quirk = true;
    return options;
}

using Options = RecordSetOptions;

/// One kind of record set, and the way to it.
struct Kind {
    const char* name;
    Options options;
    std::function<ComPtr<IUnknown>(ComPtr<IDispatch>)> source;
};

ComPtr<IUnknown> Itself(ComPtr<IDispatch> set) { return set; }

ComPtr<IUnknown> Source(ComPtr<IDispatch> set) {
    return MakeDataSource([set] { return set; });
}

ComPtr<IUnknown> Owner(ComPtr<IDispatch> set) {
    const auto owner = com::Make<RecordsetOwner>();
    owner->set = set;
    return ComPtr<IUnknown>(owner.Get());
}

ComPtr<IUnknown> Script(ComPtr<IDispatch> set) { return AsScript(set.Get()); }

const Kind kKinds[] = {
    {"data source", {}, Source},
    {"Recordset property", {}, Owner},
    {"itself", {}, Itself},
    {"clone without GetRows", Without({&Options::getRows}), Itself},
    {"no clone", Without({&Options::clone}), Itself},
    {"script class, positions",
     Without({&Options::clone, &Options::getRows, &Options::bookmarks, &Options::dataVersion}), Script},
    {"script class, bookmarks",
     Without({&Options::clone, &Options::getRows, &Options::absolutePosition, &Options::fieldTypes}), Script},
    {"clone with bookmarks only", Without({&Options::absolutePosition}), Itself},
    {"count unknown", Without({&Options::knowsCount}), Owner},
    {"no Filter, no Sort", Without({&Options::filterAndSort}), Itself},
    {"neither Filter nor count", Without({&Options::filterAndSort, &Options::knowsCount}), Itself},
    {"the fields of a record", Of(Without({&Options::getRows, &Options::clone}), &Options::recordFields),
     Script},
    {"a snapshot, the fields of a record", Of(Without({&Options::getRows}), &Options::recordFields), Itself},
};

} // namespace

class GridBindingTest : public GridTest {
protected:
    /// A member of the set that fails from now on.
    static void Fail(MemoryRecordSet& set, std::wstring member, const wchar_t* text) {
        set.Table().onCall = [=](const std::wstring& called) {
            if (called == member) {
                throw com::Error(E_ACCESSDENIED, text);
            }
        };
    }
};

TEST_F(GridBindingTest, EveryKindShowsTheHostsRowsAndLeavesItWhereItStands) {
    for (const Kind& kind : kKinds) {
        for (const long place : {0L, 7L, 999L, -1L, 1000L}) {
            SCOPED_TRACE(std::string(kind.name) + " at " + std::to_string(place));
            const auto set = com::Make<MemoryRecordSet>(kind.options);
            set->SetPosition(place);
            m_grid->SetDataSource(kind.source(set).Get());
            EXPECT_TRUE(m_failures.empty());
            EXPECT_EQ(m_grid->RowCount(), 1000);
            EXPECT_EQ(m_grid->CurrentRow(), place == 1000 ? -1 : place);
            EXPECT_EQ(set->Position(), place);

            Send(WM_VSCROLL, SB_TOP);
            EXPECT_EQ(NameOf(2).substr(0, 21), L"2; Artículo 2; 2,47; ");
            Send(WM_VSCROLL, SB_BOTTOM);
            EXPECT_EQ(FirstCell(ChildrenOfRole(ROLE_SYSTEM_ROW) - 1), L"1000");
            EXPECT_EQ(set->Position(), place);

            set->Table().calls.clear();
            Repaint();
            EXPECT_EQ(set->Table().Calls(), 0); // painting asks nobody
            set->SetPosition(500);              // the host's own move is followed
            m_grid->HostChanged();
            Variant shown;
            Accessible()->get_accSelection(shown.Address());
            EXPECT_EQ(FirstCell(shown.ToLong() - 1), L"501");
            set->Grow(10);
            m_grid->Requeried();
            EXPECT_EQ(m_grid->RowCount(), 1010);
            EXPECT_EQ(m_grid->CurrentRow(), 500);
        }
    }
}

TEST_F(GridBindingTest, ChangedValuesAreSeenWithAndWithoutAVersion) {
    for (const bool version : {true, false}) {
        RecordSetOptions options;
        options.dataVersion = version;
        const auto set = Bind(options);
        TakeEvents();
        set->Table().value = [](long record, short) { return Variant(L"nuevo " + std::to_wstring(record)); };
        m_grid->HostChanged();
        EXPECT_EQ(FirstCell(0), L"nuevo 0");
        EXPECT_EQ(TakeEvents(), "");
        set->Table().calls.clear();
        m_grid->HostChanged(); // and where nothing changed it costs little
        EXPECT_LE(set->Table().Calls(), 15);
        EXPECT_EQ(TakeEvents(), "");
    }
}

TEST_F(GridBindingTest, AMarkIsTurnedInTheHostsRecordOrStaysAsItWas) {
    constexpr short kMark = 4;
    for (const Kind& kind : kKinds) {
        for (const auto& [updates, refused] :
             {std::pair{false, L""}, {true, L""}, {false, L"Value="}, {true, L"Value="}, {true, L"Update"}}) {
            SCOPED_TRACE(std::string(kind.name) + (updates ? " updated" : ""));
            RecordSetOptions options = kind.options;
            options.updates = updates;
            const auto set = com::Make<MemoryRecordSet>(options);
            m_grid->SetDataSource(kind.source(set).Get());
            EXPECT_EQ(m_grid->MarkColumns(), std::vector<short>{kMark});
            EXPECT_EQ(m_grid->CountMarks(kMark).marked, (ChildrenOfRole(ROLE_SYSTEM_ROW) + 1) / 2);
            EXPECT_FALSE(m_grid->CountMarks(kMark).all);
            Press(VK_DOWN);
            Fail(*set.Get(), refused, L"No se puede.");
            std::wstring shown = L"; No; ";
            try {
                m_grid->ToggleMark(kMark);
                EXPECT_STREQ(refused, L"");
                shown = L"; Sí; ";
            } catch (const com::Error& error) {
                EXPECT_STRNE(refused, L"");
                EXPECT_EQ(error.description, L"No se puede.");
            }
            set->Table().onCall = nullptr;
            EXPECT_EQ(set->ValueAt(kMark).ToBool(), *refused == L'\0');
            EXPECT_EQ(set->Table().Calls(L"Update"),
                      updates && std::wstring_view(refused) != L"Value=" ? 1 : 0);
            EXPECT_NE(NameOf(2).find(shown), std::wstring::npos);
            EXPECT_EQ(m_grid->CurrentRow(), 1);
        }
    }
    Bind({.rows = 64});
    EXPECT_TRUE(m_grid->CountMarks(kMark).all);
    EXPECT_EQ(m_grid->CountMarks(kMark).marked, 32);
    Bind({.rows = 64, .getRows = false}); // then those on screen are all that was read
    Send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_FALSE(m_grid->CountMarks(kMark).all);
}

TEST_F(GridBindingTest, WineAdoIsReadOnItsOwnSet) {
    CLSID id;
    ASSERT_EQ(CLSIDFromProgID(L"ADODB.Recordset", &id), S_OK);
    ComPtr<IDispatch> object;
    ASSERT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
    LateObject set(object.Get(), L"Recordset");
    LateObject fields(set.Call(L"Fields").ToObject().Get(), L"Fields");
    fields.Call(L"Append", {L"Codigo", 3L, 0L, -1L});
    fields.Call(L"Append", {L"Nombre", 202L, 40L, -1L});
    set.Call(L"Open");
    constexpr long kRows = 150;
    for (long row = 0; row < kRows; ++row) { // every row before any value: it loses values else
        set.Call(L"AddNew");
    }
    set.Call(L"MoveFirst");
    for (long row = 0; row < kRows; ++row, set.Call(L"MoveNext")) {
        LateObject(fields.Call(L"Item", {0L}).ToObject().Get(), L"Field").Put(L"Value", row + 1);
        LateObject(fields.Call(L"Item", {1L}).ToObject().Get(), L"Field")
            .Put(L"Value", L"Fila " + std::to_wstring(row + 1));
    }
    set.Call(L"MoveFirst");
    set.Call(L"MoveNext");

    m_grid->SetDataSource(object.Get());
    EXPECT_TRUE(m_failures.empty());
    EXPECT_EQ(m_grid->RowCount(), kRows);
    EXPECT_EQ(m_grid->CurrentRow(), 1);
    EXPECT_EQ(NameOf(3), L"3; Fila 3");
    Send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(NameOf(ChildrenOfRole(ROLE_SYSTEM_ROW)), L"150; Fila 150");
    EXPECT_EQ(set.Call(L"Bookmark").ToLong(), 1);
    Press(VK_DOWN);
    EXPECT_EQ(set.Call(L"Bookmark").ToLong(), 2);
    set.Call(L"Close");
    m_grid->HostChanged();
    EXPECT_EQ(m_grid->RowCount(), 0);
}

TEST_F(GridBindingTest, WhatIsNoRecordSetIsRefusedAndLeavesTheHeads) {
    Bind();
    const auto stranger = com::Make<RecordsetOwner>();
    stranger->set = com::ComPtr<IDispatch>(stranger.Get()); // a Recordset that is none
    EXPECT_THROW(m_grid->SetDataSource(stranger.Get()), com::Error);
    stranger->set.Reset();
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    try {
        m_grid->SetDataSource(stream.Get());
        FAIL() << "a stream is no record set";
    } catch (const com::Error& error) {
        EXPECT_EQ(error.number, E_NOINTERFACE);
    }
    EXPECT_FALSE(m_grid->Bound());
    EXPECT_EQ(m_grid->RowCount(), 0);
    EXPECT_EQ(m_grid->ColumnCount(), MemoryRecordSet::kColumns);
    EXPECT_EQ(m_grid->CounterText(), L"Sin registros");
}

TEST_F(GridBindingTest, AClosedOrReplacedSetIsNoticed) {
    const auto first = com::Make<MemoryRecordSet>();
    const auto owner = com::Make<RecordsetOwner>();
    owner->set = first;
    m_grid->SetDataSource(owner.Get());

    first->Table().open = false;
    m_grid->HostChanged();
    EXPECT_EQ(m_grid->RowCount(), 0);
    first->Table().open = true;
    m_grid->HostChanged();
    EXPECT_EQ(m_grid->RowCount(), 1000);

    owner->set = com::Make<MemoryRecordSet>(RecordSetOptions{.rows = 5});
    m_grid->HostChanged();
    EXPECT_EQ(m_grid->RowCount(), 5);
    owner->set.Reset();
    m_grid->HostChanged();
    EXPECT_EQ(m_grid->RowCount(), 0);

    int made = 0; // a property that makes one each time is not asked for ever
    owner->make = [&] {
        ++made;
        return ComPtr<IDispatch>(com::Make<MemoryRecordSet>().Get());
    };
    for (int i = 0; i < 5; ++i) {
        m_grid->HostChanged();
    }
    EXPECT_EQ(m_grid->RowCount(), 1000);
    EXPECT_LE(made, 4);
}

TEST_F(GridBindingTest, ARecordBeingEditedIsNotLeftForReading) {
    auto set = com::Make<MemoryRecordSet>(Without({&Options::clone}));
    set->Table().editMode = 1;
    set->SetPosition(3);
    m_grid->SetDataSource(set.Get());
    EXPECT_EQ(set->Table().Calls(L"AbsolutePosition="), 0);
    EXPECT_EQ(FirstCell(0), L"");
    set->Table().editMode = 0;
    m_grid->HostChanged();
    EXPECT_EQ(FirstCell(0), L"1");
    EXPECT_EQ(set->Position(), 3);
}

TEST_F(GridBindingTest, BadValuesSpoilTheirCellOnly) {
    const auto set = com::Make<MemoryRecordSet>();
    set->Table().value = [](long record, short column) {
        if (column == 1 && record == 2) {
            throw com::Error(E_FAIL, L"El campo no se puede leer.");
        }
        if (column == 1 && record == 1) {
            return Variant(std::wstring(200000, L'x') + L"\r\n");
        }
        return column == 6 ? Variant::Null() : Variant(record);
    };
    m_grid->SetDataSource(set.Get());
    Repaint();
    EXPECT_TRUE(m_failures.empty());
    EXPECT_NE(NameOf(3).find(L"2; #Error; 2,00"), std::wstring::npos);
    EXPECT_LT(NameOf(2).size(), 1200U);
    Press(VK_DOWN);
    EXPECT_EQ(m_grid->Text(1).size(), 200002U);
    EXPECT_EQ(m_grid->Text(6), L"");
    EXPECT_THROW(m_grid->Text(8), com::Error);
    EXPECT_THROW(m_grid->Value(-1), com::Error);
    Press(VK_DOWN);
    EXPECT_THROW(m_grid->Value(1), com::Error);
}

TEST_F(GridBindingTest, ASetWithoutRecordsKeepsTheHeadsThatARecordGave) {
    const auto set = Bind(Of({.rows = 3, .clone = false}, &Options::recordFields));
    set->Table().records = 0;
    m_grid->Requeried();
    EXPECT_EQ(m_grid->RowCount(), 0);
    EXPECT_EQ(m_grid->ColumnCount(), MemoryRecordSet::kColumns);
    EXPECT_TRUE(m_failures.empty());
}

TEST_F(GridBindingTest, AValueThatIsNeverTheSameIsToldOnce) {
    for (const bool getRows : {true, false}) {
        const auto set = Bind({.getRows = getRows});
        long ticks = 0;
        set->Table().value = [&](long record, short column) {
            return Variant(column == 5 ? ++ticks * 1000 : record * 10 + column);
        };
        m_grid->HostChanged();
        TakeEvents();
        EXPECT_FALSE(m_grid->Confirm());
        EXPECT_EQ(TakeEvents(), "row;another;");
        EXPECT_TRUE(m_grid->Confirm());
        EXPECT_TRUE(m_grid->Confirm());
        EXPECT_EQ(m_grid->Value(5).ToLong(), ticks * 1000); // what was looked at is what is answered
        set->SetPosition(7);
        EXPECT_FALSE(m_grid->Confirm());
    }
}

TEST_F(GridBindingTest, RowsThatReadOtherwiseInABlockAreReadValueByValue) {
    const auto set = com::Make<MemoryRecordSet>();
    bool block = false;
    set->Table().onCall = [&](const std::wstring& member) { block = member == L"GetRows"; };
    set->Table().value = [&](long record, short column) {
        return Variant((block ? L"bloque " : L"valor ") + std::to_wstring(record * 10 + column));
    };
    m_grid->SetDataSource(set.Get());
    EXPECT_EQ(FirstCell(2), L"valor 20");
    EXPECT_TRUE(m_grid->Confirm());
}

TEST_F(GridBindingTest, ASetThatTellsNeitherItsNumberNorItsEndDoesNotHang) {
    auto options = Without({&Options::knowsCount, &Options::ends, &Options::absolutePosition}, 5);
    for (const bool clone : {true, false}) {
        options.clone = clone;
        Bind(options);
        EXPECT_EQ(m_grid->RowCount(), 5);
        EXPECT_EQ(FirstCell(4), L"5");
    }
    options.rows = 1000000;
    EXPECT_THROW(Bind(options), com::Error);
    EXPECT_EQ(m_grid->RowCount(), 0);
    options.absolutePosition = true; // the last one's position tells
    Bind(options);
    EXPECT_EQ(m_grid->RowCount(), 1000000);
}

TEST_F(GridBindingTest, ARefusedMoveKeepsItsRowAndAReadThatFailsIsReportedOnce) {
    const auto set = Bind();
    Fail(*set.Get(), L"Bookmark=", L"Hay cambios sin guardar.");
    Press(VK_DOWN);
    EXPECT_EQ(m_grid->CurrentRow(), 0);
    EXPECT_EQ(set->Position(), 0);
    EXPECT_TRUE(m_failures.empty());
    Fail(*set.Get(), L"AbsolutePosition=", L"Se perdió la conexión.");
    Send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(m_failures, std::vector<std::wstring>{L"Se perdió la conexión."});
    Repaint();
    Send(WM_VSCROLL, SB_LINEUP);
    EXPECT_EQ(m_failures.size(), 1U);
}

TEST_F(GridBindingTest, TheHostMayDoAnythingWhileItIsCalled) {
    const std::function<void()> disasters[] = {
        [&] { DestroyWindow(m_grid->Window()); },
        [&] { m_grid.reset(); },
        [&] { m_grid->SetDataSource(nullptr); },
        [&] { m_grid->SetDataSource(com::Make<MemoryRecordSet>(RecordSetOptions{.rows = 3}).Get()); },
        [&] { m_grid->HostChanged(); },
        [&] { m_grid->Requeried(); },
        [&] { UpdateWindow(m_grid->Window()); },
        [&] { Press(VK_NEXT); },
    };
    for (const auto& disaster : disasters) {
        for (const wchar_t* member :
             {L"RecordCount", L"Clone", L"GetRows", L"Bookmark=", L"AbsolutePosition"}) {
            TearDown();
            SetUp();
            const auto set = com::Make<MemoryRecordSet>();
            bool struck = false;
            set->Table().onCall = [&](const std::wstring& called) {
                if (called == member && !std::exchange(struck, true)) {
                    disaster();
                }
            };
            grid::Grid& grid = *m_grid;
            grid.SetDataSource(set.Get());
            if (!struck && m_grid) {
                Press(VK_NEXT);
            }
            EXPECT_TRUE(struck) << member;
            if (m_grid) {
                m_grid->HostChanged();
                EXPECT_EQ(m_grid->CurrentRow() < m_grid->RowCount() || m_grid->RowCount() == 0, true);
            }
        }
    }
}

TEST_F(GridBindingTest, WhatWasBeingReadIsForgottenWhenTheRowsBecomeOthers) {
    for (const bool rebound : {true, false}) {
        const auto set = com::Make<MemoryRecordSet>();
        const auto other = com::Make<MemoryRecordSet>();
        other->Table().value = [](long, short) { return Variant(L"otro"); };
        set->Table().onCall = [&](const std::wstring& called) {
            if (called == L"GetRows") {
                set->Table().onCall = nullptr;
                if (rebound) {
                    m_grid->SetDataSource(other.Get());
                } else { // these rows are in the block already when the host says that they changed
                    ++set->Table().version;
                    m_grid->HostChanged();
                }
            }
        };
        m_grid->SetDataSource(set.Get());
        EXPECT_EQ(FirstCell(0), rebound ? L"otro" : L"1");
        EXPECT_EQ(set->Table().Calls(L"GetRows"), rebound ? 1 : 2);
    }
}

TEST_F(GridBindingTest, TheCostDoesNotGrowWithTheRowsNotOnScreen) {
    std::vector<int> costs;
    for (const long rows : {1000L, 1000000L}) {
        const auto set = Bind(RecordSetOptions{.rows = rows});
        costs.push_back(set->Table().Calls());
        EXPECT_EQ(set->Table().Calls(L"GetRows"), 1);
        set->Table().calls.clear();
        Press(VK_NEXT);
        Press(VK_NEXT);
        Press(VK_DOWN, {VK_CONTROL});
        m_grid->HostChanged();
        costs.push_back(set->Table().Calls());
        EXPECT_EQ(m_grid->CurrentRow(), rows - 1);
    }
    EXPECT_EQ(costs[0], costs[2]);
    EXPECT_EQ(costs[1], costs[3]);
    EXPECT_LT(costs[0], 100); // the eight fields cost most of it
    EXPECT_LT(costs[1], 60);

    // Value by value only what is on screen is read, a little more where the record has to be asked each
    // time.
    for (const bool ofRecord : {false, true}) {
        auto options = Without({&Options::getRows});
        options.recordFields = ofRecord;
        const auto set = Bind(options);
        const int cells = ChildrenOfRole(ROLE_SYSTEM_ROW) * MemoryRecordSet::kColumns;
        EXPECT_LE(set->Table().Calls(L"Value"), cells + (ofRecord ? 20 : 4));
        Press(VK_DOWN); // finds out what the set can do
        set->Table().calls.clear();
        Press(VK_DOWN);
        EXPECT_LE(set->Table().Calls(), 4);
        Send(WM_VSCROLL, SB_LINEDOWN);
        EXPECT_LE(set->Table().Calls(L"Value"), 16);
    }
}

} // namespace tamvelo::testing
