#pragma once

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/CallOut.h"
#include "com/Error.h"
#include "com/Guard.h"
#include "environment/Environment.h"
#include "frame/Keys.h"
#include "frame/Toolbar.h"
#include "objects/ControlObject.h"
#include "objects/EventRelay.h"
#include "win/ModalScope.h"
#include "win/RowLayout.h"

namespace tamvelo::frame {

class Form;
class FormPart;

/// What a command does in a form; identifiers without a row mean nothing there.
struct CommandRow {
    std::wstring_view command;
    void (*run)(Form& form, int control);
};

namespace detail {
template <class Class>
void Run(Form& form, void (Class::*function)(), int /*control*/) {
    (static_cast<Class&>(form).*function)();
}
template <class Class>
void Run(Form& form, void (Class::*function)(int), int control) {
    (static_cast<Class&>(form).*function)(control);
}
} // namespace detail

/// Adapts a member function for a command row: `{base::kAceptar, Do<&FrmSeleccion::Aceptar>}`. One that takes
/// a number gets that of the control that the command came from or is for; 0 from a menu or a tool.
template <auto Function>
void Do(Form& form, int control) {
    detail::Run(form, Function, control);
}

/// Commands that only keys, buttons and menus know.
inline constexpr wchar_t kLookUp[] = L"{CONSULTAR}"; // at the controls where the form offers it
inline constexpr wchar_t kTabKey[] = L"{TAB}";       // moves the focus on, as the Tab key does
inline constexpr wchar_t kCustomizeToolbar[] = L"{BARRA}";
inline constexpr wchar_t kEditingBandOnly[] = L"{EDICION}";
inline constexpr wchar_t kGoToSearch[] = L"{IR_A_BUSCAR}";
inline constexpr wchar_t kNoCommand[] = L""; // takes the key and does nothing

/// What distinguishes one form from another before any code of its own runs.
struct FormDesign {
    const wchar_t* name;
    int dialogTemplate;
    std::span<const ToolUse> tools;
    std::span<const KeyRow> keys; // beyond, or in place of, those of its kind and the frame's
};

/// The frame of every dialog: its life from Mostrar to unload, its window, toolbar, keys, commands, placement
/// and error report. A derived form has controls (a dialog template), tables (tools, keys, commands, rows)
/// and code.
///
/// Anything may happen while the host runs: it may destroy our owner, and so this window, or call us again.
/// A call out during which the window went throws Gone, which ends the show method, command or handler that
/// made it; after what else may run the host's code (a menu, a box of the system's) CheckStands does.
class Form : public environment::PlacedForm, public std::enable_shared_from_this<Form> {
public:
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const wchar_t* Name() const { return m_design.name; }
    HWND Window() const { return m_window; }
    bool IsLoaded() const { return m_window != nullptr; }
    bool IsShown() const { return m_shown; }

    /// Reports an error to the user through the environment; never fails.
    void ControlErrores(const com::Error& error) noexcept;
    /// Lays out the content area under the toolbar.
    virtual void ResizeControls();

    base::Rect Place() const override;
    void SetPlace(const base::Rect& place) override;
    bool IsMaximised() const override;
    void SetMaximised() override { m_showAs = SW_SHOWMAXIMIZED; }
    com::ComPtr<IDispatch> FormObject() override;

protected:
    explicit Form(const FormDesign& design);

    /// Runs a show method: refuses a form that is already shown, and leaves nothing behind when `body` fails.
    template <class Body>
    void Show(const Body& body);

    /// The window that the form stands above and goes with; 0 or one that is gone: what the user works in
    /// now. Before the window is made.
    void SetOwner(HWND owner) { m_owner = owner; }
    /// Makes the window, hidden: placement, toolbar layout, OnLoad, set-up. Does nothing when it stands
    /// already.
    void Load();
    /// Returns when the form is hidden or unloaded.
    void ShowModal();
    void ShowModeless();
    /// By the caller's number: 0 is modeless.
    void ShowAs(short modal);
    void Hide();
    void Unload();
    /// What accepting comes to: hides the form, runs `body`, which hands the result to the host, and unloads.
    /// If that fails the form comes back as it was, with all that the user chose, and the error goes on. The
    /// host may show the form again meanwhile: it gets another instance.
    template <class Body>
    void Deliver(const Body& body) {
        Deliver([] {}, body);
    }
    /// With something to do first, once the form is hidden. If that fails the form stays hidden and loaded:
    /// the next operation shows it again, with all that the user chose.
    template <class Prepare, class Body>
    void Deliver(const Prepare& prepare, const Body& body);

