// What the benches of the whole program share: starting it, giving up, and files to work on.
#pragma once

#include "bench/Measure.h"
#include "platform/Fault.h"

#include <functional>
#include <string>

namespace bench {

/// The program ready for runs of one random pass; on Windows with its main window shown.
void BeginProgram();
/// How long the interface stood still during the work, in seconds; 0 where there is none.
double StretchOf(const std::function<void()>& work);

/// Ends the program, saying why it cannot go on.
void Give(const std::string& what);
/// Ends it when a fault, other than that something is there already, came to what is named.
void Need(platform::Fault fault, const std::string& what);

void MakeFile(const std::string& path, const std::string& content);
/// `stem` and a number, all of one length.
std::string Numbered(const std::string& stem, int number);

} // namespace bench
