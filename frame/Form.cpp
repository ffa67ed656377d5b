#include "frame/Form.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "base/Commands.h"
#include "com/FloatGuard.h"
#include "com/Module.h"
#include "environment/Environment.h"
#include "environment/Product.h"
#include "frame/FormInstances.h"
#include "frame/FormPart.h"
#include "frame/Resources.h"
#include "win/BusyCursor.h"
#include "win/Handles.h"
#include "win/Message.h"
#include "win/MessageHook.h"
#include "win/MousePointer.h"
#include "win/ThemeScope.h"
#include "win/WindowIcon.h"
#include "win/WindowText.h"

namespace tamvelo::frame {

namespace {

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190); // automation's number 400

} // namespace

Form::Form(const FormDesign& design) : m_design(design) { com::Module::Lock(); }

Form::~Form() {
    if (IsLoaded()) {
        DestroyWindow(Window());
    }
    com::Module::Unlock();
}

void Form::ReportRefusedShow() const {
    throw com::Error(kAlreadyShown, L"El formulario «" + std::wstring(Name()) + L"» ya está abierto.");
}

// Life

void Form::Load() {
    if (Window()) {
        return;
    }
    CreateWindowHidden();
    Using(Component::Settings,
          [&] { environment::Environment::Get().GetSettings().RestorePlacement(Key(), m_placement); });
    m_placement.PullOntoMonitor(m_smallest);
    LoadToolbar();
    for (FormPart* part : m_parts) {
        part->OnLoad();
    }
    OnLoad();
    m_layout = win::RowLayout(Window(), Layout());
    ResizeControls();
    for (FormPart* part : m_parts) {
        part->OnLaidOut();
    }
    OnLaidOut();
    if (!m_layoutNote.empty() && Control(IDC_STATUS) && ControlText(IDC_STATUS).empty()) {
        SetControlText(IDC_STATUS, m_layoutNote);
    }
}

void Form::NoteLayout(std::wstring note) {
    if (!note.empty()) {
        m_layoutNote = std::move(note);
    }
}

