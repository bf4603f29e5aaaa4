// Seconds and medians.
#include "bench/Measure.h"

#include <algorithm>
#include <chrono>

namespace bench {

double Seconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

} // namespace bench