    /// The window and the template's controls exist; makes the others and sets the opening values.
    virtual void OnLoad() {}
    /// The controls have their places: the time for what depends on sizes.
    virtual void OnLaidOut() {}
    /// Releases what the form holds of the host.
    virtual void OnUnload() noexcept {}
    /// The window still stands; the last chance to keep what the user arranged.
    virtual void OnBeforeUnload() {}
    virtual std::span<const CommandRow> Commands() const = 0;
    /// Commands that all forms of a kind have; the form's own rows come first.
    virtual std::span<const CommandRow> SharedCommands() const { return {}; }
    /// Keys that all forms of a kind have; the form's own rows come first.
    virtual std::span<const KeyRow> SharedKeys() const { return {}; }
    virtual std::vector<win::LayoutRow> Rows() const { return {}; }
    /// What a form lays out itself beside its rows: it takes the room away from `area` (client pixels).
    virtual void LayOutBeside(RECT& /*area*/) {}
    /// A notification of a control (WM_COMMAND).
    virtual void OnControl(int /*control*/, int /*code*/) {}
    /// A notification of a common control; true with the answer set when it was handled.
    virtual bool OnNotify(NMHDR& /*header*/, LRESULT& /*answer*/) { return false; }
    /// Whether a command means something at a control now; where it does not, the key goes on. Calls no host.
    virtual bool Offers(std::wstring_view command, int /*control*/) const { return command != kLookUp; }
    /// The control that has the focus first.
    virtual HWND FirstFocus() const { return nullptr; }

    /// A command from outside: a key, a tool, a button. Ignored while another one runs, so that a host that
    /// pumps messages inside a call cannot start a second one.
    void Input(std::wstring_view command, int control = 0);
    /// Runs a command with the hourglass; errors end in ControlErrores.
    void Dispatch(std::wstring_view command, int control);
    /// Runs an event handler: errors end in ControlErrores. For the edges; inside other code it is Tried.
    template <class Body>
    void Trapped(const Body& body) noexcept;
    /// Runs code whose failure is told and does not end what goes on.
    template <class Body>
    void Tried(const Body& body);
    /// A relay for nested dialogs, whose handlers run as code of this form.
    std::unique_ptr<objects::OwnRelay> MakeRelay(std::map<DISPID, objects::OwnRelay::Handler> handlers) {
        return std::make_unique<objects::OwnRelay>(&m_window, std::move(handlers));
    }
    enum class Component : unsigned { Settings = 1, Files = 2, Focus = 4 };
    /// Works with a component of the environment that the form can do without. When it fails that is told
    /// once, and the component is left alone until the form goes.
    template <class Body>
    void Using(Component component, const Body& body);

    /// A control that the template does not have, last in the tab order; its size in dialog units.
    HWND AddControl(int id, const wchar_t* windowClass, const wchar_t* text, DWORD style, SIZE units);
    /// A push button that the template does not have, last in the tab order; the width in dialog units.
    void AddButton(int id, const wchar_t* caption, int width);
    HWND Control(int id) const;
    /// A child window whose controls count as the form's own: AddControl makes them in it from now on.
    void SetContainer(HWND container) { m_container = container; }
    /// What a text takes, in dialog units; in the form's own font unless another is given.
    int WidthOf(const wchar_t* text, HFONT font = nullptr) const;
    void ShowControl(int id, bool shown);
    void EnableControl(int id, bool enabled);
    /// What the mouse learns over a control, also over one that is off; "" nothing. A command's key is added.
    void SetTip(int id, std::wstring text, std::wstring_view command = {});
    /// A text with the key of a command behind it: "Orden ascendente (F9)".
    std::wstring WithKey(std::wstring text, std::wstring_view command) const;
    std::wstring ControlText(int id) const;
    void SetControlText(int id, const std::wstring& text);
    /// The automation object of a control, made on first use and kept until unload.
    com::ComPtr<objects::ControlObject> ObjectOf(int id, const wchar_t* name, short index);
    Toolbar& Bar() {
        CheckStands();
        return *m_toolbar;
    }
    /// Throws Gone when there is no window.
    void CheckStands() const;
    /// For the status line: that a layout file could not be used; "" when there is nothing to say.
    const std::wstring& LayoutNote() const { return m_layoutNote; }
    void NoteLayout(std::wstring note);
    /// Lays the rows out again after controls were shown or hidden.
    void Relayout();
    /// A menu of commands at a place of the screen; the chosen one is dispatched, after the one that runs.
    struct MenuItem {
        std::wstring_view command;
        const wchar_t* caption; // without its key; null: the tool's; for a separator the command is empty too
    };
    void RunMenu(std::span<const MenuItem> items, POINT screen);
    /// The same below a button.
    void RunMenu(std::span<const MenuItem> items, int button);

private:
    friend class FormPart;
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    INT_PTR Handle(UINT message, WPARAM first, LPARAM second);
    INT_PTR Answer(LRESULT answer);
    void CreateWindowHidden();
    void LoadToolbar();
    void PullOntoMonitor();
    void CentreOnOwner();
    void BeforeDestroy();
    void AfterDestroy() noexcept;
    void ReportRefusedShow() const;
    void Appear();
    void Vanish() noexcept;
    struct Hidden { // what hiding took away
        bool shown;
        bool modal;
        HWND focus;
    };
    Hidden HideForDelivery();
    void StayLoaded();
    void ComeBack(const Hidden& before);
    void RunLoop();
    bool Preview(MSG& message);
    bool PreviewKey(UINT key, HWND focus);
    template <class Matches>
    const KeyRow* FindRow(const Matches& matches) const;
    /// The row of a key, or of a click, at a control where its command is offered.
    const KeyRow* FindKey(int control, UINT key) const;
    bool RunRow(const KeyRow* row, int control);
    /// The key of a command as users read it; "" when it has none.
    std::wstring KeyOf(std::wstring_view command) const;
    int FocusedControl(HWND focus) const;
    void RunCommand(std::wstring_view command, int control);
    void OnTool(std::wstring_view id);
    void ToolbarChanged();
    std::wstring Key() const;
    void PlaceTips() const;