void Form::CreateWindowHidden() {
    const win::ThemeScope theme;
    INITCOMMONCONTROLSEX controls{sizeof controls,
                                  ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    const HWND made = CreateDialogParamW(com::Module::Instance(), MAKEINTRESOURCEW(m_design.dialogTemplate),
                                         IsWindow(m_owner) ? m_owner : win::OwnerForDialog(), Procedure,
                                         reinterpret_cast<LPARAM>(this));
    if (!made || !Window()) {
        com::ThrowLastError(L"No se puede crear el formulario «" + std::wstring(Name()) + L"».");
    }
    win::GiveIcon(Window());
    const base::Rect design = m_placement.Place();
    m_smallest = {design.width, design.height};
    m_placement.CentreOnOwner();
    m_toolbar = std::make_unique<Toolbar>(Window(), m_design.tools,
                                          Toolbar::Owner{[this] { ToolbarChanged(); },
                                                         [this](std::wstring text, std::wstring_view id) {
                                                             return m_dispatcher.WithKey(std::move(text), id);
                                                         }});
}

void Form::LoadToolbar() {
    Using(Component::Files, [&] {
        environment::FileService& files = environment::Environment::Get().GetFiles();
        m_toolbarFile = files.ToolbarLayoutPath(Name());
        const std::wstring shared = com::Module::Folder() + L"\\KvSearchTool.atb";
        if (files.Exists(m_toolbarFile)) {
            NoteLayout(m_toolbar->Load(m_toolbarFile));
        } else if (files.Exists(shared)) {
            NoteLayout(m_toolbar->Load(shared));
        }
    });
    m_toolbar->SetBandVisible(base::kBandRegistros, false);
    m_toolbar->SetBandVisible(base::kBandRegistro, false);
}

void Form::ShowModal() {
    Load();
    win::MousePointer::Default(); // a command of another form may have opened this one: the user's turn now
    m_opening = false;
    m_modal.emplace(Window());
    Appear();
    m_loop.Run(
        m_shown, [this](MSG& message) { return m_dispatcher.Preview(message); }, [this] { Unload(); });
}

void Form::ShowModeless() {
    Load();
    m_opening = false;
    win::MessageHook::Add(Window(), [this](MSG& message) { return m_dispatcher.Preview(message); });
    Appear();
}

void Form::Appear() {
    m_shown = true;
    m_left = nullptr;
    ShowWindow(Window(), m_placement.TakeShowAs());
    SetForegroundWindow(Window());
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

/// From here on there is nothing to see.
void Form::Vanish() noexcept {
    m_shown = false;
    m_loop.Wake();
}

void Form::Hide() {
    m_modal.reset(); // the host's windows take input again before this one goes, or another program comes
                     // forward
    Vanish();
    if (Window()) {
        ShowWindow(Window(), SW_HIDE);
    }
}

Form::Hidden Form::HideForDelivery() {
    const Hidden before{m_shown, m_modal.has_value(), GetFocus()};
    Hide();
    FormInstances::Forget(*this);
    return before;
}

void Form::StayLoaded() {
    if (Window()) {
        FormInstances::Obtain(Name(), [this] { return shared_from_this(); });
    }
}

void Form::ComeBack(const Hidden& before) {
    StayLoaded();
    if (!Window() || !before.shown) {
        return;
    }
    if (before.modal) {
        m_modal.emplace(Window());
    }
    Appear();
    if (IsChild(Window(), before.focus)) {
        SetFocus(before.focus);
    }
}

void Form::Unload() {
    const std::shared_ptr<Form> alive = shared_from_this();
    if (Window()) {
        m_modal.reset();
        DestroyWindow(Window());
    } else {
        AfterDestroy();
    }
}

void Form::BeforeDestroy() {
    for (FormPart* part : m_parts) {
        Trapped([&] { part->OnBeforeUnload(); });
    }
    Trapped([&] { OnBeforeUnload(); });
    Trapped([&] {
        Using(Component::Settings,
              [&] { environment::Environment::Get().GetSettings().SavePlacement(Key(), m_placement); });
    });
    win::MousePointer::Default();
    win::TakeIcon(Window());
}

void Form::AfterDestroy() noexcept {
    m_modal.reset();
    win::MessageHook::Remove(Window());
    Detach();
    Vanish();
    m_outOfOrder = 0;
    m_toolbar.reset();
    m_layout = {};
    m_layoutNote.clear();
    m_placement.Forget();
    OnUnload();
    std::for_each(m_parts.rbegin(), m_parts.rend(), [](FormPart* part) { part->OnUnload(); });
    FormInstances::Forget(*this);
}

std::wstring Form::Key() const { return environment::Product::Own().FormKey(Name()); }

// Errors

void Form::ControlErrores(const com::Error& error) noexcept {
    const std::shared_ptr<Form> alive = weak_from_this().lock();
    const com::Watch outermost; // an error is told to the end, whatever becomes of the form
    try {
        win::MousePointer::Default();
        environment::Environment::Get().GetErrors().Show(m_shown ? Window() : win::OwnerForDialog(), error);
    } catch (...) {
        // The reporter itself is out of order: the plain box needs nothing but the system.
        win::ShowMessage(m_shown ? Window() : nullptr, error.description, Name(), MB_OK | MB_ICONERROR);
    }
}

// Window

INT_PTR CALLBACK Form::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    const com::FloatGuard floats;
    if (message == WM_INITDIALOG) {
        auto* form = reinterpret_cast<Form*>(second);
        form->Attach(window);
        SetWindowLongPtrW(window, DWLP_USER, second);
        return FALSE; // the form sets the focus when it is shown
    }
    auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!form) {
        return FALSE;
    }
    const std::shared_ptr<Form> alive = form->weak_from_this().lock();
    INT_PTR handled = FALSE;
    // cppcheck-suppress throwInNoexceptFunction; what it throws ends in Trapped
    form->Trapped([&] { handled = form->Handle(message, first, second); });
    return handled;
}

