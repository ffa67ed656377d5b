#include "demo/app/Soak.h"

#include <algorithm>
#include <atomic>
#include <random>
#include <vector>

#include "com/Error.h"
#include "com/Module.h"
#include "demo/app/Console.h"
#include "demo/app/Counts.h"
#include "demo/app/Describe.h"
#include "demo/app/Hands.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

namespace {

constexpr ULONGLONG kPatience = 60'000;
constexpr int kMostKeys = 14;
constexpr int kTriesToLeave = 60;
// What the system keeps for itself: grows at first, and a little for good.
constexpr long kGdiSlack = 40;
constexpr long long kHeapSlack = 1 << 20;
constexpr long long kHeapEach = 3072;

using Random = std::mt19937; // the same everywhere, as its distributions are not

std::size_t Below(Random& random, std::size_t limit) { return random() % limit; }

template <class Table>
const auto& OneOf(Random& random, const Table& table) {
    return table[Below(random, std::size(table))];
}

/// A key, with Ctrl or Shift or without; or a letter that is typed, or one with Alt.
struct Stroke {
    UINT key;
    UINT held;
    wchar_t letter;
    bool access;
};

struct KeyName {
    UINT key;
    const wchar_t* name;
};
constexpr KeyName kKeys[] = {
    {VK_TAB, L"Tab"},    {VK_TAB, L"Tab"},     {VK_DOWN, L"Down"},    {VK_DOWN, L"Down"}, {VK_UP, L"Up"},
    {VK_LEFT, L"Left"},  {VK_RIGHT, L"Right"}, {VK_HOME, L"Home"},    {VK_END, L"End"},   {VK_PRIOR, L"PgUp"},
    {VK_NEXT, L"PgDn"},  {VK_SPACE, L"Space"}, {VK_RETURN, L"Enter"}, {VK_BACK, L"Back"}, {VK_DELETE, L"Del"},
    {VK_INSERT, L"Ins"}, {VK_APPS, L"Menu"},   {VK_F1, L"F1"},        {VK_F2, L"F2"},     {VK_F3, L"F3"},
    {VK_F4, L"F4"},      {VK_F5, L"F5"},       {VK_F6, L"F6"},        {VK_F7, L"F7"},     {VK_F8, L"F8"},
    {VK_F9, L"F9"},      {VK_F10, L"F10"},     {VK_F11, L"F11"},      {VK_F12, L"F12"},   {VK_ESCAPE, L"Esc"},
};
constexpr std::wstring_view kWithControl = L"ABCDEFGILNOPRSTUVXZ12345\r\x21\x22\x23\x24\x25\x26\x27\x28";
constexpr std::wstring_view kLetters = L"aeiourstnlñáÑ€0123456789.,:/-*?%'\"#[]&;";
constexpr const wchar_t* kValues[] = {
    L"",
    L"",
    L"000025",
    L"A00100",
    L"100200",
    L"03",
    L"*",
    L"a",
    L"tornillo",
    L"O'Donnell",
    L"50%",
    L"[x]",
    L"ñandú €",
    L"1/1/2026",
    L"-1",
    L"99999999999",
    L"un texto que es más largo que todo lo que cabe en una casilla de la pantalla"};

Stroke AnyStroke(Random& random) {
    switch (Below(random, 10)) {
    case 0:
        return {0, 0, OneOf(random, kLetters), false};
    case 1:
        return {0, 0, OneOf(random, kLetters), false};
    case 2:
        return {0, 0, static_cast<wchar_t>(L'a' + Below(random, 26)), true};
    case 3:
        return {static_cast<UINT>(OneOf(random, kWithControl)), VK_CONTROL, 0, false};
    case 4:
        return {OneOf(random, kKeys).key, VK_SHIFT, 0, false};
    default:
        return {OneOf(random, kKeys).key, 0, 0, false};
    }
}

std::wstring NameOf(const Stroke& stroke) {
    if (stroke.letter != 0) {
        return (stroke.access ? L"Alt+" : L"") + std::wstring(1, stroke.letter);
    }
    const auto known = std::ranges::find(kKeys, stroke.key, &KeyName::key);
    const std::wstring name = known != std::end(kKeys) ? std::wstring(known->name)
                                                       : std::wstring(1, static_cast<wchar_t>(stroke.key));
    return (stroke.held == VK_CONTROL ? L"Ctrl+" : stroke.held == VK_SHIFT ? L"Shift+" : L"") + name;
}

/// What must be the same when nothing is open.
struct Held {
    long windows = 0;
    long references = 0; // to objects of ours
    bool inUse = false;  // the library

