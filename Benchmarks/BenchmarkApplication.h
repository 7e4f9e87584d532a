#pragma once

#include <filesystem>
#include <vector>

#include "Host/Automation/TimeDriver.h"
#include "Host/HelmoApplication.h"

namespace helmo::benchmarks {

/** A headless helmo inside this process, in virtual time, 800 x 480. One at a time. */
class BenchmarkApplication {
public:
    /** `data`: folder of an existing library; empty: a fresh one. Throws when it can't be opened. */
    BenchmarkApplication(const std::filesystem::path& data, const std::vector<std::filesystem::path>& music);

    HelmoApplication& helmo() { return _helmo; }
    TimeDriver& time() { return _time; }
    zornic::Window& window() { return *_helmo.rootController().helmoWindow(); }
    /** Milliseconds from a finger's leaving the display at `point` to the end of the frame that shows what
       that did, without animations and work that comes behind it. */
    double millisecondsOfTap(zornic::Point point);

private:
    HelmoApplication _helmo;
    TimeDriver _time;
};

}  // namespace helmo::benchmarks
