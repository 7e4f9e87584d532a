#pragma once

#include <filesystem>

#include "Benchmarks/Figure.h"

namespace helmo::benchmarks {

/** Writes the heading, or one figure as a row beneath it, to standard output. */
void printHeading();
void print(const Figure& figure);
/** Writes figures as a list of {"name","value","limit","ours","floor","unit"}; whether that worked. */
bool writeJson(const Figures& figures, const std::filesystem::path& file);

}  // namespace helmo::benchmarks
