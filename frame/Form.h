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
#include "frame/Commands.h"
#include "frame/Dispatcher.h"
#include "frame/FormControls.h"
#include "frame/Placement.h"
#include "frame/Toolbar.h"
#include "objects/EventRelay.h"
#include "win/MessageLoop.h"
#include "win/ModalScope.h"
#include "win/RowLayout.h"

namespace tamvelo::frame {

class FormPart;

/// What distinguishes one form from another before any code of its own runs.
struct FormDesign {
    const wchar_t* name;
    int dialogTemplate;
    std::span<const ToolUse> tools;
    std::span<const KeyRow> keys; // beyond, or in place of, those of its parts and the frame
};

/// The frame of every dialog: its life from Mostrar to unload, its window, toolbar, delivery and error
/// report. A derived form has controls (a dialog template), tables (tools, keys, commands, layout), parts and
/// code.
///
/// Anything may happen while the host runs: it may destroy our owner, and so this window, or call us again.
/// A call out during which the window went throws Gone, which ends the show method, command or handler that
/// made it; after what else may run the host's code (a menu, a box of the system's) CheckStands does.
class Form : public FormControls, public CommandTarget, public std::enable_shared_from_this<Form> {
public:
    virtual ~Form();

    const wchar_t* Name() const { return m_design.name; }
    bool IsShown() const { return m_shown; }
    std::span<const ToolUse> Tools() const { return m_design.tools; }
    std::span<const KeyRow> Keys() const override { return m_design.keys; }
    const std::vector<FormPart*>& FormParts() const { return m_parts; }

    // What a form's code and its parts work with.

    /// Reports an error to the user through the environment; never fails.
    void ControlErrores(const com::Error& error) noexcept;
    /// Runs an event handler: errors end in ControlErrores. For the edges; inside other code it is Tried.
    template <class Body>
    void Trapped(const Body& body) noexcept;
    /// Runs code whose failure is told and does not end what goes on.
    template <class Body>
    void Tried(const Body& body);
    enum class Component : unsigned { Settings = 1, Files = 2, Focus = 4 };
    /// Works with a component of the environment that the form can do without. When it fails that is told
    /// once, and the component is left alone until the form goes.
    template <class Body>
    void Using(Component component, const Body& body);
    /// A relay for nested dialogs, whose handlers run as code of this form.
    std::unique_ptr<objects::OwnRelay> MakeRelay(std::map<DISPID, objects::OwnRelay::Handler> handlers) {
        return std::make_unique<objects::OwnRelay>(Watched(), std::move(handlers));
    }
    void Input(std::wstring_view command, int control = 0) { m_dispatcher.Input(command, control); }
    void RunMenu(std::span<const MenuItem> items, POINT screen) { m_dispatcher.RunMenu(items, screen); }
    /// The same below a button.
    void RunMenu(std::span<const MenuItem> items, int button);
    using FormControls::SetTip;
    /// With the key of the command that the control is for.
    void SetTip(int id, std::wstring text, std::wstring_view command) {
        SetTip(id, m_dispatcher.WithKey(std::move(text), command));
    }
    Toolbar& Bar() {
        CheckStands();
        return *m_toolbar;
    }
    void Unload();
    /// Lays the window out again after controls were shown or hidden.
    void Relayout();
    /// For the status line: that a layout file could not be used; "" when there is nothing to say.
    const std::wstring& LayoutNote() const { return m_layoutNote; }
    void NoteLayout(std::wstring note);
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

    /// The window and the template's controls exist; makes the others and sets the opening values.
    virtual void OnLoad() {}
    /// The controls have their places: the time for what depends on sizes.
    virtual void OnLaidOut() {}
    /// The window still stands; the last chance to keep what the user arranged.
    virtual void OnBeforeUnload() {}
    /// Releases what the form holds of the host.
    virtual void OnUnload() noexcept {}
    /// The content area under the toolbar, from top to bottom.
    virtual std::vector<win::LayoutRow> Layout() const { return {}; }
    /// Lays out the content area.
    virtual void ResizeControls();
    /// What a form lays out itself beside that: it takes the room away from `area` (client pixels).
    virtual void LayOutBeside(RECT& /*area*/) {}
    /// A notification of a control (WM_COMMAND).
    virtual void OnControl(int /*control*/, int /*code*/) {}
    /// A notification of a common control; true with the answer set when it was handled.
    virtual bool OnNotify(NMHDR& /*header*/, LRESULT& /*answer*/) { return false; }
    /// The control that has the focus first.
    virtual HWND FirstFocus() const { return nullptr; }

private:
    friend class FormPart; // says that it is one
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    INT_PTR Handle(UINT message, WPARAM first, LPARAM second);
    void HandleCommand(int id, int code, HWND sender);
    INT_PTR Answer(LRESULT answer);
    void CreateWindowHidden();
    void LoadToolbar();
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
    void ToolbarChanged();
    std::wstring Key() const;

    const FormDesign m_design;
    std::vector<FormPart*> m_parts; // members of the derived form
    Dispatcher m_dispatcher{*this};
    HWND m_owner = nullptr;
    HWND m_left = nullptr; // had the focus when another window came in front: that one has it back as it was
    Placement m_placement{*this, Name()};
    std::unique_ptr<Toolbar> m_toolbar;
    std::wstring m_toolbarFile;
    win::RowLayout m_layout;
    SIZE m_smallest{};
    std::optional<win::ModalScope> m_modal;
    win::MessageLoop m_loop;
    bool m_opening = false;
    bool m_shown = false;
    unsigned m_outOfOrder = 0; // components that failed
    std::wstring m_layoutNote;
};

template <class Body>
void Form::Show(const Body& body) {
    const std::shared_ptr<Form> alive = shared_from_this();
    if (m_shown || m_opening) {
        ReportRefusedShow();
    }
    m_opening = true; // the host may call again before there is anything to see
    const com::Watch watch(Watched());
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
    const com::Watch watch(Watched());
    com::AtEdge(body, [&](const com::Error& error) { ControlErrores(error); });
}

template <class Body>
void Form::Tried(const Body& body) {
    const com::Watch watch(Watched()); // also where a control's own procedure led here
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
using frame::MenuItem;
using frame::ToolUse;
using win::kFill;
using win::kOwn;
using win::LayoutRow;
} // namespace tables

} // namespace tamvelo::frame
