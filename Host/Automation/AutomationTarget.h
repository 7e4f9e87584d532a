#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "Platform/Foundation/RunLoop.h"
#include "View Controllers/ZRNRootController.h"

namespace helmo {

/** Figures of the display since they were last asked for. A value. */
struct DisplayStatistics {
    std::uint64_t frames = 0;
    /** Milliseconds a frame. */
    double p50 = 0, p99 = 0, max = 0;
    /** Process start to first frame, milliseconds; 0 before it. */
    double start = 0;
};

/** What automation drives: the running helmo. Main thread. */
class AutomationTarget {
public:
    virtual ~AutomationTarget() = default;
    virtual zornic::RunLoop& runLoop() = 0;
    virtual zornic::ZRNRootController& rootController() = 0;
    /** Moves a clock that stands still between commands; none while time is real. */
    virtual zornic::ManualClock* virtualClock() = 0;
    /** Draws what has changed. */
    virtual void drawFrame() = 0;
    /** Writes the display; empty, or why it failed. */
    virtual std::string writeScreenshot(const std::string& file) = 0;
    virtual DisplayStatistics takeStatistics() = 0;
    /** All settings by name. */
    virtual nlohmann::json settings() const = 0;
    /** Changes some; empty, or what is wrong, and then none is changed. */
    virtual std::string changeSettings(const nlohmann::json& changes) = 0;
};

}  // namespace helmo
