// Controls as the host sees them, their places, and the relay of results.
#include "com/WinHeaders.h"

#include <commctrl.h>
#include <gmock/gmock.h>

#include <map>
#include <memory>

#include "base/Text.h"
#include "com/LateObject.h"
#include "com/TypedDispatch.h"
#include "frame/CheckList.h"
#include "frame/ControlObject.h"
#include "frame/EventRelay.h"
#include "frame/RowLayout.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Operations.h"

namespace tamvelo::testing {
namespace {

using com::Argument;
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
        m_object = com::Make<frame::ControlObject>(Child(kind, style, 9), L"TxtFields", short{3});
        return {m_object.Get(), L"control"};
    }
    std::array<LONG, 4> Place(int id) const {
        RECT place{};
        GetWindowRect(GetDlgItem(m_parent, id), &place);
        MapWindowPoints(nullptr, m_parent, reinterpret_cast<POINT*>(&place), 2);
        return {place.left, place.top, place.right, place.bottom};
    }

    const HWND m_parent;
    com::ComPtr<frame::ControlObject> m_object;
};

TEST_F(FrameObjects, EachKindOfControlHasItsMembersAndDoesWhatTheySay) {
    const std::wstring common = L"Name Index DataField Enabled Visible SetFocus hWnd Tag";
    const std::wstring members[] = {L"Text",      L"Caption",   L"Value",     L"MaxLength",
                                    L"SelStart",  L"SelLength", L"ListCount", L"List",
                                    L"ListIndex", L"Selected",  L"AddItem",   L"Clear"};
    const struct {
        const wchar_t* kind;
        DWORD style;
        std::wstring own; // beyond what every control has
    } cases[] = {
        {L"EDIT", 0, L"Text MaxLength SelStart SelLength"},
        {L"BUTTON", BS_AUTOCHECKBOX, L"Caption Value"},
        {L"BUTTON", BS_PUSHBUTTON, L"Caption"},
        {L"STATIC", 0, L"Caption"},
        {L"LISTBOX", LBS_MULTIPLESEL, L"Text ListCount List ListIndex Selected AddItem Clear"},
        {L"SysDateTimePick32", 0, L"Value"},
        {L"COMBOBOX", CBS_DROPDOWNLIST, L"Text ListCount List ListIndex AddItem Clear"},
    };
    for (const auto& [kind, style, own] : cases) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(kind)));
        LateObject control = Control(kind, style);
        for (const std::wstring& member : base::Split(common, L" ")) {
            EXPECT_TRUE(control.Answers(member.c_str()));
        }
        for (const std::wstring& member : members) {
            EXPECT_EQ(control.Answers(member.c_str()),
                      (L" " + own + L" ").find(L" " + member + L" ") != own.npos);
        }
        EXPECT_EQ(control.Call(L"Name").ToText() + control.Call(L"Index").ToText(), L"TxtFields3");
        if (own.starts_with(L"Text L")) {
            control.Call(L"AddItem", {L"uno"});
            control.Call(L"AddItem", {L"dos"});
            EXPECT_EQ(control.Call(L"List", {0L}).ToText(), L"uno");
            EXPECT_THROW(control.Call(L"List", {2L}), com::Error);
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
    LateObject list = Control(L"COMBOBOX", CBS_DROPDOWNLIST);
    list.Call(L"AddItem", {L"uno"});
    list.Call(L"AddItem", {L"dos"});
    EXPECT_EQ(list.Call(L"ListIndex").ToLong(), -1);
    list.Put(L"ListIndex", 1L);
    EXPECT_EQ(list.Call(L"Text").ToText(), L"dos");
    LateObject picker = Control(L"SysDateTimePick32", 0);
    picker.Put(L"Value", com::Variant::Date(46023.25)); // 1 January 2026, six o'clock
    EXPECT_EQ(picker.Call(L"Value").Type(), VT_DATE);
    EXPECT_THROW(picker.Put(L"Value", com::Variant::Date(1e9)), com::Error);
    EXPECT_EQ(picker.Call(L"Value").ToDate(), 46023.25);
}

