#include "frame/Form.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "base/Commands.h"
#include "base/Placement.h"
#include "com/FloatGuard.h"
#include "com/Module.h"
#include "frame/FormInstances.h"
#include "frame/FormObject.h"
#include "frame/FormPreview.h"
#include "frame/Handles.h"
#include "frame/MousePointer.h"
#include "frame/Product.h"
#include "frame/ThemeScope.h"
#include "frame/WindowText.h"

namespace tamvelo::frame {

namespace {

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190); // automation's number 400

constexpr KeyRow kFrameKeys[] = {
    {0, VK_RETURN, base::kAceptar}, {0, VK_ESCAPE, base::kCancelar}, {0, VK_INSERT, kNoCommand},
    {0, VK_DELETE, kNoCommand},     {0, VK_F6, kCustomizeToolbar},   {0, VK_F8, kEditingBandOnly},
};

std::vector<base::Rect> WorkAreas() {
    std::vector<base::Rect> areas;
    const MONITORENUMPROC collect =
        [](HMONITOR monitor, HDC, LPRECT, LPARAM list) __attribute__((stdcall))->BOOL {
        MONITORINFO info{};
        info.cbSize = sizeof info;
        if (GetMonitorInfoW(monitor, &info)) {
            const RECT& work = info.rcWork;
            reinterpret_cast<std::vector<base::Rect>*>(list)->push_back(
                {work.left, work.top, work.right - work.left, work.bottom - work.top});
        }
        return TRUE;
    };
    EnumDisplayMonitors(nullptr, nullptr, collect, reinterpret_cast<LPARAM>(&areas));
    return areas;
}

base::Rect RectOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

} // namespace

Form::Form(const FormDesign& design) : m_design(design) { com::Module::Lock(); }

Form::~Form() {
    if (m_window) {
        DestroyWindow(m_window);
    }
    com::Module::Unlock();
}

void Form::ReportRefusedShow() const {
    throw com::Error(kAlreadyShown, L"El formulario «" + std::wstring(Name()) + L"» ya está abierto.");
}

// ---- life
// ----------------------------------------------------------------------------------------------------

void Form::Load() {
    if (m_window) {
        return;
    }
    CreateWindowHidden();
    Trapped([&] { Environment::Get().GetSettings().RestorePlacement(Key(), *this); });
    PullOntoMonitor();
    LoadToolbar();
    OnLoad();
    m_layout = RowLayout(m_window, Rows());
    ResizeControls();
    OnLaidOut();
}

