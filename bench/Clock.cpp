#include "bench/Clock.h"

#include <windows.h>

#include <algorithm>

namespace tamvelo::bench {

double Now() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double Typical(std::vector<double> values) {
    const auto quartile = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 4);
    std::nth_element(values.begin(), quartile, values.end());
    return *quartile;
}

} // namespace tamvelo::bench
