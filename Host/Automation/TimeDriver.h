#pragma once

#include "Host/Automation/AutomationTarget.h"

namespace helmo {

/** Runs the main loop for automation: work that is due, background work to its end, and time, virtual or
   real, with a frame every sixtieth of a second while something moves. Main thread. */
class TimeDriver {
public:
    static constexpr zornic::Seconds frameInterval{1.0 / 60};
    explicit TimeDriver(AutomationTarget& target) : _target(target) {}

    /** Runs what is due, waits for background work, and draws, until nothing is left to do at this moment. */
    void settle();
    /** Lets `time` pass, firing every timer and frame that falls due, in order. */
    void advance(zornic::Seconds time);

private:
    void advanceVirtually(zornic::ManualClock& clock, zornic::TimePoint end);
    void advanceReally(zornic::TimePoint end);
    void runWork();

    AutomationTarget& _target;
};

}  // namespace helmo
