#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <optional>

#include "frame/Resources.h"
#include "selection/Resources.h"
#include "tests/hosts/Server.h"
#include "tests/support/Drive.h"
#include "tests/support/FakeHost.h"

namespace tamvelo::testing {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// One call of an operation that opens the selection panel; what it changes by reference is here afterwards.
struct PanelCall {
    using Operation = decltype(&entry::IClsShowSerch::ShowSelec);
    Operation operation = &entry::IClsShowSerch::ShowSelec;
    short column = 0;
    short indx = 0;
    VARIANT_BOOL find = VARIANT_TRUE;
    short last = 0; // bStock, or iModal of the direct ones
};

/// The real library beside the test program, a fake host with a window, a private registry and a private
/// folder. After each test nothing may be left: no window, no GDI object, no reference, no reason to stay
/// loaded.
class PanelTest : public ::testing::Test {
protected:
    explicit PanelTest(long records = 20) : host(records) {}
    void SetUp() override;
    void TearDown() override;

    /// Calls the operation with the script playing; the error that the host got, if any.
    std::optional<com::Error> Show(PanelCall& call, Script script);
    std::optional<com::Error> Show(PanelCall&& call, Script script) { return Show(call, std::move(script)); }
    std::optional<com::Error> Show(Script script) { return Show(PanelCall{}, std::move(script)); }
    /// The indirect operation, which has a text of its own.
    std::optional<com::Error> ShowIndirect(const wchar_t* text, short modal, Script script);
    /// As a late-bound caller, by name and with the three objects only.
    std::optional<com::Error> ShowLate(const wchar_t* operation, Script script);

    /// What the host was asked since the last time.
    Log TakeLog() { return std::exchange(host.log, {}); }
    /// Notes what has been asked so far, and forgets it: the opening is checked elsewhere.
    Script Forget() {
        return Script().Do([this] { host.log.clear(); });
    }
    static Script Keys(std::initializer_list<UINT> keys);

    /// Waits for a dialog over the panel, or for a menu.
    static Script Elsewhere();
    static Script InMenu();

    static HWND Panel();
    static HWND Bar();
    static WPARAM Tools();
    /// The window command of a tool that is on the bar; -1 when it is not.
    static int ToolCommand(const std::wstring& caption);
    static void ClickTool(const wchar_t* caption);
    static HWND Item(int id) { return GetDlgItem(Panel(), id); }
    static bool IsShown(int id) { return IsWindowVisible(Item(id)) != FALSE; }
    static std::wstring ItemText(int id) { return TextOf(Item(id)); }
    /// A place in the first row of the grid, or in its heading, as a mouse message has it.
    static LPARAM FirstRow();
    static HWND Heading();
    std::wstring File(const std::wstring& name) const { return (m_folder / L"AtbGrx" / name).wstring(); }
    void WriteText(const std::wstring& file, const std::string& text) const;
    std::string ReadText(const std::wstring& file) const;
    static void SetValue(const std::wstring& key, const wchar_t* name, const std::wstring& value);
    static std::wstring GetValue(const std::wstring& key, const wchar_t* name);
    std::string Notes() const;

    static constexpr wchar_t kFormKey[] = L"SOFTWARE\\Tamvelo\\Tamvelo\\1.0\\Configuracion\\frmSeleccion";
    static constexpr wchar_t kEnvironmentKey[] = L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Entorno";

    FakeHost host;
    com::ComPtr<entry::IClsShowSerch> server;
    com::ComPtr<IDispatch> ctl; // the caller's own variable
    HWND owner = nullptr;
    HWND ownerBox = nullptr;

private:
    static Script Tour();
    std::vector<std::wstring> Windows() const;
    long References() const;
    std::optional<com::Error> Outcome(HRESULT code) const;

    std::filesystem::path m_folder;
    HKEY m_registry = nullptr;
    std::vector<std::wstring> m_windows;
    unsigned m_gdi = 0;
};

} // namespace tamvelo::testing
