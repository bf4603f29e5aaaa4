// What a yield costs in a hot loop while there is nothing to pump.
#include "bench/Bench.h"

#include "ui/Interface.h"

void bench::BenchYield() {
    constexpr int yields = 2'000'000;
    std::vector<double> nanoseconds;
    for (int i = 0; i < settings.Runs; ++i)
        nanoseconds.push_back(SecondsFor([] {
                                  for (int k = 0; k < yields; ++k)
                                      ui::DoEvents();
                              }) /
                              yields * 1e9);
    const double median = Median(nanoseconds);
    Row("one ui::DoEvents in a hot loop", Text(median, 1) + " ns", "under 100 ns", median < 100);
}
