// Controls as the host sees them, their places, and the relay of results.
#include "com/WinHeaders.h"

#include <commctrl.h>
#include <gmock/gmock.h>

#include <list>

#include "base/Text.h"
#include "com/LateObject.h"
#include "com/TypedDispatch.h"
#include "objects/ControlObject.h"
#include "objects/EventRelay.h"
#include "objects/FormObject.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Operations.h"
#include "win/CheckList.h"
#include "win/RowLayout.h"

namespace tamvelo::testing {
namespace {

using com::LateObject;
using com::Variant;
using ::testing::ElementsAre;

class FrameObjects : public ::testing::Test {
protected:
    FrameObjects()
        : m_parent(CreateWindowExW(0, L"#32770", L"", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr,
                                   nullptr)) {}
    ~FrameObjects() override { DestroyWindow(m_parent); }
    HWND Child(const wchar_t* kind, DWORD style, int id, int width = 100, int height = 20) const {
        return CreateWindowExW(0, kind, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, width, height, m_parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }
    LateObject Control(const wchar_t* kind, DWORD style) {
        m_object = com::Make<objects::ControlObject>(Child(kind, style, 9), L"TxtFields", short{3});
        return {m_object.Get(), L"control"};
    }
    std::array<LONG, 4> Place(int id) const {
        RECT place{};
        GetWindowRect(GetDlgItem(m_parent, id), &place);
        MapWindowPoints(nullptr, m_parent, reinterpret_cast<POINT*>(&place), 2);
        return {place.left, place.top, place.right, place.bottom};
    }

    const HWND m_parent;
    com::ComPtr<objects::ControlObject> m_object;
};

TEST_F(FrameObjects, EachKindOfControlHasItsMembersAndDoesWhatTheySay) {
    const std::wstring common = L"Name Index DataField Enabled Visible SetFocus hWnd Tag ";
    const std::wstring others =
        L"Text Caption Value MaxLength SelStart SelLength ListCount List ListIndex Selected AddItem Clear";
    const struct {
        const wchar_t* kind;
        DWORD style;
        std::wstring own; // beyond what every control has
    } cases[] = {
        {L"EDIT", 0, L"Text MaxLength SelStart SelLength "},
        {L"BUTTON", BS_AUTOCHECKBOX, L"Caption Value "},
        {L"BUTTON", BS_PUSHBUTTON, L"Caption "},
        {L"STATIC", 0, L"Caption "},
        {L"LISTBOX", LBS_MULTIPLESEL, L"Text ListCount List ListIndex Selected AddItem Clear "},
        {L"SysDateTimePick32", 0, L"Value "},
        {L"COMBOBOX", CBS_DROPDOWNLIST, L"Text ListCount List ListIndex AddItem Clear "},
    };
    for (const auto& [kind, style, own] : cases) {
        LateObject control = Control(kind, style);
        std::wstring answered;
        for (const std::wstring& member : base::Split(common + others, L" ")) {
            answered += control.Answers(member.c_str()) ? member + L" " : L"";
        }
        EXPECT_EQ(answered, common + own);
        EXPECT_EQ(control.Call(L"Name").ToText() + control.Call(L"Index").ToText(), L"TxtFields3");
        if (own.starts_with(L"Text L")) {
            control.Call(L"AddItem", {L"uno"});
            control.Call(L"AddItem", {L"dos"});
            EXPECT_EQ(control.Call(L"List", {0L}).ToText(), L"uno");
            EXPECT_THROW(control.Call(L"List", {2L}), com::Error);
            if (style == CBS_DROPDOWNLIST) {
                EXPECT_EQ(control.Call(L"ListIndex").ToLong(), -1);
                control.Put(L"ListIndex", 1L);
                EXPECT_EQ(control.Call(L"Text").ToText(), L"dos");
            }
            control.Call(L"Clear");
            EXPECT_EQ(control.Call(L"ListCount").ToLong(), 0);
        }
        control.Put(L"Enabled", false);
        control.Put(L"Visible", false);
        control.Put(L"Tag", L"x");
        EXPECT_FALSE(IsWindowEnabled(m_object->Window()));
        EXPECT_EQ(GetWindowLongW(m_object->Window(), GWL_STYLE) & WS_VISIBLE, 0);
        EXPECT_EQ(control.Call(L"Tag").ToText(), L"x");
        DestroyWindow(m_object->Window());
        EXPECT_THROW(control.Call(L"Enabled"), com::Error);
    }
    LateObject box = Control(L"EDIT", 0);
    box.Put(L"Text", L"señal");
    box.Put(L"SelStart", 1L);
    box.Put(L"SelLength", 3L);
    box.Put(L"MaxLength", 7L);
    std::wstring read;
    for (const wchar_t* member : {L"Text", L"SelStart", L"SelLength", L"MaxLength"}) {
        read += box.Call(member).ToText();
    }
    EXPECT_EQ(read, L"señal137");
    LateObject picker = Control(L"SysDateTimePick32", 0);
    picker.Put(L"Value", Variant::Date(46023.25)); // 1 January 2026, six o'clock
    EXPECT_EQ(picker.Call(L"Value").Type(), VT_DATE);
    EXPECT_THROW(picker.Put(L"Value", Variant::Date(1e9)), com::Error);
    EXPECT_EQ(picker.Call(L"Value").ToDate(), 46023.25);
}

/// A component that keeps places moves the form, and may name it.
TEST_F(FrameObjects, AFormsObjectMovesItUntilItHasGone) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    LateObject form(com::Make<objects::FormObject>(window, L"frmPrueba").Get(), L"form");
    const std::pair<const wchar_t*, long> places[] = {
        {L"Left", 11}, {L"Top", 22}, {L"Width", 133}, {L"Height", 144}};
    for (const auto& [name, value] : places) {
        form.Put(name, value);
    }
    for (const auto& [name, value] : places) {
        EXPECT_EQ(form.Call(name).ToLong(), value);
    }
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_EQ(place.left + place.top * 1000, 22011);
    form.Put(L"Caption", L"Título");
    EXPECT_EQ(Variant(form.Get()).ToText() + form.Call(L"Name").ToText(), L"TítulofrmPrueba");
    EXPECT_EQ(form.Call(L"hWnd").ToLong(), static_cast<long>(reinterpret_cast<LONG_PTR>(window)));
    DestroyWindow(window);
    EXPECT_THROW(form.Call(L"Left"), com::Error);
}

/// A component fills, reads and ticks the list through its control object, also while a search hides part of
/// it.
TEST_F(FrameObjects, AListsControlObjectWorksOnTheEntries) {
    struct Events final : win::CheckListEvents {
        int changes = 0;
        void ListChanged() override { ++changes; }
        void EntryDoubleClicked() override {}
        void CurrentChanged() override {}
        void ListMenuAsked(POINT) override {}
    };
    using Kind = win::CheckList::Kind;
    for (const bool ticks : {true, false}) {
        LateObject object = Control(WC_LISTVIEWW, LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL);
        Events events;
        win::CheckList list(m_object->Window(), ticks ? Kind::Ticks : Kind::Plain, events);
        list.Fill({{L"vieja", true}});
        object.Call(L"Clear");
        for (const wchar_t* caption : {L"Facturas", L"Albaranes", L"Recibos"}) {
            object.Call(L"AddItem", {caption});
        }
        const auto selected = [&](long entry) { return object.Call(L"Selected", {entry}).ToBool(); };
        const auto select = [&](long entry) { SendMessageW(m_object->Window(), LB_SETSEL, TRUE, entry); };
        list.Find(L"RE");
        EXPECT_EQ(list.ShownCount(), 1);
        select(2);
        EXPECT_EQ(object.Call(L"ListIndex").ToLong(), 2);
        EXPECT_EQ(object.Call(L"Text").ToText(), L"Recibos");
        select(1); // hidden: ticked all the same, but nothing that could be current
        list.Find(L"");
        EXPECT_EQ(selected(1), ticks);
        EXPECT_EQ(selected(2), ticks);
        object.Put(L"ListIndex", 0L);
        EXPECT_EQ(list.Current(), 0);
        EXPECT_EQ(selected(0), !ticks);
        EXPECT_EQ(list.TickedCount(), ticks ? 2 : 0);
        EXPECT_EQ(object.Call(L"List", {1L}).ToText(), L"Albaranes");
        EXPECT_EQ(object.Call(L"ListCount").ToLong(), 3);
        for (const long wrong : {-1L, 3L}) {
            EXPECT_THROW(object.Call(L"List", {wrong}), com::Error);
            EXPECT_THROW(selected(wrong), com::Error);
        }
        EXPECT_GT(events.changes, 0);
    }
}

TEST_F(FrameObjects, RowsFillTheAreaHiddenOnesTakeNoRoomAndAFrameGoesAroundItsRows) {
    Child(L"STATIC", 0, 1, 50, 10);
    Child(L"EDIT", 0, 2, 80, 20);
    for (const int id : {3, 4, 5, 6}) {
        Child(L"STATIC", 0, id, 50, 10);
    }
    Child(L"BUTTON", BS_GROUPBOX, 9);
    const win::RowLayout layout(m_parent, {{win::kOwn, {{1}, {2, win::kFill}}},
                                           {win::kFill, {{3, win::kFill}}},
                                           {win::kOwn, {{4, win::kFill}}, 9},
                                           {win::kOwn, {{5}}, 9},
                                           {win::kOwn, {{6}}}});
    RECT unit{0, 0, 4, 4};
    RECT title{0, 0, 0, 10};
    MapDialogRect(m_parent, &unit);
    MapDialogRect(m_parent, &title);
    const LONG x = unit.right;
    const LONG y = unit.bottom;
    for (const LONG width : {300L, 500L, 300L}) { // sizes come from the template: nothing drifts
        layout.Arrange({0, 30, width, 330});
        EXPECT_THAT(Place(1), ElementsAre(x, 30 + y + 5, x + 50, 30 + y + 15)); // lower than its row: centred
        EXPECT_THAT(Place(2), ElementsAre(x + 50 + x, 30 + y, width - x, 30 + y + 20));
        EXPECT_THAT(Place(6),
                    ElementsAre(x, 330 - y - 10, x + 50, 330 - y)); // the row that fills knows the frame
        EXPECT_THAT(Place(9), ElementsAre(x, 330 - 4 * y - 30 - title.bottom, width - x, 330 - 2 * y - 10));
        EXPECT_THAT(Place(4), ElementsAre(2 * x, 330 - 4 * y - 30, width - 2 * x, 330 - 4 * y - 20));
        EXPECT_THAT(Place(3), ElementsAre(x, 30 + 2 * y + 20, width - x, Place(9)[1] - y));
    }
    ShowWindow(GetDlgItem(m_parent, 1), SW_HIDE);
    layout.Arrange({0, 30, 300, 330});
    EXPECT_EQ(Place(2)[0], x);
    ShowWindow(GetDlgItem(m_parent, 2), SW_HIDE);
    layout.Arrange({0, 30, 300, 330});
    EXPECT_EQ(Place(3)[1], 30 + y);
}

class FrameRelay : public ::testing::Test {
protected:
    FrameRelay() {
        for (const Operation& event : events) { // numbered from 1, as a host object's members are
            second->Accepts({event.name.c_str()});
            ear->On(event.name, [](com::Invocation& call) { // adds 100 to every number
                for (size_t i = 0; i < call.Count(); ++i) {
                    if (call[i].Type() == VT_I2) {
                        call.WriteBack(i, Variant(static_cast<short>(call[i].ToShort() + 100)));
                    }
                }
            });
        }
    }
    com::Subscription Listen(const com::ComPtr<HostObject>& listener) const {
        return {static_cast<objects::IClsEventos*>(relay.Get()), objects::kRelayEventsId, listener.Get()};
    }
    /// Calls one of its methods with variables of the declared types; what was heard.
    std::wstring CallWith(IDispatch* object, const Operation& method) {
        std::list<Variant> values;
        EXPECT_FALSE(CallLate(object, method, [&](const Parameter& parameter) {
            const auto place = static_cast<long>(values.size() + 1);
            Variant& value = values.emplace_back(static_cast<IDispatch*>(ear.Get()));
            if (parameter.type != VT_DISPATCH) {
                const Variant number(parameter.type == VT_BOOL ? place % 2 : place);
                VariantChangeType(value.Address(), number.In(), 0,
                                  parameter.type == VT_VARIANT ? VARTYPE{VT_BSTR} : parameter.type);
            }
            VARIANT reference{};
            reference.vt = static_cast<VARTYPE>(parameter.type | VT_BYREF);
            reference.byref =
                parameter.type == VT_VARIANT ? static_cast<void*>(value.Address()) : &value.Address()->lVal;
            return Variant::Attach(reference);
        }));
        for (long place = 1; const Variant& value : values) {
            EXPECT_TRUE(value.Type() != VT_I2 || value.ToShort() == place + 100);
            ++place;
        }
        EXPECT_EQ(heard.size(), 1U);
        return std::exchange(heard, {}).at(0);
    }

