#include "tests/dialogs/DialogFixture.h"

#include <fstream>
#include <iterator>

#include "demo/app/Counts.h"

namespace tamvelo::testing {

static constexpr wchar_t kPrivateRoot[] = L"SOFTWARE\\TamveloPruebas";

DialogTest::DialogTest(long records) : host(records) {
    environment->Accepts({L"RestaurarPosicion", L"GuardarPosicion", L"LeerValor", L"GuardarValor",
                          L"GuardarLista", L"Recibir", L"GuardarCita"});
    const auto fill = [](Invocation& call) {
        com::LateObject list(call[2].ToObject().Get(), L"List1");
        for (const wchar_t* title : {L"Uno", L"Dos"}) {
            list.Call(L"AddItem", {title});
        }
        list.Put(L"ListIndex", 1L);
        if (call.Count() > 3) {
            com::LateObject outputs(call[3].ToObject().Get(), L"CmbSelec");
            outputs.Call(L"AddItem", {L"Impresora"});
            outputs.Put(L"ListIndex", 0L);
            com::LateObject(call[4].ToObject().Get(), L"TxtFields").Put(L"Text", L"3");
        }
    };
    environment->On(L"CargarLista", fill);
    environment->On(L"CargarEtiquetas", fill);
    environment->Returns(L"RutaBarra", Variant(L"C:\\no hay\\"));
    environment->Returns(L"CarpetaCuadriculas", Variant(L"C:\\no hay\\"));
    environment->Returns(L"Existe", Variant(false));
    environment->On(L"CrearClase",
                    [this](Invocation& call) { // every class is the host's one, under that name
                        host.className = call[0].ToText();
                        call.Return(Variant(host.data.Get()));
                    });
}

void DialogTest::SetUp() {
    m_folder =
        std::filesystem::temp_directory_path() / (L"tamvelo-" + std::to_wstring(GetCurrentProcessId()));
    std::filesystem::create_directories(m_folder);
    // The user's own settings are out of reach of the process from here on.
    RegDeleteTreeW(HKEY_CURRENT_USER, kPrivateRoot);
    ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, kPrivateRoot, &m_registry), ERROR_SUCCESS);
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, m_registry), ERROR_SUCCESS);
    SetValue(kEnvironmentKey, L"Carpeta", m_folder.wstring());

    NewOwner();
    ownerBox = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 10, 10, 80, 20, owner, nullptr,
                               nullptr, nullptr);
    SetFocus(ownerBox);
    m_references = host.References();
    ctl = com::ComPtr<IDispatch>(host.ctl.Get());
    checks.emplace(HostChecks::Traps::Set);
    server = library.Create();
    m_windows = Windows();
    m_gdi = demo::GdiObjects();
}

void DialogTest::TearDown() {
    ctl.Reset();
    server.Reset();
    checks.reset();
    m_component.reset();
    EXPECT_THAT(Windows(), ElementsAreArray(m_windows)) << "windows left";
    ExpectObjects();
    s_caches = std::clamp(s_caches, 0L, 60L);
    EXPECT_EQ(host.References(), m_references) << "references to host objects left";
    EXPECT_TRUE(library.MayUnload());
    if (IsWindow(owner)) {
        EXPECT_TRUE(IsWindowEnabled(owner));
        DestroyWindow(owner);
    }
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(m_registry);
    RegDeleteTreeW(HKEY_CURRENT_USER, kPrivateRoot);
    std::filesystem::remove_all(m_folder);
}

void DialogTest::ExpectObjects() {
    s_caches -= std::max(0L, demo::GdiObjects() - m_gdi - gdiSlack);
    EXPECT_GE(s_caches, 0) << "GDI objects left";
}

void DialogTest::CountObjects() {
    m_gdi = demo::GdiObjects();
    gdiSlack = 2;
    s_caches = 0;
}

void DialogTest::NewOwner() {
    if (!IsWindow(owner)) {
        owner = CreateWindowExW(0, L"STATIC", L"Gestión", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 500,
                                400, nullptr, nullptr, nullptr, nullptr);
    }
    SetActiveWindow(owner);
}

std::vector<std::wstring> DialogTest::Windows() const {
    std::vector<std::wstring> names;
    FindWindowThat([&](HWND window) {
        const std::wstring name = ClassOf(window);
        if (window != owner && !name.ends_with(L"IME")) { // the system's own
            names.push_back(name);
        }
        return false;
    });
    return names;
}

std::optional<com::Error> DialogTest::Play(Script script, const std::function<HRESULT()>& call) {
    const Player player(std::move(script), [this] { return Notes(); });
    try {
        const HRESULT code = call();
        EXCEPINFO none{};
        return FAILED(code) ? std::optional(com::ErrorOfInvoke(code, none, L"ClsShowSerch")) : std::nullopt;
    } catch (const com::Error& error) {
        return error;
    }
}

std::optional<com::Error> DialogTest::PlayLate(const wchar_t* operation, com::Arguments arguments,
                                               Script script) {
    return Play(std::move(script), [&] {
        com::LateObject(server.Get(), L"servidor").Call(operation, arguments);
        return S_OK;
    });
}