void Form::CreateWindowHidden() {
    const ThemeScope theme;
    INITCOMMONCONTROLSEX controls{sizeof controls,
                                  ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    const HWND made = CreateDialogParamW(com::Module::Instance(), MAKEINTRESOURCEW(m_design.dialogTemplate),
                                         OwnerForDialog(), Procedure, reinterpret_cast<LPARAM>(this));
    if (!made || !m_window) {
        com::ThrowLastError(L"No se puede crear el formulario «" + std::wstring(Name()) + L"».");
    }
    const base::Rect design = RectOf(m_window);
    m_smallest = {design.width, design.height};
    CentreOnOwner();
    m_toolbar = std::make_unique<Toolbar>(m_window, m_design.tools, [this] { ToolbarChanged(); });
}

void Form::CentreOnOwner() {
    base::Rect place = RectOf(m_window);
    const HWND owner = GetWindow(m_window, GW_OWNER);
    const base::Rect around = owner ? RectOf(owner) : WorkAreas().empty() ? place : WorkAreas().front();
    place.left = around.left + (around.width - place.width) / 2;
    place.top = around.top + (around.height - place.height) * 45 / 100; // where the eye expects the middle
    SetPlace(place);
}

void Form::PullOntoMonitor() {
    const base::Rect now = RectOf(m_window);
    const base::Rect pulled = base::PullOnto(now, WorkAreas(), {m_smallest.cx, m_smallest.cy});
    if (pulled != now) {
        SetPlace(pulled);
    }
}

void Form::LoadToolbar() {
    Trapped([&] {
        FileService& files = Environment::Get().GetFiles();
        m_toolbarFile = files.ToolbarLayoutPath(Name());
        const std::wstring shared = LibraryFolder() + L"\\KvSearchTool.atb";
        if (files.Exists(m_toolbarFile)) {
            m_toolbar->Load(m_toolbarFile);
        } else if (files.Exists(shared)) {
            m_toolbar->Load(shared);
        }
    });
    m_toolbar->SetBandVisible(base::kBandRegistros, false);
    m_toolbar->SetBandVisible(base::kBandRegistro, false);
}

void Form::ShowModal() {
    Load();
    MousePointer::Default(); // a command of another form may have opened this one: the user's turn now
    m_opening = false;
    m_shown = true;
    m_modal.emplace(m_window);
    ShowWindow(m_window, SW_SHOW);
    SetForegroundWindow(m_window);
    if (const HWND first = FirstFocus()) {
        SetFocus(first);
    }
    RunLoop();
}

void Form::ShowModeless() {
    Load();
    m_opening = false;
    m_shown = true;
    FormPreview::Add(m_window, [this](MSG& message) { return Preview(message); });
    ShowWindow(m_window, SW_SHOW);
    SetForegroundWindow(m_window);
    if (const HWND first = FirstFocus()) {
        SetFocus(first);
    }
}

void Form::ShowAs(short modal) {
    if (modal == 0) {
        ShowModeless();
    } else {
        ShowModal();
    }
}

void Form::RunLoop() {
    while (m_shown) {
        MSG message;
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0) {
            // The host is ending: so do we, and its own loop hears of it next.
            Unload();
            PostQuitMessage(static_cast<int>(message.wParam));
        } else if (got > 0 && !Preview(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

void Form::Hide() {
    m_modal.reset(); // the host's windows take input again before this one goes, or another program comes
                     // forward
    m_shown = false;
    if (m_window) {
        ShowWindow(m_window, SW_HIDE);
    }
}

void Form::Unload() {
    const std::shared_ptr<Form> alive = shared_from_this();
    if (m_window) {
        m_modal.reset();
        DestroyWindow(m_window);
    } else {
        AfterDestroy();
    }
}

void Form::BeforeDestroy() {
    Trapped([&] { OnBeforeUnload(); });
    Trapped([&] { Environment::Get().GetSettings().SavePlacement(Key(), *this); });
    MousePointer::Default();
}

void Form::AfterDestroy() noexcept {
    m_modal.reset();
    FormPreview::Remove(m_window);
    m_window = nullptr;
    m_shown = false;
    m_toolbar.reset();
    m_layout = {};
    m_objects.clear();
    m_formObject.Reset();
    OnUnload();
    FormInstances::Forget(*this);
}

void Form::CheckStands() const {
    if (!m_window) {
        throw com::Error(E_ABORT, L"El formulario «" + std::wstring(Name()) + L"» se ha cerrado.");
    }
}

std::wstring Form::Key() const { return Product::Own().FormKey(Name()); }

// ---- errors
// --------------------------------------------------------------------------------------------------

void Form::ControlErrores(const com::Error& error) noexcept {
    const std::shared_ptr<Form> alive = weak_from_this().lock();
    try {
        MousePointer::Default();
        Environment::Get().GetErrors().Show(m_shown ? m_window : OwnerForDialog(), error);
    } catch (...) {
        // The reporter itself is out of order: the plain box needs nothing but the system.
        MessageBoxW(m_shown ? m_window : nullptr, error.description.c_str(), Name(), MB_OK | MB_ICONERROR);
    }
}

// ---- window
// --------------------------------------------------------------------------------------------------

INT_PTR CALLBACK Form::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    const com::FloatGuard floats;
    if (message == WM_INITDIALOG) {
        auto* form = reinterpret_cast<Form*>(second);
        form->m_window = window;
        SetWindowLongPtrW(window, DWLP_USER, second);
        return FALSE; // the form sets the focus when it is shown
    }
    auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!form) {
        return FALSE;
    }
    const std::shared_ptr<Form> alive = form->weak_from_this().lock();
    INT_PTR handled = FALSE;
    form->Trapped([&] { handled = form->Handle(message, first, second); });
    return handled;
}

INT_PTR Form::Answer(LRESULT answer) {
    SetWindowLongPtrW(m_window, DWLP_MSGRESULT, answer);
    return TRUE;
}

INT_PTR Form::Handle(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_SIZE:
        if (first != SIZE_MINIMIZED && m_layout) {
            ResizeControls();
        }
        return FALSE;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {m_smallest.cx, m_smallest.cy};
        return TRUE;
    case WM_SETCURSOR:
        if (MousePointer::IsHourglass()) {
            MousePointer::Hourglass();
            return Answer(TRUE);
        }
        return FALSE;
    case WM_COMMAND: {
        const HWND sender = reinterpret_cast<HWND>(second);
        if (m_toolbar && sender == m_toolbar->Window()) {
            OnTool(m_toolbar->IdOf(LOWORD(first)));
        } else if (sender) {
            if (HIWORD(first) == EN_SETFOCUS || HIWORD(first) == CBN_SETFOCUS) {
                const int id = LOWORD(first);
                const auto known = m_objects.find(id);
                Environment::Get().GetFocus().Receive(
                    sender, known == m_objects.end() ? nullptr : known->second.Get());
            }
            OnControl(LOWORD(first), HIWORD(first));
        }
        return TRUE;
    }
    case WM_NOTIFY: {
        LRESULT answer = 0;
        NMHDR& header = *reinterpret_cast<NMHDR*>(second);
        if ((m_toolbar && m_toolbar->Notified(header, answer)) || OnNotify(header, answer)) {
            return m_window ? Answer(answer) : TRUE;
        }
        return FALSE;
    }
    case WM_CLOSE:
        Input(base::kCerrar);
        return TRUE;
    case WM_DESTROY:
        BeforeDestroy();
        return FALSE;
    case WM_NCDESTROY:
        SetWindowLongPtrW(m_window, DWLP_USER, 0);
        AfterDestroy();
        return FALSE;
    default:
        return FALSE;
    }
}

void Form::ResizeControls() {
    m_toolbar->Resize();
    RECT area{};
    GetClientRect(m_window, &area);
    area.top += m_toolbar->Height();
    m_layout.Arrange(area);
    InvalidateRect(m_window, nullptr, TRUE);
}

void Form::Relayout() {
    if (m_window && m_layout) {
        ResizeControls();
    }
}

base::Rect Form::Place() const {
    if (IsIconic(m_window) || IsZoomed(m_window)) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof placement;
        GetWindowPlacement(m_window, &placement);
        const RECT& normal = placement.rcNormalPosition;
        return {normal.left, normal.top, normal.right - normal.left, normal.bottom - normal.top};
    }
    return RectOf(m_window);
}

