#include "Benchmarks/Suite.h"

namespace helmo::benchmarks {

const std::vector<Benchmark>& allBenchmarks() {
    static const std::vector<Benchmark> benchmarks;
    return benchmarks;
}

}  // namespace helmo::benchmarks
