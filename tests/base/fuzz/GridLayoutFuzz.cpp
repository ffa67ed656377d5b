#include "base/GridLayout.h"

#include "tests/base/fuzz/Check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamvelo::base;
    CheckRoundTrip<GridLayout>(data, size, "Tamvelo cuadrícula 1", ParseGridLayout, FormatGridLayout);
    return 0;
}
