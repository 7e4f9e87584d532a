#include "Host/Display/FrameStatistics.h"

#include <algorithm>

namespace helmo {

void FrameStatistics::add(zornic::Duration duration) {
    if (_durations.size() < kept)
        _durations.push_back(duration);
    else
        _durations[_count % kept] = duration;
    ++_count;
    _max = std::max(_max, duration);
}

FrameStatistics::Summary FrameStatistics::take() {
    Summary summary{_count, {}, {}, _max};
    std::sort(_durations.begin(), _durations.end());
    if (!_durations.empty()) {
        summary.p50 = _durations[(_durations.size() - 1) / 2];
        summary.p99 = _durations[(_durations.size() - 1) * 99 / 100];
    }
    *this = {};
    return summary;
}

}  // namespace helmo
