#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "base/ColumnText.h"
#include "base/Commands.h"
#include "base/CursorFiles.h"
#include "base/SettingsKeys.h"

namespace tamvelo::base {
namespace {

TEST(Names, CommandsAreAllListedOnce) {
    EXPECT_EQ(std::set<std::wstring_view>(kAll.begin(), kAll.end()).size(), kAll.size());
    for (const std::wstring_view command : kAll) {
        EXPECT_TRUE(command.starts_with(L"ID_"));
    }
    EXPECT_EQ(std::wstring_view(kBandEdicion), L"Edici\u00F3n");
}

TEST(Names, SettingsKeys) {
    EXPECT_EQ(FormKey(L"Casa", L"Tamvelo", 1, 20, L"frmOrden"),
              L"SOFTWARE\\Casa\\Tamvelo\\1.20\\Configuracion\\frmOrden\\");
    EXPECT_EQ(SesionKey(L"Casa", kSesionTerminal),
              L"SOFTWARE\\Casa\\Global\\Configuracion\\Sesion\\Terminal");
    EXPECT_EQ(SesionKey(L"Casa", kSesionOrdenesInformes),
              L"SOFTWARE\\Casa\\Global\\Configuracion\\Sesion\\Ordenes\\Informes");
    EXPECT_EQ(SesionKey(L"Casa", kSesionPersonalClientes),
              L"SOFTWARE\\Casa\\Global\\Configuracion\\Sesion\\Personal\\Clientes");
    for (const std::wstring& name :
         {std::wstring(L"a/b: c*."), std::wstring(L" "), std::wstring(255, L'x')}) {
        EXPECT_TRUE(IsKeyName(name));
    }
    for (const std::wstring& name :
         {std::wstring(), std::wstring(L"a\\b"), std::wstring(L"a\0", 2), std::wstring(256, L'x')}) {
        EXPECT_FALSE(IsKeyName(name));
    }
}

TEST(Names, CursorFiles) {
    EXPECT_EQ(CursorFile(L"open"), L"KvCur.ani");
    EXPECT_EQ(CursorFile(L"SaVe"), L"Save.ani");
    EXPECT_EQ(CursorFile(L"wait"), L"KvCur1.ani");
    EXPECT_EQ(CursorFile(L"Working"), L"working.ani");
    EXPECT_EQ(CursorFile(L"SORT"), L"sort.ani");
    EXPECT_EQ(CursorFile(L""), L"KvCur.ani");
    EXPECT_EQ(CursorFile(L"..\\open"), L"KvCur.ani");
}

TEST(ColumnText, ARowStaysOneRow) {
    const auto line = [](const std::vector<std::wstring>& cells) { return TabLine(cells); };
    EXPECT_EQ(line({}), L"");
    EXPECT_EQ(line({L"", L"a\tb", L"c\r\nd", L""}), L"\ta b\tc  d\t");
}

} // namespace
} // namespace tamvelo::base
