#include "Benchmarks/Measuring.h"

#include <algorithm>
#include <chrono>

namespace helmo::benchmarks {

double milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Pair inTurns(int rounds, int warmUp, const std::function<double()>& ours,
             const std::function<double()>& floor) {
    std::vector<double> oursTaken, floorTaken;
    for (int round = -warmUp; round < rounds; ++round) {
        const double floorTime = floor(), oursTime = ours();
        if (round < 0) continue;
        floorTaken.push_back(floorTime);
        oursTaken.push_back(oursTime);
    }
    return {median(oursTaken), median(floorTaken)};
}

}  // namespace helmo::benchmarks
