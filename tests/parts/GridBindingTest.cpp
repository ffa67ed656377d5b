#include "tests/parts/GridFixture.h"
#include "tests/support/FakeHost.h"

namespace tamvelo::testing {

namespace {

using com::ComPtr;
using com::LateObject;
using com::Variant;
using Options = RecordSetOptions;

/// A data class as far as binding goes.
ComPtr<HostObject> Owner(IDispatch* set) {
    static Log log;
    auto owner = com::Make<HostObject>(L"MyClase", log);
    owner->Returns(L"Recordset", Variant(set), true);
    return owner;
}

/// Runs at each call of the set's member from now on.
void At(MemoryRecordSet& set, const std::wstring& member, const std::function<void()>& what) {
    set.Table().onCall = [=](const std::wstring& called) {
        if (called == member) {
            what();
        }
    };
}

void Fail(MemoryRecordSet& set, const wchar_t* member, const wchar_t* text) {
    At(set, member, [=] { throw com::Error(E_ACCESSDENIED, text); });
}

std::pair<HRESULT, std::wstring> ErrorOf(const std::function<void()>& what) {
    try {
        what();
    } catch (const com::Error& error) {
        return {error.number, error.description};
    }
    return {};
}

} // namespace

using GridBindingTest = GridTest;

TEST_F(GridBindingTest, EveryKindShowsTheHostsRowsAndLeavesItWhereItStands) {
    for (const std::string_view kind : kRecordSetKinds) {
        if (kind.find("no end") != kind.npos) {
            continue; // so many rows are not walked through
        }
        for (const long place : {0L, 7L, 999L, -1L, 1000L}) {
            SCOPED_TRACE(::testing::Message() << kind << " at " << place);
            const auto set = com::Make<MemoryRecordSet>(OptionsOf(kind, 1000));
            const auto reached = Reach(kind, set.Get());
            set->SetPosition(place);
            const ComPtr<IUnknown> ways[] = {ComPtr<IUnknown>(reached.Get()),
                                             ComPtr<IUnknown>(Owner(reached.Get()).Get()),
                                             MakeDataSource([reached] { return reached; })};
            m_grid->SetDataSource(ways[(place + 1) % 3].Get());
            EXPECT_EQ(m_grid->RowCount(), 1000);
            EXPECT_EQ(m_grid->CurrentRow(), place == 1000 ? -1 : place);
            Send(WM_VSCROLL, SB_TOP);
            EXPECT_EQ(NameOf(2).substr(0, 21), L"2; Artículo 2; 2,47; ");
            Send(WM_VSCROLL, SB_BOTTOM);
            EXPECT_EQ(FirstCell(Rows() - 1), L"1000");
            EXPECT_EQ(set->Position(), place);

            EXPECT_EQ(Calls(set, [&] { Repaint(); }), 0); // painting asks nobody
            set->SetPosition(500);                        // the host's own move is followed
            m_grid->HostChanged();
            EXPECT_TRUE(ReadGrid(m_grid->Window()).Selected().starts_with(L"501; "));
            set->Grow(10);
            m_grid->Requeried();
            EXPECT_EQ(m_grid->CounterText(), L"Registro 501 de 1010");
            set->SetSort(L"Codigo DESC");
            const int one = set->Table().options.clone ? 1 : 0; // of that order, and right at once
            EXPECT_EQ(Calls(set, L"Clone", [&] { m_grid->Reordered(); }), one);
            EXPECT_TRUE(ReadGrid(m_grid->Window()).Selected().starts_with(L"501; "));
            Send(WM_VSCROLL, SB_TOP);
            EXPECT_EQ(FirstCell(0), L"1010");
            set->Table().records = 0; // the heads stay that a record gave
            m_grid->Requeried();
            EXPECT_EQ(m_grid->RowCount(), 0);
            EXPECT_EQ(m_grid->ColumnCount(), MemoryRecordSet::kColumns);
            EXPECT_TRUE(m_failures.empty());
        }
    }
}

TEST_F(GridBindingTest, AnOrderOrFilterThatTheHostDoesNotTellOfIsSeen) {
    for (const std::string_view kind : kRecordSetKinds) {
        SCOPED_TRACE(kind);
        const auto set = Bind(OptionsOf(kind, 1000), kind);
        for (const auto& [place, order] : {std::pair{300, L""}, {699, L"Codigo DESC"}}) {
            set->SetPosition(300);
            set->SetSort(order);
            m_grid->HostChanged();
            if (kind != "no position, no Sort, no version") { // its clone goes on in its old order
                EXPECT_EQ(m_grid->CurrentRow(), place);
                EXPECT_EQ(TakeEvents(), "row;");
            }
            EXPECT_TRUE(ReadGrid(m_grid->Window()).Selected().starts_with(L"301; "));
            EXPECT_TRUE(m_grid->Confirm());
        }
        Bind(OptionsOf(kind, 1000), kind)->SetFilter(L"pares");
        m_grid->HostChanged();
        EXPECT_EQ(m_grid->RowCount(), 500);
    }
}

TEST_F(GridBindingTest, AMarkIsTurnedInTheHostsRecordOrStaysAsItWas) {
    constexpr short kMark = 4;
    for (const std::string_view kind : kRecordSetKinds) {
        for (const auto& [updates, refused] :
             {std::pair{false, L""}, {true, L""}, {false, L"Value="}, {true, L"Value="}, {true, L"Update"}}) {
            SCOPED_TRACE(::testing::Message() << kind << (updates ? " updated" : ""));
            const std::wstring refusal = *refused ? L"No se puede." : L"";
            Options options = OptionsOf(kind, 1000);
            options.updates = updates;
            const auto set = Bind(options, kind);
            EXPECT_EQ(m_grid->MarkColumns(), std::vector<short>{kMark});
            EXPECT_EQ(m_grid->CountMarks(kMark).marked, (Rows() + 1) / 2);
            Press(VK_DOWN);
            Fail(*set.Get(), refused, refusal.c_str());
            EXPECT_EQ(ErrorOf([&] { m_grid->ToggleMark(kMark); }).second, refusal);
            set->Table().onCall = nullptr;
            EXPECT_EQ(set->ValueAt(kMark).ToBool(), refusal.empty());
            EXPECT_EQ(set->Table().Calls(L"Update"),
                      updates && std::wstring_view(refused) != L"Value=" ? 1 : 0);
            EXPECT_NE(NameOf(2).find(*refused ? L"; No; " : L"; Sí; "), std::wstring::npos);
            EXPECT_EQ(m_grid->CurrentRow(), 1);
        }
    }
    for (const bool getRows : {true, false}) { // without it those on screen are all that was read
        Bind({.rows = 64, .getRows = getRows});
        Send(WM_VSCROLL, SB_BOTTOM);
        EXPECT_EQ(m_grid->CountMarks(kMark).all, getRows);
        EXPECT_EQ(m_grid->CountMarks(kMark).marked == 32, getRows);
    }
}

TEST_F(GridBindingTest, WineAdoIsReadOnItsOwnSet) {
    CLSID id;
    ComPtr<IDispatch> object;
    ASSERT_EQ(CLSIDFromProgID(L"ADODB.Recordset", &id), S_OK);
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
    const auto field = [&](long which) {
        return LateObject(fields.Call(L"Item", {which}).ToObject().Get(), L"Field");
    };
    for (long row = 1; row <= kRows; ++row, set.Call(L"MoveNext")) {
        field(0).Put(L"Value", Variant(row));
        field(1).Put(L"Value", Variant(L"Fila " + std::to_wstring(row)));
    }
    set.Call(L"MoveFirst");
    set.Call(L"MoveNext");

    m_grid->SetDataSource(object.Get());
    EXPECT_TRUE(m_failures.empty());
    EXPECT_EQ(m_grid->CounterText(), L"Registro 2 de 150");
    EXPECT_EQ(NameOf(3), L"3; Fila 3");
    Send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(NameOf(Rows()), L"150; Fila 150");
    EXPECT_EQ(set.Call(L"Bookmark").ToLong(), 1);
    Press(VK_DOWN);
    EXPECT_EQ(set.Call(L"Bookmark").ToLong(), 2);
    set.Call(L"Close");
    m_grid->HostChanged();
    EXPECT_EQ(m_grid->RowCount(), 0);
}

TEST_F(GridBindingTest, AClosedOrReplacedSetIsNoticedAndWhatIsNoneIsRefused) {
    const auto first = com::Make<MemoryRecordSet>();
    const auto owner = Owner(first.Get());
    const auto rows = [&] {
        m_grid->HostChanged();
        return m_grid->RowCount();
    };
    m_grid->SetDataSource(owner.Get());
    first->Table().open = false;
    EXPECT_EQ(rows(), 0);
    first->Table().open = true;
    EXPECT_EQ(rows(), 1000);
    owner->Returns(L"Recordset", Variant(com::Make<MemoryRecordSet>(Options{.rows = 5}).Get()));
    EXPECT_EQ(rows(), 5);
    owner->Returns(L"Recordset", Variant(static_cast<IDispatch*>(nullptr)));
    EXPECT_EQ(rows(), 0);
    int made = 0;
    owner->On(L"Recordset", [&](com::Invocation& call) { // makes one each time: is not asked for ever
        ++made;
        call.Return(Variant(com::Make<MemoryRecordSet>().Get()));
    });
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(rows(), 1000);
    }
    EXPECT_LE(made, 8);