/// A component fills, reads and ticks the list through its control object, also while a search hides part of
/// it.
TEST_F(FrameObjects, AListsControlObjectWorksOnTheEntries) {
    struct Events final : frame::CheckListEvents {
        int changes = 0;
        void ListChanged() override { ++changes; }
        void EntryDoubleClicked() override {}
        void CurrentChanged() override {}
        void ListMenuAsked(POINT) override {}
    };
    for (const auto kind : {frame::CheckList::Kind::Ticks, frame::CheckList::Kind::Plain}) {
        const bool ticks = kind == frame::CheckList::Kind::Ticks;
        LateObject object = Control(WC_LISTVIEWW, LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL);
        Events events;
        frame::CheckList list(m_object->Window(), kind, events);
        list.Fill({{L"vieja", true}});
        object.Call(L"Clear");
        for (const wchar_t* caption : {L"Facturas", L"Albaranes", L"Recibos"}) {
            object.Call(L"AddItem", {caption});
        }
        const auto selected = [&](long entry) { return object.Call(L"Selected", {entry}).ToBool(); };
        const auto select = [&](long entry, bool on) {
            SendMessageW(m_object->Window(), LB_SETSEL, on, entry);
        };
        list.Find(L"RE");
        EXPECT_EQ(list.ShownCount(), 1);
        select(2, true);
        EXPECT_EQ(object.Call(L"ListIndex").ToLong(), 2);
        EXPECT_EQ(object.Call(L"Text").ToText(), L"Recibos");
        select(1, true); // hidden: ticked all the same, but nothing that could be current
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
        list.RememberTicks();
        list.TickAll(true);
        list.RestoreTicks();
        EXPECT_EQ(list.TickedCount(), ticks ? 2 : 0);
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
    const frame::RowLayout layout(m_parent, {{frame::kOwn, {{1}, {2, frame::kFill}}},
                                             {frame::kFill, {{3, frame::kFill}}},
                                             {frame::kOwn, {{4, frame::kFill}}, 9},
                                             {frame::kOwn, {{5}}, 9},
                                             {frame::kOwn, {{6}}}});
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

/// Writes down what it hears, and adds 100 to every number that came by reference.
class Ear final : public com::Object<IDispatch> {
public:
    std::vector<std::pair<DISPID, std::wstring>> heard;
    bool deaf = false;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                     EXCEPINFO* thrown, UINT*) override {
        std::wstring line;
        for (UINT i = given->cArgs; i-- > 0;) {
            VARIANT& argument = given->rgvarg[i];
            const Variant value = Variant::CopyOf(argument);
            line += (argument.vt & VT_BYREF ? L"&" : L"") +
                    (value.IsMissing()  ? L"-"
                     : value.IsObject() ? L"o"
                                        : value.ToText()) +
                    L" ";
            if (argument.vt == (VT_BYREF | VT_I2)) {
                *argument.piVal = static_cast<short>(*argument.piVal + 100);
            }
        }
        heard.emplace_back(id, line);
        return deaf ? com::FillExcepInfo({E_FAIL, L"sordo"}, thrown) : S_OK;
    }
};

class FrameRelay : public ::testing::Test {
protected:
    com::ComPtr<frame::EventRelay> relay = com::Make<frame::EventRelay>();
    LateObject sink{relay.Get(), L"ClsEventos"};
    com::ComPtr<Ear> ear = com::Make<Ear>();

    com::Subscription Listen(const com::ComPtr<Ear>& listener) const {
        return {static_cast<frame::IClsEventos*>(relay.Get()), frame::kRelayEventsId, listener.Get()};
    }
    /// Calls one of its methods with variables of the declared types; what its event must bring.
    std::wstring CallWith(const Operation& method) {
        std::vector<Variant> values;
        std::wstring expected;
        for (const Parameter& parameter : method.parameters) {
            const auto place = static_cast<long>(values.size());
            Variant value(place % 2 == 1);
            if (parameter.type == VT_DISPATCH) {
                value = Variant(static_cast<IDispatch*>(ear.Get()));
            } else if (parameter.type != VT_BOOL) {
                const VARTYPE type = parameter.type == VT_VARIANT ? VARTYPE{VT_BSTR} : parameter.type;
                VariantChangeType(value.Address(), Variant(place + 1).In(), 0, type);
            }
            expected += L"&" + (value.IsObject() ? L"o" : value.ToText()) + L" ";
            values.push_back(value);
        }
        const auto error = CallLate(relay.Get(), method, [&](const Parameter& parameter) {
            VARIANT* const value =
                values[static_cast<size_t>(&parameter - method.parameters.data())].Address();
            VARIANT reference{};
            reference.vt = static_cast<VARTYPE>(parameter.type | VT_BYREF);
            reference.byref = parameter.type == VT_VARIANT ? static_cast<void*>(value) : &value->lVal;
            return Variant::Attach(reference);
        });
        EXPECT_FALSE(error);
        for (long i = 0; Variant & value : values) {
            ++i;
            EXPECT_TRUE(value.Type() != VT_I2 || value.ToShort() == i + 100);
        }
        return expected;
    }
};

// The type library has both sides, and their names belong together.
TEST_F(FrameRelay, EachMethodRaisesItsEventWithTheSameArguments) {
    const com::Subscription subscription = Listen(ear);
    std::map<std::wstring, Operation> events;
    for (const Operation& event : Functions(com::OwnTypeInfo(frame::kRelayEventsId).Get())) {
        events[event.name] = event;
    }
    EXPECT_EQ(events.size(), 21U);
    for (Operation& method : Functions(com::OwnTypeInfo(__uuidof(frame::IClsEventos)).Get())) {
        SCOPED_TRACE(::testing::PrintToString(method.name));
        const std::wstring name = method.name == L"ActualizaColumnas" ? L"ConfigurarColumnas"
                                  : method.name == L"ActualizaOrden"  ? L"AceptaOrden"
                                                                      : L"Acepta" + method.name.substr(7);
        const std::wstring expected = CallWith(method);
        EXPECT_THAT(ear->heard, ElementsAre(std::pair(events[name].id, expected)));
        events.erase(name);
        ear->heard.clear();
        if (method.name == L"AceptarInformesFchAuto") { // the sixth argument may be left out
            method.parameters.pop_back();
            CallWith(method);
            IDispatch* object = ear.Get();
            short number = 1;
            DATE date = 2;
            EXPECT_EQ(relay->AceptarInformesFchAuto(&object, &number, &number, &date, &date, nullptr), S_OK);
            ASSERT_EQ(ear->heard.size(), 2U);
            EXPECT_TRUE(ear->heard[1].second.ends_with(L"- "));
            ear->heard.clear();
        }
    }
    EXPECT_EQ(events.size(), 0U) << "events that nothing raises";
}

TEST_F(FrameRelay, EveryListenerHearsEvenAfterOneThatFailsAndCanBeEnumerated) {
    const auto second = com::Make<Ear>();
    {
        const com::Subscription first = Listen(ear);
        com::Subscription other = Listen(second);
        ear->deaf = true;
        EXPECT_THROW(sink.Call(L"AceptarBuscar"), com::Error);
        EXPECT_EQ(second->heard.size(), 1U);
        other.Reset();
        ear->deaf = false;
        sink.Call(L"AceptarBuscar");
        EXPECT_EQ(ear->heard.size(), 2U);
        EXPECT_EQ(second->heard.size(), 1U);

        com::ComPtr<IEnumConnectionPoints> points;
        com::ComPtr<IConnectionPoint> point;
        com::ComPtr<IConnectionPoint> none;
        ASSERT_EQ(relay->EnumConnectionPoints(&points), S_OK);
        ASSERT_EQ(points->Next(1, &point, nullptr), S_OK);
        EXPECT_EQ(points->Next(1, &none, nullptr), S_FALSE);
        IID events{};
        EXPECT_EQ(point->GetConnectionInterface(&events), S_OK);
        EXPECT_TRUE(events == frame::kRelayEventsId);
        com::ComPtr<IEnumConnections> connections;
        com::ComPtr<IEnumConnections> copy;
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
    EXPECT_EQ(ear->heard.size(), 2U);
    for (Ear* each : {ear.Get(), second.Get()}) {
        each->AddRef();
        EXPECT_EQ(each->Release(), 1U);
    }
}

} // namespace
} // namespace tamvelo::testing
