// The library comes and goes: thousands of times in one process, in several apartments at once, in threads
// that end before their forms do.
#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include "com/LateObject.h"
#include "demo/app/Counts.h"
#include "tests/hosts/Server.h"
#include "tests/support/Drive.h"
#include "tests/support/FakeHost.h"

namespace tamvelo::testing {
namespace {

using hosts::Server;

HRESULT OpenPanel(const Server& server, FakeHost& host, bool refused = false) {
    com::ComPtr<IDispatch> sink(host.sink.Get());
    com::ComPtr<IDispatch> data(host.data.Get());
    com::ComPtr<IDispatch> ctl(host.ctl.Get());
    return server.Create()->ShowSelec(refused ? nullptr : sink.GetAddressOf(), data.GetAddressOf(),
                                      ctl.GetAddressOf(), nullptr, nullptr, nullptr, nullptr);
}

/// A user who closes whatever opens in this thread, as long as that lives.
void CloseWhatOpens() {
    const TIMERPROC close = [](HWND, UINT, UINT_PTR, DWORD) __attribute__((stdcall)) {
        if (const HWND top = TopWindow()) {
            PostMessageW(top, WM_CLOSE, 0, 0);
        }
    };
    SetTimer(nullptr, 0, USER_TIMER_MINIMUM, close);
}

TEST(Loading, ThousandsOfTimesLeavesNothing) {
    constexpr int kTimes = 3000;
    CloseWhatOpens();
    const auto run = [](int cycles) {
        for (int i = 0; i < cycles && !::testing::Test::HasFailure(); ++i) {
            const bool refused = i % 100 != 0;
            Server server;
            FakeHost host;
            EXPECT_EQ(OpenPanel(server, host, refused), refused ? E_POINTER : S_OK);
            SetErrorInfo(0, nullptr);
            EXPECT_TRUE(server.MayUnload());
            EXPECT_TRUE(server.Unload());
        }
    };
    // What a process has that ends some time.
    const auto count = [] {
        const DWORD nextIndex = TlsAlloc();
        TlsFree(nextIndex);
        DWORD handles = 0;
        GetProcessHandleCount(GetCurrentProcess(), &handles);
        return std::array<long long, 5>{nextIndex, handles, demo::GdiObjects(), demo::OwnHeapInUse(),
                                        demo::HeapInUse()};
    };
    // Heaps take what is used often in larger pieces, and the system's loader keeps some of what it gets.
    constexpr int kMore[] = {0, 0, 1, kTimes * 64, kTimes * 200};
    // What the library needs of the system stays loaded, and this is quicker.
    for (const wchar_t* of :
         {L"comctl32", L"oleaut32", L"oleacc", L"uxtheme", L"winspool.drv", L"comdlg32"}) {
        LoadLibraryW(of);
    }
    run(201); // what the system keeps for good
    const auto before = count();
    run(kTimes);
    const auto after = count();
    for (size_t i = 0; i < after.size(); ++i) {
        EXPECT_LE(after[i], before[i] + kMore[i]) << i;
    }
}

TEST(Loading, SeveralApartmentsOpenAtOnce) {
    constexpr int kApartments = 3;
    Server server;
    std::atomic<int> arrived = 0;
    std::atomic<int> refused = 0;
    {
        std::vector<std::jthread> apartments;
        for (int i = 0; i < kApartments; ++i) {
            apartments.emplace_back([&] {
                CoInitialize(nullptr);
                {
                    CloseWhatOpens();
                    FakeHost host;
                    for (int opening = 0; opening < 60; ++opening) {
                        // All at once, and meanwhile each listens, as apartments must: the others' windows
                        // talk to it.
                        for (++arrived; arrived < (opening + 1) * kApartments; Sleep(1)) {
                            MSG message;
                            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                                DispatchMessageW(&message);
                            }
                        }
                        refused += OpenPanel(server, host) != S_OK;
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
        Server server;
        FakeHost host;
        const long references = host.References();
        std::thread([&] {
            ImmDisableIME(0); // input methods have a share of their own in the apartment
            CoInitialize(nullptr);
            com::LateObject(server.Create().Get(), L"servidor")
                .Call(L"ShowNuevaCita", {host.sink.Get(), host.data.Get(), 0L, com::Variant::Date(46347)});
            EXPECT_NE(TopWindow(), nullptr);
            EXPECT_GT(host.References(), references + 1); // the sink and the data class
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
