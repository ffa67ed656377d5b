#include "entry/UnwindFrames.h"

namespace tamvelo::entry {

void UnwindFrames::Register() noexcept {}
void UnwindFrames::Deregister() noexcept {}

} // namespace tamvelo::entry
