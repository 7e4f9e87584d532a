#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Benchmarks/Figure.h"

namespace helmo::benchmarks {

/** A benchmark and the figures that it measures. */
struct Benchmark {
    std::vector<std::string> figures;
    std::function<Figures()> measure;
};

Figures measureMillionSongs();
Figures measureMemory();
Figures measureUpdate();
Figures measureFling();
/** One for each tab and each kind of list behind one, and one for the longest frame of them all. */
std::vector<Benchmark> openBenchmarks();
Figures measureFrames();
Figures measureIdle();
Figures measureScan();
Figures measureLargeScan();
Figures measureStart();

/** All, in the table's order. */
const std::vector<Benchmark>& allBenchmarks();

}  // namespace helmo::benchmarks
