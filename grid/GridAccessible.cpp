#include "grid/GridAccessible.h"

#include <windows.h>

#include <oleacc.h>

#include <algorithm>
#include <optional>

#include "com/Guard.h"
#include "com/Object.h"
#include "com/Variant.h"
#include "grid/GridView.h"

namespace tamvelo::grid {

namespace {

/// What a child number stands for.
struct Target {
    enum Kind { Table, Row, Heading } kind = Table;
    long row = -1;
    short column = -1;
};

/// The child number of a row on screen.
LONG ChildOf(const GridView& view, long row) { return row - view.Viewport().Top() + 1; }

class GridAccessible final : public com::Object<IAccessible, IOleWindow> {
public:
    explicit GridAccessible(std::weak_ptr<GridView> view) : m_view(std::move(view)) {}

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
        *parent = nullptr;
        return With([&](GridView& view) {
            return AccessibleObjectFromWindow(view.Window(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                              reinterpret_cast<void**>(parent));
        });
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override {
        *count = 0;
        return With([&](GridView& view) {
            *count = RowsOnScreen(view) + static_cast<LONG>(view.Columns().OnScreen().size());
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override {
        *object = nullptr; // children are numbers, not objects
        return WithTarget(child, [](GridView&, const Target&) { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
        *name = nullptr;
        return WithTarget(
            child, [&](GridView& view, const Target& target) { return Give(NameOf(view, target), name); });
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override {
        *value = nullptr;
        return WithTarget(child, [&](GridView& view, const Target& target) {
            const long current = view.Data().Current();
            const bool ours =
                target.kind == Target::Table || (target.kind == Target::Row && target.row == current);
            if (!ours || current < 0 || view.Columns().Count() == 0) {
                return S_FALSE;
            }
            const short column = view.Columns().Current();
            return Give(view.Columns()[column].caption + L": " + view.Data().ShownText(current, column),
                        value);
        });
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override {
        *description = nullptr;
        return WithTarget(child, [](GridView&, const Target&) { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
        return WithTarget(child, [&](GridView&, const Target& target) {
            constexpr LONG kRoles[] = {ROLE_SYSTEM_TABLE, ROLE_SYSTEM_ROW, ROLE_SYSTEM_COLUMNHEADER};
            return GiveNumber(kRoles[target.kind], role);
        });
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
        return WithTarget(child, [&](GridView& view, const Target& target) {
            LONG bits = 0;
            const bool focused = GetFocus() == view.Window();
            if (target.kind == Target::Table) {
                bits = STATE_SYSTEM_FOCUSABLE |
                       (focused && view.Data().Current() < 0 ? STATE_SYSTEM_FOCUSED : 0);
            } else if (target.kind == Target::Row) {
                bits = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
                if (target.row == view.Data().Current()) {
                    bits |= STATE_SYSTEM_SELECTED | (focused ? STATE_SYSTEM_FOCUSED : 0);
                }
            }
            return GiveNumber(bits, state);
        });
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR* help) override { return Nothing(help); }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT, LONG* topic) override {
        *topic = 0;
        return Nothing(file);
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT, BSTR* key) override { return Nothing(key); }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
        VariantInit(child);
        return With(
            [&](GridView& view) { return GetFocus() == view.Window() ? GiveCurrent(view, child) : S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* child) override {
        VariantInit(child);
        return With(
            [&](GridView& view) { return view.Data().Current() < 0 ? S_FALSE : GiveCurrent(view, child); });
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override {
        *action = nullptr;
        return WithTarget(child, [&](GridView&, const Target& target) {
            constexpr const wchar_t* kActions[] = {nullptr, L"Elegir", L"Ordenar"};
            return kActions[target.kind] ? Give(kActions[target.kind], action) : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override {
        return WithTarget(child, [&](GridView& view, const Target& target) {
            if (target.kind == Target::Heading) {
                return E_INVALIDARG;
            }
            if (flags & SELFLAG_TAKEFOCUS) {
                SetFocus(view.Window());
            }
            if (target.kind == Target::Row && (flags & (SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION))) {
                view.MoveTo(target.row);
            }
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                          VARIANT child) override {
        return WithTarget(child, [&](GridView& view, const Target& target) {
            RECT area = AreaOf(view, target);
            MapWindowPoints(view.Window(), nullptr, reinterpret_cast<POINT*>(&area), 2);
            *left = area.left;
            *top = area.top;
            *width = area.right - area.left;
            *height = area.bottom - area.top;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
        VariantInit(end);
        return WithTarget(start, [&](GridView& view, const Target& target) {
            const LONG rows = RowsOnScreen(view);
            const LONG last = rows + static_cast<LONG>(view.Columns().OnScreen().size());
            const LONG from = start.lVal;
            LONG to = 0;
            if (target.kind == Target::Table) {
                to = direction == NAVDIR_FIRSTCHILD ? 1 : direction == NAVDIR_LASTCHILD ? last : 0;
            } else if (direction == NAVDIR_NEXT || (direction == NAVDIR_DOWN && from < rows)) {
                to = from + 1;
            } else if (direction == NAVDIR_PREVIOUS || (direction == NAVDIR_UP && from <= rows)) {
                to = from - 1;
            }
            return to >= 1 && to <= last ? GiveNumber(to, end) : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* child) override {
        VariantInit(child);
        return With([&](GridView& view) {
            POINT point{x, y};
            ScreenToClient(view.Window(), &point);
            if (!PtInRect(&view.Viewport().Client(), point)) {
                return S_FALSE;
            }
            const long row = view.Viewport().RowAt(point.y);
            if (row >= 0) {
                return GiveNumber(ChildOf(view, row), child);
            }
            const std::vector<short> shown = view.Columns().OnScreen();
            const auto column = std::find(shown.begin(), shown.end(), view.Viewport().ColumnAt(point.x));
            if (point.y < view.Viewport().HeadHeight() && column != shown.end()) {
                return GiveNumber(RowsOnScreen(view) + static_cast<LONG>(column - shown.begin()) + 1, child);
            }
            return GiveNumber(CHILDID_SELF, child);
        });
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        return WithTarget(child, [&](GridView& view, const Target& target) {
            if (target.kind == Target::Table) {
                return DISP_E_MEMBERNOTFOUND;
            }
            target.kind == Target::Row ? view.Activate(target.row)
                                       : view.Tell(&GridEvents::HeadingClicked, target.column);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

    // Clients of accessibility use the interface itself.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        return With([&](GridView& view) {
            *window = view.Window();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

private:
    static HRESULT Nothing(BSTR* text) {
        *text = nullptr;
        return S_FALSE;
    }
    static HRESULT Give(const std::wstring& text, BSTR* out) {
        *out = com::Bstr(text).Detach();
        return S_OK;
    }
    static HRESULT GiveNumber(LONG number, VARIANT* out) {
        out->vt = VT_I4;
        out->lVal = number;
        return S_OK;
    }
    static LONG RowsOnScreen(GridView& view) {
        return std::max(0L, view.Viewport().LastRow() - view.Viewport().Top() + 1);
    }
    static HRESULT GiveCurrent(GridView& view, VARIANT* child) {
        const LONG number = ChildOf(view, view.Data().Current());
        return GiveNumber(number >= 1 && number <= RowsOnScreen(view) ? number : CHILDID_SELF, child);
    }

    template <class Body>
    HRESULT With(Body&& body) {
        const std::shared_ptr<GridView> view = m_view.lock();
        if (!view || !view->Window()) {
            return CO_E_OBJNOTCONNECTED;
        }
        HRESULT result = S_OK;
        const HRESULT guarded = com::Guard(__uuidof(IAccessible), [&] { result = body(*view); });
        return FAILED(guarded) ? guarded : result;
    }

    template <class Body>
    HRESULT WithTarget(const VARIANT& child, Body&& body) {
        return With([&](GridView& view) -> HRESULT {
            const std::optional<Target> target =
                child.vt == VT_I4 ? TargetOf(view, child.lVal) : std::nullopt;
            return target ? body(view, *target) : E_INVALIDARG;
        });
    }

    static std::optional<Target> TargetOf(GridView& view, LONG number) {
        if (number == CHILDID_SELF) {
            return Target{};
        }
        const LONG rows = RowsOnScreen(view);
        const std::vector<short> shown = view.Columns().OnScreen();
        if (number >= 1 && number <= rows) {
            return Target{Target::Row, view.Viewport().Top() + number - 1, -1};
        }
        if (number > rows && number <= rows + static_cast<LONG>(shown.size())) {
            return Target{Target::Heading, -1, shown[static_cast<size_t>(number - rows - 1)]};
        }
        return std::nullopt;
    }

    static std::wstring NameOf(GridView& view, const Target& target) {
        if (target.kind == Target::Table) {
            return view.Name();
        }
        std::wstring name;
        if (target.kind == Target::Row) {
            for (const short column : view.Columns().OnScreen()) {
                name += (name.empty() ? L"" : L"; ") + view.Data().ShownText(target.row, column);
            }
            return name;
        }
        name = view.Columns()[target.column].caption;
        if (const auto& arrow = view.Columns().Arrow(); arrow && arrow->column == target.column) {
            name += arrow->descending ? L", orden descendente" : L", orden ascendente";
        }
        return name;
    }

    static RECT AreaOf(GridView& view, const Target& target) {
        const GridViewport& port = view.Viewport();
        RECT area = port.Client();
        if (target.kind == Target::Row) {
            area.top = port.RowTop(target.row);
            area.bottom = std::min<LONG>(area.top + port.RowHeight(), port.Client().bottom);
        } else if (target.kind == Target::Heading) {
            area = port.CellRect(port.Top(), target.column);
            area.top = 0;
            area.bottom = port.HeadHeight();
        }
        return area;
    }

    const std::weak_ptr<GridView> m_view;
};

} // namespace

LRESULT AnswerAccessible(std::weak_ptr<GridView> view, WPARAM flags) {
    const auto object = com::Make<GridAccessible>(std::move(view));
    return LresultFromObject(__uuidof(IAccessible), flags, static_cast<IAccessible*>(object.Get()));
}

void AnnounceRow(const GridView& view) {
    if (view.Window() && view.Viewport().Shows(view.Data().Current())) {
        const LONG child = ChildOf(view, view.Data().Current());
        NotifyWinEvent(EVENT_OBJECT_SELECTION, view.Window(), OBJID_CLIENT, child);
        if (GetFocus() == view.Window()) {
            NotifyWinEvent(EVENT_OBJECT_FOCUS, view.Window(), OBJID_CLIENT, child);
        }
    }
}

void AnnounceCell(const GridView& view) {
    if (view.Window()) {
        NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, view.Window(), OBJID_CLIENT,
                       ChildOf(view, view.Data().Current()));
    }
}

} // namespace tamvelo::grid
