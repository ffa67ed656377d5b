#pragma once

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "Server.h"

/// A person at the keyboard of another program, and the programs that are tested so: scripts, examples.
namespace tamvelo::hosts {

/// What a user does, or sees, in place of a key.
enum : UINT { kClick = 0x1000, kSays, kShows, kGoTo };

/// Waits until a control has the focus, types and presses a key. In place of a key: a click on the control
/// wherever the focus is; a control says the text, or a grid shows its rows, the current one in brackets;
/// another window comes forward.
struct Step {
    int control;
    UINT key;
    std::wstring text = {};
};
using Steps = std::vector<Step>;

/// What is done in the dialog of that caption.
struct Visit {
    std::wstring caption; // empty where no dialog opens
    Steps steps;
};

/// The library is registered, and nothing is kept of what dialogs kept.
class PersonTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override { EXPECT_EQ(RunRegsvr32(L"/u"), 0U); }

    /// A file beside the programs.
    static void Put(const wchar_t* script, const std::string& text);
    /// Runs a program while somebody works its dialogs; what it printed, its lines parted by LF.
    static std::string Run(const std::wstring& command, std::span<const Visit> visits);
};

/// A file of the sources, or the part between two texts of it.
std::string Text(const std::string& file, const std::string& from = {}, const std::string& to = {});

} // namespace tamvelo::hosts
