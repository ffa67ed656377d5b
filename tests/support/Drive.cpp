#include "tests/support/Drive.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sstream>

#include "base/Text.h"
#include "com/Error.h"
#include "demo/app/Picture.h"

namespace tamvelo::testing {

namespace {

constexpr UINT kTick = 10;
constexpr ULONGLONG kPatience = 5000;

Player* g_player = nullptr;

void Hold(UINT key, bool down) {
    if (key == VK_RMENU) { // AltGr is Ctrl and Alt to whoever looks
        Hold(VK_CONTROL, down);
        Hold(VK_MENU, down);
        return;
    }
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[key] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

} // namespace

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name;
}

HWND TopWindow() {
    HWND found = nullptr;
    const WNDENUMPROC look = [](HWND window, LPARAM out) __attribute__((stdcall))->BOOL {
        const std::wstring name = ClassOf(window);
        const bool plain = name != TOOLTIPS_CLASSW && name != L"IME" && name != L"#32768";
        const bool input = plain && IsWindowVisible(window) && IsWindowEnabled(window);
        return input ? (*reinterpret_cast<HWND*>(out) = window, FALSE) : TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    text.resize(static_cast<size_t>(
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::wstring BoxText(HWND window) {
    constexpr int kMessage = 0xFFFF; // the control that every message box keeps its text in
    const HWND message = GetDlgItem(window, kMessage);
    return message && GetDlgItem(window, IDOK) ? TextOf(message) : L"";
}

UINT KeyNamed(const std::wstring& name) {
    static const std::map<std::wstring, UINT> keys{
        {L"Enter", VK_RETURN},  {L"Tab", VK_TAB},       {L"Esc", VK_ESCAPE}, {L"Space", VK_SPACE},
        {L"Up", VK_UP},         {L"Down", VK_DOWN},     {L"Left", VK_LEFT},  {L"Right", VK_RIGHT},
        {L"Prior", VK_PRIOR},   {L"Next", VK_NEXT},     {L"Home", VK_HOME},  {L"End", VK_END},
        {L"Insert", VK_INSERT}, {L"Delete", VK_DELETE}, {L"Plus", VK_ADD}};
    if (const auto known = keys.find(name); known != keys.end()) {
        return known->second;
    }
    return name.size() == 1 ? name[0] : name[0] == L'F' ? VK_F1 - 1 + std::stoul(name.substr(1)) : 0;
}

Script::Script(const wchar_t* keys) {
    std::wistringstream words(keys);
    for (std::wstring word; words >> word;) {
        const UINT held = word.size() == 1  ? 0
                          : word[0] == L'^' ? VK_CONTROL
                          : word[0] == L'+' ? VK_SHIFT
                                            : 0;
        word[0] == L'\'' ? Type(word.substr(1)) : Key(KeyNamed(word.substr(held ? 1 : 0)), held);
    }
}

Script& Script::Key(UINT key, UINT held) {
    m_steps.push_back({"key " + std::to_string(key), [key, held](HWND) {
                           if (held) {
                               Hold(held, true);
                           }
                           const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(key, 0)) << 16;
                           PostMessageW(GetFocus(), WM_KEYDOWN, key, scan | 1);
                           PostMessageW(GetFocus(), WM_KEYUP, key, scan | static_cast<LPARAM>(0xC0000001));
                           return true;
                       }});
    if (held) {
        Do([held] { Hold(held, false); });
    }
    return *this;
}

Script& Script::Type(std::wstring text) {
    m_steps.push_back({"type", [text = std::move(text)](HWND) {
                           for (const wchar_t letter : text) {
                               PostMessageW(GetFocus(), WM_CHAR, letter, 1);
                           }
                           return true;
                       }});
    return *this;
}

Script& Script::Do(std::function<void()> action) {
    m_steps.push_back({"action", [action = std::move(action)](HWND) {
                           action();
                           return true;
                       }});
    return *this;
}

Script& Script::Until(std::string what, Step condition) {
    m_steps.push_back({"wait for " + std::move(what), std::move(condition)});
    return *this;
}

Script& Script::Box(std::wstring part) {
    Until("a message with " + base::ToUtf8(part),
          [part](HWND top) { return BoxText(top).find(part) != std::wstring::npos; });
    return Key(VK_RETURN);
}

Script& Script::Append(const Script& more) {
    m_steps.insert(m_steps.end(), more.m_steps.begin(), more.m_steps.end());
    return *this;
}

Player::Player(Script script, std::function<std::string()> notes)
    : m_script(std::move(script)), m_notes(std::move(notes)), m_timer(SetTimer(nullptr, 0, kTick, Tick)) {
    g_player = this;
}

Player::~Player() {
    KillTimer(nullptr, m_timer);
    g_player = nullptr;
    if (!m_gaveUp && m_at < m_script.m_steps.size()) {
        ADD_FAILURE() << "over before the script was: next was step " << m_at << ", "
                      << m_script.m_steps[m_at].name;
    }
}

void CALLBACK Player::Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (g_player && !g_player->m_busy) {
        g_player->m_busy = true;
        g_player->Turn();
        g_player->m_busy = false;
    }
}

void Player::Turn() {
    const HWND top = TopWindow();
    if (!top) {
        return;
    }
    // Another program may be in front: the thread's own idea of its active window is what counts here.
    if (GetActiveWindow() != top) {
        SetActiveWindow(top);
    }
    if (!GetFocus()) {
        SetFocus(top);
    }
    // The step first: what took the machine long is there by now.
    if (!m_gaveUp && m_at < m_script.m_steps.size() && m_script.m_steps[m_at].run(top)) {
        ++m_at;
        m_since = GetTickCount64();
    } else if (GetTickCount64() - m_since > kPatience) {
        GiveUp(top);
    }
}

void Player::GiveUp(HWND top) {
    if (!m_gaveUp) {
        m_gaveUp = true;
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        const std::wstring picture =
            L"stuck-" + base::FromUtf8(test ? test->name() : "").value_or(L"") + L".png";
        try {
            demo::SavePicture(top, picture);
        } catch (const com::Error&) { // then there is none
        }
        ADD_FAILURE() << "stuck at step " << m_at << ": "
                      << (m_at < m_script.m_steps.size() ? m_script.m_steps[m_at].name
                                                         : "the end, and still open")
                      << "\non top: " << base::ToUtf8(TextOf(top)) << " " << base::ToUtf8(BoxText(top))
                      << "\npicture: " << base::ToUtf8(picture) << "\n"
                      << m_notes();
    } else if (GetTickCount64() - m_since > 2 * kPatience) {
        std::abort(); // nothing closes it; the rest of the tests could only hang too
    }
    PostMessageW(top, WM_CANCELMODE, 0, 0);
    PostMessageW(top, WM_CLOSE, 0, 0);
}

} // namespace tamvelo::testing