    EXPECT_THROW(m_grid->SetDataSource(Owner(Owner(nullptr).Get()).Get()), com::Error);
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    EXPECT_EQ(ErrorOf([&] { m_grid->SetDataSource(stream.Get()); }).first, E_NOINTERFACE);
    EXPECT_FALSE(m_grid->Bound());
    EXPECT_EQ(m_grid->ColumnCount(), MemoryRecordSet::kColumns);
    EXPECT_EQ(m_grid->CounterText(), L"Sin registros");
}

TEST_F(GridBindingTest, ARecordBeingEditedIsNotLeftForReading) {
    auto set = com::Make<MemoryRecordSet>(Options{.clone = false});
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
    const auto set = Bind();
    set->Table().value = [](long record, short column) {
        if (column == 1 && record == 2) {
            throw com::Error(E_FAIL, L"El campo no se puede leer.");
        }
        return column == 1 && record == 1 ? Variant(std::wstring(200000, L'x') + L"\r\n")
               : column == 6              ? Variant::Null()
                                          : Variant(record);
    };
    m_grid->HostChanged();
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

TEST_F(GridBindingTest, ValuesThatChangeAreSeenAndOneThatIsNeverTheSameIsToldOnce) {
    for (const bool known : {true, false}) {
        const auto set = Bind({.getRows = known, .dataVersion = known});
        set->Table().value = [](long record, short) { return Variant(L"nuevo " + std::to_wstring(record)); };
        m_grid->HostChanged();
        EXPECT_EQ(FirstCell(0), L"nuevo 0");
        EXPECT_LE(Calls(set, [&] { m_grid->HostChanged(); }), known ? 15 : 300); // nothing changed
        EXPECT_EQ(TakeEvents(), "");
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
    Options options{.rows = 5, .absolutePosition = false, .knowsCount = false, .ends = false};
    Bind(options);
    EXPECT_EQ(m_grid->RowCount(), 5);
    EXPECT_EQ(FirstCell(4), L"5");
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
        [&] { DestroyWindow(m_grid->Window()); }, [&] { m_grid.reset(); },
        [&] { m_grid->SetDataSource(nullptr); },  [&] { Bind({.rows = 3}); },
        [&] { m_grid->HostChanged(); },           [&] { m_grid->Requeried(); },
        [&] { UpdateWindow(m_grid->Window()); },  [&] { Press(VK_NEXT); },
    };
    for (const auto& disaster : disasters) {
        for (const wchar_t* member :
             {L"RecordCount", L"Clone", L"GetRows", L"Bookmark=", L"AbsolutePosition"}) {
            TearDown();
            SetUp();
            const auto set = com::Make<MemoryRecordSet>();
            bool struck = false;
            At(*set.Get(), member, [&] { std::exchange(struck, true) ? void() : disaster(); });
            m_grid->SetDataSource(set.Get());
            if (!struck && m_grid) {
                Press(VK_NEXT);
            }
            EXPECT_TRUE(struck) << member;
            if (m_grid) {
                m_grid->HostChanged();
                EXPECT_LT(m_grid->CurrentRow(), std::max(1L, m_grid->RowCount()));
            }
        }
    }
}

TEST_F(GridBindingTest, WhatWasBeingReadIsForgottenWhenTheRowsBecomeOthers) {
    for (const bool rebound : {true, false}) {
        const auto set = com::Make<MemoryRecordSet>();
        const auto other = com::Make<MemoryRecordSet>();
        other->Table().value = [](long, short) { return Variant(L"otro"); };
        bool struck = false;
        At(*set.Get(), L"GetRows", [&] {
            if (!std::exchange(struck, true)) { // these rows are in the block already
                ++set->Table().version;
                rebound ? m_grid->SetDataSource(other.Get()) : m_grid->HostChanged();
            }
        });
        m_grid->SetDataSource(set.Get());
        EXPECT_EQ(FirstCell(0), rebound ? L"otro" : L"1");
        EXPECT_EQ(set->Table().Calls(L"GetRows"), rebound ? 1 : 2);
    }
}

TEST_F(GridBindingTest, TheCostDoesNotGrowWithTheRowsNotOnScreen) {
    std::vector<int> costs;
    for (const long rows : {1000L, 1000000L}) {
        const auto set = Bind({.rows = rows});
        costs.push_back(set->Table().Calls());
        EXPECT_EQ(set->Table().Calls(L"GetRows"), 1);
        costs.push_back(Calls(set, [&] {
            Press(VK_NEXT);
            Press(VK_NEXT);
            Press(VK_DOWN, {VK_CONTROL});
            m_grid->HostChanged();
        }));
        EXPECT_EQ(m_grid->CounterText(),
                  rows == 1000 ? L"Registro 1000 de 1000" : L"Registro 1.000.000 de 1.000.000");
        for (const long row : {rows / 14, rows / 3 * 2, rows / 10 * 9}) { // the thumb reaches each row
            SetScrollPos(m_grid->Window(), SB_VERT, static_cast<int>(row), FALSE);
            EXPECT_LE(Calls(set, L"GetRows", [&] { Send(WM_VSCROLL, SB_THUMBTRACK); }), 2);
            EXPECT_EQ(FirstCell(0), std::to_wstring(row + 1));
        }
        EXPECT_EQ(set->Position(), rows - 1);
    }
    EXPECT_EQ(costs[0], costs[2]);
    EXPECT_EQ(costs[1], costs[3]);
    EXPECT_LT(costs[0], 100); // the eight fields cost most of it
    EXPECT_LT(costs[1], 60);
    // Value by value only what is on screen is read, and a little more where the record is asked each time.
    for (const bool ofRecord : {false, true}) {
        const auto set = Bind({.getRows = false, .recordFields = ofRecord});
        EXPECT_LE(set->Table().Calls(L"Value"), Rows() * MemoryRecordSet::kColumns + (ofRecord ? 20 : 4));
        Press(VK_DOWN); // finds out what the set can do
        EXPECT_LE(Calls(set, [&] { Press(VK_DOWN); }), 4);
        EXPECT_LE(Calls(set, L"Value", [&] { Send(WM_VSCROLL, SB_LINEDOWN); }), 16);
    }
}

} // namespace tamvelo::testing
