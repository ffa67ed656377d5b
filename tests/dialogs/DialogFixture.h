#pragma once

#include "com/WinHeaders.h"

#include <commctrl.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "base/Text.h"
#include "com/Collection.h"
#include "com/LateObject.h"
#include "frame/Resources.h"
#include "tests/hosts/Server.h"
#include "tests/support/Component.h"
#include "tests/support/Drive.h"
#include "tests/support/FakeHost.h"
#include "tests/support/HostChecks.h"

namespace tamvelo::testing {

using com::Invocation;
using com::Variant;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::StartsWith;

template <class T>
std::vector<T> operator+(std::vector<T> first, const std::vector<T>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

RECT PlaceOf(HWND window);

/// The real library beside the test program, a fake host with a window, a private registry and a private
/// folder. After each test nothing may be left: no window, no GDI object, no reference, no reason to stay
/// loaded.
class DialogTest : public ::testing::Test {
protected:
    explicit DialogTest(long records = 20);
    void SetUp() override;
    void TearDown() override;

    /// Makes a call of the library with the script playing; the error that the host got, if any.
    std::optional<com::Error> Play(Script script, const std::function<HRESULT()>& call);
    /// As a late-bound caller, by name.
    std::optional<com::Error> PlayLate(const wchar_t* operation, com::Arguments arguments, Script script);

    /// The host's own loop, until the dialog has gone.
    static void TurnLoop();

    /// What the host was asked since the last time.
    Log TakeLog() { return std::exchange(host.log, {}); }
    /// Notes what has been asked so far, and forgets it: the opening is checked elsewhere.
    Script Forget() {
        return Script().Do([this] { host.log.clear(); });
    }

    // Steps of a script, which is a list of them and of keys: {Into(IDC_X, L"a"), L"Tab Enter", Box(L"No")}.
    static Script Key(UINT key, UINT held = 0) { return Script().Key(key, held); }
    static Script Type(std::wstring text) { return Script().Type(std::move(text)); }
    static Script Do(std::function<void()> action) { return Script().Do(std::move(action)); }
    static Script Until(std::string what, Script::Step condition) {
        return Script().Until(std::move(what), std::move(condition));
    }
    static Script Box(std::wstring part) { return Script().Box(std::move(part)); }
    /// Expects that the host was asked just that since the last time.
    Script Asked(Log asked) {
        return Do([this, asked = std::move(asked)] { EXPECT_THAT(TakeLog(), ElementsAreArray(asked)); });
    }

    // Steps that wait: for the focus in a control, for a dialog that has one, for a menu.
    static Script Focused(int id) {
        return Until("the focus in " + std::to_string(id),
                     [id](HWND) { return Item(id) && GetFocus() == Item(id); });
    }
    static Script Showing(int id) {
        return Until("a dialog with " + std::to_string(id),
                     [id](HWND top) { return GetDlgItem(top, id) != nullptr; });
    }
    static Script InMenu();
    // Steps that do: go to a control and type there, press Tab and arrive, press a button, a tool, the close
    // box, answer a question that contains the text (0: by Enter).
    static Script Into(int id, const std::wstring& text = L"") {
        return {Do([id] { SetFocus(Item(id)); }), Focused(id), Type(text)};
    }
    static Script Set(int id, const std::wstring& text) { // as from the clipboard: without the focus
        return Do([=] { SetWindowTextW(Item(id), text.c_str()); });
    }
    static Script TabTo(int id) { return {Key(VK_TAB), Focused(id)}; }
    static Script Click(int id) {
        return Do([id] { PostMessageW(Item(id), BM_CLICK, 0, 0); });
    }
    static Script Tool(const wchar_t* caption) {
        return Do([caption] { ClickTool(caption); });
    }
    static Script Close() {
        return Do([] { PostMessageW(Dialog(), WM_CLOSE, 0, 0); });
    }
    /// The mouse in a row of the list, so far to the right of the label's beginning.
    static Script InList(int row, LONG x, const std::vector<UINT>& messages);
    static Script Question(int button, const std::wstring& text = L"");
    /// Expects each of the controls to be x; o: off, -: hidden.
    static Script Looks(std::initializer_list<int> ids, const std::wstring& shown);
    // Steps that expect a control's text, the status line's, a part of one.
    static Script Says(int id, const std::wstring& text) {
        return Do([=] { EXPECT_EQ(ItemText(id), text); });
    }
    static Script Says(const std::wstring& status) { return Says(IDC_STATUS, status); }
    static Script Mentions(int id, const std::wstring& part) {
        return Do([=] { EXPECT_THAT(ItemText(id), HasSubstr(part)); });
    }
    /// Counts the messages that a control of the dialog gets, by their numbers.
    using Counts = std::map<UINT, UINT>;
    static void Count(HWND control, Counts& counts);

    /// The topmost window of this thread that is so.
    static HWND FindWindowThat(const std::function<bool(HWND)>& fits);
    /// The topmost dialog of the library; null when none is open.
    static HWND Dialog();
    static HWND Bar();
    static WPARAM Tools();
    /// The window command of a tool that is on the bar; -1 when it is not.
    static int ToolCommand(const std::wstring& caption);
    static void ClickTool(const wchar_t* caption);
    /// A control of it or of a panel in it.
    static HWND Item(int id);
    static bool IsShown(int id) { return IsWindowVisible(Item(id)) != FALSE; }
    static std::wstring ItemText(int id) { return TextOf(Item(id)); }
    std::wstring File(const std::wstring& name) const { return (m_folder / L"AtbGrx" / name).wstring(); }
    void WriteText(const std::wstring& file, const std::string& text) const;
    std::string ReadText(const std::wstring& file) const;
    static void SetValue(const std::wstring& key, const wchar_t* name, const std::wstring& value);
    static std::wstring GetValue(const std::wstring& key, const wchar_t* name);
    static std::wstring FormKey(const wchar_t* form) {
        return std::wstring(L"SOFTWARE\\Tamvelo\\Tamvelo\\1.0\\Configuracion\\") + form;
    }
    static std::wstring Session(const wchar_t* key) {
        return std::wstring(L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\") + key;
    }
    std::string Notes() const { return "the host was asked: " + ::testing::PrintToString(host.log); }
    /// From here on each GDI object counts: what the system keeps has come.
    void CountObjects();
    /// None is left that was not there before but for those.
    void ExpectObjects();
    /// The host's window, again where it was closed; it comes to the front.
    void NewOwner();

    /// Makes it all of these components of the environment.
    void Offer(std::initializer_list<const wchar_t*> parts, IDispatch* components);
    void Offer(std::initializer_list<const wchar_t*> parts) { Offer(parts, environment.Get()); }

    static constexpr wchar_t kEnvironmentKey[] = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Entorno";

    FakeHost host;
    com::ComPtr<HostObject> environment = com::Make<HostObject>(L"Entorno", host.log);
    hosts::Server library;
    com::ComPtr<entry::IClsShowSerch> server;
    com::ComPtr<IDispatch> ctl; // the caller's own variables
    com::ComPtr<IDispatch> sink{host.sink.Get()};
    com::ComPtr<IDispatch> data{host.data.Get()};
    com::ComPtr<IDispatch> columns{host.columns.Get()};
    std::optional<HostChecks> checks;
    long gdiSlack = 20; // what the system keeps of a window that is hidden before it goes
    HWND owner = nullptr;
    HWND ownerBox = nullptr;

private:
    std::vector<std::wstring> Windows() const;

    std::filesystem::path m_folder;
    std::optional<Component> m_component;
    HKEY m_registry = nullptr;
    std::vector<std::wstring> m_windows;
    long m_gdi = 0;
    static inline long s_caches = 200; // of the system's, which the first of each kind fills
    long m_references = 0;
};

} // namespace tamvelo::testing
