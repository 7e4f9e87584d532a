#pragma once

#include <functional>
#include <vector>

namespace helmo::benchmarks {

/** Milliseconds that `work` takes. */
double milliseconds(const std::function<void()>& work);
double median(std::vector<double> values);

struct Pair {
    double ours = 0, floor = 0;
};
/** Median milliseconds of both, measured in turns, so that whatever else the machine does falls on both. The
   first `warmUp` rounds don't count. Each returns what it measured, so that preparing isn't measured. */
Pair inTurns(int rounds, int warmUp, const std::function<double()>& ours,
             const std::function<double()>& floor);

}  // namespace helmo::benchmarks
