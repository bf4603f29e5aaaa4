// What the benches of the whole program share: giving up, the clock, medians, files to work on.
#pragma once

#include "platform/Fault.h"

#include <string>
#include <vector>

namespace bench {

/// Ends the program, saying why it cannot go on.
void Give(const std::string& what);
/// Ends it when a fault, other than that something is there already, came to what is named.
void Need(platform::Fault fault, const std::string& what);

double Now(); ///< seconds since some moment in the past
double Median(std::vector<double> values);

void MakeFile(const std::string& path, const std::string& content);
/// `stem` and a number, all of one length.
std::string Numbered(const std::string& stem, int number);

} // namespace bench
