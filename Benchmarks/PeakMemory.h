#pragma once

#include <string>
#include <vector>

namespace helmo::benchmarks {

/** Runs a program that answers each line of its input by one of output, says `line` to it, and returns the
   megabytes that it had at most until it has answered. Throws when it can't be run or doesn't answer. */
double peakMegabytes(std::vector<std::string> commandLine, const std::string& line);

}  // namespace helmo::benchmarks
