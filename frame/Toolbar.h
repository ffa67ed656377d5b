#pragma once

#include "com/WinHeaders.h"

#include <commctrl.h>

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ToolbarLayout.h"
#include "frame/Tools.h"
#include "win/Handles.h"

namespace tamvelo::frame {

/// The bar of a form: tools by identifier in bands by name. A tool shows when it and its band are visible.
/// What the user arranges by customisation is a base::ToolbarLayout over the form's design.
class Toolbar {
public:
    /// What the bar asks its form.
    struct Owner {
        std::function<void()> changed; // after the user has customised the bar
        /// The tip of a tool, made of its caption and its key.
        std::function<std::wstring(std::wstring caption, std::wstring_view id)> tip;
    };
    /// `uses` outlives the bar.
    Toolbar(HWND parent, std::span<const ToolUse> uses, Owner owner);
    ~Toolbar();
    Toolbar(const Toolbar&) = delete;
    Toolbar& operator=(const Toolbar&) = delete;

    HWND Window() const { return m_window; }
    /// Pixels; the bar keeps to the parent's width when `Resize` is called.
    int Height() const;
    void Resize();

    // What these change is seen after the next `Resize`.
    void SetBandVisible(std::wstring_view band, bool visible);
    void SetPressed(std::wstring_view id, bool pressed);
    /// A tool that would do nothing is off, here and in the menus.
    void SetEnabled(std::wstring_view id, bool enabled);
    bool IsEnabled(std::wstring_view id) const;

    /// A note for the user when the file cannot be used: the bar is then as before.
    std::wstring Load(const std::wstring& path);
    void Save(const std::wstring& path) const;
    /// The system's dialog to add, remove and order tools.
    void Customize();

    /// The identifier of a tool of this bar by its window-command number; "" for another number.
    std::wstring_view IdOf(int command) const;
    /// A command's picture in the bar's size, for a button elsewhere; null when there is none.
    win::UniqueIcon Glyph(std::wstring_view id) const;
    /// Answers the bar's own notifications; false when `header` is another control's.
    bool Notified(NMHDR& header, LRESULT& answer);

private:
    void Refresh();
    int CommandOf(std::wstring_view id) const;
    void AddGlyphs();
    void ReadOrder();
    bool FillCustomizeItem(int index, NMHDR& header) const;
    void FillTip(NMHDR& header) const;

    win::UniqueHandle<HIMAGELIST, ImageList_Destroy> m_glyphs; // the window does not own its pictures
    HWND m_window = nullptr;
    std::span<const ToolUse> m_uses;
    Owner m_owner;
    base::ToolbarLayout m_layout;
    std::vector<std::wstring> m_off;
    bool m_customizing = false;
    bool m_stale = true; // the layout has changes that the window does not show yet
};

} // namespace tamvelo::frame
