#include "base/ToolbarLayout.h"

#include "tests/base/fuzz/Check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tamvelo::base;
    CheckRoundTrip<ToolbarLayout>(data, size, "Tamvelo barra 1", ParseToolbarLayout, FormatToolbarLayout);
    return 0;
}
