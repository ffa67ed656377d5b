#include "frame/Toolbar.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/Commands.h"
#include "com/Error.h"
#include "com/Module.h"
#include "environment/LayoutFile.h"
#include "frame/Resources.h"
#include "win/Dpi.h"
#include "win/Handles.h"

namespace tamvelo::frame {

namespace {

constexpr int kFirstCommand = 0x2000; // above every control number of the dialog templates

constexpr std::array<const wchar_t*, 3> kBands{base::kBandEdicion, base::kBandRegistros, base::kBandRegistro};

base::ToolbarLayout DesignOf(std::span<const ToolUse> uses) {
    base::ToolbarLayout design;
    for (const wchar_t* band : kBands) {
        design.bands.push_back({band, true});
        for (const ToolUse& use : uses) {
            const ToolKind* kind = FindTool(use.id);
            if (kind && std::wstring_view(kind->band) == band) {
                design.tools.push_back({kind->id, kind->band, true});
            }
        }
    }
    return design;
}

std::wstring PlainCaption(std::span<const ToolUse> uses, std::wstring_view id) {
    std::wstring caption = ToolCaption(uses, id);
    std::erase(caption, L'&');
    return caption;
}

TBBUTTON ButtonOf(const ToolKind& kind, int command) {
    TBBUTTON button{};
    button.iBitmap = kind.glyph;
    button.idCommand = command;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = static_cast<BYTE>(BTNS_AUTOSIZE | (kind.captioned ? BTNS_SHOWTEXT : 0) |
                                       (kind.toggles ? BTNS_CHECK : 0));
    return button;
}

TBBUTTON Separator() {
    TBBUTTON button{};
    button.fsStyle = BTNS_SEP;
    return button;
}

} // namespace

Toolbar::Toolbar(HWND parent, std::span<const ToolUse> uses, Owner owner)
    : m_uses(uses), m_owner(std::move(owner)), m_layout(DesignOf(uses)) {
    m_window = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"Barra de herramientas",
                               WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST |
                                   TBSTYLE_TOOLTIPS | CCS_ADJUSTABLE | CCS_TOP,
                               0, 0, 0, 0, parent, nullptr, com::Module::Instance(), nullptr);
    if (!m_window) {
        com::ThrowLastError(L"No se puede crear la barra de herramientas.");
    }
    SendMessageW(m_window, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(m_window, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DOUBLEBUFFER);
    SendMessageW(m_window, WM_SETFONT, static_cast<WPARAM>(SendMessageW(parent, WM_GETFONT, 0, 0)), FALSE);
    AddGlyphs();
}

Toolbar::~Toolbar() {
    if (IsWindow(m_window)) {
        DestroyWindow(m_window);
    }
}

void Toolbar::AddGlyphs() {
    const int dpi = win::DpiOf(m_window);
    const int size = dpi >= 168 ? 32 : dpi >= 120 ? 24 : 16;
    const int resource = size == 32 ? IDB_TOOLBAR32 : size == 24 ? IDB_TOOLBAR24 : IDB_TOOLBAR16;
    const win::UniqueBitmap strip(static_cast<HBITMAP>(LoadImageW(
        com::Module::Instance(), MAKEINTRESOURCEW(resource), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    m_glyphs.reset(ImageList_Create(size, size, ILC_COLOR32, 0, 1));
    if (strip) {
        ImageList_Add(m_glyphs.get(), strip.get(), nullptr);
    }
    SendMessageW(m_window, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_glyphs.get()));
}

win::UniqueIcon Toolbar::Glyph(std::wstring_view id) const {
    const ToolKind* const kind = FindTool(id);
    return win::UniqueIcon(kind ? ImageList_GetIcon(m_glyphs.get(), kind->glyph, ILD_TRANSPARENT) : nullptr);
}

int Toolbar::CommandOf(std::wstring_view id) const {
    const auto found =
        std::find_if(m_uses.begin(), m_uses.end(), [&](const ToolUse& use) { return use.id == id; });
    return found == m_uses.end() ? 0 : kFirstCommand + static_cast<int>(found - m_uses.begin());
}

std::wstring_view Toolbar::IdOf(int command) const {
    const int index = command - kFirstCommand;
    return index >= 0 && index < static_cast<int>(m_uses.size()) ? m_uses[static_cast<size_t>(index)].id
                                                                 : std::wstring_view();
}

void Toolbar::Refresh() {
    if (!std::exchange(m_stale, false)) {
        return;
    }
    std::vector<std::wstring_view> pressed;
    for (const ToolUse& use : m_uses) {
        if (SendMessageW(m_window, TB_ISBUTTONCHECKED, static_cast<WPARAM>(CommandOf(use.id)), 0) > 0) {
            pressed.emplace_back(use.id);
        }
    }
    while (SendMessageW(m_window, TB_DELETEBUTTON, 0, 0)) {
    }
    const auto visible = [&](std::wstring_view band) {
        return std::any_of(m_layout.bands.begin(), m_layout.bands.end(),
                           [&](const auto& known) { return known.name == band && known.visible; });
    };
    std::wstring_view lastBand;
    std::vector<TBBUTTON> buttons;
    std::vector<std::wstring> captions(m_layout.tools.size());
    for (size_t i = 0; i < m_layout.tools.size(); ++i) {
        const base::ToolbarLayout::Tool& tool = m_layout.tools[i];
        const ToolKind* kind = FindTool(tool.id);
        if (!kind || !tool.visible || !visible(tool.band)) {
            continue;
        }
        if (!lastBand.empty() && lastBand != tool.band) {
            buttons.push_back(Separator());
        }
        lastBand = tool.band;
        captions[i] = PlainCaption(m_uses, tool.id);
        TBBUTTON button = ButtonOf(*kind, CommandOf(tool.id));
        button.iString = reinterpret_cast<INT_PTR>(captions[i].c_str());
        buttons.push_back(button);
    }
    // In one go: each message makes the control measure itself anew.
    SendMessageW(m_window, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
    for (const std::wstring_view id : pressed) {
        SetPressed(id, true);
    }
    for (const std::wstring& id : m_off) {
        SendMessageW(m_window, TB_ENABLEBUTTON, static_cast<WPARAM>(CommandOf(id)), FALSE);
    }
}

void Toolbar::Resize() {
    Refresh();
    SendMessageW(m_window, TB_AUTOSIZE, 0, 0);
}

int Toolbar::Height() const {
    RECT place{};
    GetWindowRect(m_window, &place);
    return place.bottom - place.top;
}

void Toolbar::SetBandVisible(std::wstring_view band, bool visible) {
    for (auto& known : m_layout.bands) {
        if (known.name == band) {
            m_stale = m_stale || known.visible != visible;
            known.visible = visible;
        }
    }
}

void Toolbar::SetPressed(std::wstring_view id, bool pressed) {
    Refresh();
    SendMessageW(m_window, TB_CHECKBUTTON, static_cast<WPARAM>(CommandOf(id)), MAKELPARAM(pressed, 0));
}

void Toolbar::SetEnabled(std::wstring_view id, bool enabled) {
    std::erase(m_off, id);
    if (!enabled) {
        m_off.emplace_back(id);
    }
    SendMessageW(m_window, TB_ENABLEBUTTON, static_cast<WPARAM>(CommandOf(id)), enabled);
}

bool Toolbar::IsEnabled(std::wstring_view id) const {
    return std::find(m_off.begin(), m_off.end(), id) == m_off.end();
}

std::wstring Toolbar::Load(const std::wstring& path) {
    std::wstring note;
    if (const auto saved = environment::LoadLayout(path, base::ParseToolbarLayout, note)) {
        m_layout = base::Merge(DesignOf(m_uses), *saved);
        m_stale = true;
    }
    return note;
}

void Toolbar::Save(const std::wstring& path) const {
    environment::WriteLayoutFile(path, base::FormatToolbarLayout(m_layout));
}

void Toolbar::Customize() {
    m_customizing = false;
    SendMessageW(m_window, TB_CUSTOMIZE, 0, 0);
}

void Toolbar::ReadOrder() {
    // What stands on the bar now, in its order; a tool that is not there although its band shows was taken
    // off.
    std::vector<base::ToolbarLayout::Tool> arranged;
    const int count = static_cast<int>(SendMessageW(m_window, TB_BUTTONCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        TBBUTTON button{};
        SendMessageW(m_window, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        const std::wstring_view id = IdOf(button.idCommand);
        for (const auto& tool : m_layout.tools) {
            if (!id.empty() && tool.id == id) {
                arranged.push_back({tool.id, tool.band, true});
            }
        }
    }
    const auto shown = [&](const std::wstring& band) {
        return std::any_of(m_layout.bands.begin(), m_layout.bands.end(),
                           [&](const auto& known) { return known.name == band && known.visible; });
    };
    for (const auto& tool : m_layout.tools) {
        if (std::none_of(arranged.begin(), arranged.end(),
                         [&](const auto& other) { return other.id == tool.id; })) {
            arranged.push_back({tool.id, tool.band, shown(tool.band) ? false : tool.visible});
        }
    }
    m_layout.tools = std::move(arranged);
}

bool Toolbar::FillCustomizeItem(int index, NMHDR& header) const {
    auto& item = reinterpret_cast<NMTOOLBARW&>(header);
    if (index < 0 || index >= static_cast<int>(m_uses.size())) {
        return false;
    }
    const wchar_t* const id = m_uses[static_cast<size_t>(index)].id;
    const ToolKind* kind = FindTool(id);
    if (!kind) {
        return false;
    }
    item.tbButton = ButtonOf(*kind, kFirstCommand + index);
    lstrcpynW(item.pszText, PlainCaption(m_uses, id).c_str(), item.cchText);
    return true;
}

void Toolbar::FillTip(NMHDR& header) const {
    auto& asked = reinterpret_cast<NMTBGETINFOTIPW&>(header);
    if (const std::wstring_view id = IdOf(asked.iItem); FindTool(id)) {
        lstrcpynW(asked.pszText, m_owner.tip(PlainCaption(m_uses, id), id).c_str(), asked.cchTextMax);
    }
}

bool Toolbar::Notified(NMHDR& header, LRESULT& answer) {
    if (header.hwndFrom != m_window) {
        return false;
    }
    switch (header.code) {
    case TBN_GETINFOTIPW: // a bar that shows some captions asks this, else it takes the caption for the tip
        FillTip(header);
        return true;
    case TBN_QUERYINSERT:
    case TBN_QUERYDELETE:
        answer = TRUE;
        return true;
    case TBN_GETBUTTONINFOW:
        answer = FillCustomizeItem(reinterpret_cast<NMTOOLBARW&>(header).iItem, header);
        return true;
    case TBN_INITCUSTOMIZE:
        answer = TBNRF_HIDEHELP;
        return true;
    case TBN_RESET:
        m_layout = DesignOf(m_uses);
        m_stale = true;
        Resize();
        m_customizing = true;
        return true;
    case TBN_TOOLBARCHANGE:
        m_customizing = true;
        return true;
    case TBN_ENDADJUST:
        if (m_customizing) {
            m_customizing = false;
            ReadOrder();
            m_stale = true;
            m_owner.changed();
        }
        return true;
    default:
        return false;
    }
}

} // namespace tamvelo::frame
