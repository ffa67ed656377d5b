#include "com/ApartmentEnd.h"
#include "com/Module.h"
#include "entry/Runtime.h"

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* processEnds) {
    using namespace tamvelo;
    if (reason == DLL_PROCESS_ATTACH) {
        entry::Runtime::Attach();
        com::Module::Attach(instance);
    } else if (reason == DLL_THREAD_DETACH) {
        com::ApartmentEnd::Now(); // of a thread that did not end its apartment itself
        entry::Runtime::ThreadEnds();
    } else if (reason == DLL_PROCESS_DETACH && !processEnds) {
        com::ApartmentEnd::Unhook();
        entry::Runtime::Detach();
    }
    return TRUE;
}
