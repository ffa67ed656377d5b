#include "frame/Form.h"

#include <commctrl.h>

#include <iterator>
#include <utility>

#include "base/Commands.h"
#include "com/FloatGuard.h"
#include "com/Module.h"
#include "environment/Product.h"
#include "frame/FormInstances.h"
#include "frame/FormPart.h"
#include "frame/Resources.h"
#include "objects/FormObject.h"
#include "win/BusyCursor.h"
#include "win/Handles.h"
#include "win/Message.h"
#include "win/MessageHook.h"
#include "win/MousePointer.h"
#include "win/ThemeScope.h"
#include "win/WindowText.h"

namespace tamvelo::frame {

namespace {

constexpr HRESULT kAlreadyShown = static_cast<HRESULT>(0x800A0190); // automation's number 400

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

// Life

void Form::Load() {
    if (m_window) {
        return;
    }
    CreateWindowHidden();
    Using(Component::Settings,
          [&] { environment::Environment::Get().GetSettings().RestorePlacement(Key(), *this); });
    PullOntoMonitor();
    LoadToolbar();
    for (FormPart* part : m_parts) {
        part->OnLoad();
    }
    OnLoad();
    m_layout = win::RowLayout(m_window, Rows());
    ResizeControls();
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
    if (!made || !m_window) {
        com::ThrowLastError(L"No se puede crear el formulario «" + std::wstring(Name()) + L"».");
    }
    const base::Rect design = Place();
    m_smallest = {design.width, design.height};
    CentreOnOwner();
    m_toolbar = std::make_unique<Toolbar>(m_window, m_design.tools,
                                          Toolbar::Owner{[this] { ToolbarChanged(); },
                                                         [this](std::wstring text, std::wstring_view id) {
                                                             return WithKey(std::move(text), id);
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
    m_modal.emplace(m_window);
    Appear();
    RunLoop();
}

void Form::ShowModeless() {
    Load();
    m_opening = false;
    win::MessageHook::Add(m_window, [this](MSG& message) { return Preview(message); });
    Appear();
}

void Form::Appear() {
    m_shown = true;
    m_left = nullptr;
    ShowWindow(m_window, std::exchange(m_showAs, SW_SHOW));
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
    m_looping = true;
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
    m_looping = false;
}

/// From here on there is nothing to see. What brought that about may have been sent to us, not posted: the
/// loop, which waits for something posted, has to hear of it.
void Form::Vanish() noexcept {
    m_shown = false;
    if (m_looping) {
        PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    }
}

void Form::Hide() {
    m_modal.reset(); // the host's windows take input again before this one goes, or another program comes
                     // forward
    Vanish();
    if (m_window) {
        ShowWindow(m_window, SW_HIDE);
    }
}

Form::Hidden Form::HideForDelivery() {
    const Hidden before{m_shown, m_modal.has_value(), GetFocus()};
    Hide();
    FormInstances::Forget(*this);
    return before;
}

void Form::StayLoaded() {
    if (m_window) {
        FormInstances::Obtain(Name(), [this] { return shared_from_this(); });
    }
}

void Form::ComeBack(const Hidden& before) {
    StayLoaded();
    if (!m_window || !before.shown) {
        return;
    }
    if (before.modal) {
        m_modal.emplace(m_window);
    }
    Appear();
    if (IsChild(m_window, before.focus)) {
        SetFocus(before.focus);
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
    Trapped([&] {
        Using(Component::Settings,
              [&] { environment::Environment::Get().GetSettings().SavePlacement(Key(), *this); });
    });
    win::MousePointer::Default();
}

void Form::AfterDestroy() noexcept {
    m_modal.reset();
    win::MessageHook::Remove(m_window);
    m_window = nullptr;
    m_container = nullptr;
    Vanish();
    m_outOfOrder = 0;
    m_toolbar.reset();
    m_layout = {};
    m_objects.clear();
    m_tips = nullptr;
    m_tipTexts.clear();
    m_layoutNote.clear();
    m_showAs = SW_SHOW;
    m_formObject.Reset();
    OnUnload();
    FormInstances::Forget(*this);
}

void Form::CheckStands() const {
    if (!m_window) {
        throw com::Gone{};
    }
}

std::wstring Form::Key() const { return environment::Product::Own().FormKey(Name()); }

// Errors

void Form::ControlErrores(const com::Error& error) noexcept {
    const std::shared_ptr<Form> alive = weak_from_this().lock();
    const com::Watch outermost; // an error is told to the end, whatever becomes of the form
    try {
        win::MousePointer::Default();
        environment::Environment::Get().GetErrors().Show(m_shown ? m_window : win::OwnerForDialog(), error);
    } catch (...) {
        // The reporter itself is out of order: the plain box needs nothing but the system.
        win::ShowMessage(m_shown ? m_window : nullptr, error.description, Name(), MB_OK | MB_ICONERROR);
    }
}

// Window

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
    // cppcheck-suppress throwInNoexceptFunction; what it throws ends in Trapped
    form->Trapped([&] { handled = form->Handle(message, first, second); });
    return handled;
}

INT_PTR Form::Answer(LRESULT answer) {
    SetWindowLongPtrW(m_window, DWLP_MSGRESULT, answer);
    return TRUE;
}

INT_PTR Form::Handle(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE: // the system tells no child of it
        for (HWND child = GetWindow(m_window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
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
    case WM_COMMAND: {
        const HWND sender = reinterpret_cast<HWND>(second);
        if (m_toolbar && sender == m_toolbar->Window()) {
            OnTool(m_toolbar->IdOf(LOWORD(first)));
        } else if (sender) {
            const bool arrives = HIWORD(first) == EN_SETFOCUS || HIWORD(first) == CBN_SETFOCUS;
            const HWND left = arrives ? std::exchange(m_left, nullptr) : nullptr;
            if (arrives && left != sender && !IsChild(sender, left)) {
                const int id = LOWORD(first);
                const auto known = m_objects.find(id);
                const com::ComPtr<objects::ControlObject> object =
                    known == m_objects.end() ? nullptr : known->second;
                Using(Component::Focus,
                      [&] { environment::Environment::Get().GetFocus().Receive(sender, object.Get()); });
            }
            if (HIWORD(first) == BN_CLICKED && RunRow(FindKey(LOWORD(first), kClick), LOWORD(first)) &&
                !m_window) {
                return TRUE;
            }
            for (FormPart* part : m_parts) {
                part->OnControl(LOWORD(first), HIWORD(first));
            }
            OnControl(LOWORD(first), HIWORD(first));
        }
        return TRUE;
    }
    case WM_NOTIFY: {
        LRESULT answer = 0;
        NMHDR& header = *reinterpret_cast<NMHDR*>(second);
        for (FormPart* part : m_parts) {
            part->OnNotify(header);
        }
        if ((m_toolbar && m_toolbar->Notified(header, answer)) || OnNotify(header, answer)) {
            return m_window ? Answer(answer) : TRUE;
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
    LayOutBeside(area);
    m_layout.Arrange(area);
    PlaceTips();
    InvalidateRect(m_window, nullptr, TRUE);
}

void Form::Relayout() {
    if (m_window && m_layout) {
        ResizeControls();
    }
}

com::ComPtr<IDispatch> Form::FormObject() {
    if (!m_formObject) {
        m_formObject = com::Make<class objects::FormObject>(m_window, Name());
    }
    return m_formObject;
}

} // namespace tamvelo::frame
