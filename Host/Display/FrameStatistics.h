#pragma once

#include <cstddef>
#include <vector>

#include "Platform/Foundation/Task.h"

namespace helmo {

/** How long frames took to draw. Main thread. */
class FrameStatistics {
public:
    struct Summary {
        std::size_t count = 0;
        /** Half, and all but a hundredth, of the frames took no longer; zero without frames. */
        zornic::Duration p50{}, p99{}, max{};
    };

    void add(zornic::Duration duration);
    /** Of the frames since the last call; the percentiles of the latest ten thousand. */
    Summary take();

private:
    static constexpr std::size_t kept = 10000;
    std::vector<zornic::Duration> _durations;
    std::size_t _count = 0;
    zornic::Duration _max{};
};

}  // namespace helmo