void Form::SetPlace(const base::Rect& place) {
    SetWindowPos(m_window, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

com::ComPtr<IDispatch> Form::FormObject() {
    if (!m_formObject) {
        m_formObject = com::Make<class FormObject>(m_window, Name());
    }
    return m_formObject;
}

// ---- keys and commands
// ---------------------------------------------------------------------------------------

const KeyRow* Form::FindKey(int control, UINT key) const {
    const auto matches = [&](const KeyRow& row) { return row.control == control && row.key == key; };
    const auto own = std::find_if(m_design.keys.begin(), m_design.keys.end(), matches);
    if (own != m_design.keys.end()) {
        return &*own;
    }
    const auto* common = std::find_if(std::begin(kFrameKeys), std::end(kFrameKeys), matches);
    return common == std::end(kFrameKeys) ? nullptr : common;
}

int Form::FocusedControl(HWND focus) const {
    while (focus && GetParent(focus) != m_window) {
        focus = GetParent(focus);
    }
    return focus ? GetDlgCtrlID(focus) : 0;
}

bool Form::Preview(MSG& message) {
    if (!m_window || (message.hwnd != m_window && !IsChild(m_window, message.hwnd))) {
        return false;
    }
    const std::shared_ptr<Form> alive = shared_from_this();
    if (message.message == WM_KEYDOWN && PreviewKey(static_cast<UINT>(message.wParam), message.hwnd)) {
        return true;
    }
    return m_window && IsDialogMessageW(m_window, &message);
}

bool Form::PreviewKey(UINT key, HWND focus) {
    if ((key == VK_RETURN || key == VK_ESCAPE) && IsListOpen(focus)) {
        return false; // an open list or calendar takes these two for itself
    }
    const bool control = GetKeyState(VK_CONTROL) < 0;
    const bool shift = GetKeyState(VK_SHIFT) < 0;
    bool used = false;
    Trapped([&] { used = OnKey(key, control, shift); });
    if (used || control || shift || GetKeyState(VK_MENU) < 0) {
        return used;
    }
    const HWND before = m_window;
    if (const KeyRow* row = FindKey(0, key)) {
        Input(row->command);
        if (m_window != before) {
            return true; // the form is gone; so is the control that the key was meant for
        }
    }
    const int focused = FocusedControl(focus);
    if (const KeyRow* row = focused ? FindKey(focused, key) : nullptr) {
        Input(row->command);
        return true;
    }
    return key == VK_ESCAPE; // the system's own handling of Esc would close the form a second time
}

void Form::Input(std::wstring_view command) {
    if (m_running == 0 && !command.empty()) {
        Dispatch(command);
    }
}

void Form::Dispatch(std::wstring_view command) {
    const std::shared_ptr<Form> alive = shared_from_this();
    MousePointer::Hourglass();
    ++m_running;
    try {
        RunCommand(command);
    } catch (...) {
        // A form that went while the host ran has let go of all it held: the rest of its command is void.
        const com::Error error = com::CurrentError();
        if (m_window || error.source != com::Error::kOwnSource) {
            ControlErrores(error);
        }
    }
    --m_running;
    if (command != base::kCerrar) { // that one ends in the unload, which does it
        MousePointer::Default();
    }
}

void Form::RunCommand(std::wstring_view command) {
    for (const CommandRow& row : Commands()) {
        if (row.command == command) {
            row.run(*this);
            return;
        }
    }
    if (command == base::kCancelar || command == base::kCerrar) {
        Unload();
    } else if (command == kTabKey) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE);
    } else if (command == kCustomizeToolbar) {
        MousePointer::Default();
        m_toolbar->Customize();
    } else if (command == kEditingBandOnly) {
        m_toolbar->SetBandVisible(base::kBandRegistros, false);
        m_toolbar->SetBandVisible(base::kBandRegistro, false);
        m_toolbar->SetBandVisible(base::kBandEdicion, true);
        Relayout();
    }
}

