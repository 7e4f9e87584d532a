#include "Benchmarks/Suite.h"

namespace helmo::benchmarks {

const std::vector<Benchmark>& allBenchmarks() {
    static const std::vector<Benchmark> benchmarks{
        {{"scan_rate", "scan_first_rows_ms", "rescan"}, measureScan},
    };
    return benchmarks;
}

}  // namespace helmo::benchmarks
