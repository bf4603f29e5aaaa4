// What all benches measure by.
#pragma once

#include <vector>

namespace bench {

double Seconds(); ///< since some moment in the past
double Median(std::vector<double> values);

} // namespace bench