    std::vector<Operation> events = Functions(com::OwnTypeInfo(objects::kRelayEventsId).Get());
    com::ComPtr<objects::IClsEventos> relay = objects::MakeEventRelay();
    LateObject sink{relay.Get(), L"ClsEventos"};
    Log heard, heardBySecond;
    const com::ComPtr<HostObject> ear = com::Make<HostObject>(L"oído", heard);
    const com::ComPtr<HostObject> second = com::Make<HostObject>(L"otro", heardBySecond);
};

// The type library has both sides, and their names belong together.
TEST_F(FrameRelay, EachMethodRaisesItsEventWithTheSameArguments) {
    const com::Subscription subscription = Listen(ear);
    for (Operation& method : Functions(com::OwnTypeInfo(__uuidof(objects::IClsEventos)).Get())) {
        SCOPED_TRACE(::testing::PrintToString(method.name));
        const std::wstring name = method.name == L"ActualizaColumnas" ? L"ConfigurarColumnas"
                                  : method.name == L"ActualizaOrden"  ? L"AceptaOrden"
                                                                      : L"Acepta" + method.name.substr(7);
        const auto event = std::ranges::find(events, name, &Operation::name);
        ASSERT_NE(event, events.end());
        EXPECT_EQ(CallWith(relay.Get(), method), CallWith(ear.Get(), *event)); // as if called itself
        events.erase(event);
        if (name == L"AceptaInformesFchAuto") { // the sixth argument may be left out
            method.parameters.pop_back();
            CallWith(relay.Get(), method);
            IDispatch* object = ear.Get();
            short number = 1;
            DATE date = 2;
            EXPECT_EQ(relay->AceptarInformesFchAuto(&object, &number, &number, &date, &date, nullptr), S_OK);
            EXPECT_TRUE(std::exchange(heard, {}).at(0).ends_with(L", vt10)"));
        }
    }
    EXPECT_EQ(events.size(), 0U) << "events that nothing raises";
}

TEST_F(FrameRelay, EveryListenerHearsEvenAfterOneThatFailsAndCanBeEnumerated) {
    {
        const com::Subscription first = Listen(ear);
        com::Subscription other = Listen(second);
        ear->Raises(L"AceptaBuscar");
        EXPECT_THROW(sink.Call(L"AceptarBuscar"), com::Error);
        EXPECT_EQ(heardBySecond.size(), 1U);
        other.Reset();
        ear->Accepts({L"AceptaBuscar"});
        sink.Call(L"AceptarBuscar");
        EXPECT_EQ(heard.size(), 2U);
        EXPECT_EQ(heardBySecond.size(), 1U);

        com::ComPtr<IConnectionPointContainer> container;
        com::ComPtr<IEnumConnectionPoints> points;
        com::ComPtr<IConnectionPoint> point, none;
        ASSERT_EQ(relay->QueryInterface(IID_PPV_ARGS(&container)), S_OK);
        ASSERT_EQ(container->EnumConnectionPoints(&points), S_OK);
        ASSERT_EQ(points->Next(1, &point, nullptr), S_OK);
        EXPECT_EQ(points->Next(1, &none, nullptr), S_FALSE);
        IID id{};
        EXPECT_EQ(point->GetConnectionInterface(&id), S_OK);
        EXPECT_TRUE(id == objects::kRelayEventsId);
        com::ComPtr<IEnumConnections> connections, copy;
        ASSERT_EQ(point->EnumConnections(&connections), S_OK);
        EXPECT_EQ(connections->Skip(1), S_OK);
        EXPECT_EQ(connections->Skip(1), S_FALSE);
        EXPECT_EQ(connections->Reset(), S_OK);
        ASSERT_EQ(connections->Clone(&copy), S_OK);
        CONNECTDATA connection{};
        ULONG fetched = 9;
        ASSERT_EQ(copy->Next(1, &connection, &fetched), S_OK);
        EXPECT_EQ(fetched, 1U);
        EXPECT_TRUE(com::SameObject(connection.pUnk, ear.Get()));
        connection.pUnk->Release();
        EXPECT_EQ(copy.Detach()->Release() + connections.Detach()->Release() + points.Detach()->Release(),
                  0U);
    }
    sink.Call(L"AceptarBuscar"); // nobody hears: no error
    EXPECT_EQ(heard.size(), 2U);
    EXPECT_EQ(ear->References() + second->References(), 2);
}

} // namespace
} // namespace tamvelo::testing
