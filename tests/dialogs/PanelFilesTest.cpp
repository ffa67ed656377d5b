// What the selection panel keeps: the grid's look, its place on screen, the arrangement of its bar.
#include "com/WinHeaders.h"

#include <commctrl.h>

#include "frame/Handles.h"
#include "tests/dialogs/PanelFixture.h"

namespace tamvelo::testing {
namespace {

class PanelFiles : public PanelTest {
protected:
    static int Headings() { return static_cast<int>(SendMessageW(Heading(), HDM_GETITEMCOUNT, 0, 0)); }
    static RECT Place() {
        RECT place{};
        GetWindowRect(Panel(), &place);
        return place;
    }
    /// The panel still does its work.
    void ExpectUsable(Script script) {
        host.log.clear();
        EXPECT_FALSE(Show(script.Key(VK_RETURN)));
        EXPECT_EQ(host.log.back(), L"AplyFilter(\"\")");
    }
    void SetPlacement(const wchar_t* left, const wchar_t* top, const wchar_t* width, const wchar_t* height) {
        SetValue(kFormKey, L"Left", left);
        SetValue(kFormKey, L"Top", top);
        SetValue(kFormKey, L"Width", width);
        SetValue(kFormKey, L"Height", height);
    }
    /// A button of the system's customisation dialog, by a part of its caption.
    static Script Press(const wchar_t* part) {
        return Script().Do([part] {
            for (HWND child = nullptr;
                 (child = FindWindowExW(TopWindow(), child, L"Button", nullptr)) != nullptr;) {
                if (TextOf(child).find(part) != std::wstring::npos) {
                    PostMessageW(child, BM_CLICK, 0, 0);
                    return;
                }
            }
            ADD_FAILURE() << "no such button";
        });
    }
    const std::wstring look = L"frmSelecprueba.grx";
    const std::wstring bar = L"frmSeleccion.atb";
};

TEST_F(PanelFiles, AFontIsKeptPerClass) {
    ExpectUsable({Key(VK_F3), Elsewhere(), Key(VK_ESCAPE)});
    EXPECT_FALSE(std::filesystem::exists(File(look)));
    ExpectUsable({Key(VK_F3), Elsewhere(), Key(VK_RETURN)});
    EXPECT_THAT(ReadText(File(look)), HasSubstr("nombre=Tahoma"));
    WriteText(
        File(look),
        "Tamvelo cuadrícula 1\n[fuente]\nnombre=Arial\n[columna Nombre]\norden=0\nancho=90\nvisible=0\n");
    ExpectUsable(Script().Do([] { EXPECT_EQ(Headings(), MemoryRecordSet::kColumns - 1); }));
    host.className = L"Otra";
    ExpectUsable(Script().Do([] { EXPECT_EQ(Headings(), MemoryRecordSet::kColumns); }));
}

TEST_F(PanelFiles, AColumnIsTakenAwayInTheColumnChooser) {
    const Script untick = {Do([] { PostMessageW(Item(IDC_DATAGRID), WM_CONTEXTMENU, 0, FirstRow()); }),
                           InMenu(), Key('G'), Elsewhere(), Keys({VK_DOWN, VK_SPACE})};
    const Script fewer = Do([] { EXPECT_EQ(Headings(), MemoryRecordSet::kColumns - 1); });
    ExpectUsable({untick, Key(VK_ESCAPE), Back()});
    EXPECT_FALSE(std::filesystem::exists(File(look)));
    ExpectUsable({untick, Key(VK_RETURN), Back(), fewer,
                  Do([this] { EXPECT_THAT(ReadText(File(look)), HasSubstr("visible=0")); })});
    ExpectUsable(fewer);
}

TEST_F(PanelFiles, ALayoutThatCannotBeReadLeavesTheDefaultLookAndANote) {
    const auto notes = [](const wchar_t* part) {
        return Script().Do([part] {
            EXPECT_EQ(Headings(), MemoryRecordSet::kColumns);
            EXPECT_THAT(ItemText(IDC_STATUS), HasSubstr(part));
        });
    };
    WriteText(File(look), "Tamvelo cuadrícula 1\nppp=doce\n");
    WriteText(File(look + L".bad"), "the one before");
    ExpectUsable(notes(L"«frmSelecprueba.grx» no es válido (línea 2)").Key(VK_DOWN).Append(notes(L".bad»")));
    EXPECT_EQ(ReadText(File(look + L".bad")), "Tamvelo cuadrícula 1\nppp=doce\n");
    EXPECT_FALSE(std::filesystem::exists(File(look)));
    ExpectUsable(Says(L"Registro 1 de 20")); // said once
    WriteText(File(bar), "Tamvelo barra 1\n[banda]\n");
    ExpectUsable(notes(L"«frmSeleccion.atb» no es válido (línea 2)").Do([] {
        EXPECT_GE(ToolCommand(L"Aceptar"), 0);
    }));
    EXPECT_TRUE(std::filesystem::exists(File(bar + L".bad")));
    WriteText(File(look), "Tamvelo cuadrícula 1\n");
    const frame::UniqueFile locked(CreateFileW(File(look).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_NORMAL, nullptr));
    ExpectUsable(notes(L"No se puede leer el fichero"));
    EXPECT_TRUE(std::filesystem::exists(File(look)));
}

TEST_F(PanelFiles, ALayoutThatCannotBeWrittenIsToldAndTheOldOneStays) {
    WriteText(File(look), "Tamvelo cuadrícula 1\n");
    frame::UniqueFile locked; // by another program, from when it was read to when it is told
    ExpectUsable({Do([&] {
                      locked.reset(CreateFileW(File(look).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_NORMAL, nullptr));
                  }),
                  Key(VK_F3), Elsewhere(), Key(VK_RETURN), Box(L"No se puede escribir el fichero"),
                  Do([&] { locked.reset(); })});
    EXPECT_EQ(ReadText(File(look)), "Tamvelo cuadrícula 1\n");
}

TEST_F(PanelFiles, AClassNameThatIsNoFileNameKeepsNothingAndSaysNothing) {
    for (const wchar_t* name : {L"..\\x", L"a:b", L"a/b", L"a\tb"}) {
        host.className = name;
        ExpectUsable({Key(VK_F3), Elsewhere(), Key(VK_RETURN), Back()});
    }
    EXPECT_FALSE(std::filesystem::exists(File(L"")));
    host.className = L"CON"; // harmless: the file is called frmSelecCON
    ExpectUsable(Script());
}

TEST_F(PanelFiles, ThePlaceIsKeptAndPulledOntoTheScreen) {
    ExpectUsable(Script().Do([] { SetWindowPos(Panel(), nullptr, 60, 50, 700, 520, SWP_NOZORDER); }));
    EXPECT_EQ(GetValue(kFormKey, L"Left") + L" " + GetValue(kFormKey, L"Top") + L" " +
                  GetValue(kFormKey, L"Width") + L" " + GetValue(kFormKey, L"Height"),
              L"60 50 700 520");
    const auto expect = [](LONG left, LONG top, LONG right, LONG bottom) {
        return Script().Do([=] {
            const RECT place = Place();
            EXPECT_EQ(std::make_tuple(place.left, place.top, place.right, place.bottom),
                      std::make_tuple(left, top, right, bottom));
        });
    };
    ExpectUsable(expect(60, 50, 760, 570));
    const auto onScreen = Script().Do([] {
        RECT work{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        RECT both{};
        const RECT place = Place();
        IntersectRect(&both, &work, &place);
        EXPECT_TRUE(EqualRect(&both, &place));
    });
    SetPlacement(L"5000", L"-900", L"700", L"500");
    ExpectUsable(Script(onScreen).Do([] { EXPECT_EQ(Place().right - Place().left, 700); }));
    SetPlacement(L"sí", L"0", L"99999999", L"");
    ExpectUsable(onScreen);
}

TEST_F(PanelFiles, AMinimisedOrMaximisedPanelKeepsItsNormalPlace) {
    SetPlacement(L"60", L"50", L"700", L"520");
    for (const int how : {SW_MAXIMIZE, SW_MINIMIZE}) {
        EXPECT_FALSE(Show(Script().Do([how] { ShowWindow(Panel(), how); }).Do([] {
            PostMessageW(Panel(), WM_CLOSE, 0, 0);
        })));
        EXPECT_EQ(GetValue(kFormKey, L"Width"), L"700") << how;
        // Maximised, it opens so again; and from there minimised it still is, and goes back to its place.
        ExpectUsable(Script()
                         .Do([how] {
                             EXPECT_EQ(IsZoomed(Panel()) != FALSE, how == SW_MAXIMIZE);
                             if (how == SW_MAXIMIZE) {
                                 ShowWindow(Panel(), SW_MINIMIZE);
                             }
                         })
                         .Do([how] {
                             ShowWindow(Panel(), SW_RESTORE);
                             EXPECT_EQ(IsZoomed(Panel()) != FALSE, how == SW_MAXIMIZE);
                             ShowWindow(Panel(), SW_SHOWNORMAL);
                             EXPECT_EQ(Place().right - Place().left, 700);
                         }));
        EXPECT_EQ(GetValue(kFormKey, L"WindowState"), L"0");
    }
}

TEST_F(PanelFiles, ARegistryThatRefusesIsTold) {
    // Below a key that lives for this session only, the system makes none that would live longer.
    HKEY passing = nullptr;
    RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\Tamvelo\\Tamvelo");
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"SOFTWARE\\Tamvelo\\Tamvelo", 0, nullptr,
                              REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &passing, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(passing);
    EXPECT_FALSE(Show(Script().Key(VK_RETURN).Box(L"en el registro de Windows")));
    EXPECT_EQ(host.log.back(), L"AplyFilter(\"\")");
}

TEST_F(PanelFiles, TheTerminalStandsInTheStatusLine) {
    SetValue(L"SOFTWARE\\Tamvelo\\Global\\Configuracion\\Sesion\\Terminal", L"Int", L"12");
    ExpectUsable(Says(L"Registro 1 de 20   ·   Terminal 12"));
}

TEST_F(PanelFiles, TheOwnBarComesFirstThenTheSharedThenTheDesign) {
    const std::string hidden = "Tamvelo barra 1\n[herramienta ID_MovePre]\nbanda=Registros\nvisible=0\n";
    const auto expect = [](bool previous, bool next) {
        return Script().Do([=] {
            EXPECT_EQ(ToolCommand(L"Registro anterior") >= 0, previous);
            EXPECT_EQ(ToolCommand(L"Registro siguiente") >= 0, next);
        });
    };
    WriteText(File(bar), hidden);
    ExpectUsable(expect(false, true));
    WriteText(File(bar), "Tamvelo barra 7\n");
    ExpectUsable(expect(true, true));
    // A copy of the library in a folder of its own: with a shared arrangement beside it, and without.
    const std::wstring copy = File(L"Tamvelo.dll");
    const std::wstring shared = File(L"KvSearchTool.atb");
    WriteText(shared, "Tamvelo barra 1\n[herramienta ID_MoveNext]\nbanda=Registros\nvisible=0\n");
    CopyFileW((hosts::Folder() + L"\\Tamvelo.dll").c_str(), copy.c_str(), FALSE);
    const HMODULE module = LoadLibraryW(copy.c_str());
    ASSERT_NE(module, nullptr);
    const auto getClass = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    {
        com::ComPtr<IClassFactory> factory;
        ASSERT_EQ(getClass(entry::kClsShowSerchId, IID_PPV_ARGS(&factory)), S_OK);
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&server)), S_OK);
    }
    ExpectUsable(expect(true, false));
    std::filesystem::remove(shared);
    ExpectUsable(expect(true, true));
    server.Reset();
    FreeLibrary(module);
}

