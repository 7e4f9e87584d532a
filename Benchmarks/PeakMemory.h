#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace helmo::benchmarks {

/** Runs a program to its end, with a file as its input and without output, and returns the most memory that
   it had at any time. Throws when it can't be run or fails. */
double peakMegabytes(std::vector<std::string> commandLine, const std::filesystem::path& input);

}  // namespace helmo::benchmarks
