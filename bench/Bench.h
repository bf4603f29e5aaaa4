// What the benches share: the scratch folder, the clock, medians, the lines of the table.
#pragma once

#include "bench/Measure.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// From the command line.
struct Settings {
    std::string Folder = "C:\\nullwright-bench"; ///< made, emptied and removed by the program
    std::uint64_t Bytes = 1ULL << 30;            ///< length of the large file
    int Files = 2000;                            ///< number of small files
    int Runs = 5;                                ///< repetitions, for the medians
};
inline Settings settings;

/// A file of the scratch folder.
std::string InFolder(const std::string& name);
/// Makes a file of `length` bytes that are really there, forced to the disk.
bool MakeFile(const std::string& path, std::uint64_t length);
/// Ends the program with a message when something that the measurement rests on fails.
void Require(bool done, const std::string& what);

double SecondsFor(const std::function<void()>& work);
std::string Text(double value, int decimals);

/// A line of the table: what was measured, the figure, the bar, and whether it is kept.
void Row(const std::string& what, const std::string& figure, const std::string& bar, bool kept);

// The benches. Each writes its rows.
void BenchOverwrite();
void BenchSmallFiles();
void BenchPumping();
void BenchMemory();
void BenchYield();

} // namespace bench
