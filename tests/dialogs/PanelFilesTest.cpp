// What the selection panel keeps: the grid's look, its place on screen, the arrangement of its bar.
#include "com/WinHeaders.h"

#include <dlgs.h>

#include "tests/dialogs/PanelFixture.h"
#include "win/Handles.h"

namespace tamvelo::testing {
namespace {

constexpr int kAll = MemoryRecordSet::kColumns;

class PanelFiles : public PanelTest {
protected:
    static Script Has(int columns) {
        return Do([=] { EXPECT_EQ(SendMessageW(Heading(), HDM_GETITEMCOUNT, 0, 0), columns); });
    }
    static Script Notes(const wchar_t* part) { return {Has(kAll), Mentions(IDC_STATUS, part)}; }
    static Script HasTool(const wchar_t* caption, bool there = true) {
        return Do([=] { EXPECT_EQ(ToolCommand(caption) >= 0, there); });
    }
    /// A button of the system's customisation dialog, by a part of its caption.
    static Script Press(const wchar_t* part) {
        return Do([part] {
            HWND child = nullptr;
            do {
                child = FindWindowExW(TopWindow(), child, L"Button", nullptr);
            } while (child && TextOf(child).find(part) == std::wstring::npos);
            EXPECT_TRUE(PostMessageW(child, BM_CLICK, 0, 0));
        });
    }
    /// The system's dialog, with one of its sizes.
    static Script Font(const wchar_t* leave, WPARAM size = 0) {
        return {L"F3", Elsewhere(), Do([size] {
                    const HWND sizes = GetDlgItem(TopWindow(), cmb3);
                    SendMessageW(sizes, CB_SETCURSEL, size, 0);
                    SendMessageW(TopWindow(), WM_COMMAND, MAKEWPARAM(cmb3, CBN_SELCHANGE),
                                 reinterpret_cast<LPARAM>(sizes));
                }),
                leave, Back()};
    }
    static Script Untick(const wchar_t* leave) {
        return {GridMenu(), L"G", Elsewhere(), L"Down Space", leave, Back()};
    }
    Script Exists(const std::wstring& file, bool there) {
        return Do([=, this] { EXPECT_EQ(std::filesystem::exists(File(file)), there); });
    }
    /// The panel does its work.
    void Use(const Script& script) {
        Show({script, L"Enter"});
        EXPECT_EQ(TakeLog().back(), L"AplyFilter(\"\")");
    }
    const std::wstring look = L"frmSelecprueba.grx";
    const std::wstring bar = L"frmSeleccion.atb";
};

TEST_F(PanelFiles, FontAndColumnsAreKeptPerClass) {
    Use({Font(L"Esc"), Untick(L"Esc")});
    Use(Exists(look, false));
    Use({Font(L"Enter", 12), Do([] { EXPECT_GT(HeadingOf(0).bottom, 36); })});
    EXPECT_THAT(ReadText(File(look)), HasSubstr("nombre=Tahoma"));
    Use({Has(kAll), Untick(L"Enter"), Has(kAll - 1),
         Do([this] { EXPECT_THAT(ReadText(File(look)), HasSubstr("visible=0")); })});
    Use(Has(kAll - 1));
    // The last two are no file names: nothing is kept or said.
    for (const wchar_t* name : {L"Otra", L"..\\x", L"a\tb"}) {
        host.className = name;
        Use({Has(kAll), Font(L"Enter")});
    }
    const std::filesystem::directory_iterator files(File(L""));
    EXPECT_EQ(std::distance(begin(files), end(files)), 2);
    host.className = L"CON"; // harmless: the file is called frmSelecCON
    Use({});
}

TEST_F(PanelFiles, ALayoutThatCannotBeReadLeavesTheDefaultLookAndANote) {
    WriteText(File(look), "Tamvelo cuadrícula 1\nppp=doce\n");
    WriteText(File(look + L".bad"), "the one before");
    Use({Notes(L"«frmSelecprueba.grx» no es válido (línea 2)"), L"Down", Notes(L".bad»")});
    EXPECT_EQ(ReadText(File(look + L".bad")), "Tamvelo cuadrícula 1\nppp=doce\n");
    Use({Exists(look, false), Says(L"Registro 1 de 20")}); // said once
    WriteText(File(bar), "Tamvelo barra 1\n[banda]\n");
    Use({Notes(L"«frmSeleccion.atb» no es válido (línea 2)"), HasTool(L"Aceptar"),
         Exists(bar + L".bad", true)});
    WriteText(File(look), "Tamvelo cuadrícula 1\n");
    // One that another program holds can neither be read nor written, and stays as it is.
    win::UniqueFile locked(
        CreateFileW(File(look).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    Use({Notes(L"No se puede leer el fichero"), L"F3", Elsewhere(), L"Enter",
         Box(L"No se puede escribir el fichero")});
    locked.reset();
    EXPECT_EQ(ReadText(File(look)), "Tamvelo cuadrícula 1\n");
}

TEST_F(PanelFiles, ThePlaceIsKeptAndPulledOntoTheScreen) {
    const auto key = FormKey(L"frmSeleccion");
    Use(Do([] { SetWindowPos(Dialog(), nullptr, 60, 50, 700, 520, SWP_NOZORDER); }));
    EXPECT_EQ(GetValue(key, L"Left") + L" " + GetValue(key, L"Top") + L" " + GetValue(key, L"Width") + L" " +
                  GetValue(key, L"Height"),
              L"60 50 700 520");
    // Minimised or maximised it keeps its normal place; maximised it opens so again, also from minimised.
    const std::vector<int> ways[] = {{SW_MAXIMIZE}, {SW_MAXIMIZE, SW_MINIMIZE}, {SW_MINIMIZE}};
    for (const auto& way : ways) {
        Script leave;
        for (const int how : way) {
            leave.Do([how] { ShowWindow(Dialog(), how); });
        }
        Show({leave, Close()});
        EXPECT_EQ(GetValue(key, L"Width"), L"700") << &way - ways;
        Use(Do([&] {
            EXPECT_EQ(IsZoomed(Dialog()) != FALSE, way[0] == SW_MAXIMIZE) << &way - ways;
            ShowWindow(Dialog(), SW_SHOWNORMAL);
            const RECT kept{60, 50, 760, 570};
            const RECT place = PlaceOf(Dialog());
            EXPECT_TRUE(EqualRect(&kept, &place));
        }));
        EXPECT_EQ(GetValue(key, L"WindowState"), L"0");
    }
    const auto onScreen = Do([] {
        RECT work{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        RECT outside{};
        const RECT place = PlaceOf(Dialog());
        EXPECT_FALSE(SubtractRect(&outside, &place, &work));
    });
    SetValue(key, L"Left", L"5000");
    SetValue(key, L"Top", L"-900");
    Use({onScreen, Do([] { EXPECT_EQ(PlaceOf(Dialog()).right - PlaceOf(Dialog()).left, 700); })});
    SetValue(key, L"Left", L"sí");
    SetValue(key, L"Width", L"99999999");
    SetValue(key, L"Height", L"");
    Use(onScreen);
    // Below a key that lives for this session only, the system makes none that would live longer.
    HKEY passing = nullptr;
    RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\Tamvelo\\Tamvelo");
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"SOFTWARE\\Tamvelo\\Tamvelo", 0, nullptr,
                              REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &passing, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(passing);
    Show({L"Enter", Box(L"en el registro de Windows")});
    EXPECT_EQ(TakeLog().back(), L"AplyFilter(\"\")");
}

TEST_F(PanelFiles, TheOwnBarComesFirstThenTheSharedThenTheDesign) {
    const auto expect = [](bool previous, bool next) {
        return Script{HasTool(L"Registro anterior", previous), HasTool(L"Registro siguiente", next)};
    };
    WriteText(File(bar), "Tamvelo barra 1\n[herramienta ID_MovePre]\nbanda=Registros\nvisible=0\n");
    Use(expect(false, true));
    WriteText(File(bar), "Tamvelo barra 7\n");
    Use(expect(true, true));
    // A copy of the library in a folder of its own: with a shared arrangement beside it, and without.
    const std::wstring shared = File(L"KvSearchTool.atb");
    WriteText(shared, "Tamvelo barra 1\n[herramienta ID_MoveNext]\nbanda=Registros\nvisible=0\n");
    CopyFileW((hosts::Folder() + L"\\" TAMVELO_LIBRARY).c_str(), File(TAMVELO_LIBRARY).c_str(), FALSE);
    hosts::Server copy(File(L"."));
    server = copy.Create();
    Use(expect(true, false));
    std::filesystem::remove(shared);
    Use(expect(true, true));
    server.Reset();
    copy.Unload();
}

TEST_F(PanelFiles, TheUserArrangesTheBar) {
    const Script customise = {L"F6", Elsewhere()};
    const Script gone{HasTool(L"Aceptar", false), HasTool(L"Cancelar")};
    Use({customise, Press(L"errar"), Back(), Exists(bar, false), // nothing was changed
         customise, L"Down Home",                                // to the first tool, Aceptar
         Press(L"liminar"), Press(L"errar"), Back(), gone});
    EXPECT_THAT(ReadText(File(bar)), HasSubstr("[herramienta ID_Aceptar]\nbanda=Edición\nvisible=0"));
    SetValue(L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\Terminal", L"Int", L"12");
    // F8 leaves the editing band only, for that time.
    Use({gone, Says(L"Registro 1 de 20   ·   Terminal 12"), L"F8", Do([] { EXPECT_EQ(Tools(), 1U); }),
         HasTool(L"Cancelar")});
    Use(HasTool(L"Primer registro"));
}

} // namespace
} // namespace tamvelo::testing