    bool operator==(const Held&) const = default;
};

Held Count() {
    Held held;
    // Asked first: with the answer the library lets the components of the environment go.
    const auto unused = reinterpret_cast<HRESULT(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(TAMVELO_LIBRARY), "DllCanUnloadNow")));
    held.inUse = unused() != S_OK;
    held.references = com::Module::Locks();
    held.windows = WindowCount();
    return held;
}

/// The user of one operation, from a timer inside whatever loop runs.
class Monkey {
public:
    Monkey(HWND main, std::vector<Stroke> strokes)
        : m_main(main),
          m_strokes(std::move(strokes)),
          m_timer(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, Tick)) {
        s_current = this;
    }
    ~Monkey() {
        KillTimer(nullptr, m_timer);
        LetGoOfKeys();
        s_current = nullptr;
    }
    Monkey(const Monkey&) = delete;
    Monkey& operator=(const Monkey&) = delete;

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        if (s_current != nullptr && s_current->m_pause-- <= 0) {
            s_current->Act();
        } else if (s_current != nullptr) {
            s_current->Soon();
        }
    }

    void Act() {
        const HWND top = TopWindow();
        LetGoOfKeys();
        if (top == nullptr || top == m_main) {
            if (++m_alone % 100 == 0) { // Wine sizes a window by keys, also one that is no more, until Esc
                Say(L"    Esc, sin ningún diálogo");
                PressKey(VK_ESCAPE);
            }
            return;
        }
        if (const std::wstring text = BoxText(top); !text.empty() && top != m_told) {
            Say(L"    mensaje: " + text);
            m_told = top;
        }
        RedrawWindow(top, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        m_pause = 1; // until the letters that the system makes of keys have arrived
        Soon();
        if (m_next < m_strokes.size()) {
            const Stroke& stroke = m_strokes[m_next++];
            if (stroke.access) {
                PressAccess(stroke.letter);
            } else if (stroke.letter != 0) {
                TypeText({&stroke.letter, 1});
            } else {
                PressKey(stroke.key, stroke.held);
                m_held = stroke.held;
            }
        } else {
            Leave(top);
        }
    }

    /// The timer's turn, without waiting for its time.
    void Soon() const { PostMessageW(nullptr, WM_TIMER, m_timer, reinterpret_cast<LPARAM>(Tick)); }

    void Leave(HWND top) {
        constexpr UINT kWays[] = {VK_ESCAPE, VK_ESCAPE, 0, VK_ESCAPE, VK_RETURN};
        if (++m_tries > kTriesToLeave) {
            wchar_t name[128] = L"";
            GetWindowTextW(top, name, ARRAYSIZE(name));
            Say(L"FALLO: no se cierra «" + std::wstring(name) + L"»");
            TerminateProcess(GetCurrentProcess(), 1);
        }
        if (GetDlgItem(top, IDYES) != nullptr) { // whether what was typed may be lost
            PostMessageW(top, WM_COMMAND, IDYES, 0);
        } else if (const UINT key = kWays[m_tries % std::size(kWays)]) {
            PressKey(key);
        } else {
            PostMessageW(top, WM_CLOSE, 0, 0);
        }
    }

    void LetGoOfKeys() {
        if (m_held != 0) {
            LetGo(std::exchange(m_held, 0));
        }
    }

    static inline Monkey* s_current = nullptr;
    const HWND m_main;
    const std::vector<Stroke> m_strokes;
    std::size_t m_next = 0;
    UINT m_held = 0;
    int m_tries = 0;
    int m_alone = 0;
    int m_pause = 0;
    HWND m_told = nullptr;
    const UINT_PTR m_timer;
};

/// Ends the process when the thread does not come back.
class Watchdog {
public:
    Watchdog() { CreateTimerQueueTimer(&m_timer, nullptr, Look, this, 1000, 1000, WT_EXECUTEDEFAULT); }
    ~Watchdog() { DeleteTimerQueueTimer(nullptr, m_timer, INVALID_HANDLE_VALUE); }
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    void Feed() { m_fed = GetTickCount64(); }

private:
    static BOOL CALLBACK Tell(HWND window, LPARAM) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(window)) {
            wchar_t kind[64] = L"";
            wchar_t title[64] = L"";
            GetClassNameW(window, kind, 64);
            InternalGetWindowText(window, title, 64); // asks nobody
            Say(std::wstring(L"    ") + kind + L" «" + title +
                (IsWindowEnabled(window) ? L"»" : L"», no se puede usar"));
        }
        return TRUE;
    }
    static void CALLBACK Look(void* self, BOOLEAN) {
        if (GetTickCount64() - static_cast<Watchdog*>(self)->m_fed > kPatience) {
            Say(L"FALLO: no vuelve");
            EnumWindows(Tell, 0);
            TerminateProcess(GetCurrentProcess(), 1);
        }
    }
    HANDLE m_timer = nullptr;
    std::atomic<ULONGLONG> m_fed = GetTickCount64();
};