void Form::OnTool(std::wstring_view id) {
    // A copy: the command may unload the form, and the bar that owns the text with it.
    Input(std::wstring(id));
}

void Form::ToolbarChanged() {
    m_toolbar->SetPressed(base::kFiltro, false);
    Relayout();
    m_toolbar->Save(m_toolbarFile);
}

void Form::RunMenu(std::span<const MenuItem> items, POINT screen) {
    const UniqueMenu menu(CreatePopupMenu());
    for (size_t i = 0; i < items.size(); ++i) {
        const ToolKind* kind = items[i].caption ? nullptr : FindTool(items[i].command);
        const wchar_t* caption = kind ? kind->caption : items[i].caption;
        AppendMenuW(menu.get(), caption ? MF_STRING : MF_SEPARATOR, i + 1, caption);
    }
    const int chosen =
        TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x, screen.y, 0, m_window, nullptr);
    if (chosen > 0 && m_window) {
        Input(items[static_cast<size_t>(chosen) - 1].command);
    }
}

// ---- controls
// ------------------------------------------------------------------------------------------------

void Form::AddButton(int id, const wchar_t* caption, int width) {
    constexpr int kHeight = 14; // dialog units, as everywhere
    const ThemeScope theme;
    RECT size{0, 0, width, kHeight};
    MapDialogRect(m_window, &size);
    const HWND button =
        CreateWindowExW(0, L"BUTTON", caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, size.right,
                        size.bottom, m_window, nullptr, com::Module::Instance(), nullptr);
    if (!button) {
        com::ThrowLastError(L"No se puede crear el botón.");
    }
    SetWindowLongPtrW(button, GWLP_ID, id);
    SendMessageW(button, WM_SETFONT, static_cast<WPARAM>(SendMessageW(m_window, WM_GETFONT, 0, 0)), FALSE);
}

void Form::ShowControl(int id, bool shown) {
    const HWND control = Control(id);
    if (shown == ((GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0)) {
        return;
    }
    if (!shown && (GetFocus() == control || IsChild(control, GetFocus()))) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE); // a hidden control must not keep the focus
    }
    ShowWindow(control, shown ? SW_SHOWNA : SW_HIDE);
}

void Form::EnableControl(int id, bool enabled) {
    const HWND control = Control(id);
    if (!enabled && GetFocus() == control) {
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE);
    }
    EnableWindow(control, enabled);
}

std::wstring Form::ControlText(int id) const { return TextOf(Control(id)); }

void Form::SetControlText(int id, const std::wstring& text) { SetWindowTextW(Control(id), text.c_str()); }

com::ComPtr<ControlObject> Form::ObjectOf(int id, const wchar_t* name, short index) {
    com::ComPtr<ControlObject>& object = m_objects[id];
    if (!object) {
        object = com::Make<ControlObject>(Control(id), std::wstring(name), index);
    }
    return object;
}

} // namespace tamvelo::frame
