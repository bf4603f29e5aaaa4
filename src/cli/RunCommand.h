// One command line from its reading to its exit code.
#pragma once

#include <string>
#include <vector>

int RunCommand(const std::vector<std::string>& arguments);
