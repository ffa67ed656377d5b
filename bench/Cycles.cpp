#include "bench/Cycles.h"

#include <psapi.h>

#include "bench/DialogSession.h"
#include "demo/app/Counts.h"

namespace tamvelo::bench {

namespace {

constexpr int kWarmUp = 20;

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
        : windows(demo::WindowCount()),
          gdiObjects(demo::GdiObjects()),
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
