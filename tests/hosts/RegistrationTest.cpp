#include <gtest/gtest.h>

#include <algorithm>

#include "Programs.h"
#include "Server.h"
#include "com/Error.h"
#include "frame/RelayInterfaces.h"

namespace tamvelo::hosts {
namespace {

using Snapshot = std::map<std::wstring, std::wstring>;
using Install = HRESULT STDAPICALLTYPE(BOOL, PCWSTR);

/// What is in one of the snapshots only, for a readable failure.
std::string Difference(const Snapshot& before, const Snapshot& after) {
    std::vector<std::pair<std::wstring, std::wstring>> found;
    std::ranges::set_symmetric_difference(before, after, std::back_inserter(found));
    return testing::PrintToString(found);
}

/// An object by its name, as a script makes it.
com::ComPtr<entry::IClsShowSerch> CreateByName() {
    CLSID id{};
    com::ComPtr<entry::IClsShowSerch> made;
    com::Check(CLSIDFromProgID(L"Tamvelo.ClsShowSerch", &id));
    com::Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)));
    return made;
}

class RegistrationTest : public testing::Test {
protected:
    void SetUp() override {
        Clean(); // what a run that was ended left
        m_before = ClassesSnapshot();
    }
    void TearDown() override {
        const Snapshot now = ClassesSnapshot();
        EXPECT_TRUE(now == m_before) << Difference(m_before, now);
        Clean();
        SetErrorInfo(0, nullptr);
    }
    void Clean() const {
        for (const wchar_t* scope : {L"", L"user"}) {
            m_install(FALSE, scope);
        }
    }
    /// The keys and values of ours under one hive, named without it.
    Snapshot Added(std::wstring_view hive) const {
        Snapshot added;
        for (const auto& [key, value] : ClassesSnapshot()) {
            if (key.starts_with(hive) && key.find(L'{') != std::wstring::npos && !m_before.contains(key)) {
                added[key.substr(hive.size())] = value;
            }
        }
        return added;
    }

    Snapshot m_before;
    const Server m_server;
    Install* const m_install = m_server.Export<Install>("DllInstall");
};

TEST_F(RegistrationTest, MachineWide) {
    ASSERT_EQ(RunRegsvr32(L""), 0U);
    const Snapshot once = ClassesSnapshot();
    ASSERT_EQ(RunRegsvr32(L""), 0U);
    EXPECT_TRUE(ClassesSnapshot() == once);

    auto object = CreateByName();
    EXPECT_FALSE(m_server.MayUnload());
    object.Reset();
    EXPECT_TRUE(m_server.MayUnload());
    com::ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(entry::kLibraryId, 1, 0, LOCALE_NEUTRAL, &library), S_OK);

    EXPECT_EQ(RunRegsvr32(L"/u"), 0U);
    EXPECT_EQ(RunRegsvr32(L"/u"), 0U); // nothing left to do is no error
}

// Only the keys: not every system that the tests run on looks for classes of the user.
TEST_F(RegistrationTest, ForTheUserWritesTheSameAndNothingForOthers) {
    ASSERT_EQ(RunRegsvr32(L""), 0U);
    const Snapshot machine = Added(L"hklm");
    ASSERT_EQ(RunRegsvr32(L"/u"), 0U);
    EXPECT_GT(machine.size(), 20U);

    ASSERT_EQ(RunRegsvr32(L"/n /i:user"), 0U);
    EXPECT_TRUE(Added(L"hklm").empty());
    const Snapshot user = Added(L"hkcu");
    EXPECT_TRUE(user == machine) << Difference(machine, user);
    EXPECT_EQ(RunRegsvr32(L"/u /n /i:user"), 0U);
    EXPECT_EQ(m_install(TRUE, L"otra cosa"), E_INVALIDARG);
}

// A volatile key refuses lasting children. The one here is among the last to be written to.
TEST_F(RegistrationTest, RefusedHalfWayTakesBackWhatWasWritten) {
    wchar_t id[39];
    StringFromGUID2(frame::kRelayEventsId, id, ARRAYSIZE(id));
    const std::wstring path = std::wstring(L"Software\\Classes\\Interface\\") + id;
    HKEY obstacle = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &obstacle, nullptr),
              ERROR_SUCCESS);
    constexpr wchar_t kEarlier[] = L"de antes";
    RegSetValueExW(obstacle, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(kEarlier), sizeof(kEarlier));
    const Snapshot before = ClassesSnapshot();

    EXPECT_EQ(m_install(TRUE, L"user"), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    const Snapshot after = ClassesSnapshot();
    EXPECT_TRUE(after == before) << Difference(before, after);

    RegCloseKey(obstacle);
    // takes the obstacle away as well, and the parent that it brought
    EXPECT_EQ(m_install(FALSE, L"user"), S_OK);
}

// Programs whose own manifest names the library, in a folder with it; of both kinds of run-time library.
TEST_F(RegistrationTest, NotNeededByAProgramWithAManifest) {
    // What somebody put into the registry for our class, for everybody or for the user, is not asked.
    wchar_t id[39];
    StringFromGUID2(entry::kClsShowSerchId, id, ARRAYSIZE(id));
    const std::wstring path = std::wstring(L"Software\\Classes\\CLSID\\") + id + L"\\InprocServer32";
    constexpr wchar_t kOther[] = L"C:\\no\\hay.dll";
    for (const HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        ASSERT_EQ(m_install(TRUE, hive == HKEY_CURRENT_USER ? L"user" : L""), S_OK);
        RegSetKeyValueW(hive, path.c_str(), nullptr, REG_SZ, kOther, sizeof(kOther));
    }
    EXPECT_THROW(CreateByName(), com::Error);
    for (const wchar_t* runtime : {L"static", L"shared"}) {
        SCOPED_TRACE(testing::PrintToString(runtime));
        const Finished finished = RunProgram(Folder() + L"\\guests\\refused-" + runtime + L".exe");
        EXPECT_EQ(finished.code, 0U);
        EXPECT_TRUE(finished.output.starts_with("Propio: antes\r\nTamvelo: ") &&
                    finished.output.ends_with("\r\nPropio: luego\r\n"))
            << finished.output;
    }
    Clean();
}

} // namespace
} // namespace tamvelo::hosts
