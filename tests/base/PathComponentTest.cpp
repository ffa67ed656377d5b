#include "base/PathComponent.h"

#include <gtest/gtest.h>

#include <string>

#include "base/Text.h"

namespace tamvelo::base {
namespace {

TEST(PathComponent, TakesOrdinaryNames) {
    for (const wchar_t* name :
         {L"clientes", L"frmSelecclientes.grx", L"Artículos año 2024", L".oculto", L"a..b", L"console",
          L"com", L"com10", L"comx", L"lpt.1", L"nulo", L"aux1", L"conin"}) {
        EXPECT_TRUE(IsPlainPathComponent(name)) << ToUtf8(name);
    }
    EXPECT_TRUE(IsPlainPathComponent(std::wstring(120, L'a')));
}

TEST(PathComponent, RefusesWhatLeavesTheFolderOrChangesOnDisk) {
    for (const wchar_t* name :
         {L"",      L".",  L"..", L"...", L"a\\b", L"a/b",   L"..\\a", L"c:", L"a:flujo", L"a*", L"a?",
          L"\"a\"", L"<a", L"a>", L"a|b", L"a\nb", L"a\x1F", L"a\x7F", L"a.", L"a ",      L" "}) {
        EXPECT_FALSE(IsPlainPathComponent(name)) << ToUtf8(name);
    }
    EXPECT_FALSE(IsPlainPathComponent(std::wstring(121, L'a')));
    EXPECT_FALSE(IsPlainPathComponent(std::wstring_view(L"a\0b", 3)));
}

TEST(PathComponent, RefusesDeviceNames) {
    for (const wchar_t* name :
         {L"con", L"PRN", L"Aux", L"nul", L"NUL.txt", L"nul.tar.gz", L"con .txt", L" con", L"COM0",
          L"com1.grx", L"lpt9", L"LPT\u00B9", L"com\u00B2.x", L"com\u00B3", L"CONIN$", L"conout$.a"}) {
        EXPECT_FALSE(IsPlainPathComponent(name)) << ToUtf8(name);
    }
}

} // namespace
} // namespace tamvelo::base
