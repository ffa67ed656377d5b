#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tamvelo::frame {

/// A command as the toolbar and the menus offer it. The same everywhere; a form only says which ones it has.
struct ToolKind {
    const wchar_t* id;
    const wchar_t* caption; // with its access key for menus
    const wchar_t* band;
    int glyph;      // place in the glyph strips
    bool captioned; // shows its caption on the bar
    bool toggles;   // stays pressed while what it does is in force
};

/// Null for an identifier that is no tool.
const ToolKind* FindTool(std::wstring_view id);

/// One tool of a form's bar.
struct ToolUse {
    const wchar_t* id;
    const wchar_t* caption = nullptr; // where the form means something else by the command than others do
};

/// The caption of a command's tool in a form that has `uses`, with its access key; null for what is no tool.
const wchar_t* ToolCaption(std::span<const ToolUse> uses, std::wstring_view id);

} // namespace tamvelo::frame
