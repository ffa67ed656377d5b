#include "demo/app/Counts.h"

#include "com/WinHeaders.h"

#include <malloc.h>

#include <algorithm>

namespace tamvelo::demo {

namespace {

long long Used(HANDLE heap) {
    long long used = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        used += entry.wFlags & PROCESS_HEAP_ENTRY_BUSY ? static_cast<long long>(entry.cbData) : 0;
    }
    HeapUnlock(heap);
    return used;
}

} // namespace

long WindowCount() {
    long count = 0;
    const WNDENUMPROC add = [](HWND, LPARAM result) __attribute__((stdcall))->BOOL {
        ++*reinterpret_cast<long*>(result);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), add, reinterpret_cast<LPARAM>(&count));
    return count;
}

/// Windows counts for us; under Wine the answer is 0 and the process's table of GDI handles is read instead.
long GdiObjects() {
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) {
        return static_cast<long>(counted);
    }
    struct Entry {
        unsigned long long object;
        unsigned owner;
        unsigned short unique;
        unsigned char type;
        unsigned char flags;
        unsigned long long user;
    };
    constexpr size_t kHandleTable = sizeof(void*) == 8 ? 0xF8 : 0x94; // in the process's own block
    constexpr int kHandles = 65536;
    const auto processBlock = reinterpret_cast<const char*(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb")));
    const auto* table = *reinterpret_cast<const Entry* const*>(processBlock() + kHandleTable);
    return static_cast<long>(
        std::count_if(table, table + kHandles, [](const Entry& entry) { return entry.type != 0; }));
}

long long OwnHeapInUse() { return Used(reinterpret_cast<HANDLE>(_get_heap_handle())); }

long long HeapInUse() { return OwnHeapInUse() + Used(GetProcessHeap()); }

} // namespace tamvelo::demo