    const FormDesign m_design;
    std::vector<FormPart*> m_parts; // members of the derived form
    HWND m_owner = nullptr;
    HWND m_window = nullptr;
    HWND m_container = nullptr;
    HWND m_left = nullptr; // had the focus when another window came in front: that one has it back as it was
    std::unique_ptr<Toolbar> m_toolbar;
    std::wstring m_toolbarFile;
    win::RowLayout m_layout;
    std::optional<win::ModalScope> m_modal;
    bool m_opening = false;
    bool m_shown = false;
    bool m_looping = false;
    unsigned m_outOfOrder = 0; // components that failed
    int m_showAs = SW_SHOW;    // the first time
    std::wstring m_layoutNote;
    int m_running = 0;
    std::wstring_view m_chosen; // from a menu that a command showed
    SIZE m_smallest{};
    std::map<int, com::ComPtr<objects::ControlObject>> m_objects;
    HWND m_tips = nullptr; // a window of the form's, made with the first tip
    std::map<int, std::wstring> m_tipTexts;
    com::ComPtr<IDispatch> m_formObject;
};

template <class Body>
void Form::Show(const Body& body) {
    const std::shared_ptr<Form> alive = shared_from_this();
    if (m_shown || m_opening) {
        ReportRefusedShow();
    }
    m_opening = true; // the host may call again before there is anything to see
    const com::Watch watch(&m_window);
    try {
        body();
        m_opening = false;
    } catch (const com::Gone&) { // the host took the window away, as a user may close it
        m_opening = false;
        Unload();
    } catch (...) {
        m_opening = false;
        const com::Error error = com::CurrentError();
        Unload();
        throw error;
    }
}

template <class Prepare, class Body>
void Form::Deliver(const Prepare& prepare, const Body& body) {
    const Hidden before = HideForDelivery();
    try {
        prepare();
    } catch (...) {
        StayLoaded();
        throw;
    }
    try {
        body();
    } catch (...) {
        ComeBack(before);
        throw;
    }
    if (IsLoaded()) {
        Unload();
    }
}

template <class Body>
void Form::Trapped(const Body& body) noexcept {
    const com::Watch watch(&m_window);
    com::AtEdge(body, [&](const com::Error& error) { ControlErrores(error); });
}

template <class Body>
void Form::Tried(const Body& body) {
    const com::Watch watch(&m_window); // also where a control's own procedure led here
    const com::Standing before;
    try {
        body();
    } catch (const com::Gone&) {
        throw;
    } catch (...) {
        ControlErrores(com::CurrentError());
        before.Check(); // the host had all the time of the message
    }
}

template <class Body>
void Form::Using(Component component, const Body& body) {
    Tried([&] {
        const auto bit = static_cast<unsigned>(component);
        if (!(m_outOfOrder & bit)) {
            m_outOfOrder |= bit; // also while it runs: the message about it gives the focus back
            body();
            m_outOfOrder &= ~bit;
        }
    });
}

/// What the tables of a form are written with.
namespace tables {
using frame::CommandRow;
using frame::Do;
using frame::kClick;
using frame::kCtrl;
using frame::KeyRow;
using frame::KeysAnd;
using frame::kFirst;
using frame::kLookUp;
using frame::kShift;
using frame::ToolUse;
using win::kFill;
using win::kOwn;
using win::LayoutRow;
} // namespace tables

} // namespace tamvelo::frame