INT_PTR Form::Answer(LRESULT answer) {
    SetWindowLongPtrW(Window(), DWLP_MSGRESULT, answer);
    return TRUE;
}

INT_PTR Form::Handle(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE: // the system tells no child of it
        for (HWND child = GetWindow(Window(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            SendMessageW(child, message, first, second);
        }
        return FALSE;
    case WM_SIZE:
        if (first != SIZE_MINIMIZED && m_layout) {
            ResizeControls();
        }
        return FALSE;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {m_smallest.cx, m_smallest.cy};
        return TRUE;
    case WM_SETCURSOR:
        if (win::MousePointer::IsHourglass()) {
            win::MousePointer::Hourglass();
            return Answer(TRUE);
        }
        return FALSE;
    case WM_COMMAND:
        if (second) {
            HandleCommand(LOWORD(first), HIWORD(first), reinterpret_cast<HWND>(second));
        }
        return TRUE;
    case WM_NOTIFY: {
        LRESULT answer = 0;
        NMHDR& header = *reinterpret_cast<NMHDR*>(second);
        const auto handles = [&](FormPart* part) { return part->OnNotify(header, answer); };
        if ((m_toolbar && m_toolbar->Notified(header, answer)) || std::ranges::any_of(m_parts, handles) ||
            OnNotify(header, answer)) {
            return IsLoaded() ? Answer(answer) : TRUE;
        }
        return FALSE;
    }
    case WM_ACTIVATE:
        if (LOWORD(first) == WA_INACTIVE) {
            win::BusyCommand::End(); // the window in front has the mouse
            m_left = GetFocus();
        }
        return FALSE;
    case WM_CLOSE:
        Input(base::kCerrar);
        return TRUE;
    case WM_DESTROY:
        BeforeDestroy();
        return FALSE;
    case WM_NCDESTROY:
        SetWindowLongPtrW(Window(), DWLP_USER, 0);
        AfterDestroy();
        return FALSE;
    default:
        return FALSE;
    }
}

void Form::HandleCommand(int id, int code, HWND sender) {
    if (m_toolbar && sender == m_toolbar->Window()) {
        // A copy: the command may unload the form, and the bar that owns the text with it.
        Input(std::wstring(m_toolbar->IdOf(id)));
        return;
    }
    const bool arrives = code == EN_SETFOCUS || code == CBN_SETFOCUS;
    const HWND left = arrives ? std::exchange(m_left, nullptr) : nullptr;
    if (arrives && left != sender && !IsChild(sender, left)) {
        const com::ComPtr<objects::ControlObject> object = KnownObjectOf(id);
        Using(Component::Focus,
              [&] { environment::Environment::Get().GetFocus().Receive(sender, object.Get()); });
    }
    if (code == BN_CLICKED && m_dispatcher.Click(id) && !IsLoaded()) {
        return;
    }
    for (FormPart* part : m_parts) {
        part->OnControl(id, code);
    }
    OnControl(id, code);
}

void Form::ResizeControls() {
    m_toolbar->Resize();
    RECT area{};
    GetClientRect(Window(), &area);
    area.top += m_toolbar->Height();
    LayOutBeside(area);
    m_layout.Arrange(area);
    PlaceTips();
    InvalidateRect(Window(), nullptr, TRUE);
}

void Form::Relayout() {
    if (Window() && m_layout) {
        ResizeControls();
    }
}

void Form::ToolbarChanged() {
    m_toolbar->SetPressed(base::kFiltro, false);
    Relayout();
    m_toolbar->Save(m_toolbarFile);
}

void Form::RunMenu(std::span<const MenuItem> items, int button) {
    RECT place{};
    GetWindowRect(Control(button), &place);
    RunMenu(items, POINT{place.left, place.bottom});
}

} // namespace tamvelo::frame