void DialogTest::TurnLoop() {
    for (MSG message; Dialog() && GetMessageW(&message, nullptr, 0, 0) > 0;) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

Script DialogTest::InMenu() {
    return Script().Until("the menu", [](HWND) {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetCurrentThreadId(), &info);
        return (info.flags & GUI_INMENUMODE) != 0;
    });
}

Script DialogTest::Question(int button, const std::wstring& text) {
    constexpr int kMessage = 0xFFFF; // the control that every message box keeps its text in
    const auto asked = [=](HWND top) {
        return GetDlgItem(top, IDNO) && TextOf(GetDlgItem(top, kMessage)).find(text) != std::wstring::npos;
    };
    return {Until("the question", asked), Do([button] {
                button ? PostMessageW(GetDlgItem(TopWindow(), button), BM_CLICK, 0, 0)
                       : PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
            })};
}

Script DialogTest::InList(int row, LONG x, const std::vector<UINT>& messages) {
    return Do([=] {
        const HWND list = Item(IDC_LIST1);
        RECT label{LVIR_LABEL, 0, 0, 0};
        SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
        SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&label));
        for (const UINT message : messages) {
            PostMessageW(list, message, MK_LBUTTON,
                         MAKELPARAM(label.left + x, (label.top + label.bottom) / 2));
        }
    });
}

void DialogTest::Count(HWND control, Counts& counts) {
    const SUBCLASSPROC count = [](HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                                  DWORD_PTR data) __attribute__((stdcall))
                                   ->LRESULT {
        ++(*reinterpret_cast<Counts*>(data))[message];
        return DefSubclassProc(window, message, first, second);
    };
    SetWindowSubclass(control, count, 1, reinterpret_cast<DWORD_PTR>(&counts));
}

Script DialogTest::Looks(std::initializer_list<int> ids, const std::wstring& shown) {
    return Do([controls = std::vector<int>(ids), shown] {
        std::wstring seen;
        for (const int id : controls) {
            seen += !IsShown(id) ? L'-' : IsWindowEnabled(Item(id)) ? L'x' : L'o';
        }
        EXPECT_EQ(seen, shown);
    });
}

void DialogTest::ClickTool(const wchar_t* caption) {
    const int command = ToolCommand(caption);
    ASSERT_GE(command, 0);
    PostMessageW(Dialog(), WM_COMMAND, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(Bar()));
}

int DialogTest::ToolCommand(const std::wstring& caption) {
    for (WPARAM i = 0; i < Tools(); ++i) {
        TBBUTTON button{};
        wchar_t text[64] = L"";
        SendMessageW(Bar(), TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
        SendMessageW(Bar(), TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                     reinterpret_cast<LPARAM>(text));
        if (caption == text) {
            return button.idCommand;
        }
    }
    return -1;
}

RECT PlaceOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

HWND DialogTest::FindWindowThat(const std::function<bool(HWND)>& fits) {
    std::pair<const std::function<bool(HWND)>&, HWND> search{fits, nullptr};
    const WNDENUMPROC look = [](HWND window, LPARAM out) __attribute__((stdcall))->BOOL {
        auto& [wanted, found] = *reinterpret_cast<decltype(search)*>(out);
        found = wanted(window) ? window : nullptr;
        return found == nullptr;
    };
    EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&search));
    return search.second;
}

HWND DialogTest::Item(int id) {
    HWND item = GetDlgItem(Dialog(), id);
    for (HWND panel = nullptr; !item && (panel = FindWindowExW(Dialog(), panel, nullptr, nullptr));) {
        item = GetDlgItem(panel, id);
    }
    return item;
}

HWND DialogTest::Dialog() {
    return FindWindowThat(
        [](HWND window) { return FindWindowExW(window, nullptr, TOOLBARCLASSNAMEW, nullptr); });
}

HWND DialogTest::Bar() { return FindWindowExW(Dialog(), nullptr, TOOLBARCLASSNAMEW, nullptr); }

WPARAM DialogTest::Tools() { return static_cast<WPARAM>(SendMessageW(Bar(), TB_BUTTONCOUNT, 0, 0)); }

void DialogTest::WriteText(const std::wstring& file, const std::string& text) const {
    const std::filesystem::path path(file);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string DialogTest::ReadText(const std::wstring& file) const {
    std::ifstream text(std::filesystem::path(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(text), {}};
}

void DialogTest::Offer(std::initializer_list<const wchar_t*> parts, IDispatch* components) {
    m_component.emplace(components);
    for (const wchar_t* part : parts) {
        SetValue(kEnvironmentKey, part, Component::Name());
    }
}

void DialogTest::SetValue(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, REG_SZ, value.c_str(),
                              static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

std::wstring DialogTest::GetValue(const std::wstring& key, const wchar_t* name) {
    wchar_t value[128] = L"";
    DWORD size = sizeof(value);
    RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_SZ, nullptr, value, &size);
    return value;
}

} // namespace tamvelo::testing
