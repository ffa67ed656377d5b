#include "entry/Runtime.h"

#include <windows.h>

#include <pthread.h>

#include <utility>

#include "entry/UnwindFrames.h"

// What the run-time library has, and declares nowhere.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
namespace __gnu_cxx {
void __freeres();
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace tamvelo::entry {

namespace {

/// What the run-time library keeps for one thread, by key.
struct ThreadValues {
    static constexpr pthread_key_t kKeys = 8;
    void* values[kKeys];
    ThreadValues* next;
};

SRWLOCK g_lock = SRWLOCK_INIT;
DWORD g_slot = TLS_OUT_OF_INDEXES;
ThreadValues* g_threads = nullptr; // those that kept anything
void (*g_destroy[ThreadValues::kKeys])(void*) = {};
pthread_key_t g_keys = 0;

ThreadValues* Own() {
    if (g_slot == TLS_OUT_OF_INDEXES) {
        return nullptr;
    }
    const DWORD error =
        GetLastError(); // somebody may be about to ask for it, and asking for the value clears it
    auto* const own = static_cast<ThreadValues*>(TlsGetValue(g_slot));
    SetLastError(error);
    return own;
}

ThreadValues* OwnOrNew() {
    if (ThreadValues* const own = Own()) {
        return own;
    }
    auto* const made =
        static_cast<ThreadValues*>(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(ThreadValues)));
    if (!made) {
        return nullptr;
    }
    AcquireSRWLockExclusive(&g_lock);
    if (g_slot == TLS_OUT_OF_INDEXES) {
        g_slot = TlsAlloc();
    }
    const bool kept = TlsSetValue(g_slot, made) != FALSE;
    if (kept) {
        made->next = std::exchange(g_threads, made);
    }
    ReleaseSRWLockExclusive(&g_lock);
    if (!kept) {
        HeapFree(GetProcessHeap(), 0, made);
        return nullptr;
    }
    return made;
}

void Destroy(ThreadValues* thread) {
    for (pthread_key_t key = 0; key < g_keys; ++key) {
        if (void* const value = std::exchange(thread->values[key], nullptr); value && g_destroy[key]) {
            g_destroy[key](value);
        }
    }
    HeapFree(GetProcessHeap(), 0, thread);
}

/// The run-time library's mutexes start as one of two negative numbers, which a lock of the system never is.
PSRWLOCK LockOf(pthread_mutex_t* mutex) {
    auto* const word = reinterpret_cast<void* volatile*>(mutex);
    for (const pthread_mutex_t fresh : {PTHREAD_MUTEX_INITIALIZER, PTHREAD_RECURSIVE_MUTEX_INITIALIZER}) {
        InterlockedCompareExchangePointer(word, nullptr, reinterpret_cast<void*>(fresh));
    }
    return reinterpret_cast<PSRWLOCK>(mutex);
}

PCONDITION_VARIABLE ConditionOf(pthread_cond_t* condition) {
    InterlockedCompareExchangePointer(reinterpret_cast<void* volatile*>(condition), nullptr,
                                      reinterpret_cast<void*>(PTHREAD_COND_INITIALIZER));
    return reinterpret_cast<PCONDITION_VARIABLE>(condition);
}

} // namespace

void Runtime::Attach() noexcept { UnwindFrames::Register(); }

void Runtime::ThreadEnds() noexcept {
    ThreadValues* const own = Own();
    if (!own) {
        return;
    }
    TlsSetValue(g_slot, nullptr);
    AcquireSRWLockExclusive(&g_lock);
    ThreadValues** at = &g_threads;
    while (*at != own) {
        at = &(*at)->next;
    }
    *at = own->next;
    ReleaseSRWLockExclusive(&g_lock);
    Destroy(own);
}

void Runtime::Detach() noexcept {
    __gnu_cxx::__freeres(); // the memory set aside for throwing when there is no memory
    UnwindFrames::Deregister();
    while (g_threads) { // also those of threads that live on
        ThreadValues* const thread = g_threads;
        g_threads = thread->next;
        Destroy(thread);
    }
    if (g_slot != TLS_OUT_OF_INDEXES) {
        TlsFree(std::exchange(g_slot, TLS_OUT_OF_INDEXES));
    }
}

} // namespace tamvelo::entry

// The run-time library asks for threads by these names. What the compiler brings for them takes a TLS index
// and memory at each load and never gives them back; these stand on what Windows has, and take its place at
// linking. A further one that should ever be needed brings the compiler's own, and the linker then says that
// these are there twice.
using namespace tamvelo::entry;

extern "C" {

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* /*kind*/) {
    InitializeSRWLock(reinterpret_cast<PSRWLOCK>(mutex));
    return 0;
}
int pthread_mutex_destroy(pthread_mutex_t* /*mutex*/) { return 0; }
int pthread_mutex_lock(pthread_mutex_t* mutex) { // never twice by one thread
    AcquireSRWLockExclusive(LockOf(mutex));
    return 0;
}
int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    ReleaseSRWLockExclusive(LockOf(mutex));
    return 0;
}
int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    SleepConditionVariableSRW(ConditionOf(condition), LockOf(mutex), INFINITE, 0);
    return 0;
}
int pthread_cond_broadcast(pthread_cond_t* condition) {
    WakeAllConditionVariable(ConditionOf(condition));
    return 0;
}
int pthread_once(pthread_once_t* state, void (*run)()) {
    enum : pthread_once_t { Fresh, Running, Done };
    const pthread_once_t before = InterlockedCompareExchange(state, Running, Fresh);
    if (before == Fresh) {
        run();
        InterlockedExchange(state, Done);
    }
    while (InterlockedCompareExchange(state, Done, Done) != Done) {
        Sleep(1);
    }
    return 0;
}
int pthread_key_create(pthread_key_t* key, void (*destroy)(void*)) {
    AcquireSRWLockExclusive(&g_lock);
    const bool room = g_keys < ThreadValues::kKeys;
    if (room) {
        g_destroy[g_keys] = destroy;
        *key = g_keys++;
    }
    ReleaseSRWLockExclusive(&g_lock);
    return room ? 0 : EAGAIN;
}
int pthread_key_delete(pthread_key_t key) { // at the end only: the number is not given out again
    g_destroy[key] = nullptr;
    return 0;
}
void* pthread_getspecific(pthread_key_t key) {
    const ThreadValues* const own = Own();
    return own ? own->values[key] : nullptr;
}
int pthread_setspecific(pthread_key_t key, const void* value) {
    ThreadValues* const own = OwnOrNew();
    if (!own) {
        return ENOMEM;
    }
    own->values[key] = const_cast<void*>(value);
    return 0;
}

} // extern "C"
