#include "bench/Cycles.h"

#include <psapi.h>

#include <algorithm>

#include "bench/DialogSession.h"

namespace tamvelo::bench {

namespace {

constexpr int kWarmUp = 20;

/// Windows counts for us; under Wine the answer is 0 and the process's table of GDI handles is read instead.
long GdiObjects() {
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) {
        return static_cast<long>(counted);
    }
    static_assert(sizeof(void*) == 4, "the offset below is that of a 32-bit process");
    struct Entry {
        unsigned long long object;
        unsigned owner;
        unsigned short unique;
        unsigned char type;
        unsigned char flags;
        unsigned long long user;
    };
    constexpr size_t kHandleTable = 0x94;
    constexpr int kHandles = 65536;
    const auto processBlock = reinterpret_cast<const char*(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb")));
    const auto* table = *reinterpret_cast<const Entry* const*>(processBlock() + kHandleTable);
    return static_cast<long>(
        std::count_if(table, table + kHandles, [](const Entry& entry) { return entry.type != 0; }));
}

long Windows() {
    long count = 0;
    const WNDENUMPROC add = [](HWND, LPARAM result) __attribute__((stdcall))->BOOL {
        ++*reinterpret_cast<long*>(result);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), add, reinterpret_cast<LPARAM>(&count));
    return count;
}

long References(IUnknown* object) {
    object->AddRef();
    return static_cast<long>(object->Release());
}

double PrivateBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PagefileUsage);
}

struct Counts {
    explicit Counts(const Host& host)
        : windows(Windows()),
          gdiObjects(GdiObjects()),
          userObjects(static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS))),
          references(References(host.sink.Get()) + References(host.data.Get()) +
                     References(host.control.Get())),
          privateBytes(PrivateBytes()) {}

    long windows;
    long gdiObjects;
    long userObjects;
    long references;
    double privateBytes;
};

} // namespace

Leftovers OpenAndClose(const Library& library, const GridDialog& dialog, int cycles) {
    const Host host = MakeMemoryHost(1000, L"500");
    const auto run = [&](int times) {
        for (int i = 0; i < times; ++i) {
            OpenDialog([&] { ShowDialog(library, dialog, host); }, ListOf);
        }
    };
    run(kWarmUp);
    const Counts before(host);
    run(cycles);
    const Counts after(host);
    return {after.windows - before.windows,
            after.gdiObjects - before.gdiObjects,
            after.userObjects - before.userObjects,
            after.references - before.references,
            !library.Unused(),
            after.privateBytes - before.privateBytes};
}

} // namespace tamvelo::bench