TEST_F(PanelFiles, TheUserArrangesTheBar) {
    const Script customise = {Key(VK_F6), Elsewhere()};
    ExpectUsable({customise, Press(L"errar"), Back()});
    EXPECT_FALSE(std::filesystem::exists(File(bar))); // nothing was changed
    const Script gone = Do([] { EXPECT_LT(ToolCommand(L"Aceptar"), 0); });
    ExpectUsable({customise, Keys({VK_DOWN, VK_HOME}), // to the first tool, Aceptar
                  Press(L"liminar"), Press(L"errar"), Back(), gone});
    EXPECT_THAT(ReadText(File(bar)), HasSubstr("[herramienta ID_Aceptar]\nbanda=Edición\nvisible=0"));
    ExpectUsable({gone, Do([] { EXPECT_GE(ToolCommand(L"Cancelar"), 0); })});
}

TEST_F(PanelFiles, F8LeavesTheEditingBandOnly) {
    ExpectUsable(Script().Key(VK_F8).Do([] {
        EXPECT_EQ(Tools(), 2U);
        EXPECT_GE(ToolCommand(L"Aceptar"), 0);
    }));
    ExpectUsable(Script().Do([] { EXPECT_GE(ToolCommand(L"Primer registro"), 0); })); // for that time only
}

} // namespace
} // namespace tamvelo::testing
