#include "com/Module.h"

/// Thread notifications stay on: what is kept per thread is destroyed through them.
BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        tamvelo::com::Module::Attach(instance);
    }
    return TRUE;
}
