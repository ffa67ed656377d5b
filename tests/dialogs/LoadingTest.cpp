// The library comes and goes: thousands of times in one process, in several apartments at once, in threads
// that end before their forms do.
#include <gmock/gmock.h>
#include <malloc.h>

#include <atomic>
#include <barrier>
#include <thread>
#include <vector>

#include "tests/hosts/Server.h"
#include "tests/support/Drive.h"
#include "tests/support/FakeHost.h"

namespace tamvelo::testing {
namespace {

using hosts::Server;
using Call = HRESULT(entry::IClsShowSerch& server, FakeHost& host);

HRESULT Refused(entry::IClsShowSerch& server, FakeHost& /*host*/) {
    return server.ShowSelec(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

HRESULT Panel(entry::IClsShowSerch& server, FakeHost& host) {
    com::ComPtr<IDispatch> sink(host.sink.Get());
    com::ComPtr<IDispatch> data(host.data.Get());
    com::ComPtr<IDispatch> ctl(host.ctl.Get());
    return server.ShowSelec(sink.GetAddressOf(), data.GetAddressOf(), ctl.GetAddressOf(), nullptr, nullptr,
                            nullptr, nullptr);
}

HRESULT Appointment(entry::IClsShowSerch& server, FakeHost& host) {
    com::ComPtr<IDispatch> sink(host.sink.Get());
    com::ComPtr<IDispatch> data(host.data.Get());
    long owner = 0;
    DATE day = 46347;
    return server.ShowNuevaCita(sink.GetAddressOf(), data.GetAddressOf(), &owner, &day);
}

/// A user who closes whatever opens in this thread.
class Closer {
public:
    Closer() : m_timer(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, Close)) {}
    ~Closer() { KillTimer(nullptr, m_timer); }
    Closer(const Closer&) = delete;
    Closer& operator=(const Closer&) = delete;

private:
    static void CALLBACK Close(HWND /*window*/, UINT /*message*/, UINT_PTR /*id*/, DWORD /*time*/) {
        if (const HWND top = TopWindow()) {
            PostMessageW(top, WM_CLOSE, 0, 0);
        }
    }
    UINT_PTR m_timer;
};

/// What a process has that ends some time.
struct Held {
    DWORD tlsIndex; // the next one
    DWORD handles;
    unsigned gdi;
    size_t own; // bytes in use of the heap that the library allocates from
    size_t all; // and of the system's
};

size_t Used(HANDLE heap) {
    size_t used = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        used += entry.wFlags & PROCESS_HEAP_ENTRY_BUSY ? entry.cbData : 0;
    }
    HeapUnlock(heap);
    return used;
}

Held Count() {
    Held held{};
    held.tlsIndex = TlsAlloc();
    TlsFree(held.tlsIndex);
    GetProcessHandleCount(GetCurrentProcess(), &held.handles);
    held.gdi = GdiCount();
    held.own = Used(reinterpret_cast<HANDLE>(_get_heap_handle()));
    held.all = held.own + Used(GetProcessHeap());
    return held;
}

void Cycle(Call* call, HRESULT expected) {
    Server server;
    FakeHost host;
    {
        const auto object = server.Create();
        ASSERT_EQ(call(*object.Get(), host), expected);
        SetErrorInfo(0, nullptr);
    }
    ASSERT_TRUE(server.MayUnload());
    ASSERT_TRUE(server.Unload());
}

TEST(Loading, ThousandsOfTimesLeavesNothing) {
    const Closer closer;
    const auto run = [](int cycles) {
        for (int i = 0; i < cycles && !::testing::Test::HasFailure(); ++i) {
            i % 100 == 0 ? Cycle(Panel, S_OK) : Cycle(Refused, E_POINTER);
        }
    };
    // What the library needs of the system stays loaded, and this is quicker.
    for (const wchar_t* of :
         {L"comctl32", L"oleaut32", L"oleacc", L"uxtheme", L"winspool.drv", L"comdlg32"}) {
        LoadLibraryW(of);
    }
    run(201); // what the system keeps for good
    const Held before = Count();
    run(3000);
    const Held after = Count();
    EXPECT_EQ(after.tlsIndex, before.tlsIndex);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_LE(after.gdi, before.gdi + 1);
    // Heaps take what is used often in larger pieces, and the system's loader keeps some of what it gets.
    EXPECT_LE(after.own, before.own + 3000 * 64);
    EXPECT_LE(after.all, before.all + 3000 * 200);
}

TEST(Loading, SeveralApartmentsOpenAtOnce) {
    constexpr int kApartments = 3;
    Server server;
    std::barrier together(kApartments);
    std::atomic<int> refused = 0;
    {
        std::vector<std::jthread> apartments;
        for (int i = 0; i < kApartments; ++i) {
            apartments.emplace_back([&] {
                CoInitialize(nullptr);
                {
                    const Closer closer;
                    FakeHost host;
                    for (int opening = 0; opening < 60; ++opening) {
                        together.arrive_and_wait();
                        refused += Panel(*server.Create().Get(), host) != S_OK;
                    }
                }
                CoUninitialize();
            });
        }
    }
    EXPECT_EQ(refused, 0);
    EXPECT_TRUE(server.MayUnload());
    EXPECT_TRUE(server.Unload());
}

TEST(Loading, AThreadThatEndsLeavesNothingOpen) {
    for (const bool endsItsApartment : {true, false}) {
        SCOPED_TRACE(endsItsApartment);
        Server server;
        FakeHost host;
        const long references = host.References();
        std::thread([&] {
            ImmDisableIME(0); // input methods have a share of their own in the apartment
            CoInitialize(nullptr);
            EXPECT_EQ(Appointment(*server.Create().Get(), host), S_OK);
            EXPECT_NE(TopWindow(), nullptr);
            EXPECT_GT(host.References(), references);
            EXPECT_FALSE(server.MayUnload());
            if (endsItsApartment) {
                CoUninitialize();
                EXPECT_EQ(TopWindow(), nullptr);
            }
        }).join();
        EXPECT_EQ(host.References(), references);
        EXPECT_TRUE(server.MayUnload());
        EXPECT_TRUE(server.Unload());
    }
}

} // namespace
} // namespace tamvelo::testing