/// One operation, from the host's call until nothing but the host's window is left.
void Use(MainWindow& window, const Operation& operation, std::size_t field, std::vector<Stroke> strokes,
         const MainWindow::Vary& vary) {
    const Monkey monkey(window.Handle(), std::move(strokes));
    try {
        window.Perform(operation, field, vary);
    } catch (...) {
        Say(L"    error: " + Describe(AnyCurrentError()));
    }
    UntilAlone(window.Handle()); // also of a preview
    window.Forget();
}

/// SQLite keeps pages until it has as many as it may.
long long OwnHeap() { return HeapInUse() - Database::MemoryInUse(); }

bool Usual(HWND window, const Held& usual) {
    const Held now = Count();
    if (now != usual) {
        Say(L"FALLO: quedan " + std::to_wstring(now.windows - usual.windows) + L" ventanas, " +
            std::to_wstring(now.references - usual.references) + L" referencias" +
            (now.inUse && !usual.inUse ? L", la biblioteca en uso" : L""));
    }
    const bool usable = IsWindowEnabled(window) && GetCapture() == nullptr;
    if (!usable) {
        Say(L"FALLO: la ventana principal no se puede usar");
    }
    return now == usual && usable;
}

} // namespace

bool Soak(MainWindow& window, long first, long last, long seed) {
    if (OpenClipboard(window.Handle())) {
        EmptyClipboard();
        CloseClipboard();
    }
    Watchdog watchdog;
    for (const Operation& operation : Operations()) { // what the system and the library keep for good
        watchdog.Feed();
        Say(std::wstring(L"0 ") + operation.name);
        Use(window, operation, window.Fields().For(L"articulos"), {}, {});
    }
    const Held usual = Count();
    const long gdi = GdiObjects();
    const long long heap = OwnHeap();
    long appointments = 0;
    long faults = 0;
    for (long i = first; i <= last; ++i) {
        watchdog.Feed();
        std::seed_seq mixed{seed, i};
        Random random(mixed);
        const Operation& operation = OneOf(random, Operations());
        const std::wstring className(OneOf(random, Tables()).className);
        const std::wstring value = OneOf(random, kValues);
        std::vector<Stroke> strokes(Below(random, kMostKeys + 1));
        std::wstring line = std::to_wstring(i);
        line.append(L" ").append(operation.name).append(L" ").append(className);
        line.append(L" «").append(value).append(L"»:");
        for (Stroke& stroke : strokes) {
            stroke = AnyStroke(random);
            line += L" " + NameOf(stroke);
        }
        Say(line);
        const std::size_t field = window.Fields().For(className);
        window.Fields().Type(field, value);
        Use(window, operation, field, std::move(strokes), [&random](Request& request) {
            request.column = static_cast<short>(Below(random, 4));
            request.index = static_cast<short>(Below(random, 3));
            request.find = Below(random, 2) != 0;
            request.stock = Below(random, 2) != 0;
            request.showAuto = Below(random, 2) != 0;
            request.modal = static_cast<short>(Below(random, 2));
            request.mode = static_cast<short>(Below(random, 3));
        });
        faults += !Usual(window.Handle(), usual);
        appointments += operation.name == std::wstring_view(L"ShowNuevaCita") ? 1 : 0;
        if (i % 250 == 0 || i == last) {
            const long objects = GdiObjects() - gdi;
            const long long bytes = OwnHeap() - heap;
            Say(L"== " + std::to_wstring(i) + L" operaciones: " + std::to_wstring(objects) +
                L" objetos GDI más (" + std::to_wstring(appointments) + L" citas), " +
                std::to_wstring(bytes / 1024) + L" KB más, fallos " + std::to_wstring(faults));
            // Wine's month calendar keeps a font each time it is made.
            if (objects - appointments > kGdiSlack || bytes > kHeapSlack + (i - first) * kHeapEach) {
                Say(L"FALLO: crece");
                ++faults;
            }
        }
    }
    return faults == 0;
}

} // namespace tamvelo::demo
