#include <gmock/gmock.h>

#include "RegistryView.h"
#include "Server.h"
#include "com/Error.h"

namespace tamvelo::hosts {
namespace {

using ::testing::ContainerEq;
using ::testing::IsEmpty;
using Install = HRESULT STDAPICALLTYPE(BOOL, PCWSTR);

const std::wstring kClasses = L"Software\\Classes\\";
const std::wstring kClass = kClasses + L"CLSID\\{043d9058-66c9-47c8-b6b5-86e743af173d}";
const std::wstring kLibrary = kClasses + L"TypeLib\\{283a5031-a929-41d5-87cb-3a295ca13e47}";
const std::wstring kLastWritten = kClasses + L"Interface\\{013a48d8-a9f0-4fd6-803c-97786e3e425a}";

/// What is ours: the machine's classes are thousands, and others may add some at any time.
Snapshot Ours(HKEY hive) {
    Snapshot found;
    for (const std::wstring& path : {kClass, kLastWritten, kClasses + L"Tamvelo.ClsShowSerch", kLibrary,
                                     kClasses + L"Interface\\{dc1603ac-63cf-4adb-a96d-b063214271c5}",
                                     kClasses + L"Interface\\{18e14ba8-ca82-4820-becd-ac9077b2032f}"}) {
        Read(hive, path, found);
    }
    return found;
}

Snapshot AllOfTheUser() {
    Snapshot found = Ours(HKEY_CURRENT_USER); // which not every listing shows
    Read(HKEY_CURRENT_USER, L"Software\\Classes", found);
    return found;
}

/// An object by its name, as a script makes it.
com::ComPtr<IDispatch> CreateByName() {
    CLSID id{};
    com::ComPtr<IDispatch> made;
    com::Check(CLSIDFromProgID(L"Tamvelo.ClsShowSerch", &id));
    com::Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)));
    return made;
}

class RegistrationTest : public testing::Test {
protected:
    void SetUp() override {
        Clean(); // what a run that was ended left
        m_install(TRUE, L"user");
        Clean(); // and its empty parents, which go with what is in them
        RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Classes", L"prueba", REG_SZ, L"",
                        2); // as users have it
        m_before = AllOfTheUser();
    }
    void TearDown() override {
        EXPECT_THAT(AllOfTheUser(), ContainerEq(m_before));
        EXPECT_THAT(Ours(HKEY_LOCAL_MACHINE), IsEmpty());
        Clean();
        SetErrorInfo(0, nullptr);
    }
    void Clean() const {
        for (const wchar_t* scope : {L"", L"user"}) {
            m_install(FALSE, scope);
        }
    }

    Snapshot m_before;
    const Server m_server;
    Install* const m_install = m_server.Export<Install>("DllInstall");
};

// Of the user only the keys are looked at: not every system that the tests run on looks for classes there.
TEST_F(RegistrationTest, ForTheUserWritesTheSameAsForTheMachineAndNothingForOthers) {
    ASSERT_EQ(RunRegsvr32(L""), 0U);
    const Snapshot machine = Ours(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(machine.size(), 46U) << "keys and values";
    ASSERT_EQ(RunRegsvr32(L""), 0U);
    EXPECT_THAT(Ours(HKEY_LOCAL_MACHINE), ContainerEq(machine));
    EXPECT_TRUE(CreateByName());
    com::ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(entry::kLibraryId, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    EXPECT_EQ(RunRegsvr32(L"/u"), 0U);
    EXPECT_EQ(RunRegsvr32(L"/u"), 0U); // nothing left to do is no error

    ASSERT_EQ(RunRegsvr32(L"/n /i:user"), 0U);
    EXPECT_THAT(Ours(HKEY_LOCAL_MACHINE), IsEmpty());
    EXPECT_THAT(Ours(HKEY_CURRENT_USER), ContainerEq(machine));
    EXPECT_EQ(RunRegsvr32(L"/u /n /i:user"), 0U);
    EXPECT_EQ(m_install(TRUE, L"otra cosa"), E_INVALIDARG);
}

// Of a library for 32 and one for 64 bits the second one to go takes along what both need: the name and the
// type library.
TEST_F(RegistrationTest, LeavesWhatTheOtherKindOfProcessNeeds) {
    constexpr wchar_t kFile[] = L"C:\\otra.dll";
    const std::wstring platforms[] = {kLibrary + L"\\1.0\\0\\win32", kLibrary + L"\\1.0\\0\\win64"};
    const std::wstring& own = platforms[sizeof(void*) == 8 ? 1 : 0];
    const std::wstring& other = platforms[sizeof(void*) == 8 ? 0 : 1];
    RegSetKeyValueW(HKEY_CURRENT_USER, other.c_str(), nullptr, REG_SZ, kFile, sizeof kFile);
    ASSERT_EQ(m_install(TRUE, L"user"), S_OK);
    Snapshot expected = Ours(HKEY_CURRENT_USER);
    EXPECT_EQ(expected.count(own), 1U);
    ASSERT_EQ(m_install(FALSE, L"user"), S_OK);
    std::erase_if(expected, [&](const auto& entry) {
        return entry.first.starts_with(own) || entry.first.starts_with(kClass) ||
               entry.first.starts_with(kClasses + L"Interface");
    });
    EXPECT_THAT(Ours(HKEY_CURRENT_USER), ContainerEq(expected));
    EXPECT_GT(expected.size(), 8U) << "name and type library";
    RegDeleteTreeW(HKEY_CURRENT_USER, other.c_str());
    EXPECT_EQ(m_install(FALSE, L"user"), S_OK); // now nobody needs them
}

// A volatile key refuses lasting children. The one here is among the last to be written to.
TEST_F(RegistrationTest, RefusedHalfWayTakesBackWhatWasWritten) {
    HKEY obstacle = nullptr;
    RegCreateKeyW(HKEY_CURRENT_USER, (kClasses + L"Interface").c_str(), &obstacle); // a parent that lasts
    RegCloseKey(obstacle);
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kLastWritten.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &obstacle, nullptr),
              ERROR_SUCCESS);
    constexpr wchar_t kEarlier[] = L"de antes";
    RegSetValueExW(obstacle, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(kEarlier), sizeof(kEarlier));
    RegCloseKey(obstacle);
    const Snapshot before = AllOfTheUser();
    EXPECT_EQ(m_install(TRUE, L"user"), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    EXPECT_THAT(AllOfTheUser(), ContainerEq(before));
    // takes the obstacle away as well, and the parent that it brought
    EXPECT_EQ(m_install(FALSE, L"user"), S_OK);
}

// Programs whose own manifest names the library, in a folder with it; of both kinds of run-time library.
TEST_F(RegistrationTest, NotNeededByAProgramWithAManifest) {
    // What somebody put into the registry for our class, for everybody or for the user, is not asked.
    constexpr wchar_t kOther[] = L"C:\\no\\hay.dll";
    for (const HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        ASSERT_EQ(m_install(TRUE, hive == HKEY_CURRENT_USER ? L"user" : L""), S_OK);
        RegSetKeyValueW(hive, (kClass + L"\\InprocServer32").c_str(), nullptr, REG_SZ, kOther,
                        sizeof(kOther));
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
