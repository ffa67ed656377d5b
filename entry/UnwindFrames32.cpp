#include "entry/UnwindFrames.h"

// What the run-time library has, and declares nowhere.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
void __register_frame_info(const void* begin, void* object);
void* __deregister_frame_info(const void* begin);
extern const char tamvelo_unwind_frames[]; // the section's start, from the linker
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace tamvelo::entry {

// The start-up code registers our unwind frames with the shared run-time library if a host has that loaded,
// and then our own, which throws and catches, finds nothing and ends the process. Registered twice they do no
// harm.
void UnwindFrames::Register() noexcept {
    static void* s_object[8]; // the registry's own notes
    __register_frame_info(tamvelo_unwind_frames, s_object);
}

void UnwindFrames::Deregister() noexcept { __deregister_frame_info(tamvelo_unwind_frames); }

} // namespace tamvelo::entry
